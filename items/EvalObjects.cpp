#include "items/EvalObjects.h"

#include <algorithm>

#include "infra/modK9TLog.h"
#include "infra/runtime.h"
#include "platform/clock.h"
#include "platform/language.h"
#include "platform/mapi_session.h"
#include "platform/objects.h"
#include "state/globals.h"

namespace cxol {
namespace {

using outlook::ObjectClass;

/// References for which room is made before they are there: a host may count wrong.
constexpr std::int32_t MostRoom = 65'536;

/// Runs `visit` on every element. A collection counts once and gives each element once, so that a
/// large selection costs linear time.
template <class Element, class Visit>
void forEach(const outlook::CollectionOf<Element>& collection, Visit&& visit) {
  const std::int32_t count = collection.count();
  for (std::int32_t i = 1; i <= count; ++i) visit(collection.item(i));
}

/// A failing helper costs the recipients only.
void addRecipients(const outlook::Item& item, Texts& references) noexcept {
  trapQuietly(
      [&] { AddRecipientSearches(machine().mapiHelper.recipients(item.object()), references); });
}

void evaluateMail(const outlook::MailItem& mail, Texts& references) {
  if (!globals().g_bMapiInitialized) return;
  if (MAPI_ReceivedBy(mail).empty()) {
    addRecipients(mail, references);
    AddSenderSearch(mail, references);
  } else {
    AddSenderSearch(mail, references);
    addRecipients(mail, references);
  }
  AddLinkedContacts(mail.links(), references);
  // The place where attached contacts would be taken; none is.
  forEach(mail.attachments(), [](const automation::View&) {});
}

void evaluateAppointment(const outlook::Item& appointment, Texts& references) {
  if (!globals().g_bMapiInitialized) return;
  addRecipients(appointment, references);
  AddLinkedContacts(appointment.links(), references);
}

void evaluateMeeting(const outlook::MeetingItem& meeting, Texts& references) {
  const auto appointment = meeting.associatedAppointment();
  // A request that was never entered into the calendar, or was deleted there, has none.
  if (appointment && globals().g_bMapiInitialized) addRecipients(appointment, references);
}

/// Sender's address through the messaging session, for hosts without the helper.
std::u16string addSenderOfSession(const outlook::MailItem& mail, Texts& references) {
  /// The literal that the session's security refusal is compared with: a decimal number, not the
  /// access-denied result that it looks like.
  constexpr std::int32_t SecurityRefusal = 80070005;

  mapi::Session session(machine().objects.create(mapi::SessionClass));
  session.logon();
  auto message = session.getMessage(mail.entryId(), mail.parent().storeId());
  std::u16string address;
  ResumeNext resume;
  resume([&] { address = message.senderAddress(); });
  if (resume.number() == SecurityRefusal) {
    LogError(u"Security activated");
    return {};
  }
  message = mapi::Message();
  session.logoff();
  AddEmailSearch(address, references);
  return address;
}

/// The next appointment of a calendar from today on, or its first one.
outlook::Item nextAppointment(const outlook::MAPIFolder& calendar) {
  const auto items = calendar.items();
  items.sort(u"[Start]", false);
  items.setIncludeRecurrences(false);
  const auto today = machine().language.shortDate(machine().clock.localTime());
  const auto found = items.find(concat(u"([Start] >= '", today, u"')"));
  return found ? found : items.getFirst();
}

outlook::Item appointmentOfExplorer(const outlook::Explorer& explorer) {
  const auto folder = explorer.currentFolder();
  if (folder.defaultItemType() != outlook::ItemType::Appointment) return {};
  const auto selection = explorer.selection();
  return selection.count() >= 1 ? selection.item(1) : nextAppointment(folder);
}

}  // namespace

FrontWindow GetFrontWindow() {
  const auto& application = globals().g_olApp;
  const auto windowType = application.activeWindow().typeName();
  FrontWindow front;
  if (windowType == u"Inspector") {
    front.item = application.activeInspector().currentItem();
  } else if (windowType == u"Explorer") {
    const auto explorer = application.activeExplorer();
    if (explorer && !IsOutboxShown(explorer)) front.explorer = explorer;
  }
  return front;
}

void EvaluateCurrentItem(Texts& references) noexcept {
  trapQuietly([&] {
    const auto front = GetFrontWindow();
    if (!front.explorer) return EvaluateItem(front.item, references);
    const auto selection = front.explorer.selection();
    const std::int32_t count = selection.count();
    references.makeRoom(static_cast<std::size_t>(std::clamp(count, 0, MostRoom)));
    for (std::int32_t i = 1; i <= count; ++i) EvaluateItem(selection.item(i), references);
    if (count == 0) EvaluateItem(GetCurrentAppointment(front), references);
  });
}

void EvaluateItem(const outlook::Item& item, Texts& references) noexcept {
  if (!item) return;
  trapQuietly([&] {
    switch (item.objectClass()) {
      case ObjectClass::Mail: return evaluateMail(outlook::MailItem(item.object()), references);
      case ObjectClass::Appointment: return evaluateAppointment(item, references);
      // A cancelled meeting names nobody that one would call about it: it is left out.
      case ObjectClass::MeetingRequest:
      case ObjectClass::MeetingResponseNegative:
      case ObjectClass::MeetingResponsePositive:
      case ObjectClass::MeetingResponseTentative:
        return evaluateMeeting(outlook::MeetingItem(item.object()), references);
      case ObjectClass::Contact:
        AddContactRecord(item, references);
        return AddLinkedContacts(item.links(), references);
      case ObjectClass::Post:
      case ObjectClass::Task:
      case ObjectClass::Journal: return AddLinkedContacts(item.links(), references);
      default: return;
    }
  });
}

bool IsOutboxShown(const outlook::Explorer& explorer) noexcept {
  bool shown = false;
  trapQuietly([&] {
    const auto folder = explorer.currentFolder();
    if (!folder) return;
    auto& outbox = globals().g_sOutboxEntryID;
    if (outbox.empty()) {
      outbox = globals()
                   .g_olApp.getNamespace()
                   .getDefaultFolder(outlook::DefaultFolder::Outbox)
                   .entryId();
    }
    shown = folder.entryId() == outbox;
  });
  return shown;
}

outlook::Item GetCurrentAppointment(const FrontWindow& front) noexcept {
  outlook::Item appointment;
  trapQuietly([&] {
    const auto candidate = front.explorer ? appointmentOfExplorer(front.explorer) : front.item;
    if (candidate && candidate.objectClass() == ObjectClass::Appointment) appointment = candidate;
  });
  return appointment;
}

void AddEmailSearch(std::u16string_view address, Texts& references) {
  if (address.empty()) return;
  references.add(concat(u"books=search\nfield0=email\nmatch0=", address));
}

void AddContactRecord(const outlook::Item& contact, Texts& references) noexcept {
  trapQuietly([&] {
    const auto storeId = contact.parent().storeId();
    const auto folderId = contact.parent().entryId();
    references.add(
        concat(u"books=outlook:", storeId, u",", folderId, u"\nrecordid=", contact.entryId()));
  });
}

void AddLinkedContacts(const outlook::Links& links, Texts& references) noexcept {
  trapQuietly([&] {
    forEach(links, [&](const outlook::Link& link) {
      const auto linked = link.item();
      if (linked.objectClass() == ObjectClass::Contact) AddContactRecord(linked, references);
    });
  });
}

void AddRecipientSearches(std::span<const platform::MapiHelper::TextList, 4> lists,
                          Texts& references) {
  for (const auto& list : lists) {
    references.makeRoom(list.size());
    for (const auto& address : list) AddEmailSearch(address, references);
  }
}

std::u16string AddSenderSearch(const outlook::MailItem& mail, Texts& references) noexcept {
  std::u16string address;
  trapQuietly([&] {
    if (!globals().g_bMapiInitialized) {
      address = addSenderOfSession(mail, references);
      return;
    }
    auto sender = MAPI_GetSender(mail);
    AddEmailSearch(sender.first, references);
    AddEmailSearch(sender.second, references);
    address = std::move(sender.first);
  });
  return address;
}

}  // namespace cxol
