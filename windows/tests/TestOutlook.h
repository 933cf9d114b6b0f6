#pragma once

#include <functional>
#include <map>
#include <string>

#include "platform/outlook.h"
#include "simulator/object.h"

namespace windows {

/// A collection of windows that announces new ones, and has none.
class TestWindows : public simulator::TableObject<TestWindows> {
 public:
  static constexpr std::u16string_view Name = u"Windows";
  static std::span<const simulator::MemberRow<TestWindows>> members();

  explicit TestWindows(const automation::EventInterface& events) : offered_{&events} {}

  void announce(const automation::Object& window) {
    std::vector<automation::Value> args{window};
    fire(*offered_[0], offered_[0]->events[0].id, args);
  }

 protected:
  std::span<const automation::EventInterface* const> eventInterfaces() const override {
    return offered_;
  }

 private:
  const automation::EventInterface* const offered_[1];
};

/// A window at whose first subscription something happens.
class TestExplorer : public simulator::SimObject {
 public:
  automation::Value invoke(automation::Access, const automation::Member&,
                           simulator::Arguments) override {
    throw automation::Error(automation::ErrorNumber::MemberNotFound);
  }
  std::u16string typeName() override { return u"Explorer"; }
  automation::Connection connect(const automation::EventInterface& events,
                                 std::shared_ptr<automation::EventSink> sink) override;

  std::function<void()> onConnect;

 protected:
  std::span<const automation::EventInterface* const> eventInterfaces() const override;
};

/// As much of Outlook as an add-in asks of one without windows, but with a contact in an inspector
/// that the ribbon can ask for.
class TestOutlook : public simulator::TableObject<TestOutlook> {
 public:
  static constexpr std::u16string_view Name = u"Application";
  static std::span<const simulator::MemberRow<TestOutlook>> members();
  automation::Value invoke(automation::Access access, const automation::Member& member,
                           simulator::Arguments args) override;

  /// Happens when it is asked for anything, once.
  std::function<void()> onAsked;

  std::shared_ptr<TestWindows> explorers =
      std::make_shared<TestWindows>(outlook::ExplorersEventInterface);
  std::shared_ptr<TestWindows> inspectors =
      std::make_shared<TestWindows>(outlook::InspectorsEventInterface);
};

/// An object with fixed properties.
class TestProperties : public simulator::SimObject {
 public:
  explicit TestProperties(std::map<std::u16string, automation::Value> values)
      : values_(std::move(values)) {}
  automation::Value invoke(automation::Access access, const automation::Member& member,
                           simulator::Arguments args) override;
  std::u16string typeName() override { return u"Properties"; }

 private:
  const std::map<std::u16string, automation::Value> values_;
};

automation::Object propertiesObject(std::map<std::u16string, automation::Value> values);

}  // namespace windows
