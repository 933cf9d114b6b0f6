#include "simulator/player/OutlookStage.h"

#include <algorithm>
#include <unordered_map>
#include <utility>

namespace scenario {
namespace {

constexpr std::size_t ListedSelection = 3;

const simulator::MailboxFolder* folderNamed(const simulator::Mailbox& mailbox,
                                            std::u16string_view name) {
  const auto found = std::ranges::find(mailbox.folders, name, &simulator::MailboxFolder::name);
  return found == mailbox.folders.end() ? nullptr : &*found;
}

}  // namespace

simulator::OutlookHost& OutlookStage::host() const {
  simulator::OutlookHost* running = runningHost();
  if (!running) throw Mistake("Outlook does not run");
  return *running;
}

void OutlookStage::quitOutlook() {
  act([&] {
    host().quit();
    settle();
  });
}

void OutlookStage::openExplorer(std::u16string_view folder) {
  act([&] { host().openExplorer(folder); });
}

void OutlookStage::openItem(std::u16string_view itemId) {
  act([&] { host().openItem(itemId); });
}

void OutlookStage::newItem(outlook::ItemType type) {
  act([&] { host().newItem(type); });
}

void OutlookStage::activate(int window) {
  act([&] { host().activate(window); });
}

void OutlookStage::close(int window) {
  act([&] {
    host().close(window);
    settle();
  });
}

void OutlookStage::switchFolder(int window, std::u16string_view folder) {
  act([&] { host().switchFolder(window, folder); });
}

void OutlookStage::switchView(int window) {
  const simulator::OutlookView view = host().snapshot(0);
  const auto shown = std::ranges::find(view.windows, window, &simulator::WindowView::number);
  const bool first = shown != view.windows.end() && shown->view == u"Table";
  act([&] { host().switchView(window, first ? u"Cards" : u"Table"); });
}

void OutlookStage::select(int window, const std::vector<std::u16string>& itemIds) {
  const simulator::OutlookView view = host().snapshot(0);
  const auto shown = std::ranges::find(view.windows, window, &simulator::WindowView::number);
  std::unordered_map<std::u16string_view, std::size_t> places;
  if (shown != view.windows.end()) {
    if (const auto* folder = folderNamed(mailbox(), shown->folder))
      for (const simulator::MailboxItem& item : folder->items)
        places.emplace(item.id, places.size() + 1);
  }
  std::vector<std::size_t> chosen;
  for (const std::u16string& id : itemIds) {
    const auto place = places.find(id);
    if (place == places.end()) throw Mistake("the item is gone");
    chosen.push_back(place->second);
  }
  act([&] { host().selectAt(window, chosen); });
}

void OutlookStage::click(const ControlPlace& place) {
  act([&] { clickButton(place); });
}

void OutlookStage::type(const ControlPlace& place, std::u16string_view text) {
  act([&] { host().typeInto(place.window, place.name, text); });
}

void OutlookStage::presetBar(const BarPreset& preset) {
  simulator::StoredBar bar = simulator::storedBar(preset.name, preset.tags);
  bar.emptyActivations = preset.emptyActivations;
  bar.refusesControls = preset.refusesControls;
  auto& kept = preset.inspector ? bars().inspectors : bars().explorers;
  std::erase_if(kept, [&](const simulator::StoredBar& other) { return other.name == bar.name; });
  kept.push_back(std::move(bar));
}

void OutlookStage::failMember(std::u16string_view className, std::u16string_view member,
                              FailureSpan span) {
  if (span == FailureSpan::Over) return host().restoreMember(className, member);
  const automation::Error error(automation::ErrorNumber::AutomationFailed);
  if (span == FailureSpan::Once) return host().failMember(className, member, error, 1);
  host().failMember(className, member, error);
}

Snapshot OutlookStage::snapshot() {
  Snapshot result;
  result.telephone = telephone();
  simulator::OutlookHost* running = runningHost();
  if (!running) return result;
  result.windows = running->snapshot(ListedSelection).windows;
  std::ranges::sort(result.windows, {}, &WindowView::number);
  return result;
}

std::vector<std::u16string> OutlookStage::folders() {
  std::vector<std::u16string> names;
  for (const simulator::MailboxFolder& folder : mailbox().folders) names.push_back(folder.name);
  return names;
}

std::vector<ItemEntry> OutlookStage::items(std::u16string_view name) {
  std::vector<ItemEntry> entries;
  if (const auto* folder = folderNamed(mailbox(), name))
    for (const simulator::MailboxItem& item : folder->items)
      entries.push_back({item.id, item.title()});
  return entries;
}

std::size_t OutlookStage::references() {
  return boundary().liveHandles() + boundary().liveConnections();
}

}  // namespace scenario
