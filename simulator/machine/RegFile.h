#pragma once

#include <cstddef>
#include <optional>
#include <stdexcept>
#include <string>
#include <string_view>
#include <vector>

#include "platform/registry.h"
#include "simulator/machine/SimRegistry.h"

namespace simulator {

/// A file that is not in the registry editor's format. The text (UTF-8) names the line, what was
/// expected there and what was found.
class RegFileError : public std::runtime_error {
 public:
  RegFileError(std::size_t line, const std::string& message)
      : std::runtime_error("line " + std::to_string(line) + ": " + message), line_(line) {}
  /// Counts from 1.
  std::size_t line() const { return line_; }

 private:
  std::size_t line_;
};

/// One step of an exported file.
struct RegStep {
  enum class Kind { MakeKey, DeleteKey, SetValue, DeleteValue };
  Kind kind = Kind::MakeKey;
  platform::RegistryRoot root = platform::RegistryRoot::CurrentUser;
  std::u16string key;
  std::u16string name;            ///< empty for the default value
  platform::RegistryValue value;  ///< of SetValue
};

/// Reads a file as the registry editor exports it, version 5 (UTF-16 or UTF-8, without a mark
/// UTF-8 if it can be, else ANSI) or version 4 ("REGEDIT4", ANSI). Keys of the roots HKEY_USERS and
/// HKEY_CURRENT_CONFIG are read and left out. Raises RegFileError.
std::vector<RegStep> readRegFile(std::string_view bytes);

/// Carries the steps of a file out, all of them or, when it raises RegFileError, none.
void importRegFile(SimRegistry& registry, std::string_view bytes);

}  // namespace simulator
