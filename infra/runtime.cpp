#include "infra/runtime.h"

#include "platform/automation.h"

namespace cxol {
namespace {
Runtime* current = nullptr;
}

Runtime::Runtime(const platform::Platform& services) : platform(services) {
  current = this;
}

Runtime::~Runtime() {
  // The next one may have begun already.
  if (current == this) current = nullptr;
}

Runtime& runtime() {
  if (!current) throw automation::Error(automation::ErrorNumber::ObjectNotSet);
  return *current;
}

}  // namespace cxol
