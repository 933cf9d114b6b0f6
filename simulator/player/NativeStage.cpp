#include "simulator/player/NativeStage.h"

#include <algorithm>
#include <map>
#include <utility>

#include "simulator/machine/dates.h"
#include "simulator/player/NativePicture.h"
#include "simulator/player/NativeTrace.h"

namespace scenario {
namespace {

[[noreturn]] void refuse(const char* what) {
  throw Mistake(what);
}

}  // namespace

NativeStage::NativeStage(simulator::Mailbox mailbox, AddinFactory makeAddin)
    : mailbox_(std::move(mailbox)), makeAddin_(std::move(makeAddin)) {
  machine_.loggingLibrary.setPresent(true);
  machine_.mapiHelper.setCurrentUser(mailbox_.user);
  machine_.mapiHelper.setFacts([this](const auto& item) { return factsOf(item); });
  machine_.screen.setUser(this);
  listen();
}

NativeStage::~NativeStage() {
  listener_ = nullptr;
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
  if (listener_) listener_->note(note);
}

void NativeStage::messageBox(std::u16string_view text) {
  if (listener_) listener_->messageBox(text);
}

std::optional<int> NativeStage::popup(const std::vector<platform::PopupEntry>& menu,
                                      platform::Point) {
  return listener_ ? listener_->popup(menu) : std::nullopt;
}

const simulator::MapiFacts* NativeStage::factsOf(const automation::Object& item) const {
  const std::u16string id = item.get(u"EntryID").toText();
  for (const simulator::MailboxFolder& folder : mailbox_.folders)
    for (const simulator::MailboxItem& candidate : folder.items)
      if (candidate.id == id) return &candidate.mapi;
  return nullptr;
}

simulator::OutlookHost& NativeStage::host() {
  if (!host_) refuse("Outlook does not run");
  return *host_;
}

void NativeStage::settle() {
  if (!host_ || host_->running()) return;
  addin_.reset();
  host_.reset();
}

// ---- Outlook and its user.

void NativeStage::startOutlook(std::u16string_view version) {
  if (host_) refuse("Outlook runs already");
  simulator::OutlookServices services;
  services.clipboard = [this] { return machine_.pictures.clipboardPicture(); };
  services.parseDate = [this](std::u16string_view text) {
    return simulator::parseShortDate(machine_.language.langId(), text);
  };
  simulator::OutlookOptions options;
  options.version = version;
  options.wordIsMailEditor = wordMail_;
  host_ = std::make_unique<simulator::OutlookHost>(mailbox_, options, bars_, boundary_,
                                                   std::move(services));
  if (addinOn_) addin_ = makeAddin_(services_);
  host_->start(addin_.get());
}

void NativeStage::quitOutlook() {
  host().quit();
  settle();
}

void NativeStage::openExplorer(std::u16string_view folder) {
  host().openExplorer(folder);
}
void NativeStage::openItem(std::u16string_view itemId) {
  host().openItem(itemId);
}
void NativeStage::newItem(outlook::ItemType type) {
  host().newItem(type);
}
void NativeStage::activate(int window) {
  host().activate(window);
}

void NativeStage::close(int window) {
  host().close(window);
  settle();
}

void NativeStage::switchFolder(int window, std::u16string_view folder) {
  host().switchFolder(window, folder);
}

void NativeStage::switchView(int window) {
  const simulator::OutlookView view = host().snapshot(0);
  const auto shown = std::find_if(view.windows.begin(), view.windows.end(),
                                  [&](const auto& each) { return each.number == window; });
  const bool first = shown != view.windows.end() && shown->view == u"Table";
  host().switchView(window, first ? u"Cards" : u"Table");
}

void NativeStage::select(int window, const std::vector<std::u16string>& itemIds) {
  const simulator::OutlookView view = host().snapshot(0);
  std::map<std::u16string_view, std::size_t> places;
  for (const simulator::WindowView& each : view.windows) {
    if (each.number != window) continue;
    for (const simulator::MailboxFolder& folder : mailbox_.folders) {
      if (folder.name != each.folder) continue;
      for (const simulator::MailboxItem& item : folder.items)
        places.emplace(item.id, places.size() + 1);
    }
  }
  std::vector<std::size_t> chosen;
  for (const std::u16string& id : itemIds) {
    const auto place = places.find(id);
    if (place == places.end()) refuse("the item is gone");
    chosen.push_back(place->second);
  }
  host().selectAt(window, chosen);
}

std::u16string NativeStage::nameOf(const ControlPlace& place) {
  for (const WindowPicture& window : snapshot().windows) {
    if (window.number != place.window) continue;
    const auto& controls = place.ribbon ? window.groups.at(place.group).controls
                                        : window.bars.at(place.group).controls;
    const ControlPicture& control = controls.at(place.control);
    return control.tag.empty() ? control.caption : control.tag;
  }
  refuse("the window is gone");
}

void NativeStage::click(const ControlPlace& place) {
  const std::u16string name = nameOf(place);
  if (place.ribbon)
    host().clickRibbon(place.window, name);
  else
    host().click(place.window, name);
}

void NativeStage::type(const ControlPlace& place, std::u16string_view text) {
  host().typeInto(place.window, nameOf(place), text);
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

void NativeStage::presetBar(const BarPreset& preset) {
  simulator::StoredBar bar = simulator::storedBar(preset.name, preset.tags);
  bar.emptyActivations = preset.emptyActivations;
  bar.refusesControls = preset.refusesControls;
  auto& kept = preset.inspector ? bars_.inspectors : bars_.explorers;
  std::erase_if(kept, [&](const simulator::StoredBar& other) { return other.name == bar.name; });
  kept.push_back(std::move(bar));
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

void NativeStage::setTime(int hour, int minute, int second) {
  platform::LocalTime time = machine_.clock.now();
  time.hour = hour;
  time.minute = minute;
  time.second = second;
  time.millisecond = 0;
  machine_.clock.set(time);
}

// ---- What can be seen.

Snapshot NativeStage::snapshot() {
  constexpr std::size_t listed = 3;
  Snapshot result;
  result.telephone = machine_.client.status();
  if (!host_) return result;
  for (const simulator::WindowView& window : host_->snapshot(listed).windows)
    result.windows.push_back(pictureOf(window));
  std::sort(result.windows.begin(), result.windows.end(),
            [](const auto& a, const auto& b) { return a.number < b.number; });
  const std::optional<int> active = host_->activeWindow();
  for (WindowPicture& window : result.windows) window.active = window.number == active;
  return result;
}

std::vector<std::u16string> NativeStage::folders() {
  std::vector<std::u16string> names;
  for (const simulator::MailboxFolder& folder : mailbox_.folders) names.push_back(folder.name);
  return names;
}

std::vector<ItemEntry> NativeStage::items(std::u16string_view name) {
  std::vector<ItemEntry> entries;
  for (const simulator::MailboxFolder& folder : mailbox_.folders) {
    if (folder.name != name) continue;
    for (const simulator::MailboxItem& item : folder.items)
      entries.push_back({item.id, item.title()});
    break;
  }
  return entries;
}

std::size_t NativeStage::references() {
  return boundary_.liveHandles() + boundary_.liveConnections();
}

}  // namespace scenario
