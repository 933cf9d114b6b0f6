#include "client/PhoneCommandFor.h"

#include "client/VelnorLocator.h"
#include "infra/modK9TLog.h"

namespace cxol {

velnor::PhoneCommand PhoneCommandFor(std::u16string_view routine) {
  auto command = GetVelnorPhoneCmdInservice();
  // The locator has traced its reason: no error is pending whose description would follow.
  if (!command) {
    LogError(concat(u"GetVelnorPhoneCmdInservice() is Nothing in ", routine, u"(): "));
  }
  return command;
}

}  // namespace cxol
