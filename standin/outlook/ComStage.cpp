#include "standin/outlook/ComStage.h"

#include <algorithm>
#include <limits>
#include <utility>

#include "simulator/player/NativePicture.h"
#include "simulator/player/Text.h"

namespace standin {

using platform::RegistryRoot;
using scenario::BarPreset;
using scenario::ControlPicture;
using scenario::ControlPlace;
using scenario::ItemEntry;
using scenario::Mistake;
using scenario::Note;
using scenario::Snapshot;
using scenario::WindowPicture;

namespace {

constexpr std::u16string_view LogKey = u"Software\\K9T\\Logging";
constexpr std::u16string_view LanguageKey = u"Software\\K9T\\Localization\\LangID";
constexpr std::uint32_t AmericanEnglish = 1033;

}  // namespace

ComStage::ComStage(Session& session, ClientDesk& client, Libraries& libraries)
    : session_(session), client_(client), libraries_(libraries) {
  if (libraries_.available()) {
    setLoggingLibrary(true);
    setMapiHelper(scenario::HelperState::Present);
  } else {
    client_.watch(traceFile_.path());
    registry_.setText(RegistryRoot::CurrentUser, LogKey, u"LogFile", u"1");
  }
  registry_.setDword(RegistryRoot::CurrentUser, LanguageKey, u"LangID", AmericanEnglish);
  watch_ = std::make_unique<ModalWatch>(
      ModalWatch::Answers{[this](const auto& menu) -> std::optional<int> {
                            tell();
                            return listener_ ? listener_->popup(menu) : std::nullopt;
                          },
                          [this](std::u16string_view text) {
                            tell();
                            if (listener_) listener_->messageBox(text);
                          }});
}

ComStage::~ComStage() {
  listener_ = nullptr;
  try {
    if (session_.running()) session_.quit();
  } catch (const std::exception&) {
    // Outlook is gone in any case.
  }
}

void ComStage::tell() {
  const std::vector<ToldLine> told = client_.told();
  std::vector<TraceEntry> traced = traceFile_.read();
  // The add-in writes to one of them at a time.
  for (TraceEntry& entry : libraryLog_.read()) traced.push_back(std::move(entry));
  if (!listener_) return;
  auto next = told.begin();
  const auto tellUpTo = [&](std::uint64_t traceSize) {
    for (; next != told.end() && next->watchedSize < traceSize; ++next)
      listener_->note({Note::Kind::Told, next->text, {}, {}});
  };
  for (const TraceEntry& entry : traced) {
    tellUpTo(entry.fileSize);
    listener_->note(entry.note);
  }
  tellUpTo(std::numeric_limits<std::uint64_t>::max());
}

template <class Action>
void ComStage::act(Action&& action) {
  try {
    action();
  } catch (...) {
    pace_.reset();
    tell();
    throw;
  }
  client_.settle();
  pace_.reset();
  tell();
}

simulator::OutlookHost& ComStage::host() {
  if (!session_.running()) throw Mistake("Outlook does not run");
  return session_.host();
}

// ---- Outlook and its user.

void ComStage::startOutlook(std::u16string_view version) {
  if (session_.running()) throw Mistake("Outlook runs already");
  act([&] { session_.start(version, wordMail_); });
  if (!session_.problem().empty())
    throw Mistake("the add-in was not loaded: " + scenario::toUtf8(session_.problem()));
}

void ComStage::quitOutlook() {
  host();
  act([&] { session_.quit(); });
}

void ComStage::openExplorer(std::u16string_view folder) {
  act([&] { host().openExplorer(folder); });
}
void ComStage::openItem(std::u16string_view itemId) {
  act([&] { host().openItem(itemId); });
}
void ComStage::newItem(outlook::ItemType type) {
  act([&] { host().newItem(type); });
}
void ComStage::activate(int window) {
  act([&] { host().activate(window); });
}

void ComStage::close(int window) {
  act([&] {
    host().close(window);
    session_.settle();
  });
}

void ComStage::switchFolder(int window, std::u16string_view folder) {
  act([&] { host().switchFolder(window, folder); });
}

void ComStage::switchView(int window) {
  const simulator::OutlookView view = host().snapshot(0);
  const auto shown = std::ranges::find(view.windows, window, &simulator::WindowView::number);
  const bool first = shown != view.windows.end() && shown->view == u"Table";
  act([&] { host().switchView(window, first ? u"Cards" : u"Table"); });
}

void ComStage::select(int window, const std::vector<std::u16string>& itemIds) {
  act([&] { host().select(window, itemIds); });
}

std::u16string ComStage::nameOf(const ControlPlace& place) {
  for (const WindowPicture& window : snapshot().windows) {
    if (window.number != place.window) continue;
    const auto& controls = place.ribbon ? window.groups.at(place.group).controls
                                        : window.bars.at(place.group).controls;
    const ControlPicture& control = controls.at(place.control);
    return control.tag.empty() ? control.caption : control.tag;
  }
  throw Mistake("the window is gone");
}

void ComStage::click(const ControlPlace& place) {
  const std::u16string name = nameOf(place);
  host();
  act([&] { session_.click(place.window, name, place.ribbon); });
}

void ComStage::type(const ControlPlace& place, std::u16string_view text) {
  const std::u16string name = nameOf(place);
  act([&] { host().typeInto(place.window, name, text); });
}

void ComStage::switchAddin(bool on) {
  host();
  if (on == session_.addinOn())
    throw Mistake(on ? "the add-in is on already" : "the add-in is off already");
  act([&] { session_.switchAddin(on); });
}

void ComStage::presetBar(const BarPreset& preset) {
  simulator::StoredBar bar = simulator::storedBar(preset.name, preset.tags);
  bar.emptyActivations = preset.emptyActivations;
  bar.refusesControls = preset.refusesControls;
  auto& kept = preset.inspector ? session_.bars().inspectors : session_.bars().explorers;
  std::erase_if(kept, [&](const simulator::StoredBar& other) { return other.name == bar.name; });
  kept.push_back(std::move(bar));
}

// ---- The telephone.

void ComStage::ring(std::u16string_view number) {
  act([&] { client_.ring(number); });
}
void ComStage::connectCall() {
  act([&] { client_.connectCall(); });
}
void ComStage::endCall() {
  act([&] { client_.endCall(); });
}
void ComStage::hangClient(bool on) {
  act([&] { client_.hang(on); });
}
void ComStage::vanishClient() {
  act([&] { client_.vanish(); });
}
void ComStage::setClient(scenario::ClientState state) {
  act([&] { client_.setState(state); });
}
void ComStage::setClientGap(scenario::ClientGap gap) {
  act([&] { client_.setGap(gap); });
}
void ComStage::setClientErrors(bool on) {
  act([&] { client_.setErrors(on); });
}

// ---- The machine.

void ComStage::setLanguage(std::int32_t langId) {
  registry_.setDword(RegistryRoot::CurrentUser, LanguageKey, u"LangID",
                     static_cast<std::uint32_t>(langId));
}

void ComStage::setRegistry(RegistryRoot root, std::u16string_view key, std::u16string_view name,
                           const std::optional<platform::RegistryValue>& value) {
  if (!registry_.set(root, key, name, value)) throw Mistake("there is no such value");
}

void ComStage::setLoggingLibrary(bool present) {
  libraries_.setLogging(present);
  client_.watch(present ? libraryLog_.path() : traceFile_.path());
}
void ComStage::setMapiHelper(scenario::HelperState state) {
  libraries_.setMapiHelper(state);
}
void ComStage::setTime(int, int, int) {
  throw Mistake("the clock of a real machine is not set here; mark the line as native only");
}

void ComStage::wait(std::uint32_t milliseconds) {
  pace_.wait(milliseconds);
  tell();
}

// ---- What can be seen.

Snapshot ComStage::snapshot() {
  constexpr std::size_t listed = 3;
  Snapshot result;
  result.telephone = client_.status();
  if (!session_.running()) return result;
  for (const simulator::WindowView& window : host().snapshot(listed).windows)
    result.windows.push_back(scenario::pictureOf(window));
  std::ranges::sort(result.windows, {}, &WindowPicture::number);
  const std::optional<int> active = host().activeWindow();
  for (WindowPicture& window : result.windows) window.active = window.number == active;
  return result;
}

std::vector<std::u16string> ComStage::folders() {
  std::vector<std::u16string> names;
  for (const simulator::MailboxFolder& folder : session_.mailbox().folders)
    names.push_back(folder.name);
  return names;
}

std::vector<ItemEntry> ComStage::items(std::u16string_view name) {
  std::vector<ItemEntry> entries;
  for (const simulator::MailboxFolder& folder : session_.mailbox().folders) {
    if (folder.name != name) continue;
    for (const simulator::MailboxItem& item : folder.items)
      entries.push_back({item.id, item.title()});
    break;
  }
  return entries;
}

std::size_t ComStage::references() {
  return session_.boundary().liveHandles() + session_.boundary().liveConnections();
}

}  // namespace standin
