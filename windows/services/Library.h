#pragma once

#include <string>

#include "windows/com/api.h"

namespace windows {

/// A library that is loaded, by its bare name or a full path, when one of its functions is first
/// called. One that is missing is looked for once, which takes the system through many folders.
class Library {
 public:
  enum class AtEnd {
    Free,
    /// For one that may have threads of its own: they would run on in code that is gone.
    Keep
  };

  explicit Library(std::string name, AtEnd atEnd = AtEnd::Free)
      : name_(std::move(name)), atEnd_(atEnd) {}
  ~Library();
  Library(const Library&) = delete;
  Library& operator=(const Library&) = delete;

  /// False when the library is not there or can't be loaded, which the user is told nothing of.
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
  const AtEnd atEnd_;
  bool tried_ = false;
  HMODULE module_ = nullptr;
};

}  // namespace windows
