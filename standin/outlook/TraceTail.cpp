#include "standin/outlook/TraceTail.h"

#include <algorithm>

#include "platform/conversions.h"
#include "simulator/player/NativeTrace.h"
#include "standin/libraries/environment.h"
#include "windows/com/text.h"
#include "windows/services/Registry.h"

namespace standin {
namespace {

constexpr std::u16string_view ShellFolders =
    u"Software\\Microsoft\\Windows\\CurrentVersion\\Explorer\\Shell Folders";

std::u16string traceFilePath() {
  windows::Registry registry;
  const auto folder =
      registry.read(platform::RegistryRoot::CurrentUser, ShellFolders, u"Local AppData");
  return platform::textOf(folder) + u"\\VelnorLog\\Log_cxolcom.txt";
}

std::u16string temporaryLog() {
  wchar_t folder[MAX_PATH + 1] = {};
  GetTempPathW(MAX_PATH, folder);
  std::u16string path(windows::utf16(folder));
  return path + u"velnor-standin-log-" +
         automation::int32Text(static_cast<std::int32_t>(GetCurrentProcessId())) + u".txt";
}

/// Whether the line begins with a date, as in "07.03.2008 14:05:09.042 ".
bool beginsEntry(std::u16string_view line) {
  constexpr std::u16string_view pattern = u"00.00.0000 00:00:00.000 ";
  if (line.size() < pattern.size()) return false;
  for (std::size_t i = 0; i < pattern.size(); ++i) {
    const bool digit = line[i] >= u'0' && line[i] <= u'9';
    if (pattern[i] == u'0' ? !digit : line[i] != pattern[i]) return false;
  }
  return true;
}

/// Bytes of a line of these fields: some characters are escaped by a second one.
std::size_t storedSize(const Fields& fields) {
  std::size_t size = 0;
  for (const std::u16string& field : fields) {
    size += toUtf8(field).size() + 1;
    size += static_cast<std::size_t>(std::ranges::count_if(field, [](char16_t c) {
      return std::u16string_view(u"\\\t\r\n").find(c) != std::u16string_view::npos;
    }));
  }
  return size;
}

}  // namespace

TraceFile::TraceFile() : path_(traceFilePath()), position_(fileSize(path_)) {}

std::vector<TraceEntry> TraceFile::read() {
  struct Text {
    std::u16string line;
    std::size_t end;
  };
  const std::string content = readFile(path_);
  if (content.size() < position_) position_ = 0;
  std::vector<Text> texts;
  for (auto at = static_cast<std::size_t>(position_); at < content.size();) {
    const std::size_t end = std::min(content.find("\r\n", at), content.size());
    const std::u16string line = windows::fromAnsi(std::string_view(content).substr(at, end - at));
    at = std::min(end + 2, content.size());
    // A text may hold line ends of its own.
    if (texts.empty() || beginsEntry(line))
      texts.push_back({line, at});
    else
      texts.back() = {texts.back().line + u"\r\n" + line, at};
  }
  position_ = content.size();
  std::vector<TraceEntry> entries;
  for (const Text& text : texts) entries.push_back({scenario::traceOfFile(text.line), text.end});
  return entries;
}

LibraryLog::LibraryLog() : lines_(temporaryLog()) {
  DeleteFileW(windows::wide(lines_.path()));
  SetEnvironmentVariableW(LogVariable, windows::wide(lines_.path()));
}

LibraryLog::~LibraryLog() {
  SetEnvironmentVariableW(LogVariable, nullptr);
  DeleteFileW(windows::wide(lines_.path()));
}

std::vector<TraceEntry> LibraryLog::read() {
  std::vector<TraceEntry> entries;
  for (const Fields& fields : lines_.read()) {
    position_ += storedSize(fields);
    if (fields.size() != 5 || fields[1] != u"write") continue;
    const double level = automation::parseNumber(fields[3]).value_or(0);
    TraceEntry entry{scenario::traceOfLibrary(static_cast<std::int32_t>(level), fields[4], {}),
                     position_};
    entry.note.time = fields[0];
    entries.push_back(std::move(entry));
  }
  return entries;
}

}  // namespace standin
