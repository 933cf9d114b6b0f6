#include "simulator/data/ItemKinds.h"

namespace simulator {
namespace {

using enum FieldType;
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

constexpr ItemKind meeting(std::string_view word, ObjectClass objectClass,
                           std::u16string_view messageClass) {
  return {word,     objectClass,   messageClass, PostFields,
          "sender", u"SenderName", Recipients,   MeetingKeys};
}

constexpr ItemKind Kinds[] = {
    {"mail", ObjectClass::Mail, u"IPM.Note", MailFields, "sender", u"SenderName", Recipients,
     MailKeys},
    {"post", ObjectClass::Post, u"IPM.Post", PostFields, "sender", u"SenderName", {}, {}},
    {"contact", ObjectClass::Contact, u"IPM.Contact", ContactFields, {}, {}, {}, ContactKeys},
    {"distribution list",
     ObjectClass::DistributionList,
     u"IPM.DistList",
     ListFields,
     {},
     {},
     {},
     {}},
    {"appointment",
     ObjectClass::Appointment,
     u"IPM.Appointment",
     AppointmentFields,
     "organizer",
     u"Organizer",
     Attendees,
     {}},
    {"task", ObjectClass::Task, u"IPM.Task", TaskFields, {}, {}, {}, {}},
    {"journal", ObjectClass::Journal, u"IPM.Activity", JournalFields, {}, {}, {}, {}},
    {"note", ObjectClass::Note, u"IPM.StickyNote", NoteFields, {}, {}, {}, {}},
    meeting("meeting request", ObjectClass::MeetingRequest, u"IPM.Schedule.Meeting.Request"),
    meeting("meeting cancellation", ObjectClass::MeetingCancellation,
            u"IPM.Schedule.Meeting.Canceled"),
    meeting("meeting response accepted", ObjectClass::MeetingResponsePositive,
            u"IPM.Schedule.Meeting.Resp.Pos"),
    meeting("meeting response declined", ObjectClass::MeetingResponseNegative,
            u"IPM.Schedule.Meeting.Resp.Neg"),
    meeting("meeting response tentative", ObjectClass::MeetingResponseTentative,
            u"IPM.Schedule.Meeting.Resp.Tent"),
};

}  // namespace

std::span<const ItemKind> itemKinds() {
  return Kinds;
}

}  // namespace simulator
