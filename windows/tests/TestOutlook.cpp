#include "windows/tests/TestOutlook.h"

namespace windows {

using automation::Object;
using automation::Value;
using simulator::Arguments;
using simulator::MemberRow;

std::span<const MemberRow<TestWindows>> TestWindows::members() {
  static constexpr MemberRow<TestWindows> Rows[] = {
      {u"Count", [](TestWindows&, Arguments) -> Value { return 0; }}};
  return Rows;
}

std::span<const MemberRow<TestOutlook>> TestOutlook::members() {
  static constexpr MemberRow<TestOutlook> Rows[] = {
      {u"Version", [](TestOutlook&, Arguments) -> Value { return u"12.0.4518.1014"; }},
      {u"Explorers",
       [](TestOutlook& self, Arguments) -> Value { return self.explorers->handle(); }},
      {u"Inspectors",
       [](TestOutlook& self, Arguments) -> Value { return self.inspectors->handle(); }},
      {u"ActiveExplorer", [](TestOutlook&, Arguments) -> Value { return Object(); }},
      {u"ActiveWindow", [](TestOutlook&, Arguments) -> Value { return Object(); }},
      {u"ActiveInspector",
       [](TestOutlook&, Arguments) -> Value {
         constexpr std::int32_t Contact = 40;
         return propertiesObject({{u"CurrentItem", propertiesObject({{u"Class", Contact}})}});
       }},
  };
  return Rows;
}

Value TestOutlook::invoke(automation::Access access, const automation::Member& member,
                          Arguments args) {
  if (const auto happening = std::exchange(onAsked, {})) happening();
  return TableObject::invoke(access, member, args);
}

automation::Connection TestExplorer::connect(const automation::EventInterface& events,
                                             std::shared_ptr<automation::EventSink> sink) {
  auto connection = SimObject::connect(events, std::move(sink));
  if (const auto happening = std::exchange(onConnect, {})) happening();
  return connection;
}

std::span<const automation::EventInterface* const> TestExplorer::eventInterfaces() const {
  static constexpr const automation::EventInterface* Offered[] = {&outlook::ExplorerEventInterface};
  return Offered;
}

Value TestProperties::invoke(automation::Access access, const automation::Member& member,
                             Arguments) {
  const auto found = values_.find(std::u16string(member.name));
  if (access == automation::Access::Put || found == values_.end()) {
    throw automation::Error(automation::ErrorNumber::MemberNotFound);
  }
  return found->second;
}

Object propertiesObject(std::map<std::u16string, Value> values) {
  return std::make_shared<TestProperties>(std::move(values))->handle();
}

}  // namespace windows
