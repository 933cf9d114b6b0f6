// The menus that are filled from an item, and what a choice from them does.
#include <array>

#include "fuzz/Input.h"
#include "fuzz/OneItemHost.h"
#include "fuzz/check.h"
#include "fuzz/targets.h"
#include "infra/text.h"
#include "items/EvalObjects.h"
#include "items/UIHelpers.h"
#include "state/globals.h"

namespace fuzz {
namespace {

using outlook::ObjectClass;

constexpr ObjectClass Kinds[] = {
    ObjectClass::Contact, ObjectClass::Mail,        ObjectClass::Post,           ObjectClass::Task,
    ObjectClass::Journal, ObjectClass::Appointment, ObjectClass::MeetingRequest, ObjectClass::Note};
constexpr std::u16string_view Phones[] = {u"BusinessTelephoneNumber",
                                          u"CompanyMainTelephoneNumber",
                                          u"HomeTelephoneNumber",
                                          u"MobileTelephoneNumber",
                                          u"Business2TelephoneNumber",
                                          u"Home2TelephoneNumber",
                                          u"OtherTelephoneNumber",
                                          u"AssistantTelephoneNumber",
                                          u"PrimaryTelephoneNumber",
                                          u"ISDNNumber",
                                          u"RadioTelephoneNumber",
                                          u"CarTelephoneNumber",
                                          u"PagerNumber",
                                          u"CallbackTelephoneNumber"};

/// Chooses one entry of each menu, by its place among those that can be chosen.
class Choice : public simulator::ScreenUser {
 public:
  std::size_t place = 0;
  std::u16string caption;

  std::optional<int> popup(const std::vector<platform::PopupEntry>& menu,
                           platform::Point) override {
    std::vector<const platform::PopupEntry*> entries;
    collect(menu, entries);
    check(menu.size() <= cxol::MenuLength + 2, "a menu has a bounded number of entries");
    if (entries.empty()) return std::nullopt;
    const auto* chosen = entries[place % entries.size()];
    caption = chosen->caption;
    return chosen->id;
  }

 private:
  static void collect(const std::vector<platform::PopupEntry>& menu,
                      std::vector<const platform::PopupEntry*>& entries) {
    for (const auto& entry : menu) {
      if (!entry.entries.empty()) {
        collect(entry.entries, entries);
      } else if (entry.enabled && !entry.separator) {
        entries.push_back(&entry);
      }
    }
  }
};

void describe(OneItemHost& host, ObjectClass kind, Input& input) {
  auto& item = *host.item;
  item.set(u"Class", static_cast<std::int32_t>(kind));
  item.set(u"Subject", input.text());
  item.answer(u"UserProperties", [record = input.text()](simulator::Arguments) {
    const auto property = std::make_shared<Record>(u"UserProperty");
    property->set(u"Value", record);
    const auto properties = std::make_shared<Record>(u"UserProperties");
    properties->set(u"Item", property->handle());
    return automation::Value(properties->handle());
  });
  const auto user = input.text();
  host.machine.mapiHelper.setCurrentUser(user);
  const auto people = input.byte() % 20;
  for (int i = 0; i < people; ++i) {
    host.facts.telephoneNames.push_back(input.text());
    host.facts.telephoneNumbers.push_back(input.text());
  }
  for (const auto phone : Phones) item.set(phone, input.text());
}

}  // namespace

void menus(const std::uint8_t* data, std::size_t size) {
  Input input(data, size);
  OneItemHost host;
  Choice choice;
  host.machine.screen.setUser(&choice);
  host.machine.client.setConversion([](auto number) { return std::u16string(number); });
  const auto kind = Kinds[input.byte() % std::size(Kinds)];
  choice.place = input.byte();
  describe(host, kind, input);

  const auto menu = cxol::FillNumberMenu();
  check(menu.has_value() == (kind != ObjectClass::Note), "all kinds but notes have a menu");
  if (!menu) return;
  check(menu->numbers.size() <= cxol::MenuLength, "no more numbers than the menu holds");
  cxol::globals().g_frmMenus->ShowMenuRibbon(menu->popup);
  check(!host.machine.screen.anchor(), "the anchor is gone");
  const auto& told = host.machine.client.told();
  check(told.size() <= 1, "one choice is one call at most");
  if (told.empty()) return;
  const std::u16string_view dialled = told[0].text;
  if (kind == ObjectClass::Contact) {
    check(dialled == cxol::globals().g_frmMenus->callno[0].caption, "a contact's first entry");
  } else {
    check(cxol::trimBlanks(choice.caption).ends_with(dialled), "the end of what was chosen");
    check(dialled == cxol::trimBlanks(dialled), "no blanks around a number");
  }
  check(!menu->numbers.empty(), "nothing is dialled that is no number of the item");
}

void references(const std::uint8_t* data, std::size_t size) {
  Input input(data, size);
  OneItemHost host;
  auto& item = *host.item;
  item.set(u"Class", static_cast<std::int32_t>(ObjectClass::Mail));
  const auto none = std::make_shared<Record>(u"Links");
  none->set(u"Count",
            input.byte() % 2 == 0 ? automation::Value(0) : automation::Value(input.text()));
  item.set(u"Links", none->handle());
  item.set(u"Attachments", none->handle());
  host.facts.receivedBy = input.text();
  host.facts.senderAddresses = {input.text(), input.text()};
  std::size_t addresses = 0;
  for (const auto& address : host.facts.senderAddresses) addresses += !address.empty();
  for (std::size_t list = 0; !input.atEnd(); list = (list + 1) % 4) {
    host.facts.recipients[list].push_back(input.text());
    addresses += !host.facts.recipients[list].back().empty();
  }
  cxol::Texts found;
  cxol::EvaluateCurrentItem(found);
  check(static_cast<std::size_t>(found.count()) == addresses, "each address is one reference");
  for (const auto& reference : found) {
    check(reference.starts_with(u"books=search\nfield0=email\nmatch0="), "a search by address");
  }
}

}  // namespace fuzz
