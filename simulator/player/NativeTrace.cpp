#include "simulator/player/NativeTrace.h"

#include <cstdio>

#include "simulator/player/Text.h"

namespace scenario {
namespace {

struct LevelRow {
  std::int32_t code;
  std::u16string_view name;
};

constexpr LevelRow levels[] = {{32, u"Error"}, {17, u"Warning"}, {3, u"Debug"}};

}  // namespace

Note traceOfLibrary(std::int32_t level, std::u16string_view text, const platform::LocalTime& now) {
  Note note{Note::Kind::Trace, std::u16string(text), {}, {}};
  for (const LevelRow& row : levels)
    if (row.code == level) note.level = row.name;
  if (note.level.empty()) note.level = u"Level " + toUtf16(std::to_string(level));
  char time[48];
  std::snprintf(time, sizeof time, "%02d:%02d:%02d.%03d", now.hour, now.minute, now.second,
                now.millisecond);
  note.time = toUtf16(time);
  return note;
}

Note traceOfFile(std::u16string_view line) {
  while (line.ends_with(u'\n') || line.ends_with(u'\r')) line.remove_suffix(1);
  constexpr std::size_t dateLength = 11;
  constexpr std::size_t timeLength = 12;
  constexpr std::size_t prefixAt = dateLength + timeLength + 1;
  constexpr std::size_t prefixLength = 9;
  Note note{Note::Kind::Trace, std::u16string(line), {}, {}};
  if (line.size() < prefixAt + prefixLength) return note;
  const std::u16string_view prefix = trimmed(line.substr(prefixAt, prefixLength));
  for (const LevelRow& row : levels) {
    if (prefix != std::u16string(row.name) + u":") continue;
    note.level = row.name;
    note.time = line.substr(dateLength, timeLength);
    note.text = line.substr(prefixAt + prefixLength);
  }
  return note;
}

}  // namespace scenario
