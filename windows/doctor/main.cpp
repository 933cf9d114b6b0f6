#include <exception>
#include <string>
#include <vector>

#include "windows/com/text.h"
#include "windows/doctor/DoctorWindow.h"
#include "windows/doctor/WindowsFacts.h"
#include "windows/services/Registry.h"

// velnor-doctor                          a window with the report
// velnor-doctor /report FILE             the report into a file: 0 well, 1 failures, 2 oddities
// velnor-doctor /support FILE            what support gets: report and trace without names
// velnor-doctor /trace on|off|clean      the trace file switched or emptied
// velnor-doctor /trace show [FILE]       the trace with its meaning in a window, or into a file

namespace {

constexpr int Unusable = 3;

std::vector<std::u16string> arguments() {
  std::vector<std::u16string> result;
  int count = 0;
  wchar_t** texts = CommandLineToArgvW(GetCommandLineW(), &count);
  for (int i = 1; texts && i < count; ++i) result.emplace_back(windows::utf16(texts[i]));
  if (texts) LocalFree(texts);
  return result;
}

int statusOf(bool well) {
  return well ? 0 : Unusable;
}

int trace(HINSTANCE module, const windows::Patient& patient,
          const std::vector<std::u16string>& words) {
  const auto& what = words[1];
  if (what == u"show" && words.size() == 3) {
    return statusOf(windows::writeText(words[2], patient.explainedTrace(false)));
  }
  if (words.size() != 2) return Unusable;
  if (what == u"show") {
    windows::showTrace(module, nullptr, patient);
    return 0;
  }
  if (what == u"clean") return statusOf(windows::emptyFile(doctor::traceFile(patient.registry)));
  if (what != u"on" && what != u"off") return Unusable;
  doctor::switchTrace(patient.registry, what == u"on");
  return 0;
}

int run(HINSTANCE module, const windows::Patient& patient) {
  const auto words = arguments();
  if (words.empty()) {
    windows::showDoctor(module, patient);
    return 0;
  }
  if (words[0] == u"/trace" && words.size() > 1) return trace(module, patient, words);
  if (words.size() != 2) return Unusable;
  if (words[0] == u"/support") return statusOf(windows::writeText(words[1], patient.forSupport()));
  if (words[0] != u"/report") return Unusable;
  const auto report = doctor::examine(patient.registry, patient.facts);
  return windows::writeText(words[1], windows::joined(report.lines())) ? report.exitStatus()
                                                                       : Unusable;
}

}  // namespace

int WINAPI WinMain(HINSTANCE module, HINSTANCE, char*, int) {
  if (FAILED(CoInitialize(nullptr))) return Unusable;
  int status = Unusable;
  try {
    windows::Registry registry;
    windows::WindowsFacts facts;
    status = run(module, {registry, facts});
  } catch (const std::exception&) {
    // The status tells.
  }
  CoUninitialize();
  return status;
}
