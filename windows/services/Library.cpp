#include "windows/services/Library.h"

#include <utility>

#include "windows/com/errors.h"

namespace windows {
namespace {

/// For a file that is no library of this system the system would show a box of its own, before the
/// host's windows and for its user to close.
class WithoutErrorBoxes {
 public:
  WithoutErrorBoxes() : before_(SetErrorMode(Quiet)) {
    // There is no way to ask for the mode without setting it.
    SetErrorMode(before_ | Quiet);
  }
  ~WithoutErrorBoxes() { SetErrorMode(before_); }
  WithoutErrorBoxes(const WithoutErrorBoxes&) = delete;
  WithoutErrorBoxes& operator=(const WithoutErrorBoxes&) = delete;

 private:
  static constexpr UINT Quiet = SEM_FAILCRITICALERRORS | SEM_NOOPENFILEERRORBOX;
  const UINT before_;
};

}  // namespace

Library::~Library() {
  if (module_ && atEnd_ == AtEnd::Free) FreeLibrary(module_);
}

bool Library::load() {
  if (!std::exchange(tried_, true)) {
    const WithoutErrorBoxes quiet;
    module_ = LoadLibraryA(name_.c_str());
  }
  return module_ != nullptr;
}

void* Library::address(const char* function) const {
  return reinterpret_cast<void*>(GetProcAddress(module_, function));
}

void* Library::requiredAddress(const char* function) {
  if (!load()) throw automation::Error(automation::ErrorNumber::FileNotFound);
  void* const found = address(function);
  if (!found) throw automation::Error(automation::ErrorNumber::EntryPointNotFound);
  return found;
}

}  // namespace windows
