#include "windows/services/Library.h"

#include "windows/com/errors.h"

namespace windows {

Library::~Library() {
  if (module_) FreeLibrary(module_);
}

bool Library::load() {
  if (!module_) module_ = LoadLibraryA(name_.c_str());
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
