#include "simulator/machine/SimProcesses.h"

#include "platform/velnor.h"
#include "simulator/caseless.h"
#include "simulator/client/Client.h"

namespace simulator {
namespace {

constexpr std::int32_t FileNotFound = 2;
constexpr std::int32_t AccessDenied = 5;
constexpr std::int32_t StartedWell = 42;

std::u16string_view unquoted(std::u16string_view file) {
  const bool quoted = file.size() >= 2 && file.front() == u'"' && file.back() == u'"';
  return quoted ? file.substr(1, file.size() - 2) : file;
}

}  // namespace

std::u16string SimProcesses::hostModuleName() {
  boundary_.service(u"Processes", u"hostModuleName");
  return host_;
}

std::int32_t SimProcesses::shellExecute(std::u16string_view file, std::u16string_view parameters,
                                        std::u16string_view folder) {
  std::int32_t result = FileNotFound;
  try {
    boundary_.service(u"Processes", u"shellExecute");
    if (unquoted(file).empty()) {
      result = StartedWell;
    } else if (client_.installed() && sameName(unquoted(file), client_.path())) {
      client_.start(parameters == Client::HideParameter);
      result = StartedWell;
    }
  } catch (const automation::Error& error) {
    const bool isResult = error.number() > 0 && error.number() <= StartedWell;
    result = isResult ? error.number() : AccessDenied;
  }
  started_.push_back(
      {std::u16string(file), std::u16string(parameters), std::u16string(folder), result});
  return result;
}

bool SimProcesses::windowExists(std::u16string_view windowClass) {
  try {
    boundary_.service(u"Processes", u"windowExists");
  } catch (const automation::Error&) {
    return false;
  }
  return sameName(windowClass, velnor::MainWindowClass) && client_.hasWindow();
}

}  // namespace simulator
