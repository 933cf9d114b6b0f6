#include "ribbon/clsRibbon.h"

#include <algorithm>
#include <array>
#include <iterator>
#include <utility>

#include "client/clsVelnorCmds.h"
#include "infra/modK9TLog.h"
#include "infra/modRes.h"
#include "infra/text.h"
#include "platform/conversions.h"
#include "state/barNames.h"
#include "state/globals.h"

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

constexpr std::u16string_view TaskTab = u"TabTask";
constexpr std::u16string_view ContactTab = u"TabContact";
constexpr std::u16string_view AppointmentTab = u"TabAppointment";
constexpr std::u16string_view NewMailTab = u"TabNewMailMessage";
constexpr std::u16string_view ReadTab = u"TabReadMessage";
/// Cancelled meetings and tentative answers get no group; mails are told apart by their state.
constexpr Tab Tabs[] = {
    {ObjectClass::Task, TaskTab},
    {ObjectClass::Contact, ContactTab},
    {ObjectClass::Appointment, AppointmentTab},
    {ObjectClass::MeetingResponsePositive, ReadTab},
    {ObjectClass::MeetingResponseNegative, ReadTab},
    {ObjectClass::MeetingRequest, ReadTab},
    {ObjectClass::Post, ReadTab},
};

/// A kind of window that Office asks for by its ribbon id, with the tab of its own that the group
/// is in, if any, and the items that it shows; none stands for any.
struct WindowKind {
  std::u16string_view ribbonId;
  std::u16string_view tab;
  std::array<ObjectClass, 3> items;
};

constexpr WindowKind WindowKinds[] = {
    {u"Microsoft.Outlook.Task", TaskTab, {ObjectClass::Task}},
    {u"Microsoft.Outlook.Contact", ContactTab, {ObjectClass::Contact}},
    {u"Microsoft.Outlook.Appointment", AppointmentTab, {ObjectClass::Appointment}},
    {u"Microsoft.Outlook.Journal", {}, {ObjectClass::Journal}},
    {u"Microsoft.Outlook.DistributionList", {}, {ObjectClass::DistributionList}},
    {u"Microsoft.Outlook.Mail.Compose", NewMailTab, {ObjectClass::Mail}},
    {u"Microsoft.Outlook.MeetingRequest.Send", NewMailTab, {}},
    {u"Microsoft.Outlook.Post.Compose", NewMailTab, {ObjectClass::Post}},
    {u"Microsoft.Outlook.Resend", NewMailTab, {}},
    {u"Microsoft.Outlook.Response.Compose", NewMailTab, {}},
    {u"Microsoft.Outlook.Response.CounterPropose", NewMailTab, {}},
    {u"Microsoft.Outlook.Sharing.Compose", NewMailTab, {}},
    {u"Microsoft.Outlook.Mail.Read", ReadTab, {ObjectClass::Mail}},
    {u"Microsoft.Outlook.MeetingRequest.Read",
     ReadTab,
     {ObjectClass::MeetingRequest, ObjectClass::MeetingCancellation}},
    {u"Microsoft.Outlook.Post.Read", ReadTab, {ObjectClass::Post}},
    {u"Microsoft.Outlook.Report", ReadTab, {}},
    {u"Microsoft.Outlook.Response.Read",
     ReadTab,
     {ObjectClass::MeetingResponseNegative, ObjectClass::MeetingResponsePositive,
      ObjectClass::MeetingResponseTentative}},
    {u"Microsoft.Outlook.RSS", ReadTab, {}},
    {u"Microsoft.Outlook.Sharing.Read", ReadTab, {}},
};

/// An item of the kind that gets no group fits as well: it is why there shall be none.
bool fits(const WindowKind& kind, ObjectClass item, std::u16string_view tab) {
  const bool anyItem = kind.items.front() == ObjectClass();
  if (!anyItem && std::ranges::find(kind.items, item) == kind.items.end()) return false;
  return tab == kind.tab || (tab.empty() && !anyItem);
}

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

std::u16string clsRibbon::GetRibbonDescription(std::u16string_view ribbonId) noexcept {
  std::u16string description;
  trapAndLog(u"clsRibbon.GetRibbonDescription - ", [&] {
    served_ = contentOf(GetCurrentInspector());
    if (!served_.inspector) return;
    // Outlook may ask while the new window is not the active one yet.
    const auto* const kind = std::ranges::find(WindowKinds, ribbonId, &WindowKind::ribbonId);
    const auto suits = [&](const Content& content) {
      return fits(*kind, content.kind, content.tab);
    };
    if (kind != std::end(WindowKinds) && !suits(served_)) {
      const auto inspectors = globals().g_olApp.inspectors();
      for (std::int32_t i = inspectors.count(); i >= 1; --i) {
        auto content = contentOf(inspectors.item(i));
        if (!suits(content)) continue;
        served_ = std::move(content);
        break;
      }
    }
    if (!served_.tab.empty()) description = markup(served_.tab);
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

clsRibbon::Content clsRibbon::contentOf(const outlook::Inspector& inspector) {
  if (!inspector) return {};
  const auto item = inspector.currentItem();
  Content content{inspector, item.objectClass(), {}};
  if (content.kind == ObjectClass::Mail) {
    content.tab = IsNewMailItem(outlook::MailItem(item.object())) ? NewMailTab : ReadTab;
  } else {
    const auto* const tab = std::ranges::find(Tabs, content.kind, &Tab::kind);
    if (tab != std::end(Tabs)) content.tab = tab->id;
  }
  return content;
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
  trap(
      [&] {
        const auto& application = globals().g_olApp;
        inspector = application.activeInspector();
        if (inspector) return;
        const auto inspectors = application.inspectors();
        if (const auto count = inspectors.count(); count > 0) inspector = inspectors.item(count);
      },
      [](const automation::Error& error) {
        std::int32_t count = 0;
        trapQuietly([&] { count = globals().g_olApp.inspectors().count(); });
        LogError(concat(u"clsRibbon.GetCurrentInspector - Inspector.Count: ",
                        automation::int32Text(count), u" ", error.description()));
      });
  return inspector;
}

bool clsRibbon::IsNewMailItem(const outlook::MailItem& mail) noexcept {
  bool isNew = false;
  trapAndLog(u"clsRibbon.IsNewMailItem - ",
             [&] { isNew = !mail.sent() && !mail.messageClass().ends_with(FaxClassEnding); });
  return isNew;
}

void clsRibbon::RemoveNotNecessaryCommandBar() noexcept {
  trapQuietly([&] {
    // In the trace each name stands behind its variable's, the fixed one for itself.
    static constexpr std::u16string_view variables[] = {
        u"g_product: ", u"g_brand1: ", u"g_brand2: ", u"g_brand3: ", u"g_brand4: ", u""};
    const auto names = BarNames();
    static_assert(std::size(variables) == std::tuple_size_v<decltype(names)>);
    ResumeNext resume;
    office::CommandBars commandBars;
    auto inspector = std::exchange(served_, {}).inspector;
    if (!inspector) inspector = GetCurrentInspector();
    resume([&] { commandBars = inspector.commandBars(); });
    for (std::size_t i = 0; i < names.size(); ++i) {
      const auto& name = names[i];
      LogDebug(concat(u"Ribbon - ", u" look for CommandBar to delete ", variables[i], name));
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
