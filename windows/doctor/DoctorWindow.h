#pragma once

#include "doctor/Report.h"
#include "windows/com/api.h"

namespace windows {

/// What the program's windows and its command line work on.
struct Patient {
  platform::Registry& registry;
  platform::Facts& facts;

  /// The end of the trace file, as text.
  std::u16string trace() const;
  std::u16string explainedTrace(bool onlyProblems) const;
  /// The report and the trace, without names and numbers.
  std::u16string forSupport() const;
};

/// Lines as one text.
std::u16string joined(const std::vector<std::u16string>& lines);

/// Shows the report until the user closes it.
void showDoctor(HINSTANCE module, const Patient& patient);

/// Shows the trace, following the file, until the user closes it.
void showTrace(HINSTANCE module, HWND owner, const Patient& patient);

}  // namespace windows
