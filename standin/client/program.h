#pragma once

#include <string>
#include <string_view>
#include <vector>

#include "windows/com/errors.h"

namespace standin {

/// COM of the one thread that has objects.
struct Apartment {
  Apartment() { windows::check(CoInitialize(nullptr)); }
  ~Apartment() { CoUninitialize(); }
  Apartment(const Apartment&) = delete;
  Apartment& operator=(const Apartment&) = delete;
};

/// The words that follow the program's name.
class CommandLine {
 public:
  CommandLine();
  bool has(std::u16string_view word) const;
  /// Whether no window is wanted. COM's own starts show nothing.
  bool hidden() const;

 private:
  std::vector<std::u16string> words_;
};

/// Full path of this program.
std::u16string ownPath();

/// Delivers the messages that wait.
void takeMessages();

}  // namespace standin
