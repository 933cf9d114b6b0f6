#include "standin/outlook/ModalWatch.h"

#include <algorithm>
#include <utility>

#include "standin/outlook/MenuReader.h"
#include "windows/com/errors.h"
#include "windows/com/text.h"

namespace standin {
namespace {

constexpr UINT BeatMilliseconds = 10;
constexpr wchar_t MenuClass[] = L"#32768";
constexpr wchar_t BoxClass[] = L"#32770";
/// MN_GETHMENU, which older headers lack.
constexpr UINT GetMenuMessage = 0x01E1;
/// The text of a message box is the control with this id.
constexpr int BoxTextId = 0xFFFF;

ModalWatch* currentWatch = nullptr;

std::u16string classOf(HWND window) {
  wchar_t name[64] = {};
  GetClassNameW(window, name, static_cast<int>(std::size(name)));
  return std::u16string(windows::utf16(name));
}

BOOL CALLBACK collect(HWND window, LPARAM list) {
  if (IsWindowVisible(window)) reinterpret_cast<std::vector<HWND>*>(list)->push_back(window);
  return TRUE;
}

std::vector<HWND> visibleWindows() {
  std::vector<HWND> windows;
  EnumThreadWindows(GetCurrentThreadId(), collect, reinterpret_cast<LPARAM>(&windows));
  // Menus belong to no window of the thread's list.
  for (HWND menu = nullptr; (menu = FindWindowExW(nullptr, menu, MenuClass, nullptr)) != nullptr;) {
    if (GetWindowThreadProcessId(menu, nullptr) == GetCurrentThreadId() && IsWindowVisible(menu) &&
        std::ranges::find(windows, menu) == windows.end())
      windows.push_back(menu);
  }
  return windows;
}

HMENU menuOf(HWND window) {
  return reinterpret_cast<HMENU>(SendMessageW(window, GetMenuMessage, 0, 0));
}

/// The window that the open menu belongs to: it gets the keys.
HWND menuOwner(HWND menuWindow) {
  GUITHREADINFO info{};
  info.cbSize = sizeof info;
  if (GetGUIThreadInfo(GetCurrentThreadId(), &info) && info.hwndMenuOwner)
    return info.hwndMenuOwner;
  return menuWindow;
}

/// What is wrong with the way in which a box came up.
std::u16string remarkOn(HWND box) {
  for (const HWND window : visibleWindows()) {
    if (window != box && IsWindowEnabled(window) && classOf(window) != windows::utf16(MenuClass))
      return u" [another window can be used]";
  }
  return GetForegroundWindow() == box ? u"" : u" [behind]";
}

}  // namespace

ModalWatch::ModalWatch(Answers answers) : answers_(std::move(answers)) {
  currentWatch = this;
  timer_ = SetTimer(nullptr, 0, BeatMilliseconds, onTimer);
  if (!timer_) windows::check(E_OUTOFMEMORY);
}

ModalWatch::~ModalWatch() {
  KillTimer(nullptr, timer_);
  currentWatch = nullptr;
}

void ModalWatch::onTimer(HWND, UINT, UINT_PTR, DWORD) noexcept {
  windows::guardedQuietly([] {
    if (currentWatch) currentWatch->look();
  });
}

void ModalWatch::look() {
  const std::vector<HWND> windows = visibleWindows();
  const auto gone = [&](HWND box) { return std::ranges::find(windows, box) == windows.end(); };
  std::erase_if(answeredBoxes_, gone);
  std::vector<HMENU> open;
  for (const HWND window : windows)
    if (classOf(window) == windows::utf16(MenuClass)) open.push_back(menuOf(window));
  std::erase_if(answeredMenus_,
                [&](HMENU menu) { return std::ranges::find(open, menu) == open.end(); });
  for (const HWND window : windows) lookAt(window);
}

void ModalWatch::lookAt(HWND window) {
  if (!IsWindow(window)) return;
  const std::u16string name = classOf(window);
  if (name == windows::utf16(MenuClass)) return answerMenu(window);
  if (name == windows::utf16(BoxClass)) return answerBox(window);
}

void ModalWatch::answerMenu(HWND window) {
  const HMENU menu = menuOf(window);
  if (!menu ||
      std::ranges::any_of(answeredMenus_, [&](HMENU answered) { return isWithin(menu, answered); }))
    return;
  answeredMenus_.push_back(menu);
  const std::vector<platform::PopupEntry> entries = readMenu(menu);
  const std::optional<int> chosen = answers_.menu(entries);
  if (!IsWindow(window)) return;
  const auto keys = keysFor(entries, chosen);
  const HWND owner = menuOwner(window);
  for (const WPARAM key : keys.value_or(std::vector<WPARAM>{VK_ESCAPE})) {
    PostMessageW(owner, WM_KEYDOWN, key, 0);
    PostMessageW(owner, WM_KEYUP, key, 0);
  }
}

void ModalWatch::answerBox(HWND box) {
  if (std::ranges::find(answeredBoxes_, box) != answeredBoxes_.end()) return;
  const HWND label = GetDlgItem(box, BoxTextId);
  if (!label) return;  // Another dialog.
  answeredBoxes_.push_back(box);
  std::u16string text(static_cast<std::size_t>(GetWindowTextLengthW(label)) + 1, u'\0');
  GetWindowTextW(label, reinterpret_cast<wchar_t*>(text.data()), static_cast<int>(text.size()));
  text.resize(text.find(u'\0'));
  answers_.box(text + remarkOn(box));
  PostMessageW(box, WM_COMMAND, IDOK, 0);
}

}  // namespace standin
