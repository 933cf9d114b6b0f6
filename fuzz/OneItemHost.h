#pragma once

#include <functional>
#include <map>
#include <memory>
#include <optional>
#include <string>

#include "simulator/boundary.h"
#include "simulator/machine/Machine.h"
#include "simulator/mailbox.h"
#include "simulator/object.h"
#include "state/process.h"

namespace fuzz {

/// An object with these members and no others.
class Record : public simulator::SimObject {
 public:
  using Member = std::function<automation::Value(simulator::Arguments)>;

  explicit Record(std::u16string name) : name_(std::move(name)) {}
  void set(std::u16string_view member, automation::Value value) {
    members_[std::u16string(member)] = [value](simulator::Arguments) { return value; };
  }
  void answer(std::u16string_view member, Member function) {
    members_[std::u16string(member)] = std::move(function);
  }

  automation::Value invoke(automation::Access access, const automation::Member& member,
                           simulator::Arguments args) override {
    const auto found = members_.find(member.name);
    if (access == automation::Access::Put) return {};
    if (found == members_.end()) throw automation::Error(automation::ErrorNumber::MemberNotFound);
    return found->second(args);
  }
  std::u16string typeName() override { return name_; }

 private:
  std::u16string name_;
  std::map<std::u16string, Member, std::less<>> members_;
};

/// A host of which an inspector shows one item, on a machine with a client that is ready. The
/// logic runs in a process of its own life.
class OneItemHost {
 public:
  OneItemHost();

  simulator::Boundary boundary;
  simulator::Machine machine{boundary};
  std::shared_ptr<Record> item = std::make_shared<Record>(u"Item");
  simulator::MapiFacts facts;
  cxol::Process process{machine.platform()};
};

}  // namespace fuzz
