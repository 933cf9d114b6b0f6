#include "client/VelnorLocator.h"

#include "infra/RegOp.h"
#include "infra/modK9TLog.h"
#include "infra/modRes.h"
#include "infra/runtime.h"
#include "infra/text.h"
#include "platform/clock.h"
#include "platform/objects.h"
#include "platform/processes.h"
#include "platform/screen.h"
#include "platform/velnor.h"
#include "resources/settings.h"

namespace cxol {
namespace {

constexpr auto ClientProgram = resources::setting(u"ClientProgram").place;
constexpr std::u16string_view HiddenStart = u"-hideOnStartup";

/// Results of a start up to this one are failures.
constexpr std::int32_t LastStartFailure = 32;
constexpr std::int32_t FileNotFound = 2;

constexpr std::int32_t ObjectTimeout = 102;
constexpr std::int32_t WindowTimeout = 103;
constexpr std::int32_t CannotStart = 104;

/// Milliseconds between two looks.
constexpr std::uint32_t WindowPoll = 20;
constexpr std::uint32_t ObjectPoll = 10;
constexpr std::uint32_t ServicePoll = 20;

/// One wait of at most 20 seconds. The clock counts from midnight: a wait that meets midnight finds
/// the time fallen back and ends.
class Wait {
 public:
  Wait() : start_(now()) {}
  /// Less than the limit has passed.
  bool inTime() const { return elapsed() >= 0 && elapsed() < Limit; }
  /// More than the limit has passed, or the clock has fallen back.
  bool over() const { return elapsed() < 0 || elapsed() > Limit; }

