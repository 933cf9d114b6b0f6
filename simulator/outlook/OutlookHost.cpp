#include "simulator/outlook/OutlookHost.h"

#include <algorithm>

#include "simulator/data/Utf8.h"
#include "simulator/outlook/HostCore.h"
#include "simulator/outlook/ItemObjects.h"

namespace simulator {

struct OutlookHost::Impl {
  std::shared_ptr<HostCore> core;
  bool started = false;

  void connect(Addin& addin, std::int32_t mode) const {
    core->addin = &addin;
    RecordObject::Fields fields{{u"ProgId", [id = core->options.progId] { return Value(id); }}};
    const auto instance = std::make_shared<RecordObject>(core, u"COMAddIn", fields)->handle();
    addin.onConnection(core->boundary.out(core->application->handle()), mode,
                       core->boundary.out(instance));
  }

  /// The items that a person's words mean: an id, a title, or a part that only one title has.
  MailboxItem& findItem(MailboxFolder& folder, std::u16string_view words) const {
    std::vector<MailboxItem*> partly;
    for (auto& item : folder.items) {
      if (item.id == words) return item;
    }
    for (auto& item : folder.items) {
      const auto title = item.title();
      if (title == words) return item;
      if (title.find(words) != std::u16string::npos) partly.push_back(&item);
    }
    if (partly.size() == 1) return *partly.front();
    throw HostError("folder \"" + toUtf8(folder.name) + "\" has " +
                    (partly.empty() ? "no" : "more than one") + " item \"" + toUtf8(words) + "\"");
  }

