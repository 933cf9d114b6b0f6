#include "addin/settings.h"

#include "infra/RegOp.h"
#include "infra/modK9TLog.h"
#include "infra/runtime.h"

namespace cxol {
namespace {

void warn(const Option& option, const automation::Value& value) noexcept {
  trapQuietly([&] {
    const bool user = option.root == platform::RegistryRoot::CurrentUser;
    LogWarning(concat(user ? u"HKEY_CURRENT_USER\\" : u"HKEY_LOCAL_MACHINE\\", option.key, u"\\",
                      option.name, u" is not a number: \"", value.toText(), u"\", using ",
                      boolText(option.defaultValue)));
  });
}

}  // namespace

bool ReadOption(const Option& option) noexcept {
  std::optional<automation::Value> value;
  bool result = option.defaultValue;
  trap(
      [&] {
        value = RegOp(machine().registry, option.root, option.key).value(option.name);
        if (value) result = value->toDouble() != 0;
      },
      [&](const automation::Error&) {
        if (value) warn(option, *value);
      });
  return result;
}

}  // namespace cxol
