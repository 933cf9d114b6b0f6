#pragma once

#include <cstdint>
#include <memory>
#include <span>
#include <string>
#include <string_view>

#include "platform/automation.h"
#include "platform/office.h"

/// Typed views of Outlook's object model (Outlook 9.0 to 12.0). Member names as in the host's type
/// library.
namespace outlook {

/// OlObjectClass
enum class ObjectClass : std::int32_t {
  Appointment = 26,
  Explorer = 34,
  Inspector = 35,
  Contact = 40,
  Journal = 42,
  Mail = 43,
  Note = 44,
  Post = 45,
  Task = 48,
  MeetingRequest = 53,
  MeetingCancellation = 54,
  MeetingResponseNegative = 55,
  MeetingResponsePositive = 56,
  MeetingResponseTentative = 57,
  DistributionList = 69,
};

/// OlDefaultFolders
enum class DefaultFolder : std::int32_t { Outbox = 4 };

/// OlItemType
enum class ItemType : std::int32_t {
  Mail = 0,
  Appointment = 1,
  Contact = 2,
  Task = 3,
  Journal = 4,
  Note = 5,
  Post = 6,
};

class Item;
class Items;

class MAPIFolder : public automation::View {
 public:
  using View::View;
  std::u16string entryId() const { return object().get(u"EntryID").toText(); }
  std::u16string storeId() const { return object().get(u"StoreID").toText(); }
  ItemType defaultItemType() const {
    return static_cast<ItemType>(object().get(u"DefaultItemType").toInt32());
  }
  Items items() const;
};

class Link : public automation::View {
 public:
  using View::View;
  Item item() const;
};

/// A collection that counts from 1.
template <class Element>
class CollectionOf : public automation::View {
 public:
  using View::View;
  std::int32_t count() const { return object().get(u"Count").toInt32(); }
  Element item(std::int32_t index) const {
    return Element(object().call(u"Item", index).toObject());
  }
};

using Links = CollectionOf<Link>;
using Attachments = CollectionOf<automation::View>;

/// An item of any kind. Reading a member that the item's kind does not have raises an error.
class Item : public automation::View {
 public:
  using View::View;
  ObjectClass objectClass() const {
    return static_cast<ObjectClass>(object().get(u"Class").toInt32());
  }
  std::u16string entryId() const { return object().get(u"EntryID").toText(); }
  MAPIFolder parent() const { return MAPIFolder(object().get(u"Parent").toObject()); }
  std::u16string subject() const { return text(u"Subject"); }
  Links links() const { return Links(object().get(u"Links").toObject()); }
  Attachments attachments() const { return Attachments(object().get(u"Attachments").toObject()); }
  /// The value of a user property as text; raises an error when the item has no such property.
  std::u16string userProperty(std::u16string_view name) const {
    return object()
        .get(u"UserProperties")
        .toObject()
        .call(u"Item", name)
        .toObject()
        .get(u"Value")
        .toText();
  }
  /// Any text property of the item.
  std::u16string text(std::u16string_view property) const {
    return object().get(property).toText();
  }
};

class MailItem : public Item {
 public:
  using Item::Item;
  std::u16string receivedByName() const { return text(u"ReceivedByName"); }
  std::u16string senderName() const { return text(u"SenderName"); }
  std::u16string to() const { return text(u"To"); }
  std::u16string messageClass() const { return text(u"MessageClass"); }
  bool sent() const { return object().get(u"Sent").toBoolean(); }
};

class ContactItem : public Item {
 public:
  using Item::Item;
  std::u16string lastNameAndFirstName() const { return text(u"LastNameAndFirstName"); }
  std::u16string companyName() const { return text(u"CompanyName"); }
  std::u16string fullName() const { return text(u"FullName"); }
};

class TaskItem : public Item {
 public:
  using Item::Item;
  void setSubject(std::u16string_view value) const { object().put(u"Subject", value); }
  void display() const { object().call(u"Display"); }
};

class MeetingItem : public Item {
 public:
  using Item::Item;
  /// The appointment that the request belongs to; it is not added to the calendar.
  Item associatedAppointment() const {
    return Item(object().call(u"GetAssociatedAppointment", false).toObject());
  }
};

class Items : public automation::View {
 public:
  using View::View;
  void sort(std::u16string_view property, bool descending) const {
    object().call(u"Sort", property, descending);
  }
  void setIncludeRecurrences(bool value) const { object().put(u"IncludeRecurrences", value); }
  /// The first item that the filter accepts, or nothing.
  Item find(std::u16string_view filter) const {
    return Item(object().call(u"Find", filter).toObject());
  }
  /// Nothing when the folder is empty.
  Item getFirst() const { return Item(object().call(u"GetFirst").toObject()); }
};

inline Items MAPIFolder::items() const {
  return Items(object().get(u"Items").toObject());
}
inline Item Link::item() const {
  return Item(object().get(u"Item").toObject());
}

using Selection = CollectionOf<Item>;

class Explorer : public automation::View {
 public:
  using View::View;
  MAPIFolder currentFolder() const { return MAPIFolder(object().get(u"CurrentFolder").toObject()); }
  Selection selection() const { return Selection(object().get(u"Selection").toObject()); }
  office::CommandBars commandBars() const {
    return office::CommandBars(object().get(u"CommandBars").toObject());
  }
};

class Inspector : public automation::View {
 public:
  using View::View;
  Item currentItem() const { return Item(object().get(u"CurrentItem").toObject()); }
  office::CommandBars commandBars() const {
    return office::CommandBars(object().get(u"CommandBars").toObject());
  }
  /// Whether Word is the mail editor.
  bool isWordMail() const { return object().call(u"IsWordMail").toBoolean(); }
};

using Explorers = CollectionOf<Explorer>;
using Inspectors = CollectionOf<Inspector>;

class NameSpace : public automation::View {
 public:
  using View::View;
  MAPIFolder getDefaultFolder(DefaultFolder folder) const {
    return MAPIFolder(
        object().call(u"GetDefaultFolder", static_cast<std::int32_t>(folder)).toObject());
  }
};

class Application : public automation::View {
 public:
  using View::View;
  std::u16string version() const { return object().get(u"Version").toText(); }
  Explorers explorers() const { return Explorers(object().get(u"Explorers").toObject()); }
  Inspectors inspectors() const { return Inspectors(object().get(u"Inspectors").toObject()); }
  /// The window on top: an explorer, an inspector or nothing.
  automation::Object activeWindow() const { return object().call(u"ActiveWindow").toObject(); }
  Explorer activeExplorer() const { return Explorer(object().call(u"ActiveExplorer").toObject()); }
  Inspector activeInspector() const {
    return Inspector(object().call(u"ActiveInspector").toObject());
  }
  NameSpace getNamespace() const {
    return NameSpace(object().call(u"GetNamespace", u"MAPI").toObject());
  }
  TaskItem createTask() const {
    return TaskItem(
        object().call(u"CreateItem", static_cast<std::int32_t>(ItemType::Task)).toObject());
  }
};

/// COMAddIn, as handed to OnConnection.
class ComAddIn : public automation::View {
 public:
  using View::View;
  std::u16string progId() const { return object().get(u"ProgId").toText(); }
};

inline constexpr automation::Event ExplorersEventTable[] = {{0xF001, u"NewExplorer"}};
inline constexpr automation::EventInterface ExplorersEventInterface{
    u"{00063078-0000-0000-C000-000000000046}", ExplorersEventTable};

inline constexpr automation::Event InspectorsEventTable[] = {{0xF001, u"NewInspector"}};
inline constexpr automation::EventInterface InspectorsEventInterface{
    u"{00063079-0000-0000-C000-000000000046}", InspectorsEventTable};

enum class ExplorerEvent : std::int32_t {
  Activate = 0xF001,
  FolderSwitch = 0xF002,
  ViewSwitch = 0xF004,
  SelectionChange = 0xF007,
  Close = 0xF008,
};
inline constexpr automation::Event ExplorerEventTable[] = {
    {0xF001, u"Activate"},        {0xF002, u"FolderSwitch"}, {0xF004, u"ViewSwitch"},
    {0xF007, u"SelectionChange"}, {0xF008, u"Close"},
};
/// The interface of Outlook 2000; later versions still offer it.
inline constexpr automation::EventInterface ExplorerEventInterface{
    u"{0006304F-0000-0000-C000-000000000046}", ExplorerEventTable};

enum class InspectorEvent : std::int32_t { Activate = 0xF001, Close = 0xF008 };
inline constexpr automation::Event InspectorEventTable[] = {{0xF001, u"Activate"},
                                                            {0xF008, u"Close"}};
inline constexpr automation::EventInterface InspectorEventInterface{
    u"{0006307D-0000-0000-C000-000000000046}", InspectorEventTable};

/// Receives the events of the two window collections.
class ExplorersEvents {
 public:
  virtual ~ExplorersEvents() = default;
  virtual void myOlExplorers_NewExplorer(const Explorer& explorer) noexcept = 0;
  static void deliver(ExplorersEvents& receiver, std::int32_t, std::span<automation::Value> args) {
    if (args.empty() || !args[0].isObject()) return;
    receiver.myOlExplorers_NewExplorer(Explorer(args[0].toObject()));
  }
};

class InspectorsEvents {
 public:
  virtual ~InspectorsEvents() = default;
  virtual void myOlInspectors_NewInspector(const Inspector& inspector) noexcept = 0;
  static void deliver(InspectorsEvents& receiver, std::int32_t, std::span<automation::Value> args) {
    if (args.empty() || !args[0].isObject()) return;
    receiver.myOlInspectors_NewInspector(Inspector(args[0].toObject()));
  }
};

/// Receives the events of one explorer.
class ExplorerEvents {
 public:
  virtual ~ExplorerEvents() = default;
  virtual void thisExplorer_Activate() noexcept = 0;
  virtual void thisExplorer_Close() noexcept = 0;
  virtual void thisExplorer_FolderSwitch() noexcept = 0;
  virtual void thisExplorer_SelectionChange() noexcept = 0;
  virtual void thisExplorer_ViewSwitch() noexcept = 0;
  static void deliver(ExplorerEvents& receiver, std::int32_t id, std::span<automation::Value>) {
    switch (static_cast<ExplorerEvent>(id)) {
      case ExplorerEvent::Activate: return receiver.thisExplorer_Activate();
      case ExplorerEvent::FolderSwitch: return receiver.thisExplorer_FolderSwitch();
      case ExplorerEvent::ViewSwitch: return receiver.thisExplorer_ViewSwitch();
      case ExplorerEvent::SelectionChange: return receiver.thisExplorer_SelectionChange();
      case ExplorerEvent::Close: return receiver.thisExplorer_Close();
    }
  }
};

/// Receives the events of one inspector.
class InspectorEvents {
 public:
  virtual ~InspectorEvents() = default;
  virtual void thisInspector_Activate() noexcept = 0;
  virtual void thisInspector_Close() noexcept = 0;
  static void deliver(InspectorEvents& receiver, std::int32_t id, std::span<automation::Value>) {
    switch (static_cast<InspectorEvent>(id)) {
      case InspectorEvent::Activate: return receiver.thisInspector_Activate();
      case InspectorEvent::Close: return receiver.thisInspector_Close();
    }
  }
};

}  // namespace outlook
