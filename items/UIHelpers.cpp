#include "items/UIHelpers.h"

#include <algorithm>

#include "infra/errors.h"
#include "infra/modRes.h"
#include "infra/text.h"
#include "items/EvalObjects.h"
#include "state/globals.h"

namespace cxol {
namespace {

using outlook::ObjectClass;

struct PhoneProperty {
  std::u16string_view property;
  std::int32_t labelId;
};

/// Business first, then the company's switchboard, then private and mobile. Fax numbers are not
/// dialled from here.
constexpr PhoneProperty PhoneProperties[] = {
    {u"BusinessTelephoneNumber", 205},
    {u"CompanyMainTelephoneNumber", 216},
    {u"HomeTelephoneNumber", 206},
    {u"MobileTelephoneNumber", 207},
    {u"Business2TelephoneNumber", 209},
    {u"Home2TelephoneNumber", 210},
    {u"OtherTelephoneNumber", 211},
    {u"AssistantTelephoneNumber", 214},
    {u"PrimaryTelephoneNumber", 219},
    {u"ISDNNumber", 217},
    {u"RadioTelephoneNumber", 212},
    {u"CarTelephoneNumber", 213},
    {u"PagerNumber", 208},
    {u"CallbackTelephoneNumber", 215},
};

constexpr std::int32_t AppointmentLabel = 201;
constexpr std::int32_t TaskLabel = 202;
constexpr std::int32_t JournalLabel = 203;
constexpr std::int32_t MeetingLabel = 204;
constexpr std::int32_t CallerLabel = 218;
constexpr std::int32_t NoNumbers = 521;
constexpr std::int32_t NewCallTask = 522;
constexpr std::int32_t SubjectMark = 105;

bool isMeeting(ObjectClass kind) {
  return kind == ObjectClass::MeetingRequest || kind == ObjectClass::MeetingResponseNegative ||
         kind == ObjectClass::MeetingResponsePositive ||
         kind == ObjectClass::MeetingResponseTentative;
}

/// The label of the number in an item's subject; nothing for kinds that have no menu.
std::optional<std::u16string> subjectLabel(ObjectClass kind) {
  switch (kind) {
    case ObjectClass::Mail:
    case ObjectClass::Post: {
      const auto label = GetResString(CallerLabel);
      return label.substr(0, label.rfind(u": "));
    }
    case ObjectClass::Appointment: return GetResString(AppointmentLabel);
    case ObjectClass::Task: return GetResString(TaskLabel);
    case ObjectClass::Journal: return GetResString(JournalLabel);
    default: break;
  }
  if (isMeeting(kind)) return GetResString(MeetingLabel);
  return std::nullopt;
}

/// The numbers, or the one disabled entry that says that there are none.
std::vector<std::u16string> fillMenu(MenuArray& menu, const Texts& labels, const Texts& numbers) {
  auto shown = FillNumbers(menu, labels, numbers);
  if (shown.empty()) menu.front() = {GetResString(NoNumbers), true, false};
  return shown;
}

std::u16string mailCaption(const outlook::MailItem& mail) {
  if (globals().g_bMapiInitialized) {
    return MAPI_ReceivedBy(mail).empty() ? MAPI_GetDisplayTo(mail) : MAPI_GetName(mail);
  }
  return mail.receivedByName().empty() ? mail.to() : mail.senderName();
}

std::u16string captionOf(const outlook::Item& item) {
  const auto kind = item.objectClass();
  switch (kind) {
    case ObjectClass::Contact:
      return EscapeCaption(GetContactName(outlook::ContactItem(item.object())));
    case ObjectClass::Mail: return mailCaption(outlook::MailItem(item.object()));
    case ObjectClass::Post:
    case ObjectClass::Appointment: return item.subject();
    case ObjectClass::Task: return GetResString(TaskLabel);
    case ObjectClass::Journal: return GetResString(JournalLabel);
    case ObjectClass::Note: return u"?";
    default: return isMeeting(kind) ? GetResString(MeetingLabel) : std::u16string();
  }
}

/// Without an item, a calendar still offers its next appointment.
std::u16string captionWithoutItem() {
  const auto& application = globals().g_olApp;
  if (application.activeWindow().typeName() != u"Explorer") return {};
  const auto folder = application.activeExplorer().currentFolder();
  const bool calendar = folder.defaultItemType() == outlook::ItemType::Appointment;
  return calendar ? GetResString(AppointmentLabel) : std::u16string();
}

std::optional<NumberMenu> fillContactMenu(const outlook::Item& contact) {
  Texts labels;
  Texts numbers;
  GetContactPhoneNumbers(outlook::ContactItem(contact.object()), labels, numbers);
  return NumberMenu{MenuForm::Popup::MenuPhone,
                    fillMenu(LoadedMenuForm()->callno, labels, numbers)};
}

/// Appends the number in the item's subject, if any.
void appendSubjectNumber(const outlook::Item& item, std::u16string_view label, Texts& labels,
                         Texts& numbers) noexcept {
  trapQuietly([&] {
    auto number = GetNumberFromSubject(item.subject());
    if (number.empty()) return;
    labels.add(std::u16string(label));
    numbers.add(std::move(number));
  });
}

std::optional<NumberMenu> fillNonContactMenu(const outlook::Item& item, ObjectClass kind) {
  const auto label = subjectLabel(kind);
  if (!label) return std::nullopt;
  Texts names;
  Texts numbers;
  appendSubjectNumber(item, *label, names, numbers);
  if (globals().g_bMapiInitialized) GetSenderNumbers(item, names, numbers);
  Texts labels;
  for (const auto& name : names) labels.add(EscapeCaption(name));

  const auto form = LoadedMenuForm();
  NumberMenu menu{MenuForm::Popup::MenuPopupNonContact,
                  fillMenu(form->MenuNumbers, labels, numbers)};
  fillMenu(form->MenuTaskNumbers, labels, numbers);
  form->MenuTaskPhoneNumbers = {GetResString(NewCallTask), !menu.numbers.empty(), true};
  return menu;
}

}  // namespace

outlook::Item GetCurrentItem() noexcept {
  outlook::Item item;
  trapQuietly([&] {
    const auto front = GetFrontWindow();
    item = front.item;
    if (!front.explorer) return;
    const auto selection = front.explorer.selection();
    if (selection.count() >= 1) item = selection.item(1);
  });
  return item;
}

outlook::ContactItem GetCurrentContact() noexcept {
  outlook::ContactItem contact;
  trapQuietly([&] {
    const auto item = GetCurrentItem();
    if (item && item.objectClass() == ObjectClass::Contact) {
      contact = outlook::ContactItem(item.object());
    }
  });
  return contact;
}

void GetContactPhoneNumbers(const outlook::ContactItem& contact, Texts& labels,
                            Texts& numbers) noexcept {
  ResumeNext resume;
  for (const auto& phone : PhoneProperties) {
    resume([&] { labels.add(GetResString(phone.labelId)); });
    resume([&] { numbers.add(contact.text(phone.property)); });
  }
}

std::vector<std::u16string> FillNumbers(std::span<MenuItem> menu, const Texts& labels,
                                        const Texts& numbers) {
  std::ranges::fill(menu, MenuItem());
  std::vector<std::u16string> shown;
  // A number that could not be read leaves the numbers shorter than their labels.
  const auto count = std::min(labels.count(), numbers.count());
  for (std::int32_t i = 1; i <= count && shown.size() < menu.size(); ++i) {
    if (numbers.item(i).empty()) continue;
    menu[shown.size()] = {concat(labels.item(i), u": ", numbers.item(i)), true, true};
    shown.push_back(numbers.item(i));
  }
  return shown;
}

std::optional<NumberMenu> FillNumberMenu() noexcept {
  std::optional<NumberMenu> menu;
  trapQuietly([&] {
    const auto item = GetCurrentItem();
    if (!item) return;
    const auto kind = item.objectClass();
    menu = kind == ObjectClass::Contact ? fillContactMenu(item) : fillNonContactMenu(item, kind);
  });
  return menu;
}

std::u16string EscapeCaption(std::u16string_view text) {
  return replaceAll(text, u" & ", u" && ");
}

std::u16string GetNumberFromSubject(std::u16string_view text) {
  const auto mark = GetResString(SubjectMark);
  const auto found = text.find(mark);
  if (found == std::u16string_view::npos) return {};
  text.remove_prefix(std::min(found + mark.size() + 1, text.size()));
  return std::u16string(text.substr(0, text.find(u'[')));
}

std::u16string GetContactName(const outlook::ContactItem& contact) {
  auto name = contact.lastNameAndFirstName();
  if (name.empty()) name = contact.companyName();
  if (name.empty()) name = contact.fullName();
  return name;
}

std::u16string GetItemCaption() noexcept {
  std::u16string caption;
  trapQuietly([&] {
    const auto item = GetCurrentItem();
    caption = item ? captionOf(item) : captionWithoutItem();
  });
  return caption;
}

}  // namespace cxol