  void setSelection(int number, std::vector<MailboxItem*> items) const {
    const auto window = core->windowOf(number, WindowKind::Explorer);
    if (core->zorder.front() != window) core->activate(window);
    window->state.selection = std::move(items);
    window->raise(outlook::ExplorerEvent::SelectionChange);
  }
};

OutlookHost::OutlookHost(Mailbox& mailbox, OutlookOptions options, BarStore& bars,
                         Boundary& boundary, OutlookServices services)
    : impl_(std::make_unique<Impl>()) {
  impl_->core =
      std::make_shared<HostCore>(mailbox, std::move(options), bars, boundary, std::move(services));
}

OutlookHost::~OutlookHost() {
  // Objects that outlive the host find it gone.
  impl_->core->running = false;
}

void OutlookHost::start(Addin* addin) {
  if (impl_->started) throw HostError("this Outlook was started already");
  impl_->started = true;
  auto& core = *impl_->core;
  core.running = true;
  core.application = std::make_shared<ApplicationObject>(impl_->core);
  core.explorers = std::make_shared<WindowsObject>(impl_->core, WindowKind::Explorer);
  core.inspectors = std::make_shared<WindowsObject>(impl_->core, WindowKind::Inspector);
  core.explorerBars = std::make_shared<Bars>();
  for (const auto& stored : core.store.explorers) {
    auto bar = barFrom(impl_->core, stored);
    bar->row = static_cast<int>(core.explorerBars->size());
    core.explorerBars->push_back(std::move(bar));
  }
  if (addin) impl_->connect(*addin, 1);
  core.openExplorer(core.folder({}), false);
  if (core.addin) core.addin->onStartupComplete();
}

void OutlookHost::connectAddin(Addin& addin) {
  if (!running()) throw HostError("Outlook does not run");
  if (addinConnected()) throw HostError("the add-in is switched on already");
  impl_->connect(addin, 0);
}

void OutlookHost::disconnectAddin() {
  if (!addinConnected()) throw HostError("the add-in is not switched on");
  std::exchange(impl_->core->addin, nullptr)->onDisconnection(1);
  impl_->core->ribbons.forget();
}

void OutlookHost::quit() {
  if (!running()) throw HostError("Outlook does not run");
  const auto core = impl_->core;
  // Inspectors first, as Outlook does: their bars are kept before the last explorer ends it.
  for (const auto kind : {WindowKind::Inspector, WindowKind::Explorer}) {
    const auto windows = core->windowsOf(kind);
    for (const auto& window : windows) core->close(window);
  }
}

bool OutlookHost::running() const {
  return impl_->core->running;
}
bool OutlookHost::addinConnected() const {
  return impl_->core->addin != nullptr;
}
const OutlookOptions& OutlookHost::options() const {
  return impl_->core->options;
}
automation::Object OutlookHost::application() const {
  return impl_->core->application->handle();
}

int OutlookHost::openExplorer(std::u16string_view folder) {
  if (!running()) throw HostError("Outlook does not run");
  return impl_->core->openExplorer(impl_->core->folder(folder), true)->state.number;
}

int OutlookHost::openItem(std::u16string_view words) {
  if (!running()) throw HostError("Outlook does not run");
  auto& core = *impl_->core;
  std::vector<MailboxFolder*> folders;
  if (const auto explorer = core.top(WindowKind::Explorer))
    folders.push_back(explorer->state.folder);
  for (auto& folder : core.mailbox.folders) folders.push_back(&folder);
  for (auto* folder : folders) {
    for (auto& item : folder->items) {
      if (item.id == words || item.title() == words) {
        return core.openInspector(*folder, item)->state.number;
      }
    }
  }
  throw HostError("there is no item \"" + toUtf8(words) + "\"");
}

int OutlookHost::newItem(outlook::ItemType type) {
  if (!running()) throw HostError("Outlook does not run");
  impl_->core->createItem(type).toObject().call(u"Display");
  return *activeWindow();
}

void OutlookHost::activate(int window) {
  impl_->core->activate(impl_->core->window(window));
}
void OutlookHost::close(int window) {
  impl_->core->close(impl_->core->window(window));
}

std::optional<int> OutlookHost::activeWindow() const {
  const auto window = impl_->core->top(std::nullopt);
  return window ? std::optional(window->state.number) : std::nullopt;
}

std::vector<int> OutlookHost::windows(WindowKind kind) const {
  std::vector<int> numbers;
  for (const auto& window : impl_->core->windowsOf(kind)) numbers.push_back(window->state.number);
  return numbers;
}

void OutlookHost::switchFolder(int explorer, std::u16string_view folder) {
  const auto window = impl_->core->windowOf(explorer, WindowKind::Explorer);
  auto& target = impl_->core->folder(folder);
  if (impl_->core->zorder.front() != window) impl_->core->activate(window);
  window->state.folder = &target;
  const bool selected = !std::exchange(window->state.selection, {}).empty();
  window->raise(outlook::ExplorerEvent::FolderSwitch);
  if (selected) window->raise(outlook::ExplorerEvent::SelectionChange);
}

void OutlookHost::switchView(int explorer, std::u16string_view view) {
  const auto window = impl_->core->windowOf(explorer, WindowKind::Explorer);
  if (impl_->core->zorder.front() != window) impl_->core->activate(window);
  window->state.view = view;
  window->raise(outlook::ExplorerEvent::ViewSwitch);
}

void OutlookHost::select(int explorer, std::span<const std::u16string> items) {
  auto& folder = *impl_->core->windowOf(explorer, WindowKind::Explorer)->state.folder;
  std::vector<MailboxItem*> found;
  for (const auto& words : items) found.push_back(&impl_->findItem(folder, words));
  impl_->setSelection(explorer, std::move(found));
}

void OutlookHost::selectAt(int explorer, std::span<const std::size_t> places) {
  auto& folder = *impl_->core->windowOf(explorer, WindowKind::Explorer)->state.folder;
  std::vector<MailboxItem*> found;
  for (const auto place : places) {
    if (place < 1 || place > folder.items.size()) {
      throw HostError("the folder has no item " + std::to_string(place));
    }
    found.push_back(&folder.items[place - 1]);
  }
  impl_->setSelection(explorer, std::move(found));
}

void OutlookHost::selectAll(int explorer) {
  auto& folder = *impl_->core->windowOf(explorer, WindowKind::Explorer)->state.folder;
  std::vector<MailboxItem*> all;
  for (auto& item : folder.items) all.push_back(&item);
  impl_->setSelection(explorer, std::move(all));
}

void OutlookHost::click(int number, std::u16string_view button) {
  const auto window = impl_->core->window(number);
  impl_->core->findControl(window, button);
  if (impl_->core->zorder.front() != window) impl_->core->activate(window);
  // The activation may have built the bar anew.
  impl_->core->click(impl_->core->findControl(window, button));
}

void OutlookHost::typeInto(int number, std::u16string_view box, std::u16string_view text) {
  const auto window = impl_->core->window(number);
  const auto control = impl_->core->findControl(window, box);
  if (control->state.type != office::ControlType::Edit) {
    throw HostError("\"" + toUtf8(box) + "\" is no edit box");
  }
  if (impl_->core->zorder.front() != window) impl_->core->activate(window);
  control->state.text = text;
  impl_->core->click(control);
}

void OutlookHost::clickRibbon(int inspector, std::u16string_view button) {
  const auto window = impl_->core->windowOf(inspector, WindowKind::Inspector);
  if (impl_->core->zorder.front() != window) impl_->core->activate(window);
  impl_->core->ribbons.click(window, button);
}

OutlookView OutlookHost::snapshot(std::size_t maxItems) const {
  const auto& core = *impl_->core;
  OutlookView view;
  view.running = core.running;
  view.addinConnected = core.addin != nullptr;
  if (!core.running) return view;
  for (const auto& window : core.zorder) {
    const WindowState& state = window->state;
    WindowView each;
    each.kind = state.kind;
    each.number = state.number;
    each.active = window == core.zorder.front();
    each.caption = core.captionOf(state);
    if (state.kind == WindowKind::Explorer) {
      each.folder = state.folder->name;
      each.view = state.view;
      each.itemCount = state.folder->items.size();
      each.selectedCount = state.selection.size();
      for (std::size_t i = 0; i < std::min(maxItems, each.itemCount); ++i) {
        each.items.push_back(state.folder->items[i].title());
      }
      for (std::size_t i = 0; i < std::min(maxItems, each.selectedCount); ++i) {
        each.selection.push_back(state.selection[i]->title());
      }
    } else {
      each.itemId = state.item->id;
      each.wordMail = state.wordMail;
      each.ribbon = state.ribbon.groups;
      each.hiddenTabSets = state.ribbon.hiddenTabSets;
      each.ribbonProblems = state.ribbon.problems;
    }
    for (const auto& bar : *state.bars) each.bars.push_back(viewOf(*bar, state.number));
    view.windows.push_back(std::move(each));
  }
  return view;
}

std::size_t OutlookHost::sinkCount() const {
  const auto& core = *impl_->core;
  if (!core.explorers) return 0;
  std::size_t count = core.explorers->sinkCount() + core.inspectors->sinkCount();
  for (const auto& window : core.zorder) count += window->sinkCount();
  for (const auto& control : core.controls()) count += control->sinkCount();
  return count;
}

void OutlookHost::failMember(std::u16string_view className, std::u16string_view member,
                             automation::Error error, std::size_t times) {
  impl_->core->failing.insert_or_assign({std::u16string(className), std::u16string(member)},
                                        HostCore::Failure{std::move(error), times});
}

void OutlookHost::restoreMember(std::u16string_view className, std::u16string_view member) {
  impl_->core->failing.erase({std::u16string(className), std::u16string(member)});
}

void OutlookHost::setControlsAddHook(std::function<void(int window)> hook) {
  impl_->core->addHook = std::move(hook);
}

}  // namespace simulator
