#include "tests/World.h"

#include <gtest/gtest.h>

#include <algorithm>

namespace tests {
namespace {

constexpr std::u16string_view TraceFile =
    u"C:\\Documents and Settings\\User\\Local Settings\\Application Data\\VelnorLog\\"
    u"Log_cxolcom.txt";
constexpr std::size_t TimeLength = 24;

std::optional<int> find(const std::vector<platform::PopupEntry>& menu, std::u16string_view start) {
  for (const auto& entry : menu) {
    if (const auto below = find(entry.entries, start)) return below;
    if (entry.entries.empty() && entry.caption.starts_with(start)) return entry.id;
  }
  return std::nullopt;
}

}  // namespace

std::optional<int> Chooser::popup(const std::vector<platform::PopupEntry>& menu, platform::Point) {
  if (whileOpen) whileOpen();
  return choice.empty() ? std::nullopt : find(menu, choice);
}

World::World(simulator::AddinFactory makeAddin) : simulator::World(std::move(makeAddin)) {
  machine.installClient();
  switchTrace(true);
  machine.screen.setUser(&user);
  const struct {
    const char16_t* name;
    ItemType type;
  } folders[] = {{u"Inbox", ItemType::Mail},           {u"Contacts", ItemType::Contact},
                 {u"Calendar", ItemType::Appointment}, {u"Tasks", ItemType::Task},
                 {u"Journal", ItemType::Journal},      {u"Notes", ItemType::Note},
                 {u"Outbox", ItemType::Mail}};
  for (const auto& folder : folders) {
    simulator::MailboxFolder& added = mailbox.folders.emplace_back();
    added.name = folder.name;
    added.id = std::u16string(u"folder ") + folder.name;
    added.storeId = u"store";
    added.itemType = folder.type;
    added.outbox = added.name == u"Outbox";
  }
}

void World::switchTrace(bool on) {
  machine.registry.setString(RegistryRoot::CurrentUser, u"Software\\K9T\\Logging", u"LogFile",
                             on ? u"1" : u"0");
}

void World::startWithToolbar(std::u16string_view version) {
  start(version);
  machine.advance(25'000);
  forget();
}

simulator::MailboxItem& World::add(std::u16string_view folder, ObjectClass kind,
                                   std::u16string_view id) {
  const auto found = std::ranges::find(mailbox.folders, folder, &simulator::MailboxFolder::name);
  simulator::MailboxItem& item = found->items.emplace_back();
  item.kind = kind;
  item.id = id;
  if (kind == ObjectClass::Contact) {
    item.properties[u"FullName"] = id;
    item.properties[u"LastNameAndFirstName"] = id;
  } else {
    item.properties[u"Subject"] = id;
  }
  return item;
}

simulator::MailboxItem& World::addContact(
    std::u16string_view id, const std::map<std::u16string_view, std::u16string_view>& phones) {
  auto& contact = add(u"Contacts", ObjectClass::Contact, id);
  for (const auto& [property, number] : phones) {
    contact.properties[std::u16string(property)] = number;
  }
  return contact;
}

void World::select(std::u16string_view folder, std::u16string_view item) {
  const int explorer = host->windows(simulator::WindowKind::Explorer).front();
  if (window(explorer).folder != folder) host->switchFolder(explorer, folder);
  const Texts items{std::u16string(item)};
  host->select(explorer, items);
}

Texts World::allTrace() const {
  Texts lines;
  auto text = machine.files.text(TraceFile).value_or(u"");
  for (std::size_t end; (end = text.find(u"\r\n")) != std::u16string::npos;) {
    lines.push_back(text.substr(TimeLength, end - TimeLength));
    text.erase(0, end + 2);
  }
  return lines;
}

Texts World::trace() const {
  auto lines = allTrace();
  lines.erase(lines.begin(), lines.begin() + static_cast<std::ptrdiff_t>(forgottenTrace_));
  return lines;
}

std::size_t World::count(std::u16string_view line) const {
  return static_cast<std::size_t>(std::ranges::count(trace(), line));
}

void World::forget() {
  forgottenTrace_ = allTrace().size();
  machine.client.clearTold();
  machine.screen.clearLog();
}

Texts World::told() const {
  Texts lines;
  for (const auto& told : machine.client.told()) lines.push_back(told.line());
  return lines;
}

Texts World::menu() const {
  Texts captions;
  if (machine.screen.popups().empty()) return captions;
  for (const auto& entry : machine.screen.popups().back().entries) {
    captions.push_back(entry.separator ? u"-"
                       : entry.enabled ? entry.caption
                                       : u"[" + entry.caption + u"]");
  }
  return captions;
}

simulator::WindowView World::window(int number) const {
  const auto view = host->snapshot();
  const auto found = std::ranges::find(view.windows, number, &simulator::WindowView::number);
  if (found == view.windows.end()) throw std::runtime_error("no such window");
  return *found;
}

std::optional<simulator::BarView> World::bar(int number, std::u16string_view name) const {
  const auto view = window(number);
  const auto found = std::ranges::find(view.bars, name, &simulator::BarView::name);
  if (found == view.bars.end()) return std::nullopt;
  return *found;
}

std::optional<Texts> World::tagsOf(int number, std::u16string_view name) const {
  const auto found = bar(number, name);
  if (!found) return std::nullopt;
  Texts tags;
  for (const auto& each : found->controls) tags.push_back(each.tag);
  return tags;
}

simulator::ControlView World::control(int number, std::u16string_view tag) const {
  for (const auto& each : window(number).bars) {
    for (const auto& candidate : each.controls) {
      if (candidate.tag == tag) return candidate;
    }
  }
  throw std::runtime_error("no such control");
}

}  // namespace tests
