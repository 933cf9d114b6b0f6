#include "simulator/player/NativeStage.h"

#include <utility>

#include "simulator/player/NativeTrace.h"
#include "simulator/player/hostServices.h"

namespace scenario {
namespace {

[[noreturn]] void refuse(const char* what) {
  throw Mistake(what);
}

}  // namespace

NativeStage::NativeStage(simulator::Mailbox mailbox, AddinFactory makeAddin, Doctor doctor)
    : mailbox_(std::move(mailbox)), makeAddin_(std::move(makeAddin)), doctor_(std::move(doctor)) {
  simulator::installAddin(machine_);
  machine_.loggingLibrary.setPresent(true);
  machine_.mapiHelper.setCurrentUser(mailbox_.user);
  machine_.mapiHelper.setFacts([this](const auto& item) { return factsOf(item); });
  machine_.screen.setUser(this);
  listen();
}

NativeStage::~NativeStage() {
  setListener(nullptr);
  try {
    if (host_) host_->quit();
  } catch (const std::exception&) {
    // Outlook is gone in any case.
  }
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

const simulator::MapiFacts* NativeStage::factsOf(const automation::Object& item) const {
  const std::u16string id = item.get(u"EntryID").toText();
  for (const simulator::MailboxFolder& folder : mailbox_.folders)
    for (const simulator::MailboxItem& candidate : folder.items)
      if (candidate.id == id) return &candidate.mapi;
  return nullptr;
}

void NativeStage::settle() {
  if (!host_ || host_->running()) return;
  addin_.reset();
  host_.reset();
}

// ---- Outlook and its user.

void NativeStage::startOutlook(std::u16string_view version) {
  if (host_) refuse("Outlook runs already");
  host_ = std::make_unique<simulator::OutlookHost>(mailbox_, optionsFor(version), bars_, boundary_,
                                                   simulator::hostServices(machine_));
  if (addinOn_) addin_ = makeAddin_(services_);
  host_->start(addin_.get());
}

void NativeStage::clickButton(int window, const std::u16string& button, bool ribbon) {
  if (ribbon)
    host().clickRibbon(window, button);
  else
    host().click(window, button);
}

void NativeStage::switchAddin(bool on) {
  if (on == addinOn_) refuse(on ? "the add-in is on already" : "the add-in is off already");
  addinOn_ = on;
  if (on) {
    addin_ = makeAddin_(services_);
    host().connectAddin(*addin_);
  } else {
    host().disconnectAddin();
    addin_.reset();
  }
}

// ---- The telephone.

void NativeStage::ring(std::u16string_view number) {
  if (!machine_.client.ring(number)) refuse("no line is free, or the client is not in service");
}

void NativeStage::connectCall() {
  if (!machine_.client.connect()) refuse("there is no call to connect");
}

void NativeStage::endCall() {
  if (!machine_.client.stopCall()) refuse("there is no call to end");
}

void NativeStage::hangClient(bool on) {
  if (!machine_.client.running()) refuse("the client does not run");
  machine_.client.hang(on);
}

void NativeStage::freezeClient(bool on) {
  if (!machine_.client.running()) refuse("the client does not run");
  machine_.client.freeze(on);
}

void NativeStage::vanishClient() {
  if (!machine_.client.running()) refuse("the client does not run");
  machine_.client.vanish();
}

void NativeStage::setClient(ClientState state) {
  simulator::Client& client = machine_.client;
  if (client.running()) client.vanish();
  if (state == ClientState::Missing) {
    client.uninstall(machine_.registry);
    return;
  }
  if (!client.installed()) machine_.installClient();
  if (state != ClientState::Installed) client.startReady(state == ClientState::Hidden);
}

void NativeStage::setClientGap(ClientGap gap) {
  simulator::Client::Gaps gaps;
  gaps.window = gap == ClientGap::Window;
  gaps.object = gap == ClientGap::Object;
  gaps.service = gap == ClientGap::Service;
  machine_.client.setGaps(gaps);
}

void NativeStage::setClientErrors(bool on) {
  machine_.client.answerWithError(on ? simulator::Client::EveryCall : 0);
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

void NativeStage::setTime(int hour, int minute, int second) {
  platform::LocalTime time = machine_.clock.now();
  time.hour = hour;
  time.minute = minute;
  time.second = second;
  time.millisecond = 0;
  machine_.clock.set(time);
}

}  // namespace scenario
