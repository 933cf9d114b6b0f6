#pragma once

#include "simulator/object.h"

namespace windows {

/// The events of the tests' object.
inline constexpr automation::Event TestEventTable[] = {{7, u"Asked"}, {8, u"Told"}};
inline constexpr automation::EventInterface TestEvents{u"{124C99F9-3A5C-4310-9FAA-25893DDBE9D8}",
                                                       TestEventTable};

/// An object with a member of each kind.
class TestObject : public simulator::TableObject<TestObject> {
 public:
  static constexpr std::u16string_view Name = u"Tested";
  static std::span<const simulator::MemberRow<TestObject>> members();

  TestObject() { ++alive; }
  ~TestObject() override { --alive; }

  /// Objects of this class that are there.
  static int alive;

 protected:
  std::span<const automation::EventInterface* const> eventInterfaces() const override;

 private:
  automation::Value ask(bool cancel, const automation::Value& what);

  automation::Value value_;
  std::shared_ptr<TestObject> child_;
};

/// An object whose members stand in the tests' type library, under the names of that library.
class Phone : public simulator::TableObject<Phone> {
 public:
  static constexpr std::u16string_view Name = u"Phone";
  static std::span<const simulator::MemberRow<Phone>> members();

 private:
  std::int32_t volume_ = 3;
};

}  // namespace windows
