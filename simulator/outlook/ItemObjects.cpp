#include "simulator/outlook/ItemObjects.h"

#include <algorithm>
#include <limits>

#include "simulator/data/Contact.h"
#include "simulator/data/ItemKinds.h"
#include "simulator/outlook/HostCore.h"

namespace simulator {
namespace {

using automation::Error;
using automation::ErrorNumber;
using outlook::ObjectClass;

/// Text properties that read as empty when the mailbox does not give them.
constexpr std::u16string_view AllTexts[] = {u"Subject", u"Body", u"MessageClass", u"Categories"};
constexpr std::u16string_view MailTexts[] = {u"ReceivedByName", u"To", u"CC", u"BCC", u"HTMLBody"};

bool among(std::span<const std::u16string_view> names, std::u16string_view name) {
  return std::ranges::find(names, name) != names.end();
}

bool isMeeting(ObjectClass kind) {
  return kind >= ObjectClass::MeetingRequest && kind <= ObjectClass::MeetingResponseTentative;
}

/// What a property that the mailbox does not give reads as; null when the kind has no such
/// property.
const Value* initialValue(ObjectClass kind, std::u16string_view name) {
  static const Value empty(u"");
  static const Value yes(true);
  static const auto contact = emptyContact().properties;
  const bool message = kind == ObjectClass::Mail || isMeeting(kind);
  if (message && name == u"Sent") return &yes;
  const bool known =
      among(AllTexts, name) || (kind == ObjectClass::Contact && contact.contains(name)) ||
      (message && name == u"SenderName") || (kind == ObjectClass::Mail && among(MailTexts, name));
  return known ? &empty : nullptr;
}

/// Notes have neither attachments nor user properties.
void refuseNotes(const ItemObject& self) {
  if (self.item().kind == ObjectClass::Note) throw Error(ErrorNumber::MemberNotFound);
}

Value linksOf(ItemObject& self, Arguments) {
  auto& links = self.item().links;
  const auto core = self.core();
  return std::make_shared<ListObject>(
             core, u"Links", links.size(),
             [core, &links](std::size_t index) {
               RecordObject::Fields fields{
                   {u"Item", [core, id = links.at(index)] { return core.lock()->itemById(id); }}};
               return Value(std::make_shared<RecordObject>(core, u"Link", fields)->handle());
             })
      ->handle();
}

Value attachmentsOf(ItemObject& self, Arguments) {
  refuseNotes(self);
  auto& files = self.item().attachments;
  const auto core = self.core();
  return std::make_shared<ListObject>(
             core, u"Attachments", files.size(),
             [core, &files](std::size_t index) {
               RecordObject::Fields fields{
                   {u"FileName", [name = files.at(index)] { return Value(name); }}};
               return Value(std::make_shared<RecordObject>(core, u"Attachment", fields)->handle());
             })
      ->handle();
}

/// UserProperties: Item by name, which raises when there is none.
class UserPropertiesObject : public HostObject<UserPropertiesObject> {
 public:
  static constexpr std::u16string_view Name = u"UserProperties";
  static std::span<const MemberRow<UserPropertiesObject>> members() {
    static const MemberRow<UserPropertiesObject> rows[] = {
        {u"Count",
         [](UserPropertiesObject& self, Arguments) {
           return Value(static_cast<std::int32_t>(self.item_.userProperties.size()));
         }},
        {u"Item", [](UserPropertiesObject& self, Arguments args) { return self.at(args); }},
    };
    return rows;
  }
  UserPropertiesObject(std::weak_ptr<HostCore> core, MailboxItem& item)
      : HostObject(std::move(core)), item_(item) {}

