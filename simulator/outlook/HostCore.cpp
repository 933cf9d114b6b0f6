#include "simulator/outlook/HostCore.h"

#include <algorithm>

#include "platform/conversions.h"
#include "simulator/data/ItemKinds.h"
#include "simulator/data/Utf8.h"
#include "simulator/outlook/ItemObjects.h"

namespace simulator {
namespace {

using automation::Error;
using automation::ErrorNumber;
using outlook::ObjectClass;

constexpr std::int32_t OutboxFolder = 4;

std::u16string digits(int number, int length) {
  auto text = automation::int32Text(number);
  while (static_cast<int>(text.size()) < length) text.insert(text.begin(), u'0');
  return text;
}

}  // namespace

std::shared_ptr<HostCore> enterHost(const std::weak_ptr<HostCore>& weak,
                                    std::u16string_view tableName, std::u16string_view member,
                                    SimObject& object) {
  auto core = weak.lock();
  if (!core || !core->running) throw Error(ErrorNumber::ServerUnavailable);
  if (!core->failing.empty()) {
    core->checkFailing(tableName, member);
    core->checkFailing(object.typeName(), member);
  }
  return core;
}

HostCore::HostCore(Mailbox& mail, OutlookOptions given, BarStore& bars, Boundary& line,
                   OutlookServices machine)
    : mailbox(mail),
      options(std::move(given)),
      store(bars),
      boundary(line),
      services(std::move(machine)) {}

void HostCore::checkFailing(std::u16string_view className, std::u16string_view member) {
  const auto found = failing.find({std::u16string(className), std::u16string(member)});
  if (found == failing.end()) return;
  const Error error = found->second.error;
  if (--found->second.times == 0) failing.erase(found);
  throw error;
}

Value HostCore::itemById(std::u16string_view id) {
  if (byId_.empty() || !byId_.contains(id)) {
    for (auto& folder : mailbox.folders) {
      for (auto& item : folder.items) byId_[item.id] = {&folder, &item};
    }
  }
  const auto found = byId_.find(id);
  if (found == byId_.end()) throw Error(ErrorNumber::AutomationFailed);
  return itemObject(*found->second.first, *found->second.second);
}

Value HostCore::itemObject(MailboxFolder& folder, MailboxItem& item) {
  auto& known = itemObjects_[&item];
  auto object = known.lock();
  if (!object) {
    object = std::make_shared<ItemObject>(weak_from_this(), folder, item);
    known = object;
  }
  return object->handle();
}

Value HostCore::folderObject(MailboxFolder& folder) {
  return std::make_shared<FolderObject>(weak_from_this(), folder)->handle();
}

Value HostCore::defaultFolder(std::int32_t type) {
  const auto found = std::ranges::find(mailbox.folders, true, &MailboxFolder::outbox);
  if (type != OutboxFolder || found == mailbox.folders.end()) {
    throw Error(ErrorNumber::InvalidProcedureCall);
  }
  return folderObject(*found);
}

Value HostCore::createItem(outlook::ItemType type) {
  const ItemKind* kind = kindOf(type);
  if (!kind) throw Error(ErrorNumber::InvalidProcedureCall);
  const auto home = std::ranges::find(mailbox.folders, type, &MailboxFolder::itemType);
  auto& folder = home == mailbox.folders.end() ? mailbox.folders.front() : *home;
  // Windows point at items: a folder's items must not move while Outlook runs.
  auto item = std::make_shared<MailboxItem>();
  item->kind = kind->objectClass;
  item->id = u"new " + automation::int32Text(++lastItem_);
  item->properties[u"Subject"] = u"";
  if (type == outlook::ItemType::Mail || type == outlook::ItemType::Post) {
    item->properties[u"Sent"] = false;
    item->wordMail = true;
  }
  newItems.push_back(item);
  return itemObject(folder, *item);
}

std::u16string HostCore::clipboardFace() const {
  return services.clipboard ? services.clipboard() : std::u16string();
}

std::u16string HostCore::faceOf(const automation::Object& picture,
                                const automation::Object& mask) const {
  if (options.version.starts_with(u"9.")) throw Error(ErrorNumber::MemberNotFound);
  if (!picture || !services.face) throw Error(ErrorNumber::InvalidProcedureCall);
  return services.face(Boundary::in(picture), Boundary::in(mask));
}

std::u16string HostCore::isoDate(std::u16string_view date) const {
  const auto time = services.parseDate ? services.parseDate(date) : std::nullopt;
  if (!time) throw Error(ErrorNumber::InvalidProcedureCall);
  return digits(time->year, 4) + u"-" + digits(time->month, 2) + u"-" + digits(time->day, 2);
}

void HostCore::controlsAddHook(int window) {
  if (addHook) addHook(window);
}

std::u16string HostCore::captionOf(const WindowState& state) const {
  if (state.kind == WindowKind::Explorer) return state.folder->name + u" - Microsoft Outlook";
  const auto title = state.item->title();
  return (title.empty() ? u"Untitled" : title) + u" - Microsoft Outlook";
}

const std::vector<HostCore::Window>& HostCore::windowsOf(WindowKind kind) const {
  return kind == WindowKind::Explorer ? openExplorers_ : openInspectors_;
}

std::vector<HostCore::Window>& HostCore::counted(WindowKind kind) {
  return kind == WindowKind::Explorer ? openExplorers_ : openInspectors_;
}

HostCore::Window HostCore::top(std::optional<WindowKind> kind) const {
  const auto found = std::ranges::find_if(
      zorder, [&](const Window& window) { return !kind || window->state.kind == *kind; });
  return found == zorder.end() ? nullptr : *found;
}

HostCore::Window HostCore::window(int number) const {
  for (const auto& window : zorder) {
    if (window->state.number == number) return window;
  }
  throw HostError("there is no window " + std::to_string(number));
}

HostCore::Window HostCore::windowOf(int number, WindowKind kind) const {
  auto found = window(number);
  if (found->state.kind != kind) {
    throw HostError("window " + std::to_string(number) + " is no " +
                    (kind == WindowKind::Explorer ? "explorer" : "inspector"));
  }
  return found;
}

MailboxFolder& HostCore::folder(std::u16string_view nameOrId) const {
  if (mailbox.folders.empty()) throw HostError("the mailbox has no folder");
  if (nameOrId.empty()) return mailbox.folders.front();
  for (auto& each : mailbox.folders) {
    if (each.name == nameOrId || each.id == nameOrId) return each;
  }
  throw HostError("there is no folder \"" + toUtf8(nameOrId) + "\"");
}

HostCore::Window HostCore::openExplorer(MailboxFolder& folder, bool announce) {
  WindowState state;
  state.number = ++lastWindow_;
  state.bars = explorerBars;
  state.folder = &folder;
  for (const auto& bar : *explorerBars) {
    // A window takes over what Outlook has kept.
    const auto kept = findBar(store.explorers, bar->name);
    if (kept) bar->places[state.number] = {kept->visible, kept->position};
  }
  const auto window = std::make_shared<WindowObject>(weak_from_this(), std::move(state));
  // The new window exists, but is not shown yet.
  zorder.push_back(window);
  counted(WindowKind::Explorer).push_back(window);
  if (announce) explorers->raiseNew(*window);
  activate(window);
  return window;
}

HostCore::Window HostCore::openInspector(MailboxFolder& folder, MailboxItem& item) {
  const auto& inspecting = windowsOf(WindowKind::Inspector);
  const auto shown =
      std::ranges::find(inspecting, &item, [](const Window& window) { return window->state.item; });
  if (shown != inspecting.end()) {
    const Window found = *shown;  // the activation may close windows
    activate(found);
    return found;
  }
  WindowState state;
  state.number = ++lastWindow_;
  state.kind = WindowKind::Inspector;
  state.itemFolder = &folder;
  state.item = &item;
  state.wordMail = options.wordIsMailEditor && item.kind == ObjectClass::Mail && item.wordMail;
  state.bars = std::make_shared<Bars>();
  for (const auto& stored : store.inspectors) {
    auto bar = barFrom(weak_from_this(), stored);
    bar->row = static_cast<int>(state.bars->size());
    bar->places[state.number] = {stored.visible, stored.position};
    state.bars->push_back(std::move(bar));
    state.foundBars.push_back(stored.name);
  }
  const auto window = std::make_shared<WindowObject>(weak_from_this(), std::move(state));
  zorder.push_back(window);
  counted(WindowKind::Inspector).push_back(window);
  inspectors->raiseNew(*window);
  if (!window->open) return window;
  if (hasRibbons() && options.earlyRibbon) ribbons.ask(item);
  if (!window->open) return window;
  toFront(window);
  if (hasRibbons()) ribbons.show(window);
  activate(window);
  return window;
}

void HostCore::toFront(const Window& window) {
  const auto found = std::ranges::find(zorder, window);
  if (found != zorder.end()) std::rotate(zorder.begin(), found, found + 1);
}

void HostCore::activate(const Window& window) {
  if (!window->open) return;
  toFront(window);
  activated(weak_from_this(), *window->state.bars);
  if (window->explorer()) {
    window->raise(outlook::ExplorerEvent::Activate);
  } else {
    window->raise(outlook::InspectorEvent::Activate);
  }
}

void HostCore::close(const Window& window) {
  if (!window->open) return;
  const auto self = shared_from_this();
  auto& ofKind = counted(window->state.kind);
  if (window->explorer()) {
    // Outlook 2000 counts the window while its Close is told, later versions do not.
    const bool countedYet = options.version.starts_with(u"9.");
    if (!countedYet) std::erase(ofKind, window);
    std::erase(zorder, window);
    window->raise(outlook::ExplorerEvent::Close);
    std::erase(ofKind, window);
    storeExplorerBars(window->state.number);
  } else {
    window->raise(outlook::InspectorEvent::Close);
    std::erase(ofKind, window);
    std::erase(zorder, window);
    storeInspectorBars(window->state);
    for (const auto& bar : *window->state.bars) bar->discard();
  }
  window->open = false;
  if (!zorder.empty() || !running) return;
  // The last window is gone: Outlook ends.
  if (auto* const leaving = std::exchange(addin, nullptr)) {
    leaving->onBeginShutdown();
    leaving->onDisconnection(0);
  }
  for (const auto& bar : *explorerBars) {
    if (!findBar(store.explorers, bar->name)) {
      store.explorers.push_back(storedFrom(*bar, window->state.number));
    }
  }
  running = false;
}

void HostCore::storeExplorerBars(int window) {
  store.explorers.clear();
  for (const auto& bar : *explorerBars) store.explorers.push_back(storedFrom(*bar, window));
}

void HostCore::storeInspectorBars(const WindowState& state) {
  std::vector<StoredBar> kept;
  // Bars that the window found and no longer has are gone; those of other windows stay.
  for (const auto& stored : store.inspectors) {
    if (std::ranges::find(state.foundBars, stored.name) == state.foundBars.end()) {
      kept.push_back(stored);
    }
  }
  for (const auto& bar : *state.bars) {
    std::erase_if(kept, [&](const StoredBar& each) { return each.name == bar->name; });
    kept.push_back(storedFrom(*bar, state.number));
  }
  store.inspectors = std::move(kept);
}

std::vector<std::shared_ptr<ControlObject>> HostCore::controls() const {
  std::vector<std::shared_ptr<ControlObject>> found;
  const auto take = [&](const Bars& bars) {
    for (const auto& bar : bars) {
      found.insert(found.end(), bar->controls.begin(), bar->controls.end());
    }
  };
  take(*explorerBars);
  for (const auto& window : windowsOf(WindowKind::Inspector)) take(*window->state.bars);
  return found;
}

std::shared_ptr<ControlObject> HostCore::findControl(const Window& window,
                                                     std::u16string_view name) const {
  for (const auto& bar : *window->state.bars) {
    const auto place = bar->places.find(window->state.number);
    if (place == bar->places.end() || !place->second.visible) continue;
    for (const auto& control : bar->controls) {
      const StoredControl& state = control->state;
      if (state.visible && (state.tag == name || state.caption == name || state.tooltip == name)) {
        return control;
      }
    }
  }
  throw HostError("window " + std::to_string(window->state.number) + " shows no button \"" +
                  toUtf8(name) + "\"");
}

void HostCore::click(const std::shared_ptr<ControlObject>& control) {
  // Office tells every sink of every control of the same tag, in whatever window.
  const auto tag = control->state.tag;
  for (const auto& each : controls()) {
    if (each == control || (!tag.empty() && each->state.tag == tag)) each->raise(control->handle());
  }
}

bool HostCore::hasRibbons() const {
  return options.version.starts_with(u"12.");
}

}  // namespace simulator
