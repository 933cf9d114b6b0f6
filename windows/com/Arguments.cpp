#include "windows/com/Arguments.h"

#include "windows/com/errors.h"
#include "windows/com/values.h"

namespace windows {

using automation::Value;

Arguments::Arguments(std::span<const Value> values) {
  owners_.reserve(values.size());
  variants_.reserve(values.size());
  for (auto value = values.rbegin(); value != values.rend(); ++value) {
    owners_.push_back(variantOf(*value));
    variants_.push_back(owners_.back().get());
  }
}

DISPPARAMS Arguments::forCall() {
  return {variants_.data(), nullptr, static_cast<UINT>(variants_.size()), 0};
}

DISPPARAMS Arguments::forPut() {
  return {variants_.data(), &put_, static_cast<UINT>(variants_.size()), 1};
}

std::vector<Value> valuesOf(const DISPPARAMS& params) {
  std::vector<Value> values;
  values.reserve(params.cArgs);
  for (UINT i = params.cArgs; i-- > params.cNamedArgs;) values.push_back(valueOf(params.rgvarg[i]));
  const VARIANT* newValue = nullptr;
  for (UINT i = 0; i < params.cNamedArgs; ++i) {
    const DISPID id = params.rgdispidNamedArgs[i];
    if (id == DISPID_PROPERTYPUT) {
      newValue = &params.rgvarg[i];
      continue;
    }
    // No member here has nearly as many parameters.
    constexpr DISPID MostParameters = 64;
    if (id < 0 || id >= MostParameters) throw errorFrom(DISP_E_PARAMNOTFOUND);
    const auto place = static_cast<std::size_t>(id);
    if (place >= values.size()) values.resize(place + 1, automation::Missing{});
    values[place] = valueOf(params.rgvarg[i]);
  }
  if (newValue) values.push_back(valueOf(*newValue));
  return values;
}

std::vector<Value> readableValuesOf(const DISPPARAMS& params) {
  std::vector<Value> values(params.cArgs, automation::Missing{});
  for (UINT i = 0; i < params.cArgs; ++i) {
    guardedQuietly([&] { values[i] = valueOf(params.rgvarg[params.cArgs - 1 - i]); });
  }
  return values;
}

Value valueAt(const DISPPARAMS& params, std::size_t place) {
  if (place >= params.cArgs - params.cNamedArgs) return automation::Missing{};
  return valueOf(params.rgvarg[params.cArgs - 1 - place]);
}

void writeBack(const DISPPARAMS& params, std::span<const Value> values) noexcept {
  for (UINT i = params.cNamedArgs; i < params.cArgs; ++i) {
    const auto place = params.cArgs - 1 - i;
    if (place < values.size()) writeBack(params.rgvarg[i], values[place]);
  }
}

}  // namespace windows
