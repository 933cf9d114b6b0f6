// What the add-in shows, with a second thread at keyboard and mouse.

#include <gtest/gtest.h>

#include <cmath>
#include <functional>

#include "windows/com/ComObject.h"
#include "windows/com/text.h"
#include "windows/services/Pictures.h"
#include "windows/services/Screen.h"
#include "windows/tests/HandleMarks.h"

namespace windows {
namespace {

/// Waits for a visible window and acts on it, beside a thread that is in a modal loop.
class Watcher {
 public:
  using Act = std::function<void(HWND)>;

  Watcher(const wchar_t* windowClass, const wchar_t* title, Act act)
      : class_(windowClass), title_(title), act_(std::move(act)) {
    thread_ = CreateThread(nullptr, 0, &Watcher::main, this, 0, nullptr);
  }
  ~Watcher() {
    WaitForSingleObject(thread_, INFINITE);
    CloseHandle(thread_);
  }
  bool found() {
    WaitForSingleObject(thread_, INFINITE);
    return found_;
  }

 private:
  static DWORD WINAPI main(void* self) {
    auto& watcher = *static_cast<Watcher*>(self);
    for (int i = 0; i < 1000 && !watcher.found_; ++i) {
      const HWND window = FindWindowW(watcher.class_, watcher.title_);
      if (window && IsWindowVisible(window)) {
        watcher.found_ = true;
        watcher.act_(window);
      }
      Sleep(5);
    }
    return 0;
  }

