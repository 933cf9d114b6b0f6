#include "tests/sweep/Actor.h"

#include <algorithm>
#include <stdexcept>

#include "demo/NativeAddin.h"
#include "platform/conversions.h"

namespace sweep {
namespace {

using platform::RegistryRoot;
using simulator::Told;
using simulator::WindowKind;

constexpr std::u16string_view Reentered = u"OlEvents.Connect() reentered!";

}  // namespace

Actor::Actor()
    : tests::World(
          [this](const platform::Platform&) { return makeNativeAddin(services_.platform()); }) {}

void Actor::live(FaultInjector& injector, const std::function<void(Actor&)>& prepare,
                 const std::function<void(Actor&)>& play) {
  resetWorld();
  prepare(*this);
  injector_ = &injector;
  services_.setInjector(&injector);
  boundary.setObserver(&injector);
  play(*this);
  inspect();
  inspectWindows();
  unload();
  boundary.setObserver(nullptr);
  services_.setInjector(nullptr);
  inspectAfterUnloading();
  injector_ = nullptr;
  writeTranscript();
}

void Actor::resetWorld() {
  transcript_.clear();
  findings_.clear();
  missed_.clear();
  ribbonVersion_ = false;
  released_ = false;
  bars = {};
  for (auto& folder : mailbox.folders) folder.items.clear();
  machine.screen.setUser(&user);
  user.choice.clear();
  user.whileOpen = nullptr;
  options.wordIsMailEditor = false;
  for (const auto key : {tests::AddInKey, tests::ClientKey}) {
    machine.registry.removeKey(RegistryRoot::CurrentUser, key);
  }
  machine.client.vanish();
  machine.client.setGaps({});
  machine.client.setLinesAnswer(std::nullopt);
  machine.client.telephone().setLines({1, 2});
  machine.installClient();
  machine.mapiHelper.setPresent(true);
  machine.loggingLibrary.setPresent(true);
  machine.clock.set({2008, 3, 7, 9, 0, 0, 0});
  for (const auto& path : machine.files.paths()) machine.files.remove(path);
  machine.installClient();
  forget();
  libraryLines_ = machine.loggingLibrary.written().size();
}

void Actor::act(const std::function<void()>& action) {
  if (!host || !host->running()) {
    missed_ = "Outlook does not run";
    return;
  }
  const std::size_t before = dials();
  try {
    action();
  } catch (const automation::Error& error) {
    find(std::string("an error left an entry point: ") + error.what());
  } catch (const std::runtime_error& error) {
    // The window, button or item is not there.
    missed_ = error.what();
  }
  if (dials() > before + 1) find("one action dialled twice");
  releaseIfDue();
}

void Actor::releaseIfDue() {
  if (std::exchange(released_, false)) addin.reset();
}

void Actor::wait(std::uint32_t milliseconds) {
  machine.advance(milliseconds);
  releaseIfDue();
}

std::size_t Actor::dials() const {
  return static_cast<std::size_t>(
      std::ranges::count_if(machine.client.told(), [](const Told& told) {
        return told.kind == Told::Kind::Dial || told.kind == Told::Kind::DirectDial;
      }));
}

int Actor::activeWindow() const {
  const auto window = host->activeWindow();
  if (!window) throw std::runtime_error("no window");
  return *window;
}

std::optional<int> Actor::TaskChooser::popup(const std::vector<platform::PopupEntry>& menu,
                                             platform::Point) {
  for (const auto& entry : menu) {
    if (!entry.entries.empty()) return entry.entries.front().id;
  }
  return std::nullopt;
}

void Actor::startOutlook(std::u16string_view version) {
  ribbonVersion_ = version.starts_with(u"12.");
  start(version);
  releaseIfDue();
}

void Actor::pick(std::u16string_view folder, std::u16string_view item) {
  act([&] { select(folder, item); });
}

void Actor::pickAll(std::u16string_view folder) {
  showFolder(folder);
  act([&] { host->selectAll(host->windows(WindowKind::Explorer).at(0)); });
}

void Actor::showFolder(std::u16string_view folder) {
  act([&] { host->switchFolder(host->windows(WindowKind::Explorer).at(0), folder); });
}

void Actor::open(std::u16string_view item) {
  act([&] { host->openItem(item); });
}

void Actor::openSecondExplorer(std::u16string_view folder) {
  act([&] { host->openExplorer(folder); });
}

void Actor::click(std::u16string_view tag) {
  act([&] { host->click(activeWindow(), tag); });
}

void Actor::clickRibbon(std::u16string_view id) {
  act([&] { host->clickRibbon(activeWindow(), id); });
}

void Actor::type(std::u16string_view text) {
  act([&] { host->typeInto(activeWindow(), u"CxCbDial", text); });
}

void Actor::bringToFront(int window) {
  act([&] { host->activate(window); });
}

void Actor::closeWindow(int window) {
  act([&] { host->close(window); });
}

void Actor::closeActive() {
  act([&] { host->close(activeWindow()); });
}

void Actor::switchOff() {
  act([&] {
    if (host->addinConnected()) host->disconnectAddin();
  });
  if (host && !host->addinConnected() && boundary.liveHandles() != 0) {
    find("switched off, yet objects of the host are held");
  }
  // Outlook lets go of an add-in that is off.
  if (host && !host->addinConnected()) addin.reset();
}

void Actor::switchOn() {
  act([&] {
    if (host->addinConnected()) return;
    loadAddin();
    host->connectAddin(*addin);
  });
}

void Actor::quit() {
  act([&] { host->quit(); });
}

bool Actor::disturb(FaultKind kind) {
  if (kind == FaultKind::TimerTick) {
    machine.advance(400);
    return true;
  }
  if (!host || !host->running()) return false;
  try {
    switch (kind) {
      case FaultKind::Activation: host->activate(activeWindow()); return true;
      case FaultKind::SelectionChange:
        host->selectAt(host->windows(WindowKind::Explorer).at(0), std::array<std::size_t, 1>{1});
        return true;
      case FaultKind::WindowClose: host->close(activeWindow()); return true;
      case FaultKind::Quit: host->quit(); return true;
      case FaultKind::SwitchOff:
      case FaultKind::Release:
        if (!host->addinConnected()) return false;
        host->disconnectAddin();
        released_ = kind == FaultKind::Release;
        return true;
      default: return false;
    }
  } catch (const std::runtime_error&) {
    return false;
  } catch (const std::out_of_range&) {
    return false;
  }
}

void Actor::inspect() {
  injector_->pause(true);
  if (machine.screen.anchor() && !injector_->hit(u"hideAnchor")) find("the anchor is left shown");
  if (addin) {
    const auto& state = cxol::globals();
    if (state.TimerBusy) find("TimerBusy is left set");
    if (state.g_bCreatingInspector && !ribbonVersion_) find("g_bCreatingInspector is left set");
    if (host && !host->addinConnected() && boundary.liveHandles() != 0) {
      find("disconnected, yet objects of the host are held");
    }
    reconnectInspectors();
  }
  injector_->pause(false);
}

void Actor::reconnectInspectors() {
  const auto& written = machine.loggingLibrary.written();
  const std::size_t before = written.size();
  const auto& inspectors = cxol::globals().g_colInspectors;
  for (std::int32_t i = 1; i <= inspectors.count(); ++i) {
    const auto wrapper = inspectors.item(i);
    if (wrapper->NeedConnect()) wrapper->Connect();
  }
  const auto after = written.begin() + static_cast<std::ptrdiff_t>(before);
  if (std::any_of(after, written.end(), [](const auto& line) { return line.text == Reentered; })) {
    find("IsConnecting is left set");
  }
}

void Actor::inspectWindows() {
  const bool on = addin && host && host->running() && host->addinConnected();
  // The ribbon's version has no ticks once an inspector was open.
  if (!on || ribbonVersion_ || !injector_->passing() || injector_->hit(u"setTimer")) return;
  injector_->pause(true);
  machine.advance(21'000);
  injector_->pause(false);
  const auto windows = host->windows(WindowKind::Explorer);
  const auto& explorers = cxol::globals().g_colExplorers;
  std::size_t served = 0;
  for (std::int32_t i = 1; i <= explorers.count(); ++i) {
    if (explorers.item(i)->thisExplorer()) ++served;
  }
  const auto bare = [this](int number) { return window(number).bars.empty(); };
  if (served == windows.size() && std::ranges::any_of(windows, bare)) {
    find("an explorer is left without a toolbar");
  }
  const auto& inspectors = cxol::globals().g_colInspectors;
  for (std::int32_t i = 1; i <= inspectors.count(); ++i) {
    const auto wrapper = inspectors.item(i);
    if (wrapper->thisInspector() && wrapper->NeedConnect()) {
      find("an inspector is left without its toolbar");
    }
  }
}

void Actor::inspectBars() {
  // What was added by a call that never answered can't be taken away again.
  if (!injector_->passing() || injector_->place() == "CommandBarControls.Add") return;
  for (const auto* kept : {&bars.explorers, &bars.inspectors}) {
    for (const auto& bar : *kept) {
      if (std::ranges::any_of(bar.controls, &std::u16string::empty,
                              &simulator::StoredControl::tag)) {
        find("a control without a tag is left on a bar");
      }
    }
  }
}

void Actor::unload() {
  if (host && host->running()) {
    act([&] { host->quit(); });
  }
  addin.reset();
  host.reset();
}

void Actor::inspectAfterUnloading() {
  inspectBars();
  if (boundary.liveHandles() != 0) find("objects of the host are held after unloading");
  if (boundary.liveConnections() != 0) find("subscriptions are left after unloading");
  if (machine.timers.liveCount() != 0 && !injector_->hit(u"killTimer")) {
    find("a timer is left after unloading");
  }
  if (machine.screen.anchor() && !injector_->hit(u"hideAnchor")) {
    find("the anchor is left shown after unloading");
  }
  if (machine.mapiHelper.initialized() && !injector_->hit(u"deinit") && !injector_->hit(u"init")) {
    find("the MAPI helper is left initialized");
  }
}

void Actor::writeTranscript() {
  for (const auto& line : told()) transcript_.push_back(u"told: " + line);
  for (const auto& box : machine.screen.messageBoxes()) transcript_.push_back(u"box: " + box);
  const auto& written = machine.loggingLibrary.written();
  for (std::size_t i = libraryLines_; i < written.size(); ++i) {
    transcript_.push_back(automation::int32Text(written[i].level) + u": " + written[i].text);
  }
  for (const auto& line : trace()) transcript_.push_back(line);
}

}  // namespace sweep
