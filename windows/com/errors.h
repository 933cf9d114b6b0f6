#pragma once

#include <new>
#include <utility>

#include "platform/automation.h"
#include "windows/com/api.h"

/// Errors at the edge to COM: HRESULT and EXCEPINFO on one side, automation::Error on the other.
namespace windows {

/// The error that a failed call stands for: the customary number where there is one, else the
/// HRESULT itself.
automation::Error errorFrom(HRESULT result);

/// The same for a late-bound call, which may have filled `exception`; frees its texts.
automation::Error errorFrom(HRESULT result, EXCEPINFO& exception);

/// Raises the error of a failed call.
inline void check(HRESULT result) {
  if (FAILED(result)) throw errorFrom(result);
}

/// What a COM method answers for an error.
HRESULT resultOf(const automation::Error& error) noexcept;

/// Runs the body of an entry point: no exception leaves the module.
template <class Body>
HRESULT guarded(Body&& body) noexcept {
  try {
    return std::forward<Body>(body)();
  } catch (const automation::Error& error) {
    return resultOf(error);
  } catch (const std::bad_alloc&) {
    return E_OUTOFMEMORY;
  } catch (...) {
    return E_UNEXPECTED;
  }
}

/// The same for entry points without a result.
template <class Body>
void guardedQuietly(Body&& body) noexcept {
  try {
    std::forward<Body>(body)();
  } catch (...) {
    // There is nobody to tell.
  }
}

}  // namespace windows
