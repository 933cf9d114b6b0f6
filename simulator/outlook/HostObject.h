#pragma once

#include <memory>
#include <string_view>

#include "simulator/object.h"

namespace simulator {

class HostCore;

/// What every object of the host asks before it does anything: whether Outlook still runs, and
/// whether a test wants this member to fail. A class goes by the name of its table of members and
/// by the one that its objects tell.
std::shared_ptr<HostCore> enterHost(const std::weak_ptr<HostCore>& core,
                                    std::u16string_view tableName, std::u16string_view member,
                                    SimObject& object);

/// An object of the simulated Outlook: a table of members that are served only while the host runs.
/// `Self` offers `members()` and `Name`.
template <class Self>
class HostObject : public TableObject<Self> {
 public:
  explicit HostObject(std::weak_ptr<HostCore> core) : core_(std::move(core)) {}

  Value invoke(automation::Access access, const automation::Member& member,
               Arguments args) override {
    const auto core = enterHost(core_, Self::Name, member.name, *this);
    return TableObject<Self>::invoke(access, member, args);
  }

  /// The host; it runs, because the call that asks got in.
  HostCore& host() const { return *core_.lock(); }
  const std::weak_ptr<HostCore>& core() const { return core_; }

 private:
  std::weak_ptr<HostCore> core_;
};

}  // namespace simulator
