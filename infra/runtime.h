#pragma once

#include <cstdint>
#include <map>
#include <string>

#include "platform/platform.h"

namespace cxol {

/// The once-only state of the trace.
struct TraceState {
  /// The logging library could not create a logger: lines go to the internal file.
  bool UseInternalLog = false;
  bool LogInitAttempted = false;
  bool DllLoadAttempted = false;
  /// Creation of the log folder was attempted.
  bool PathCreated = false;
  /// Full path of the trace file; empty until first needed.
  std::u16string FileName;
  /// The library's index of each logical logger, by "<index>index".
  std::map<std::u16string, std::int32_t> loggerIndexes;
};

/// The chosen interface language; German until one is chosen.
struct LanguageState {
  std::u16string code;
  std::int32_t offset = 0;
};

/// What the infrastructure keeps for the life of the process: the machine that it runs on, the
/// trace's and the language's state. One at a time.
class Runtime {
 public:
  explicit Runtime(const platform::Platform& machine);
  ~Runtime();
  Runtime(const Runtime&) = delete;
  Runtime& operator=(const Runtime&) = delete;

  const platform::Platform platform;
  TraceState trace;
  LanguageState language;
};

/// Raises error 91 while there is none.
Runtime& runtime();

/// The machine's services.
inline const platform::Platform& machine() {
  return runtime().platform;
}

}  // namespace cxol
