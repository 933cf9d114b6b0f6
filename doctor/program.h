#pragma once

#include <string>

#include "platform/facts.h"

namespace doctor {

/// What the head of a program file tells.
struct Program {
  /// 32-bit code for Intel's processors.
  bool is32Bit = false;
  /// As in "11.0.5608.0"; empty when the file has no version.
  std::u16string version;
  /// The version's first number; 0 without one.
  int major = 0;
};

Program programAt(platform::Facts& facts, std::u16string_view path);

}  // namespace doctor
