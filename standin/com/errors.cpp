#include "standin/com/errors.h"

#include "windows/com/Bstr.h"
#include "windows/com/errors.h"

namespace standin {

HRESULT resultOf(const automation::Error& error, EXCEPINFO* exception) noexcept {
  const HRESULT result = windows::resultOf(error);
  // A member that is not there is no exception of the member.
  if (!exception || result == DISP_E_MEMBERNOTFOUND) return result;
  *exception = {};
  exception->scode = result;
  try {
    exception->bstrDescription = windows::Bstr(error.description()).detach();
  } catch (const std::bad_alloc&) {
    // The number alone then.
  }
  return DISP_E_EXCEPTION;
}

}  // namespace standin
