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
