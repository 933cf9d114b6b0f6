// Plays the maker's logging library: it writes what it gets to a file of lines.

#include <set>
#include <string>
#include <vector>

#include "platform/conversions.h"
#include "standin/client/LineFile.h"
#include "standin/libraries/environment.h"
#include "standin/libraries/worker.h"
#include "windows/com/errors.h"
#include "windows/com/text.h"

// The mark of a stand-in; ends its thread.
extern "C" __declspec(dllexport) void VelnorStandin() {
  standin::worker.end();
}

namespace {

using automation::int32Text;

/// What the library answers to the creation of a logger when that is to fail.
constexpr LONG CreateStatus = STANDIN_CREATE_STATUS;
constexpr LONG Done = 0;
constexpr LONG NoSuchLogger = -1;
constexpr LONG NotWritten = -2;
constexpr LONG NotOffered = -3;
constexpr LONG IndexTaken = -6;

std::set<LONG>& loggers() {
  static std::set<LONG> indices;
  return indices;
}

bool append(std::vector<std::u16string> fields) {
  fields.insert(fields.begin(), standin::timeOfDay());
  const std::u16string path = standin::environment(standin::LogVariable);
  return !path.empty() && standin::appendLine(path, fields);
}

std::u16string text(const char* bytes) {
  return bytes ? windows::fromAnsi(bytes) : std::u16string();
}

}  // namespace

extern "C" {

LONG WINAPI K9TLog_CreateLogger(LONG index, const char* product, const char* module, LONG p4,
                                LONG p5, LONG p6, LONG p7) {
  LONG status = CreateStatus;
  windows::guardedQuietly([&] {
    if (status == Done && !loggers().insert(index).second) status = IndexTaken;
    std::vector<std::u16string> fields{u"create", int32Text(index), text(product), text(module)};
    for (const LONG number : {p4, p5, p6, p7, status}) fields.push_back(int32Text(number));
    append(std::move(fields));
    if (status == Done) standin::worker.start();
  });
  return status;
}

LONG WINAPI K9TLog_Write(LONG index, LONG level, const char* message) {
  LONG status = NotWritten;
  windows::guardedQuietly([&] {
    if (!loggers().contains(index)) {
      status = NoSuchLogger;
    } else if (append({u"write", int32Text(index), int32Text(level), text(message)})) {
      status = Done;
    }
  });
  return status;
}

/// Stands for the functions that the maker exports and nobody here calls.
LONG WINAPI K9TLog_NotOffered() {
  return NotOffered;
}

}  // extern "C"
