#include "windows/tests/TestObject.h"

namespace windows {

using automation::Error;
using automation::Object;
using automation::Value;
using simulator::argument;
using simulator::Arguments;
using simulator::MemberRow;

int TestObject::alive = 0;

std::span<const MemberRow<TestObject>> TestObject::members() {
  static constexpr MemberRow<TestObject> Rows[] = {
      {u"Echo", [](TestObject&, Arguments args) -> Value { return argument(args, 0); }},
      {u"Value", [](TestObject& self, Arguments) -> Value { return self.value_; },
       [](TestObject& self, const Value& value) { self.value_ = value; }},
      {u"ReadOnly", [](TestObject&, Arguments) -> Value { return 1; }},
      {u"Count",
       [](TestObject&, Arguments args) -> Value { return static_cast<std::int32_t>(args.size()); }},
      {u"Difference",
       [](TestObject&, Arguments args) -> Value {
         return argument(args, 0).toInt32() - argument(args, 1).toInt32();
       }},
      {u"Fail",
       [](TestObject&, Arguments args) -> Value {
         throw Error(argument(args, 0).toInt32(), argument(args, 1).toText());
       }},
      {u"Self", [](TestObject& self, Arguments) -> Value { return self.handle(); }},
      {u"Child",
       [](TestObject& self, Arguments) -> Value {
         if (!self.child_) self.child_ = std::make_shared<TestObject>();
         return self.child_->handle();
       }},
      {u"IsSelf",
       [](TestObject& self, Arguments args) -> Value {
         return argument(args, 0).toObject() == self.handle();
       }},
      {u"Nothing", [](TestObject&, Arguments) -> Value { return Object(); }},
      {u"Ask",
       [](TestObject& self, Arguments args) -> Value {
         return self.ask(argument(args, 0).toBoolean(), argument(args, 1));
       }},
      {u"SinkCount",
       [](TestObject& self, Arguments) -> Value {
         return static_cast<std::int32_t>(self.sinkCount());
       }},
  };
  return Rows;
}

std::span<const automation::EventInterface* const> TestObject::eventInterfaces() const {
  static constexpr const automation::EventInterface* Offered[] = {&TestEvents};
  return Offered;
}

/// Asks the sinks, and tells what they made of the flag.
Value TestObject::ask(bool cancel, const Value& what) {
  std::vector<Value> args{what, cancel};
  fire(TestEvents, 7, args);
  return args[1];
}

std::span<const MemberRow<Phone>> Phone::members() {
  static constexpr MemberRow<Phone> Rows[] = {
      {u"Ring", [](Phone&, Arguments) -> Value { return u"ring"; }},
      {u"Volume", [](Phone& self, Arguments) -> Value { return self.volume_; },
       [](Phone& self, const Value& value) { self.volume_ = value.toInt32(); }},
      {u"Dial",
       [](Phone&, Arguments args) -> Value { return u"dial " + argument(args, 0).toText(); }},
      {u"Horn", [](Phone&, Arguments) -> Value { return u"horn"; }},
      {u"Unlisted", [](Phone&, Arguments) -> Value { return u"unlisted"; }},
  };
  return Rows;
}

}  // namespace windows
