#include "standin/outlook/hand/HandDesk.h"

#include <algorithm>
#include <utility>

#include "simulator/player/Text.h"
#include "standin/outlook/Pace.h"
#include "standin/outlook/hand/HandMenu.h"
#include "windows/com/errors.h"
#include "windows/com/text.h"

namespace standin {
namespace {

constexpr UINT SyncMilliseconds = 100;

HandDesk* currentDesk = nullptr;

/// "ISDNNumber" in words: "ISDN number".
std::u16string inWords(std::u16string_view name) {
  const auto isUpper = [&](std::size_t at) { return name[at] >= u'A' && name[at] <= u'Z'; };
  const auto isLower = [&](std::size_t at) {
    return at < name.size() && name[at] >= u'a' && name[at] <= u'z';
  };
  std::u16string words;
  for (std::size_t i = 0; i < name.size(); ++i) {
    const bool digit = name[i] >= u'0' && name[i] <= u'9';
    const bool begins = i > 0 && (digit || (isUpper(i) && (!isUpper(i - 1) || isLower(i + 1))));
    if (begins) words += u' ';
    // What is written in capitals stays so.
    words += begins && isUpper(i) && isLower(i + 1) ? static_cast<char16_t>(name[i] + 32) : name[i];
  }
  return words;
}

void tellProblem(std::string_view text) {
  MessageBoxW(GetActiveWindow(), windows::wide(scenario::toUtf16(text)), L"Outlook stand-in",
              MB_OK | MB_ICONWARNING);
}

}  // namespace

HandDesk::HandDesk(Session& session) : session_(session) {
  INITCOMMONCONTROLSEX controls{sizeof controls, ICC_BAR_CLASSES | ICC_LISTVIEW_CLASSES};
  InitCommonControlsEx(&controls);
  currentDesk = this;
  session_.boundary().setObserver(this);
  session_.setBeforeClick([this](const Session::Click& click) { pointAt(click); });
  timer_ = SetTimer(nullptr, 0, SyncMilliseconds, onTimer);
}

HandDesk::~HandDesk() {
  KillTimer(nullptr, timer_);
  session_.setBeforeClick({});
  session_.boundary().setObserver(nullptr);
  currentDesk = nullptr;
}

void HandDesk::run(std::function<void()> beat) {
  beat_ = std::move(beat);
  sync();
  while (session_.running()) {
    WaitMessage();
    deliverMessages();
  }
}

void CALLBACK HandDesk::onTimer(HWND, UINT, UINT_PTR, DWORD) noexcept {
  windows::guardedQuietly([] {
    if (!currentDesk) return;
    currentDesk->sync();
    if (currentDesk->beat_) currentDesk->beat_();
  });
}

void HandDesk::sync() {
  std::vector<simulator::WindowView> views;
  if (session_.running()) views = session_.host().snapshot().windows;
  // A window may be the one in whose click this happens: it goes when that is done.
  if (depth_ == 0) {
    if (std::exchange(outlook_, session_.starts()) != session_.starts()) clear();
    std::erase_if(windows_, [&](const auto& entry) {
      return std::ranges::none_of(views,
                                  [&](const auto& view) { return view.number == entry.first; });
    });
  }
  ++depth_;
  for (const simulator::WindowView& view : views) {
    const auto found = windows_.find(view.number);
    if (found != windows_.end())
      found->second->show(view);
    else
      windows_.emplace(view.number, std::make_unique<HostWindow>(*this, view));
  }
  const int front = views.empty() ? 0 : views.front().number;
  if (front != 0 && front != front_) BringWindowToTop(windows_.at(front)->hwnd());
  setFront(front);
  --depth_;
}

/// An Outlook that was started since the last beat numbers its windows as the one before did.
void HandDesk::clear() {
  // A window that comes to the front when another goes was not brought there by the user.
  ++depth_;
  windows_.clear();
  front_ = 0;
  --depth_;
}

void HandDesk::setFront(int window) {
  const auto before = windows_.find(std::exchange(front_, window));
  if (before != windows_.end() && before->first != window)
    SendMessageW(before->second->hwnd(), WM_NCACTIVATE, FALSE, 0);
}

template <class Action>
void HandDesk::act(Action&& action) {
  ++depth_;
  try {
    action();
  } catch (const automation::Error& error) {
    tellProblem(scenario::toUtf8(error.description()));
  } catch (const std::exception& error) {
    tellProblem(error.what());
  }
  --depth_;
  // What has closed goes at the next beat: this may be its own message.
}

std::optional<RECT> HandDesk::placeOf(const Session::Click& click) const {
  const auto window = windows_.find(click.window);
  return window == windows_.end() ? std::nullopt : window->second->placeOf(click.control);
}

void HandDesk::pointAt(const Session::Click& click) {
  sync();
  const auto place = placeOf(click);
  POINT pointer{};
  if (!place || (GetCursorPos(&pointer) && PtInRect(&*place, pointer))) return;
  SetCursorPos((place->left + place->right) / 2, (place->top + place->bottom) / 2);
}

automation::Value HandDesk::around(const simulator::Crossing& crossing,
                                   const std::function<automation::Value()>& proceed) {
  const Session::Click* click = session_.clicking();
  const bool place = crossing.member == u"Left" || crossing.member == u"Top" ||
                     crossing.member == u"Width" || crossing.member == u"Height";
  if (!click || !place || crossing.access == automation::Access::Put) return proceed();
  const auto rect = placeOf(*click);
  if (!rect) return proceed();
  if (crossing.member == u"Left") return static_cast<std::int32_t>(rect->left);
  if (crossing.member == u"Top") return static_cast<std::int32_t>(rect->top);
  if (crossing.member == u"Width") return static_cast<std::int32_t>(rect->right - rect->left);
  return static_cast<std::int32_t>(rect->bottom - rect->top);
}

std::vector<std::u16string> HandDesk::folders() const {
  std::vector<std::u16string> names;
  for (const auto& folder : session_.mailbox().folders) names.push_back(folder.name);
  return names;
}

std::vector<ItemList::Line> HandDesk::fieldsOf(std::u16string_view itemId) const {
  std::vector<ItemList::Line> lines;
  const simulator::MailboxItem* item = session_.mailbox().find(itemId);
  if (!item) return lines;
  for (const auto& [name, value] : item->properties) {
    if (value.isObject() || value.isArray() || value.isEmpty()) continue;
    const std::u16string text = value.toText();
    if (!text.empty()) lines.push_back({inWords(name), scenario::toUtf16(scenario::oneLine(text))});
  }
  return lines;
}

void HandDesk::click(int window, const simulator::ControlView& control) {
  act([&] { session_.click(window, control.name(), false); });
}
void HandDesk::clickRibbon(int window, const std::u16string& button) {
  act([&] { session_.click(window, button, true); });
}
void HandDesk::type(int window, const simulator::ControlView& box, std::u16string_view text) {
  act([&] { session_.host().typeInto(window, box.name(), text); });
}
void HandDesk::select(int window, const std::vector<std::size_t>& places) {
  act([&] { session_.host().selectAt(window, places); });
}

void HandDesk::openItem(std::u16string_view folder, std::size_t place) {
  const auto& all = session_.mailbox().folders;
  const auto found = std::ranges::find(all, folder, &simulator::MailboxFolder::name);
  if (found == all.end() || place >= found->items.size()) return;
  act([&] { session_.host().openItem(found->items[place].id); });
}

void HandDesk::switchFolder(int window, std::u16string_view folder) {
  act([&] { session_.host().switchFolder(window, folder); });
}

void HandDesk::activate(int window) {
  // What the host itself has brought to the front is no doing of the user's.
  if (depth_ > 0 || !session_.running() || session_.host().activeWindow() == window) return;
  setFront(window);
  act([&] { session_.host().activate(window); });
}

void HandDesk::close(int window) {
  if (depth_ > 0) return;
  act([&] {
    session_.host().close(window);
    session_.settle();
  });
}

void HandDesk::switchView(int window) {
  for (const simulator::WindowView& view : session_.host().snapshot(0).windows)
    if (view.number == window)
      session_.host().switchView(window, view.view == u"Table" ? u"Cards" : u"Table");
}

void HandDesk::command(int window, int id) {
  act([&] {
    if (const auto type = newItemOf(id)) {
      session_.host().newItem(*type);
      return;
    }
    switch (static_cast<HandCommand>(id)) {
      case HandCommand::NewExplorer: session_.host().openExplorer(); break;
      case HandCommand::SwitchView: switchView(window); break;
      case HandCommand::SwitchAddin: session_.switchAddin(!session_.addinOn()); break;
      case HandCommand::Close:
        session_.host().close(window);
        session_.settle();
        break;
      case HandCommand::Quit: session_.quit(); break;
      case HandCommand::NewItem: break;
    }
  });
}

}  // namespace standin
