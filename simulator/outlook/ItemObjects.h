#pragma once

#include <functional>
#include <string>
#include <vector>

#include "simulator/mailbox.h"
#include "simulator/outlook/HostObject.h"

namespace simulator {

/// An item of a folder.
class ItemObject : public HostObject<ItemObject> {
 public:
  static constexpr std::u16string_view Name = u"Item";
  static std::span<const MemberRow<ItemObject>> members();

  ItemObject(std::weak_ptr<HostCore> core, MailboxFolder& folder, MailboxItem& item)
      : HostObject(std::move(core)), folder_(folder), item_(item) {}

  /// The computed members first, then the properties of the item's kind.
  Value invoke(automation::Access access, const automation::Member& member,
               Arguments args) override;
  std::u16string typeName() override;

  MailboxFolder& folder() const { return folder_; }
  MailboxItem& item() const { return item_; }

 private:
  MailboxFolder& folder_;
  MailboxItem& item_;
};

class FolderObject : public HostObject<FolderObject> {
 public:
  static constexpr std::u16string_view Name = u"MAPIFolder";
  static std::span<const MemberRow<FolderObject>> members();

  FolderObject(std::weak_ptr<HostCore> core, MailboxFolder& folder)
      : HostObject(std::move(core)), folder_(folder) {}
  MailboxFolder& folder() const { return folder_; }
  /// Two handles of one folder are the same.
  const void* identity() const override { return &folder_; }

 private:
  MailboxFolder& folder_;
};

/// The items of a folder, which a caller may sort and search.
class ItemsObject : public HostObject<ItemsObject> {
 public:
  static constexpr std::u16string_view Name = u"Items";
  static std::span<const MemberRow<ItemsObject>> members();

  ItemsObject(std::weak_ptr<HostCore> core, MailboxFolder& folder);

  Value find(std::u16string_view filter);
  Value at(std::int32_t index);
  void sort(std::u16string_view property, bool descending);
  std::int32_t count() const;

 private:
  Value objectOf(MailboxItem* item);
  MailboxFolder& folder_;
  std::vector<MailboxItem*> order_;
  /// With them an item that has IsRecurring stands for a series of one appointment a day, without
  /// an end.
  bool includeRecurrences_ = false;
};

/// A collection that was taken at one moment: Count and Item, from 1.
class ListObject : public HostObject<ListObject> {
 public:
  static constexpr std::u16string_view Name = u"Collection";
  static std::span<const MemberRow<ListObject>> members();
  using Element = std::function<Value(std::size_t index)>;

  ListObject(std::weak_ptr<HostCore> core, std::u16string_view name, std::size_t count,
             Element element)
      : HostObject(std::move(core)), name_(name), count_(count), element_(std::move(element)) {}

  std::u16string typeName() override { return std::u16string(name_); }
  std::size_t count() const { return count_; }
  Value at(const Value& index) const;

 private:
  std::u16string_view name_;
  std::size_t count_;
  Element element_;
};

/// An object with a few fixed properties: a link, an attachment, a user property.
class RecordObject : public HostObject<RecordObject> {
 public:
  static constexpr std::u16string_view Name = u"Record";
  static std::span<const MemberRow<RecordObject>> members() { return {}; }
  using Fields = std::vector<std::pair<std::u16string_view, std::function<Value()>>>;

  RecordObject(std::weak_ptr<HostCore> core, std::u16string_view name, Fields fields)
      : HostObject(std::move(core)), name_(name), fields_(std::move(fields)) {}

  Value invoke(automation::Access access, const automation::Member& member,
               Arguments args) override;
  std::u16string typeName() override { return std::u16string(name_); }

 private:
  std::u16string_view name_;
  Fields fields_;
};

}  // namespace simulator
