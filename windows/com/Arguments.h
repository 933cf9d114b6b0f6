#pragma once

#include <span>
#include <vector>

#include "platform/automation.h"
#include "windows/com/Variant.h"

namespace windows {

/// The arguments of one late-bound call that goes out: in reverse order, as IDispatch wants them.
class Arguments {
 public:
  explicit Arguments(std::span<const automation::Value> values);
  Arguments(const Arguments&) = delete;
  Arguments& operator=(const Arguments&) = delete;

  /// As the arguments of a call, or of a property put, whose last one is the value.
  DISPPARAMS forCall();
  DISPPARAMS forPut();

 private:
  DISPID put_ = DISPID_PROPERTYPUT;
  std::vector<Variant> owners_;
  std::vector<VARIANT> variants_;
};

/// The arguments of an event, in the order of the declaration; what can't be converted is an
/// omitted one.
std::vector<automation::Value> readableValuesOf(const DISPPARAMS& params);

/// One argument by its place in the declaration; an omitted one when there is none. Named arguments
/// are not looked at.
automation::Value valueAt(const DISPPARAMS& params, std::size_t place);

/// Writes the Booleans that came by reference back to the caller.
void writeBack(const DISPPARAMS& params, std::span<const automation::Value> values) noexcept;

}  // namespace windows
