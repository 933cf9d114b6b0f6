#include "client/CxDial.h"

#include "client/PhoneCommandFor.h"
#include "client/VelnorLocator.h"
#include "infra/modK9TLog.h"
#include "state/settings.h"

namespace cxol {
namespace {

namespace linestate = velnor::linestate;

void log(void (*writer)(std::u16string_view) noexcept, std::u16string_view number,
         std::u16string_view text) {
  writer(concat(u"CxDial (", number, u")", text));
}

/// The line to dial on: the user's first one, if its state allows that.
struct Line {
  std::int32_t first = 0;
  /// 0 leaves the choice to the client.
  std::int32_t chosen = 0;
};

Line chooseLine(const velnor::PhoneCommand& command) {
  Line line;
  const auto lines = command.lines();
  if (!lines.isArray() || lines.toArray().empty()) return line;
  line.first = line.chosen = lines.toArray().front().toInt32();
  if ((command.lineStateOf(line.first) & linestate::Usable) == 0) line.chosen = 0;
  return line;
}

void offerInWindow(std::u16string_view number) {
  log(LogDebug, number, u": (cmd.linestate And LS_MASK) = LS_CONNECTED");
  if (const auto service = GetVelnorAuxSvc()) service.showNumber(number);
}

void dialThroughRemote(std::u16string_view number) {
  log(LogDebug, number, u": DialWithRemoteInterface = True");
  if (const auto remote = GetVelnorRemote()) {
    remote.directDial(number);
  } else {
    log(LogError, number, u": GetVelnorRemote = Nothing");
  }
}

void dialOnLine(const velnor::PhoneCommand& command, std::u16string_view number) {
  log(LogDebug, number, u": DialWithRemoteInterface = False");
  const auto service = GetVelnorAuxSvc();
  if (!service) return log(LogError, number, u": GetVelnorAuxSvc = Nothing");
  const auto converted = service.convertNumber(number);
  const auto line = chooseLine(command);
  log(LogDebug, converted, u": cmd.Dial()...");
  command.dial(line.first, line.chosen, converted);
}

}  // namespace

void CxDial(std::u16string_view number) noexcept {
  trapAndLog(u"ERROR in CxDial(): ", [&] {
    log(LogDebug, number, u"");
    const auto command = PhoneCommandFor(u"CxDial");
    if (!command) return;
    if ((command.lineState() & linestate::Mask) == linestate::Connected) {
      offerInWindow(number);
    } else if (ReadOption(options::DialRemote)) {
      dialThroughRemote(number);
    } else {
      dialOnLine(command, number);
    }
  });
}

}  // namespace cxol
