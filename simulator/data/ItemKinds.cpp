#include "simulator/data/ItemKinds.h"

#include <algorithm>

namespace simulator {
namespace {

using enum FieldType;
using outlook::ItemType;
using outlook::ObjectClass;

constexpr ItemField ContactFields[] = {
    {"firstName", u"FirstName"},
    {"middleName", u"MiddleName"},
    {"lastName", u"LastName"},
    {"fullName", u"FullName"},
    {"lastNameAndFirstName", u"LastNameAndFirstName"},
    {"company", u"CompanyName"},
    {"department", u"Department"},
    {"jobTitle", u"JobTitle"},
    {"body", u"Body"},
};
constexpr ItemField MailFields[] = {
    {"subject", u"Subject"}, {"body", u"Body"}, {"html", u"HTMLBody"}};
constexpr ItemField PostFields[] = {{"subject", u"Subject"}, {"body", u"Body"}};
constexpr ItemField AppointmentFields[] = {{"subject", u"Subject"},
                                           {"start", u"Start", Date, true},
                                           {"end", u"End", Date},
                                           {"location", u"Location"},
                                           {"body", u"Body"}};
constexpr ItemField TaskFields[] = {{"subject", u"Subject"},
                                    {"start", u"StartDate", Date},
                                    {"due", u"DueDate", Date},
                                    {"body", u"Body"}};
constexpr ItemField JournalFields[] = {
    {"subject", u"Subject"}, {"type", u"Type"}, {"start", u"Start", Date}, {"body", u"Body"}};
constexpr ItemField NoteFields[] = {{"body", u"Body", Text, true}};
constexpr ItemField ListFields[] = {{"name", u"DLName", Text, true}};

// The last key stands for the helper's fourth list, which is none of the customary three.
constexpr std::string_view Recipients[] = {"to", "cc", "bcc", "others"};
constexpr std::string_view Attendees[] = {"required", "optional", "resources", "others"};

constexpr std::string_view ContactKeys[] = {"phones", "email"};
constexpr std::string_view MailKeys[] = {"received", "sent", "wordMail"};
constexpr std::string_view MeetingKeys[] = {"received", "sent", "appointment"};

constexpr std::span<const std::string_view> NoKeys;

constexpr ItemSender Sender{"sender", u"SenderName"};
constexpr ItemSender Organizer{"organizer", u"Organizer"};

constexpr ItemRibbon NoRibbon;
constexpr ItemRibbon MailRibbon{u"Microsoft.Outlook.Mail.Read", u"Microsoft.Outlook.Mail.Compose"};
constexpr ItemRibbon PostRibbon{u"Microsoft.Outlook.Post.Read", u"Microsoft.Outlook.Post.Compose"};
constexpr ItemRibbon RequestRibbon{u"Microsoft.Outlook.MeetingRequest.Read"};
constexpr ItemRibbon ResponseRibbon{u"Microsoft.Outlook.Response.Read"};

constexpr ItemKind meeting(std::string_view word, ObjectClass objectClass,
                           std::u16string_view messageClass, const ItemRibbon& ribbon) {
  return {word,   objectClass, std::nullopt, u"MeetingItem", messageClass,
          ribbon, PostFields,  MeetingKeys,  Sender,         Recipients};
}

constexpr ItemKind Kinds[] = {
    {"mail", ObjectClass::Mail, ItemType::Mail, u"MailItem", u"IPM.Note", MailRibbon, MailFields,
     MailKeys, Sender, Recipients},
    {"post", ObjectClass::Post, ItemType::Post, u"PostItem", u"IPM.Post", PostRibbon, PostFields,
     NoKeys, Sender},
    {"contact", ObjectClass::Contact, ItemType::Contact, u"ContactItem", u"IPM.Contact",
     ItemRibbon{u"Microsoft.Outlook.Contact"}, ContactFields, ContactKeys},
    {"distribution list", ObjectClass::DistributionList, std::nullopt, u"DistListItem",
     u"IPM.DistList", ItemRibbon{u"Microsoft.Outlook.DistributionList"}, ListFields},
    {"appointment", ObjectClass::Appointment, ItemType::Appointment, u"AppointmentItem",
     u"IPM.Appointment", ItemRibbon{u"Microsoft.Outlook.Appointment"}, AppointmentFields, NoKeys,
     Organizer, Attendees},
    {"task", ObjectClass::Task, ItemType::Task, u"TaskItem", u"IPM.Task",
     ItemRibbon{u"Microsoft.Outlook.Task"}, TaskFields},
    {"journal", ObjectClass::Journal, ItemType::Journal, u"JournalItem", u"IPM.Activity",
     ItemRibbon{u"Microsoft.Outlook.Journal"}, JournalFields},
    {"note", ObjectClass::Note, ItemType::Note, u"NoteItem", u"IPM.StickyNote", NoRibbon,
     NoteFields},
    meeting("meeting request", ObjectClass::MeetingRequest, u"IPM.Schedule.Meeting.Request",
            RequestRibbon),
    meeting("meeting cancellation", ObjectClass::MeetingCancellation,
            u"IPM.Schedule.Meeting.Canceled", RequestRibbon),
    meeting("meeting response accepted", ObjectClass::MeetingResponsePositive,
            u"IPM.Schedule.Meeting.Resp.Pos", ResponseRibbon),
    meeting("meeting response declined", ObjectClass::MeetingResponseNegative,
            u"IPM.Schedule.Meeting.Resp.Neg", ResponseRibbon),
    meeting("meeting response tentative", ObjectClass::MeetingResponseTentative,
            u"IPM.Schedule.Meeting.Resp.Tent", ResponseRibbon),
};

template <class Key, class Member>
const ItemKind* kindWith(Key key, Member member) {
  const auto found = std::ranges::find(Kinds, key, member);
  return found == std::end(Kinds) ? nullptr : &*found;
}

}  // namespace

std::span<const ItemKind> itemKinds() {
  return Kinds;
}

std::vector<const ItemKind*> folderKinds() {
  std::vector<const ItemKind*> kinds;
  for (int type = 0; const ItemKind* kind = kindOf(static_cast<ItemType>(type)); ++type)
    kinds.push_back(kind);
  return kinds;
}

const ItemKind* kindOf(ObjectClass objectClass) {
  return kindWith(objectClass, &ItemKind::objectClass);
}

const ItemKind* kindOf(ItemType type) {
  return kindWith(std::optional(type), &ItemKind::itemType);
}

}  // namespace simulator
