#include "state/settings.h"

#include "infra/RegOp.h"
#include "infra/badValue.h"
#include "infra/errors.h"
#include "infra/runtime.h"
#include "infra/text.h"

namespace cxol {

bool ReadOption(const Option& option) noexcept {
  std::optional<automation::Value> value;
  bool result = option.defaultValue;
  trap(
      [&] {
        value = RegOp(machine().registry, option.root, option.key).value(option.name);
        if (value) result = value->toDouble() != 0;
      },
      [&](const automation::Error&) {
        if (!value) return;
        WarnOfBadNumber(option.root, option.key, option.name, *value,
                        boolText(option.defaultValue));
      });
  return result;
}

}  // namespace cxol
