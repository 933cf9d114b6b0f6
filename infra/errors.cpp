#include "infra/errors.h"

#include <new>

#include "platform/conversions.h"

namespace cxol {

automation::Error currentError() noexcept {
  using automation::Error;
  using automation::ErrorNumber;
  try {
    throw;
  } catch (const Error& error) {
    return error;
  } catch (const std::bad_alloc&) {
    return Error(ErrorNumber::OutOfMemory);
  } catch (const std::exception& error) {
    return Error(static_cast<std::int32_t>(ErrorNumber::AutomationFailed),
                 automation::widen(error.what()));
  } catch (...) {
    return Error(ErrorNumber::AutomationFailed);
  }
}

}  // namespace cxol
