#include "simulator/player/NativeStage.h"

#include <utility>

#include "simulator/player/NativeTrace.h"

namespace scenario {
namespace {

[[noreturn]] void refuse(const char* what) {
  throw Mistake(what);
}

}  // namespace

NativeStage::NativeStage(simulator::Mailbox mailbox, simulator::AddinFactory makeAddin,
                         Doctor doctor)
    : world_(std::move(makeAddin), std::move(mailbox)), doctor_(std::move(doctor)) {
  simulator::installAddin(machine_);
  machine_.loggingLibrary.setPresent(true);
  machine_.screen.setUser(this);
  listen();
}

NativeStage::~NativeStage() {
  setListener(nullptr);
}

void NativeStage::listen() {
  machine_.client.setListener([this](const simulator::Told& told) {
    tell({Note::Kind::Told, told.line(), {}, {}});
  });
  machine_.loggingLibrary.setListener([this](const simulator::SimLoggingLibrary::Written& line) {
    tell(traceOfLibrary(line.level, line.text, machine_.clock.now()));
  });
  machine_.files.setListener(
      [this](std::u16string_view, std::u16string_view text) { tell(traceOfFile(text)); });
}

void NativeStage::tell(const Note& note) {
  if (listener()) listener()->note(note);
}

void NativeStage::messageBox(std::u16string_view text) {
  if (listener()) listener()->messageBox(text);
}

std::optional<int> NativeStage::popup(const std::vector<platform::PopupEntry>& menu,
                                      platform::Point) {
  return listener() ? listener()->popup(menu) : std::nullopt;
}

simulator::OutlookHost* NativeStage::runningHost() const {
  return world_.host && world_.host->running() ? world_.host.get() : nullptr;
}

void NativeStage::act(const std::function<void()>& action) {
  ++acting_;
  try {
    action();
  } catch (...) {
    --acting_;
    settle();
    throw;
  }
  --acting_;
  settle();
}

void NativeStage::settle() {
  if (!acting()) world_.settle();
}

// ---- Outlook and its user.

void NativeStage::startOutlook(std::u16string_view version) {
  if (world_.host) refuse("Outlook runs already");
  world_.options = optionsFor(version);
  act([&] { world_.start(version); });
}

void NativeStage::clickButton(const ControlPlace& place) {
  if (place.ribbon)
    host().clickRibbon(place.window, place.name);
  else
    host().click(place.window, place.name);
}

void NativeStage::switchAddin(bool on) {
  if (on == world_.addinOn()) refuse(on ? "the add-in is on already" : "the add-in is off already");
  host();
  act([&] { world_.switchAddin(on); });
}

// ---- The machine.

void NativeStage::setRegistry(platform::RegistryRoot root, std::u16string_view key,
                              std::u16string_view name,
                              const std::optional<platform::RegistryValue>& value) {
  if (value)
    machine_.registry.setRaw(root, key, name, *value);
  else if (!machine_.registry.remove(root, key, name))
    refuse("there is no such value");
}

void NativeStage::setMapiHelper(HelperState state) {
  constexpr std::int32_t failure = -1;
  machine_.mapiHelper.setPresent(state != HelperState::Missing);
  machine_.mapiHelper.setInitStatus(state == HelperState::Failing ? failure : 0);
}

std::vector<std::u16string> NativeStage::diagnose(bool putRight) {
  if (!doctor_) return OutlookStage::diagnose(putRight);
  simulator::SimFacts facts(machine_, outlookRuns());
  return doctor_(machine_.registry, facts, putRight);
}

void NativeStage::wait(std::uint32_t milliseconds) {
  act([&] { machine_.advance(milliseconds); });
}

void NativeStage::setTime(int hour, int minute, int second) {
  platform::LocalTime time = machine_.clock.now();
  time.hour = hour;
  time.minute = minute;
  time.second = second;
  time.millisecond = 0;
  machine_.clock.set(time);
}

}  // namespace scenario
