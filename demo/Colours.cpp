#include "demo/Colours.h"

#include <unistd.h>

#include <cstdlib>

namespace demo {
namespace {

struct ColourRow {
  std::string_view start;
  std::string_view code;
};

/// Bold, dim, red, green, yellow and cyan as terminals number them.
constexpr ColourRow rows[] = {
    {"??", "31"},
    {"!!", "31"},
    {"[", "1"},
    {"    holds", "32"},
    {"    client was told:", "32"},
    {"    telephone:", "36"},
    {"    message box:", "33"},
    {"    (nothing changed", "33"},
    {"    (", "2"},
    {"    ~ ", "2"},
};

bool isSet(const char* name) {
  const char* value = std::getenv(name);
  return value && *value;
}

}  // namespace

bool coloursWanted() {
  const char* terminal = std::getenv("TERM");
  return isatty(STDOUT_FILENO) && !isSet("NO_COLOR") && isSet("TERM") &&
         std::string_view(terminal) != "dumb";
}

std::string coloured(std::string_view line) {
  for (const ColourRow& row : rows) {
    if (!line.starts_with(row.start)) continue;
    return "\x1B[" + std::string(row.code) + "m" + std::string(line) + "\x1B[0m";
  }
  return std::string(line);
}

}  // namespace demo
