// What the add-in shows, with a second thread at keyboard and mouse.

#include <gtest/gtest.h>

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
    screen.showAnchor({100 * perPixel.x + 16, 62 * perPixel.y + 16});
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
  EXPECT_EQ(anchorPlace.left, 101);
  EXPECT_EQ(anchorPlace.top, 63);
  EXPECT_NEAR(place.left, 99, 1);
  EXPECT_NEAR(place.top, 61, 1);
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

TEST(ScreenTest, TellsPointerAndMetrics) {
  Screen screen(GetModuleHandleW(nullptr));
  SetCursorPos(123, 77);
  EXPECT_EQ(screen.cursorPosition().x, 123);
  EXPECT_EQ(screen.cursorPosition().y, 77);
  EXPECT_EQ(screen.twipsPerPixel().x, 15);
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