 private:
  Value at(Arguments args) {
    const auto found = item_.userProperties.find(argument(args, 0).toText());
    if (found == item_.userProperties.end()) throw Error(ErrorNumber::InvalidProcedureCall);
    RecordObject::Fields fields{{u"Name", [name = found->first] { return Value(name); }},
                                {u"Value", [value = found->second] { return Value(value); }}};
    return std::make_shared<RecordObject>(core(), u"UserProperty", fields)->handle();
  }
  MailboxItem& item_;
};

Value userPropertiesOf(ItemObject& self, Arguments) {
  refuseNotes(self);
  return std::make_shared<UserPropertiesObject>(self.core(), self.item())->handle();
}

Value associatedAppointment(ItemObject& self, Arguments) {
  if (!isMeeting(self.item().kind)) throw Error(ErrorNumber::MemberNotFound);
  // It was never entered into the calendar.
  if (self.item().associatedAppointment.empty()) return automation::Object();
  return self.host().itemById(self.item().associatedAppointment);
}

}  // namespace

std::span<const MemberRow<ItemObject>> ItemObject::members() {
  static const MemberRow<ItemObject> rows[] = {
      {u"Class", [](ItemObject& self,
                    Arguments) { return Value(static_cast<std::int32_t>(self.item().kind)); }},
      {u"EntryID", [](ItemObject& self, Arguments) { return Value(self.item().id); }},
      {u"Parent",
       [](ItemObject& self, Arguments) { return self.host().folderObject(self.folder()); }},
      {u"Links", linksOf},
      {u"Attachments", attachmentsOf},
      {u"UserProperties", userPropertiesOf},
      {u"GetAssociatedAppointment", associatedAppointment},
      {u"Display",
       [](ItemObject& self, Arguments) {
         self.host().openInspector(self.folder(), self.item());
         return Value();
       }},
  };
  return rows;
}

Value ItemObject::invoke(automation::Access access, const automation::Member& member,
                         Arguments args) {
  const auto table = members();
  if (std::ranges::find(table, member.name, &MemberRow<ItemObject>::name) != table.end()) {
    return HostObject::invoke(access, member, args);
  }
  const auto held = enterHost(core(), Name, member.name, *this);
  auto& properties = item_.properties;
  const auto found = properties.find(member.name);
  const auto* const initial = initialValue(item_.kind, member.name);
  if (found == properties.end() && !initial) throw Error(ErrorNumber::MemberNotFound);
  if (access == automation::Access::Put) {
    properties[std::u16string(member.name)] = argument(args, 0);
    return {};
  }
  return found != properties.end() ? found->second : *initial;
}

std::u16string ItemObject::typeName() {
  const ItemKind* kind = kindOf(item_.kind);
  return std::u16string(kind ? kind->typeName : Name);
}

std::span<const MemberRow<FolderObject>> FolderObject::members() {
  static const MemberRow<FolderObject> rows[] = {
      {u"Name", [](FolderObject& self, Arguments) { return Value(self.folder().name); }},
      {u"EntryID", [](FolderObject& self, Arguments) { return Value(self.folder().id); }},
      {u"StoreID", [](FolderObject& self, Arguments) { return Value(self.folder().storeId); }},
      {u"DefaultItemType",
       [](FolderObject& self, Arguments) {
         return Value(static_cast<std::int32_t>(self.folder().itemType));
       }},
      {u"Items",
       [](FolderObject& self, Arguments) {
         return Value(std::make_shared<ItemsObject>(self.core(), self.folder())->handle());
       }},
  };
  return rows;
}

ItemsObject::ItemsObject(std::weak_ptr<HostCore> core, MailboxFolder& folder)
    : HostObject(std::move(core)), folder_(folder) {
  for (MailboxItem& item : folder.items) order_.push_back(&item);
}

std::span<const MemberRow<ItemsObject>> ItemsObject::members() {
  static const MemberRow<ItemsObject> rows[] = {
      {u"Count", [](ItemsObject& self, Arguments) { return Value(self.count()); }},
      {u"Item",
       [](ItemsObject& self, Arguments args) { return self.at(argument(args, 0).toInt32()); }},
      {u"GetFirst", [](ItemsObject& self, Arguments) { return self.at(1); }},
      {u"Find",
       [](ItemsObject& self, Arguments args) { return self.find(argument(args, 0).toText()); }},
      {u"Sort",
       [](ItemsObject& self, Arguments args) {
         const auto& descending = argument(args, 1);
         self.sort(argument(args, 0).toText(), !descending.isMissing() && descending.toBoolean());
         return Value();
       }},
      {u"IncludeRecurrences",
       [](ItemsObject& self, Arguments) { return Value(self.includeRecurrences_); },
       [](ItemsObject& self, const Value& value) { self.includeRecurrences_ = value.toBoolean(); }},
  };
  return rows;
}

Value ItemsObject::objectOf(MailboxItem* item) {
  return item ? host().itemObject(folder_, *item) : Value(automation::Object());
}

std::int32_t ItemsObject::count() const {
  // The occurrences of an endless series can't be counted.
  if (includeRecurrences_) return std::numeric_limits<std::int32_t>::max();
  return static_cast<std::int32_t>(order_.size());
}

Value ItemsObject::at(std::int32_t index) {
  const auto place = static_cast<std::size_t>(index) - 1;
  return objectOf(place < order_.size() ? order_[place] : nullptr);
}

void ItemsObject::sort(std::u16string_view property, bool descending) {
  if (property.starts_with(u"[") && property.ends_with(u"]")) {
    property = property.substr(1, property.size() - 2);
  }
  const auto key = [&](const MailboxItem* item) {
    const auto found = item->properties.find(property);
    return found == item->properties.end() ? std::u16string() : found->second.toText();
  };
  std::ranges::stable_sort(order_, {}, key);
  if (descending) std::ranges::reverse(order_);
}

/// Understands one comparison: ([Start] >= 'date').
Value ItemsObject::find(std::u16string_view filter) {
  constexpr std::u16string_view Head = u"([Start] >= '";
  constexpr std::u16string_view Tail = u"')";
  if (!filter.starts_with(Head) || !filter.ends_with(Tail)) {
    throw Error(ErrorNumber::InvalidProcedureCall);
  }
  filter.remove_prefix(Head.size());
  filter.remove_suffix(Tail.size());
  const auto from = host().isoDate(filter);
  const auto found = std::ranges::find_if(order_, [&](const MailboxItem* item) {
    if (includeRecurrences_ && item->properties.contains(u"IsRecurring")) return true;
    const auto start = item->properties.find(u"Start");
    return start != item->properties.end() && start->second.toText() >= from;
  });
  return objectOf(found == order_.end() ? nullptr : *found);
}

std::span<const MemberRow<ListObject>> ListObject::members() {
  static const MemberRow<ListObject> rows[] = {
      {u"Count",
       [](ListObject& self, Arguments) { return Value(static_cast<std::int32_t>(self.count())); }},
      {u"Item", [](ListObject& self, Arguments args) { return self.at(argument(args, 0)); }},
  };
  return rows;
}

Value ListObject::at(const Value& index) const {
  const auto number = index.toInt32();
  if (number < 1 || static_cast<std::size_t>(number) > count_) {
    throw Error(ErrorNumber::SubscriptOutOfRange);
  }
  return element_(static_cast<std::size_t>(number) - 1);
}

Value RecordObject::invoke(automation::Access access, const automation::Member& member, Arguments) {
  const auto held = enterHost(core(), Name, member.name, *this);
  for (const auto& [name, read] : fields_) {
    if (name == member.name && access != automation::Access::Put) return read();
  }
  throw Error(ErrorNumber::MemberNotFound);
}

}  // namespace simulator
