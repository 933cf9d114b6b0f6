#include "infra/modTrace.h"

#include "infra/errors.h"
#include "infra/modK9TLog.h"
#include "infra/modRegistry.h"
#include "infra/runtime.h"
#include "infra/text.h"
#include "platform/clock.h"
#include "platform/files.h"
#include "resources/settings.h"

namespace cxol {
namespace {

/// The name of this component, as it stands in the file's name.
constexpr std::u16string_view ComponentName = u"cxolcom";

/// What switches the file on, on each route of the trace.
constexpr auto InternalSwitch = resources::setting(u"LogFile").place;
constexpr auto LibrarySwitch = resources::setting(u"VBLogFile").place;

void appendDigits(std::u16string& text, int number, int digits) {
  text.resize(text.size() + static_cast<std::size_t>(digits));
  for (auto at = text.size(); digits > 0; --digits, number /= 10) {
    text[--at] = static_cast<char16_t>(u'0' + number % 10);
  }
}

/// "07.03.2008 14:05:09.042 "
void appendTime(std::u16string& text, const platform::LocalTime& time) {
  const struct {
    int number;
    int digits;
    char16_t separator;
  } fields[] = {{time.day, 2, u'.'},        {time.month, 2, u'.'},  {time.year, 4, u' '},
                {time.hour, 2, u':'},       {time.minute, 2, u':'}, {time.second, 2, u'.'},
                {time.millisecond, 3, u' '}};
  for (const auto& field : fields) {
    appendDigits(text, field.number, field.digits);
    text.push_back(field.separator);
  }
}

}  // namespace

bool IsLogFileEnabled() {
  const auto& place = runtime().trace.UseInternalLog ? InternalSwitch : LibrarySwitch;
  return equalsIgnoringCase(GetRegString(place.root, place.key, place.name), u"1");
}

std::u16string GetLogFolder() {
  std::u16string folder = GetLocalAppDataFolder() + u"VelnorLog\\";
  auto& trace = runtime().trace;
  if (!trace.PathCreated) {
    // Set before the failure is logged, which comes back here for the file's name.
    trace.PathCreated = true;
    if (!machine().files.makeSureDirectoryPathExists(folder)) {
      LogDebug2(concat(u"modTrace", u": ", u"ERROR creating path: ", folder));
    }
  }
  return folder;
}

const std::u16string& GetLogFileName() {
  auto& name = runtime().trace.FileName;
  if (name.empty()) name = concat(GetLogFolder(), u"Log_", ComponentName, u".txt");
  return name;
}

void WriteTraceLine(std::u16string_view prefix, std::u16string_view text) noexcept {
  trapQuietly([&] {
    const auto time = machine().clock.localTime();
    // Asked before the line is built: a trace that is off costs one registry read.
    if (!IsLogFileEnabled()) return;
    const auto& path = GetLogFileName();
    if (path.empty()) return;
    std::u16string line;
    line.reserve(26 + prefix.size() + text.size());
    appendTime(line, time);
    line.append(prefix).append(text).append(u"\r\n");
    machine().files.append(path, line);
  });
}

}  // namespace cxol
