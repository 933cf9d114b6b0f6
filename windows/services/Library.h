#pragma once

#include <string>

#include "windows/com/api.h"

namespace windows {

/// A library that is loaded, by its bare name or a full path, when one of its functions is first
/// called. A failure is not remembered: the next call tries again. Freed in the end.
class Library {
 public:
  explicit Library(std::string name) : name_(std::move(name)) {}
  ~Library();
  Library(const Library&) = delete;
  Library& operator=(const Library&) = delete;

  /// False when the library is not there.
  bool load();

  /// Null when library or function is not there.
  template <class Function>
  Function* find(const char* function) {
    return load() ? reinterpret_cast<Function*>(address(function)) : nullptr;
  }

  /// Raises error 53 without the library and 453 when it lacks the function.
  template <class Function>
  Function* require(const char* function) {
    return reinterpret_cast<Function*>(requiredAddress(function));
  }

 private:
  void* address(const char* function) const;
  void* requiredAddress(const char* function);

  const std::string name_;
  HMODULE module_ = nullptr;
};

}  // namespace windows
