// What an item can say about the ribbon that its window gets.
#include "ribbon/clsRibbon.h"

#include <iterator>
#include <pugixml.hpp>

#include "fuzz/Input.h"
#include "fuzz/OneItemHost.h"
#include "fuzz/check.h"
#include "fuzz/targets.h"
#include "infra/modRes.h"
#include "simulator/data/Utf8.h"

namespace fuzz {

void ribbon(const std::uint8_t* data, std::size_t size) {
  Input input(data, size);
  OneItemHost host;
  const auto layout = static_cast<cxol::clsRibbon::Layout>(1 + input.byte() % 2);
  const auto kind = input.byte();
  host.item->set(u"Class", kind < 200 ? automation::Value(std::int32_t{kind})
                                      : automation::Value(input.text()));
  host.item->set(u"Sent", input.byte() % 2 == 0 ? automation::Value(input.byte() % 2 == 0)
                                                : automation::Value(input.text()));
  host.item->set(u"MessageClass", input.text());
  const auto id = input.text();
  // A language that nobody knows gets English labels.
  static constexpr std::u16string_view Languages[] = {u"EN", u"DE", u"FR", u"IT", u"ES", u"PT"};
  const auto language = input.byte() % (std::size(Languages) + 1);
  cxol::SetLanguage(language < std::size(Languages) ? Languages[language]
                                                    : std::u16string_view(id));
  cxol::clsRibbon ribbon(layout);
  const auto markup = ribbon.GetRibbonDescription(id);
  if (!markup.empty()) {
    pugi::xml_document document;
    check(static_cast<bool>(document.load_string(simulator::toUtf8(markup).c_str())),
          "the markup is well-formed");
    check(document.select_nodes("//button[@label != '']").size() == 3, "three labelled buttons");
  }

  const bool own = id == u"IDS_WaehlenCombo" || id == u"IDS_Auflegen" || id == u"IDS_Aktionen";
  check(static_cast<bool>(ribbon.GetImageByControlId(id)) == own, "own buttons have a picture");
  const auto control = std::make_shared<Record>(u"IRibbonControl");
  control->set(u"Id", id);
  ribbon.ButtonHandler(office::RibbonControl(host.boundary.out(control->handle())));
  check(own || host.machine.client.told().empty(), "no other button does anything");
}

}  // namespace fuzz
