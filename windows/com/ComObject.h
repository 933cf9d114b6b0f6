#pragma once

#include <map>
#include <string>

#include "platform/automation.h"
#include "windows/com/ComPtr.h"

namespace windows {

class TypeMembers;

/// An object of another program or module, reached through IDispatch. To be used by the thread
/// that got it.
class ComObject : public automation::Dispatch {
 public:
  explicit ComObject(ComPtr<IDispatch> dispatch);

  automation::Value invoke(automation::Access access, const automation::Member& member,
                           std::span<const automation::Value> args) override;
  /// As the class information or else the dispatch interface's type information names it, without
  /// one leading underscore; "Object" when it tells neither.
  std::u16string typeName() override;
  const void* identity() const override { return identity_.get(); }
  automation::Connection connect(const automation::EventInterface& events,
                                 std::shared_ptr<automation::EventSink> sink) override;

  const ComPtr<IDispatch>& dispatch() const noexcept { return dispatch_; }

 private:
  DISPID find(const automation::Member& member);
  DISPID findByName(std::u16string_view name);
  DISPID askForName(std::u16string_view name) const;

  ComPtr<IDispatch> dispatch_;
  /// The one interface by which COM tells objects apart.
  ComPtr<IUnknown> identity_;
  /// Known as soon as a member was sought by its place.
  TypeMembers* type_ = nullptr;
  std::map<std::u16string, DISPID, std::less<>> names_;
};

}  // namespace windows