  const wchar_t* const class_;
  const wchar_t* const title_;
  const Act act_;
  bool found_ = false;
  HANDLE thread_;
};

constexpr wchar_t MenuClass[] = L"#32768";

void press(std::initializer_list<WPARAM> keys) {
  const HWND owner = FindWindowW(Screen::AnchorClass, nullptr);
  for (const WPARAM key : keys) PostMessageW(owner, WM_KEYDOWN, key, 0);
}

const std::vector<platform::PopupEntry> Menu = {
    {101, u"Geschäft: 0711 1", true, false, {}},
    {102, u"disabled", false, false, {}},
    {103, u"", true, true, {}},
    {104, u"Mehr", true, false, {{201, u"tief", true, false, {}}}},
    {105, u"A && B", true, false, {}},
};

TEST(ScreenTest, MenusGiveTheChosenEntry) {
  struct Row {
    const char* why;
    std::initializer_list<WPARAM> keys;
    std::optional<int> chosen;
  };
  const Row rows[] = {
      {"first", {VK_DOWN, VK_RETURN}, 101},
      {"last", {VK_UP, VK_RETURN}, 105},
      {"in a submenu", {VK_UP, VK_UP, VK_RIGHT, VK_RETURN}, 201},
      {"left", {VK_DOWN, VK_ESCAPE}, std::nullopt},
  };
  Screen screen(GetModuleHandleW(nullptr));
  for (const Row& row : rows) {
    SCOPED_TRACE(row.why);
    screen.showAnchor({1516, 946});
    Watcher watcher(MenuClass, nullptr, [&](HWND) { press(row.keys); });
    EXPECT_EQ(screen.trackPopup(Menu, {-32, -32}), row.chosen);
    EXPECT_TRUE(watcher.found());
    screen.hideAnchor();
  }
}

TEST(ScreenTest, MenusOpenAtTheAnchorAndLeaveNothing) {
  RECT place{};
  RECT anchorPlace{};
  {
    Screen screen(GetModuleHandleW(nullptr));
    const auto perPixel = screen.twipsPerPixel();
    // As the form does it: on any screen the pixels of a control.
    screen.showAnchor({static_cast<std::int32_t>(std::lround(100 * perPixel.x)),
                       static_cast<std::int32_t>(std::lround(62 * perPixel.y))});
    const HWND anchor = FindWindowW(Screen::AnchorClass, nullptr);
    EXPECT_TRUE(IsWindowVisible(anchor));
    GetWindowRect(anchor, &anchorPlace);
    Watcher watcher(MenuClass, nullptr, [&](HWND menu) {
      GetWindowRect(menu, &place);
      press({VK_ESCAPE});
    });
    screen.trackPopup(Menu, {-32, -32});
    screen.hideAnchor();
    EXPECT_FALSE(IsWindowVisible(anchor));
  }
  EXPECT_EQ(anchorPlace.right - anchorPlace.left, 0);
  EXPECT_EQ(anchorPlace.left, 100);
  EXPECT_EQ(anchorPlace.top, 62);
  EXPECT_NEAR(place.left, 98, 3) << "32 twips before it";
  EXPECT_NEAR(place.top, 60, 3);
  EXPECT_EQ(FindWindowW(Screen::AnchorClass, nullptr), nullptr);
  WNDCLASSW windowClass;
  EXPECT_FALSE(GetClassInfoW(GetModuleHandleW(nullptr), Screen::AnchorClass, &windowClass));
}

TEST(ScreenTest, BoxesShowTheirText) {
  wchar_t shown[100] = {};
  Watcher watcher(L"#32770", Screen::BoxTitle, [&](HWND box) {
    constexpr int TextOfABox = 0xFFFF;
    GetDlgItemTextW(box, TextOfABox, shown, 100);
    PostMessageW(box, WM_COMMAND, IDOK, 0);
  });
  Screen(GetModuleHandleW(nullptr)).messageBox(u"Velnor läßt sich nicht starten.");
  EXPECT_TRUE(watcher.found());
  EXPECT_EQ(utf16(shown), u"Velnor läßt sich nicht starten.");
}

HWND visibleWindow() {
  return CreateWindowW(L"STATIC", nullptr, WS_POPUP | WS_VISIBLE, 0, 0, 50, 50, nullptr, nullptr,
                       nullptr, nullptr);
}

TEST(ScreenTest, BoxesAreModalToAllWindowsAndInFront) {
  const HWND first = visibleWindow();
  const HWND second = visibleWindow();
  SetActiveWindow(first);
  // Somebody else has the user's attention.
  Watcher other(L"#32770", Screen::BoxTitle, [&](HWND box) {
    EXPECT_EQ(GetWindow(box, GW_OWNER), nullptr);
    EXPECT_FALSE(IsWindowEnabled(first));
    EXPECT_FALSE(IsWindowEnabled(second));
    for (int i = 0; i < 200 && GetForegroundWindow() != box; ++i) Sleep(5);
    EXPECT_EQ(GetForegroundWindow(), box);
    PostMessageW(box, WM_COMMAND, IDOK, 0);
  });
  struct Background {
    static DWORD WINAPI run(void* done) {
      const HWND window = visibleWindow();
      SetForegroundWindow(window);
      SetEvent(static_cast<HANDLE*>(done)[0]);
      WaitForSingleObject(static_cast<HANDLE*>(done)[1], INFINITE);
      DestroyWindow(window);
      return 0;
    }
  };
  HANDLE events[2] = {CreateEventW(nullptr, TRUE, FALSE, nullptr),
                      CreateEventW(nullptr, TRUE, FALSE, nullptr)};
  const HANDLE thread = CreateThread(nullptr, 0, &Background::run, events, 0, nullptr);
  WaitForSingleObject(events[0], INFINITE);
  Screen(GetModuleHandleW(nullptr)).messageBox(u"in front");
  EXPECT_TRUE(other.found());
  EXPECT_TRUE(IsWindowEnabled(first));
  EXPECT_TRUE(IsWindowEnabled(second));
  SetEvent(events[1]);
  WaitForSingleObject(thread, INFINITE);
  for (const HANDLE handle : {events[0], events[1], thread}) CloseHandle(handle);
  DestroyWindow(first);
  DestroyWindow(second);
}

TEST(ScreenTest, TellsPointerAndMetrics) {
  Screen screen(GetModuleHandleW(nullptr));
  SetCursorPos(123, 77);
  EXPECT_EQ(screen.cursorPosition().x, 123);
  EXPECT_EQ(screen.cursorPosition().y, 77);
  const HDC device = GetDC(nullptr);
  EXPECT_EQ(screen.twipsPerPixel().x, 1440.0 / GetDeviceCaps(device, LOGPIXELSX));
  EXPECT_EQ(screen.twipsPerPixel().y, 1440.0 / GetDeviceCaps(device, LOGPIXELSY));
  ReleaseDC(nullptr, device);
}

/// The user's setting of the screen's resolution, which a program takes over when it starts.
class DotsPerInch {
 public:
  DotsPerInch() {
    RegOpenKeyExW(HKEY_CURRENT_USER, L"Control Panel\\Desktop", 0, KEY_ALL_ACCESS, &key_);
    DWORD size = sizeof before_;
    found_ = RegQueryValueExW(key_, Name, nullptr, nullptr, reinterpret_cast<BYTE*>(&before_),
                              &size) == ERROR_SUCCESS;
  }
  ~DotsPerInch() {
    found_ ? set(before_) : RegDeleteValueW(key_, Name);
    RegCloseKey(key_);
  }
  LONG set(DWORD dots) {
    return RegSetValueExW(key_, Name, 0, REG_DWORD, reinterpret_cast<BYTE*>(&dots), sizeof dots);
  }

