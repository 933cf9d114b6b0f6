#include "infra/modK9TLog.h"

#include <limits>

#include "infra/modTrace.h"
#include "infra/runtime.h"
#include "platform/conversions.h"
#include "platform/files.h"
#include "platform/logging_library.h"

namespace cxol {
namespace {

/// A level: its prefix in the internal file and its code in the library.
struct Level {
  std::u16string_view prefix;
  std::int32_t code;
};
constexpr Level ErrorLevel{u"Error:   ", 32};
constexpr Level WarningLevel{u"Warning: ", 17};
constexpr Level DebugLevel{u"Debug:   ", 3};

/// The one logical logger of the add-in.
constexpr std::int32_t Logger = 0;
/// The library's answer for an index that is taken.
constexpr std::int32_t IndexTaken = -6;

std::u16string loggerKey(std::int32_t index) {
  return automation::int32Text(index) + u"index";
}

void write(const Level& level, std::u16string_view text) noexcept {
  trapQuietly([&] {
    InitK9TLog();
    if (runtime().trace.UseInternalLog) {
      WriteTraceLine(level.prefix, text);
    } else {
      LogWrite(Logger, text, level.code);
    }
  });
}

}  // namespace

void LogError(std::u16string_view text) noexcept {
  write(ErrorLevel, text);
}
void LogWarning(std::u16string_view text) noexcept {
  write(WarningLevel, text);
}
void LogDebug(std::u16string_view text) noexcept {
  write(DebugLevel, text);
}
void LogDebug2(std::u16string_view text) noexcept {
  write(DebugLevel, text);
}

void InitK9TLog() {
  auto& trace = runtime().trace;
  if (trace.LogInitAttempted) return;
  trace.LogInitAttempted = true;
  if (!LogCreateLogger(Logger, u"Velnor", u"AddinOutlookToolbar", 7, 3, 35328, 1)) {
    trace.UseInternalLog = true;
    LogWarning(u"InitK9TLog failed, use internal logging");
  }
}

bool LogCreateLogger(std::int32_t index, std::u16string_view product, std::u16string_view module,
                     std::int32_t p4, std::int32_t p5, std::int32_t p6, std::int32_t p7) noexcept {
  bool created = false;
  trapQuietly([&] {
    auto& indexes = runtime().trace.loggerIndexes;
    const auto key = loggerKey(index);
    if (indexes.contains(key)) return;
    RetryDllLoad();
    auto& library = machine().loggingLibrary;
    std::int32_t actual = index;
    std::int32_t status = library.createLogger(actual, product, module, p4, p5, p6, p7);
    while (status == IndexTaken) {
      if (actual == std::numeric_limits<std::int32_t>::max()) return;
      status = library.createLogger(++actual, product, module, p4, p5, p6, p7);
    }
    if (status != 0) return;
    indexes.emplace(key, actual);
    created = true;
  });
  return created;
}

bool LogWrite(std::int32_t index, std::u16string_view text, std::int32_t level) noexcept {
  bool written = false;
  trapQuietly([&] {
    const auto& indexes = runtime().trace.loggerIndexes;
    const auto found = indexes.find(loggerKey(index));
    if (found == indexes.end()) return;
    written = machine().loggingLibrary.write(found->second, level, text) == 0;
  });
  return written;
}

std::u16string GetCommonK9TFolder() {
  auto folder = machine().files.commonFilesFolder().value_or(u"");
  // The folder's name on the German systems that the library was first installed on.
  if (folder.empty()) folder = u"c:\\Programme\\Gemeinsame Dateien";
  return folder + u"\\K9T\\";
}

void RetryDllLoad() {
  auto& attempted = runtime().trace.DllLoadAttempted;
  if (attempted) return;
  attempted = true;
  // Once loaded from here, the library satisfies the later calls by its bare name.
  machine().loggingLibrary.load(GetCommonK9TFolder() + u"K9tLogVB.dll");
}

}  // namespace cxol
