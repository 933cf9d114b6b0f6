// Plays the logging library: answers from what it was given.

#include <cstring>

#include "windows/com/api.h"

namespace {

UINT modeAtLoad = 0;

/// The system tells the mode only to who sets it.
UINT errorMode() {
  const UINT mode = SetErrorMode(0);
  SetErrorMode(mode);
  return mode;
}

}  // namespace

extern "C" {

LONG WINAPI K9TLog_CreateLogger(LONG index, const char* product, const char* module, LONG p4,
                                LONG p5, LONG p6, LONG p7) {
  if (std::strcmp(product, "Velnor") != 0 || std::strcmp(module, "AddinOutlookToolbar") != 0) {
    return 1;
  }
  if (p4 != 7 || p5 != 3 || p6 != 35328 || p7 != 1) return 2;
  return index == 0 ? -6 : 0;
}

LONG WINAPI K9TLog_Write(LONG index, LONG level, const char* message) {
  // u with its two dots in the code page of Western Europe.
  return index == 1 && level == 17 &&
                 std::strcmp(message,
                             "Gr\xFC\xDF"
                             "e") == 0
             ? 0
             : 3;
}

BOOL WINAPI DllMain(HINSTANCE, DWORD reason, LPVOID) {
  if (reason == DLL_PROCESS_ATTACH) modeAtLoad = errorMode();
  return TRUE;
}

/// The system's error mode while the library was loaded.
UINT WINAPI TestModeAtLoad() {
  return modeAtLoad;
}
}