 private:
  static constexpr wchar_t Name[] = L"LogPixels";
  HKEY key_ = nullptr;
  DWORD before_ = 0;
  bool found_ = false;
};

TEST(ScreenTest, MenusOpenAtTheirPixelOnEveryScreen) {
  DotsPerInch setting;
  for (const DWORD dots : {192, 110}) {
    SCOPED_TRACE(dots);
    ASSERT_EQ(setting.set(dots), ERROR_SUCCESS);
    wchar_t command[] =
        L"windows_tests.exe --gtest_filter=ScreenTest.MenusOpenAtTheAnchor*:*Metrics";
    STARTUPINFOW start{};
    start.cb = sizeof start;
    PROCESS_INFORMATION process{};
    wchar_t path[MAX_PATH] = {};
    GetModuleFileNameW(nullptr, path, MAX_PATH);
    ASSERT_TRUE(CreateProcessW(path, command, nullptr, nullptr, FALSE, 0, nullptr, nullptr, &start,
                               &process));
    WaitForSingleObject(process.hProcess, INFINITE);
    DWORD code = 0;
    GetExitCodeProcess(process.hProcess, &code);
    EXPECT_EQ(code, 0U);
    CloseHandle(process.hProcess);
    CloseHandle(process.hThread);
  }
}

/// Colours of a bitmap that are not the background's.
int paintedPixels(HBITMAP bitmap) {
  const HDC canvas = CreateCompatibleDC(nullptr);
  const HGDIOBJ old = SelectObject(canvas, bitmap);
  int painted = 0;
  for (int y = 0; y < 16; ++y) {
    for (int x = 0; x < 16; ++x) {
      if (GetPixel(canvas, x, y) != GetSysColor(COLOR_BTNFACE)) ++painted;
    }
  }
  SelectObject(canvas, old);
  DeleteDC(canvas);
  return painted;
}

TEST(PicturesTest, GoToTheClipboardAsBitmaps) {
  Pictures pictures(GetModuleHandleW(nullptr));
  const auto dial = pictures.overlay(u"dial", u"blank");
  pictures.clearClipboard();
  EXPECT_FALSE(IsClipboardFormatAvailable(CF_BITMAP));
  pictures.setClipboard(dial);
  ASSERT_TRUE(OpenClipboard(nullptr));
  const auto bitmap = static_cast<HBITMAP>(GetClipboardData(CF_BITMAP));
  ASSERT_NE(bitmap, nullptr);
  BITMAP size{};
  GetObjectW(bitmap, sizeof size, &size);
  EXPECT_EQ(size.bmWidth, 16);
  EXPECT_EQ(size.bmHeight, 16);
  const int painted = paintedPixels(bitmap);
  EXPECT_GT(painted, 30);
  EXPECT_LT(painted, 200);
  CloseClipboard();

  // Two images one upon the other.
  pictures.setClipboard(pictures.overlay(u"dial", u"velnor"));
  ASSERT_TRUE(OpenClipboard(nullptr));
  EXPECT_GT(paintedPixels(static_cast<HBITMAP>(GetClipboardData(CF_BITMAP))), painted);
  CloseClipboard();

  EXPECT_THROW(pictures.overlay(u"nothing", u"blank"), automation::Error);
  EXPECT_THROW(pictures.overlay(u"dial", u"nothing"), automation::Error);
}

TEST(PicturesTest, AreRefusedWhileTheClipboardIsTaken) {
  Pictures pictures(GetModuleHandleW(nullptr));
  const HWND other = CreateWindowExW(0, L"STATIC", nullptr, WS_POPUP, 0, 0, 0, 0, nullptr, nullptr,
                                     nullptr, nullptr);
  ASSERT_TRUE(OpenClipboard(other));
  EXPECT_THROW(pictures.clearClipboard(), automation::Error);
  CloseClipboard();
  DestroyWindow(other);
  pictures.clearClipboard();
}

TEST(PicturesTest, IconsAreComPictures) {
  Pictures pictures(GetModuleHandleW(nullptr));
  const auto icon = pictures.icon(101);
  EXPECT_EQ(icon.get(u"Type").toInt32(), PICTYPE_ICON);
  EXPECT_NE(icon.get(u"Handle").toInt32(), 0);
  EXPECT_THROW(pictures.icon(99), automation::Error);
}

TEST(PicturesTest, FreeTheirHandles) {
  Pictures pictures(GetModuleHandleW(nullptr));
  const auto use = [&] {
    pictures.clearClipboard();
    pictures.setClipboard(pictures.overlay(u"velnor", u"blank"));
    pictures.icon(101);
  };
  for (int i = 0; i < 3; ++i) use();
  const HandleMarks before;
  for (int i = 0; i < 100; ++i) use();
  const HandleMarks after;
  EXPECT_NEAR(after.user, before.user, 40);
  EXPECT_NEAR(after.gdi, before.gdi, 40);
}

}  // namespace
}  // namespace windows
