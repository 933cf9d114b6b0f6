#include "infra/badValue.h"

#include "infra/errors.h"
#include "infra/modK9TLog.h"
#include "infra/text.h"

namespace cxol {

void WarnOfBadNumber(platform::RegistryRoot root, std::u16string_view key, std::u16string_view name,
                     const automation::Value& value, std::u16string_view used) noexcept {
  trapQuietly([&] {
    const bool user = root == platform::RegistryRoot::CurrentUser;
    LogWarning(concat(user ? u"HKEY_CURRENT_USER\\" : u"HKEY_LOCAL_MACHINE\\", key, u"\\", name,
                      u" is not a number: \"", value.toText(), u"\", using ", used));
  });
}

}  // namespace cxol
