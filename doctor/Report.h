#pragma once

#include <optional>
#include <string>
#include <vector>

#include "platform/facts.h"
#include "platform/registry.h"

namespace doctor {

enum class Verdict { Well, Odd, Failed };

/// One line of the report.
struct Finding {
  Verdict verdict = Verdict::Well;
  std::u16string text;
  /// What to do; empty where that is nothing.
  std::u16string remedy;
};

/// What the user may change without rights: a value of HKEY_CURRENT_USER.
struct Cure {
  /// The finding, for asking.
  std::u16string text;
  std::u16string key;
  std::u16string name;
  /// The number to write; nothing deletes the value, if it still is the add-in's disabled item.
  std::optional<std::int32_t> number;
};

struct Report {
  std::size_t language = 0;
  std::vector<Finding> findings;
  std::vector<Cure> cures;

  Verdict worst() const;
  /// 0 when all is well, 1 with failures, 2 with oddities only.
  int exitStatus() const;
  /// One line a finding, what to do below it. The texts stand in a column: by blanks, or by a tab
  /// where letters differ in width.
  std::vector<std::u16string> lines(bool tabs = false) const;
};

/// All checks, in the user's language. Changes nothing, and starts no program.
Report examine(platform::Registry& registry, platform::Facts& facts);

/// False when there is nothing left to change or it can't be changed.
bool apply(platform::Registry& registry, const Cure& cure);

/// Where the add-in's trace file lies; its folder, with a backslash at its end.
std::u16string traceFolder(platform::Registry& registry);
std::u16string traceFile(platform::Registry& registry);
bool traceIsOn(platform::Registry& registry);
void switchTrace(platform::Registry& registry, bool on);
/// From this size on, emptying is offered.
inline constexpr std::uint64_t BigTrace = 10 * 1024 * 1024;

/// The language that the report speaks: that of all the maker's products, else the user's.
std::size_t reportLanguage(platform::Registry& registry, platform::Facts& facts);

}  // namespace doctor