 private:
  // Whole milliseconds: fractions that compare differently in registers and in memory would end a
  // wait before it began.
  static constexpr std::int64_t Limit = 20'000;
  static std::int64_t now() {
    return platform::millisecondsSinceMidnight(machine().clock.localTime());
  }
  std::int64_t elapsed() const { return now() - start_; }
  std::int64_t start_;
};

/// Empty when the client is not installed.
std::u16string executable() {
  const RegOp key(machine().registry, ClientProgram.root, ClientProgram.key);
  const auto value = key.value(ClientProgram.name);
  return value ? std::u16string(programOf(value->toText())) : std::u16string();
}

std::u16string quoted(std::u16string_view path) {
  return concat(u"\"", path, u"\"");
}

/// Up to and including the last backslash; empty without one.
std::u16string_view folderOf(std::u16string_view path) {
  return path.substr(0, path.rfind(u'\\') + 1);
}

std::int32_t start(std::u16string_view parameters) {
  const auto path = executable();
  // For an empty name some shells open the current folder and call that a success.
  if (path.empty()) return FileNotFound;
  return machine().processes.shellExecute(quoted(path), parameters, folderOf(path));
}

velnor::Application runningApplication() {
  return velnor::Application(machine().objects.running(velnor::ApplicationClass));
}

void tellUser(std::int32_t stringId) {
  const auto text = GetResString(stringId);
  LogError(text);
  machine().screen.messageBox(text);
}

bool waitForWindow() {
  const Wait wait;
  bool found = false;
  do {
    found = machine().processes.windowExists(velnor::MainWindowClass);
    machine().clock.sleep(WindowPoll);
  } while (!found && !wait.over());
  machine().clock.sleep(WindowPoll);
  return found;
}

/// Looks again and again until what is looked for is there; a look that fails has not found it.
template <class Look>
bool waitFor(std::uint32_t poll, const Look& look) {
  const Wait wait;
  while (wait.inTime()) {
    ResumeNext resume;
    bool found = false;
    resume([&] { found = look(); });
    if (found) return true;
    machine().clock.sleep(poll);
  }
  return false;
}

bool waitForObject() {
  return waitFor(ObjectPoll, [] { return static_cast<bool>(runningApplication()); });
}

/// Whether the client answers its line-state query. One that takes no messages is not asked: the
/// question would not come back.
bool answersQuery(const velnor::Application& application) {
  if (!application || !machine().objects.answers(velnor::ApplicationClass)) return false;
  const auto command = application.phoneCommand();
  if (!command) return false;
  // Any answer counts, whatever its in-service bit says: a client that answers is ready.
  command.lineState();
  return true;
}

}  // namespace

std::u16string ClientPath() noexcept {
  std::u16string path;
  trapQuietly([&] { path = executable(); });
  return quoted(path);
}

std::u16string ClientDir() noexcept {
  std::u16string folder;
  trapQuietly([&] { folder = folderOf(executable()); });
  return folder;
}

void ShellExecuteVelnor() noexcept {
  LogDebug(u"ShellExecuteVelnor");
  trapQuietly([] { start({}); });
}

void ShellExecuteVelnorHiddenNoWait() noexcept {
  LogDebug(u"ShellExecuteVelnorHiddenNoWait");
  trapQuietly([] { start(HiddenStart); });
}

void ShellExecuteVelnorWait() noexcept {
  trap(
      [] {
        if (machine().processes.windowExists(velnor::MainWindowClass)) return;
        if (start(HiddenStart) <= LastStartFailure) return tellUser(CannotStart);
        if (!waitForWindow()) return tellUser(WindowTimeout);
        if (!waitForObject()) tellUser(ObjectTimeout);
      },
      [](const automation::Error& error) { LogError(concat(error.description(), u" (Error)")); });
}

velnor::AuxiliaryService GetVelnorAuxSvc() noexcept {
  velnor::AuxiliaryService service;
  trapAndLog(u"ERROR in GetVelnorAuxSvc(): ", [&] {
    if (const auto application = runningApplication()) service = application.auxiliaryService();
  });
  return service;
}

bool WaitForInService(const velnor::Application& application) noexcept {
  bool inService = false;
  trapQuietly([&] { inService = waitFor(ServicePoll, [&] { return answersQuery(application); }); });
  return inService;
}

velnor::PhoneCommand GetVelnorPhoneCmdInservice() noexcept {
  velnor::PhoneCommand command;
  trapAndLog(u"ERROR in GetVelnorPhoneCmdInservice(): ", [&] {
    LogDebug(u"GetVelnorPhoneCmdInservice() entered...");
    if (!GetVelnorAuxSvc()) {
      LogWarning(u"GetVelnorPhoneCmdInservice() refused because GetVelnorAuxSvc() not found!");
      return;
    }
    LogDebug(u"GetVelnorPhoneCmdInservice() ShellExecuteVelnorWait()...");
    ShellExecuteVelnorWait();
    LogDebug(u"GetVelnorPhoneCmdInservice() GetObject()...");
    const auto application = runningApplication();
    LogDebug(u"GetVelnorPhoneCmdInservice() WaitForInService()...");
    if (WaitForInService(application)) {
      command = application.phoneCommand();
    } else {
      LogWarning(u"GetVelnorPhoneCmdInservice() not in service after 20 sec waiting!");
    }
  });
  return command;
}

velnor::Remote GetVelnorRemote() noexcept {
  velnor::Remote remote;
  trapAndLog(u"ERROR in GetVelnorRemote(): ", [&] {
    ShellExecuteVelnorWait();
    // The application is only the proof that the client runs.
    if (runningApplication()) {
      remote = velnor::Remote(machine().objects.create(velnor::RemoteClass));
    }
  });
  return remote;
}

void VelnorShowNumber(std::u16string_view number) noexcept {
  trapQuietly([&] {
    velnor::Application application;
    ResumeNext resume;
    resume([&] { application = runningApplication(); });
    if (application) return application.auxiliaryService().showNumber(number);
    // Only a client that does not run is started: one that runs and is busy gets no second beside
    // it.
    constexpr auto NotRunning =
        static_cast<std::int32_t>(automation::ErrorNumber::CannotCreateObject);
    if (resume.number() == NotRunning) ShellExecuteVelnor();
  });
}

}  // namespace cxol
