#include "ribbon/clsRibbon.h"

#include "addin/globals.h"
#include "client/clsVelnorCmds.h"
#include "infra/modK9TLog.h"
#include "infra/modRes.h"
#include "infra/text.h"
#include "platform/conversions.h"

namespace cxol {
namespace {

using outlook::ObjectClass;

struct Button {
  std::u16string_view id;
  std::int32_t labelId;
  std::int32_t pictureId;
};

constexpr std::u16string_view DialId = u"IDS_WaehlenCombo";
constexpr std::u16string_view DropId = u"IDS_Auflegen";
constexpr std::u16string_view ActionId = u"IDS_Aktionen";
constexpr Button Buttons[] = {{DialId, 501, 101}, {DropId, 505, 102}, {ActionId, 519, 103}};

struct Tab {
  ObjectClass kind;
  std::u16string_view id;
};

constexpr std::u16string_view NewMailTab = u"TabNewMailMessage";
constexpr std::u16string_view ReadTab = u"TabReadMessage";
/// Cancelled meetings and tentative answers get no group; mails are told apart by their state.
constexpr Tab Tabs[] = {
    {ObjectClass::Task, u"TabTask"},
    {ObjectClass::Contact, u"TabContact"},
    {ObjectClass::Appointment, u"TabAppointment"},
    {ObjectClass::MeetingResponsePositive, ReadTab},
    {ObjectClass::MeetingResponseNegative, ReadTab},
    {ObjectClass::MeetingRequest, ReadTab},
    {ObjectClass::Post, ReadTab},
};

constexpr std::u16string_view Start =
    u"<customUI xmlns=\"http://schemas.microsoft.com/office/2006/01/customui\""
    u" loadImage=\"LoadImage\" onLoad=\"OnLoad\">";
constexpr std::u16string_view OpenOwnTab = u"<ribbon><tabs><tab id=\"K9TVelnor\" label=\"";
constexpr std::u16string_view OpenTab = u"<ribbon><tabs><tab idMso=\"";
constexpr std::u16string_view OpenGroup = u"<group id=\"k9tBrandReadMessage\" label=\"";
constexpr std::u16string_view OpenOwnGroup = u"<group id=\"k9tBrand\" label=\"";
/// The table tools have no place in the windows that the group is in.
constexpr std::u16string_view CloseTab =
    u"</group></tab></tabs><contextualTabs><tabSet idMso=\"TabSetTableTools\""
    u" visible=\"false\"></tabSet></contextualTabs></ribbon></customUI>";

std::u16string labelOf(std::int32_t id) {
  return replaceAll(GetResString(id), u"&", u"");
}

std::u16string buttonsMarkup() {
  std::u16string text;
  for (const auto& button : Buttons) {
    const bool last = &button == std::end(Buttons) - 1;
    text +=
        concat(u"<button id=\"", button.id, u"\" label=\"", labelOf(button.labelId),
               u"\" onAction=\"cmdCommonRibbonBttn\" getImage=\"GetImage\"", last ? u"/>" : u" />");
  }
  return text;
}

/// A sent fax of the maker is stored as an unsent mail of this class.
constexpr std::u16string_view FaxClassEnding = u"K9T.FAX";

}  // namespace

std::u16string clsRibbon::GetRibbonDescription() noexcept {
  std::u16string description;
  trapAndLog(u"clsRibbon.GetRibbonDescription - ", [&] {
    const auto inspector = GetCurrentInspector();
    if (!inspector) return;
    const auto tab = tabOf(inspector.currentItem().objectClass());
    if (!tab.empty()) description = markup(tab);
  });
  return description;
}

std::u16string clsRibbon::markup(std::u16string_view tab) const {
  const auto& product = globals().g_product;
  const auto buttons = buttonsMarkup();
  switch (layout_) {
    case Layout::OwnTab:
      return concat(Start, OpenOwnTab, product, u"\">", OpenOwnGroup, product, u"\">", buttons,
                    CloseTab);
    case Layout::BuiltInTab:
      return concat(Start, OpenTab, tab, u"\" >", OpenGroup, product, u"\">", buttons, CloseTab);
    case Layout::QuickAccess:
      return concat(Start, u"<ribbon startFromScratch=\"true\">", u"<idMso=\"qat\">", buttons,
                    u"</ribbon></customUI>");
  }
  return std::u16string(Start);
}

std::u16string_view clsRibbon::tabOf(ObjectClass kind) {
  if (kind == ObjectClass::Mail) return IsNewMailItem() ? NewMailTab : ReadTab;
  for (const auto& tab : Tabs) {
    if (tab.kind == kind) return tab.id;
  }
  return {};
}

automation::Object clsRibbon::GetImageByControlId(std::u16string_view id) noexcept {
  automation::Object picture;
  trap(
      [&] {
        for (const auto& button : Buttons) {
          if (button.id == id) picture = GetResPicture(button.pictureId);
        }
      },
      [&](const automation::Error& error) {
        LogError(concat(u"clsRibbon.GetImageByControlID id: ", id, u" ", error.description()));
      });
  return picture;
}

void clsRibbon::ButtonHandler(const office::RibbonControl& control) noexcept {
  std::u16string id;
  trap(
      [&] {
        if (!control) return;
        id = control.id();
        LogDebug(concat(u"Ribbon - ", u"ButtonHandler called with control.id = ", id));
        clsVelnorCmds commands;
        if (id == DialId) {
          commands.Dial({}, {}, control);
        } else if (id == DropId) {
          commands.Drop({}, {});
        } else if (id == ActionId) {
          commands.Action({}, {}, control);
        }
      },
      [&](const automation::Error& error) {
        LogError(concat(u"clsRibbon.ButtonHandler controlID: ", id, u" ", error.description()));
      });
}

outlook::Inspector clsRibbon::GetCurrentInspector() noexcept {
  outlook::Inspector inspector;
  std::int32_t count = 0;
  trap(
      [&] {
        const auto& application = globals().g_olApp;
        inspector = application.activeInspector();
        if (inspector) return;
        const auto inspectors = application.inspectors();
        count = inspectors.count();
        if (count > 0) inspector = inspectors.item(count);
      },
      [&](const automation::Error& error) {
        LogError(concat(u"clsRibbon.GetCurrentInspector - Inspector.Count: ",
                        automation::int32Text(count), u" ", error.description()));
      });
  return inspector;
}

bool clsRibbon::IsNewMailItem() noexcept {
  bool isNew = false;
  trapAndLog(u"clsRibbon.IsNewMailItem - ", [&] {
    const auto inspector = GetCurrentInspector();
    if (!inspector) return;
    const outlook::MailItem mail(inspector.currentItem().object());
    isNew = !mail.sent() && !mail.messageClass().ends_with(FaxClassEnding);
  });
  return isNew;
}

void clsRibbon::RemoveNotNecessaryCommandBar() noexcept {
  trapQuietly([&] {
    const auto& g = globals();
    const struct {
      std::u16string_view variable;
      std::u16string_view name;
    } bars[] = {{u"g_product: ", g.g_product}, {u"g_brand1: ", g.g_brand1},
                {u"g_brand2: ", g.g_brand2},   {u"g_brand3: ", g.g_brand3},
                {u"g_brand4: ", g.g_brand4},   {u"", NeutralName}};
    ResumeNext resume;
    office::CommandBars commandBars;
    resume([&] { commandBars = GetCurrentInspector().commandBars(); });
    for (const auto& each : bars) {
      const auto variable = each.variable;
      const auto name = each.name;
      LogDebug(concat(u"Ribbon - ", u" look for CommandBar to delete ", variable, name));
      office::CommandBar bar;
      resume([&] { bar = commandBars.item(name); });
      if (bar) {
        resume([&] { bar.remove(); });
        LogDebug(concat(u"Ribbon - ", u"CommandBar ", name, u" deleted"));
      } else {
        LogDebug(concat(u"Ribbon - ", u"No CommandBar found"));
      }
    }
  });
}

}  // namespace cxol
