// What the add-in shows, with a second thread at keyboard and mouse.

#include <gtest/gtest.h>

#include <algorithm>
#include <cmath>
#include <cstring>
#include <functional>
#include <vector>

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

// That a box also comes in front of other programs can't be told here: without a display Wine's
// foreground window is a matter of chance.
TEST(ScreenTest, BoxesAreModalToAllWindows) {
  const HWND first = visibleWindow();
  const HWND second = visibleWindow();
  SetActiveWindow(first);
  Watcher watcher(L"#32770", Screen::BoxTitle, [&](HWND box) {
    EXPECT_EQ(GetWindow(box, GW_OWNER), nullptr);
    EXPECT_FALSE(IsWindowEnabled(first));
    EXPECT_FALSE(IsWindowEnabled(second));
    PostMessageW(box, WM_COMMAND, IDOK, 0);
  });
  Screen(GetModuleHandleW(nullptr)).messageBox(u"modal");
  EXPECT_TRUE(watcher.found());
  EXPECT_TRUE(IsWindowEnabled(first));
  EXPECT_TRUE(IsWindowEnabled(second));
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

HBITMAP bitmapOf(const automation::Object& picture) {
  const auto handle = static_cast<UINT_PTR>(picture.get(u"Handle").toInt32());
  return reinterpret_cast<HBITMAP>(handle);
}

using Colours = std::vector<COLORREF>;

/// Those of a bitmap of a face, row by row.
Colours coloursOf(HBITMAP bitmap) {
  BITMAP size{};
  GetObjectW(bitmap, sizeof size, &size);
  EXPECT_EQ(size.bmWidth, 16);
  EXPECT_EQ(size.bmHeight, 16);
  const HDC canvas = CreateCompatibleDC(nullptr);
  const HGDIOBJ old = SelectObject(canvas, bitmap);
  Colours colours;
  for (int i = 0; i < 256; ++i) colours.push_back(GetPixel(canvas, i % 16, i / 16));
  SelectObject(canvas, old);
  DeleteDC(canvas);
  return colours;
}

/// Bytes that the clipboard holds in this format.
std::vector<std::byte> bytesOf(const wchar_t* format) {
  const HANDLE memory = GetClipboardData(RegisterClipboardFormatW(format));
  if (!memory) return {};
  const auto* bytes = static_cast<const std::byte*>(GlobalLock(memory));
  std::vector<std::byte> copy(bytes, bytes + GlobalSize(memory));
  GlobalUnlock(memory);
  return copy;
}

TEST(PicturesTest, FacesAreDrawnWhereTheirMaskIsBlack) {
  Pictures pictures(GetModuleHandleW(nullptr));
  const auto face = pictures.overlay(u"dial", u"blank");
  const auto colours = coloursOf(bitmapOf(face.picture));
  const auto mask = coloursOf(bitmapOf(face.mask));
  std::ptrdiff_t differing = 0;
  for (std::size_t i = 0; i < mask.size(); ++i) {
    EXPECT_TRUE(mask[i] == RGB(0, 0, 0) || mask[i] == RGB(255, 255, 255));
    if (mask[i] != RGB(0, 0, 0)) differing += colours[i] != GetSysColor(COLOR_BTNFACE);
  }
  EXPECT_EQ(differing, 0) << "see-through parts look like a button, should a host forget the mask";
  const auto drawn = std::ranges::count(mask, RGB(0, 0, 0));
  EXPECT_GT(drawn, 30);
  EXPECT_LT(drawn, 200);
  // Two images one upon the other.
  const auto both = coloursOf(bitmapOf(pictures.overlay(u"dial", u"velnor").mask));
  EXPECT_GT(std::ranges::count(both, RGB(0, 0, 0)), drawn);

  EXPECT_THROW(pictures.overlay(u"nothing", u"blank"), automation::Error);
  EXPECT_THROW(pictures.overlay(u"dial", u"nothing"), automation::Error);
}

TEST(PicturesTest, GoToTheClipboardAsOffice2000TakesThem) {
  Pictures pictures(GetModuleHandleW(nullptr));
  const auto face = pictures.overlay(u"dial", u"blank");
  pictures.setClipboard(face);
  ASSERT_TRUE(OpenClipboard(nullptr));
  const auto plain = static_cast<HBITMAP>(GetClipboardData(CF_BITMAP));
  EXPECT_EQ(coloursOf(plain), coloursOf(bitmapOf(face.picture)));
  for (const wchar_t* format : {L"Toolbar Button Face", L"Toolbar Button Mask"}) {
    const auto bytes = bytesOf(format);
    ASSERT_GE(bytes.size(), sizeof(BITMAPINFOHEADER) + 16 * 16 * 3);
    BITMAPINFOHEADER header{};
    std::memcpy(&header, bytes.data(), sizeof header);
    EXPECT_EQ(header.biSize, sizeof header);
    EXPECT_EQ(header.biWidth, 16);
    EXPECT_EQ(header.biHeight, 16);
    EXPECT_EQ(header.biBitCount, 24);
  }
  EXPECT_NE(bytesOf(L"Toolbar Button Face"), bytesOf(L"Toolbar Button Mask"));
  CloseClipboard();
}

/// Another program that has the clipboard open for so long.
class ClipboardHolder {
 public:
  explicit ClipboardHolder(DWORD milliseconds)
      : milliseconds_(milliseconds),
        opened_(CreateEventW(nullptr, TRUE, FALSE, nullptr)),
        thread_(CreateThread(nullptr, 0, hold, this, 0, nullptr)) {
    WaitForSingleObject(opened_, INFINITE);
  }
  ~ClipboardHolder() {
    WaitForSingleObject(thread_, INFINITE);
    CloseHandle(thread_);
    CloseHandle(opened_);
  }

 private:
  static DWORD WINAPI hold(void* self) {
    auto& holder = *static_cast<ClipboardHolder*>(self);
    const HWND window = CreateWindowExW(0, L"STATIC", nullptr, WS_POPUP, 0, 0, 0, 0, nullptr,
                                        nullptr, nullptr, nullptr);
    EXPECT_TRUE(OpenClipboard(window));
    SetEvent(holder.opened_);
    Sleep(holder.milliseconds_);
    CloseClipboard();
    DestroyWindow(window);
    return 0;
  }

  const DWORD milliseconds_;
  const HANDLE opened_;
  const HANDLE thread_;
};

TEST(PicturesTest, WaitForTheClipboardAndNotForEver) {
  Pictures pictures(GetModuleHandleW(nullptr));
  const auto face = pictures.overlay(u"dial", u"blank");
  EXPECT_FALSE(pictures.awaitClipboard());
  for (const DWORD held : {5u, 30u, 100u}) {
    SCOPED_TRACE(held);
    const ClipboardHolder holder(held);
    EXPECT_NO_THROW(pictures.setClipboard(face));
  }
  {
    const ClipboardHolder holder(100);
    EXPECT_TRUE(pictures.awaitClipboard());
  }
  const ClipboardHolder holder(3000);
  const DWORD before = GetTickCount();
  try {
    pictures.setClipboard(face);
    ADD_FAILURE() << "the clipboard was taken";
  } catch (const automation::Error& error) {
    EXPECT_EQ(error.number(), 521);
  }
  EXPECT_GE(GetTickCount() - before, 450u);
}

TEST(PicturesTest, IconsHaveTheSizeOfSmallIcons) {
  Pictures pictures(GetModuleHandleW(nullptr));
  const auto icon = pictures.icon(101);
  EXPECT_EQ(icon.get(u"Type").toInt32(), PICTYPE_ICON);
  ICONINFO info{};
  ASSERT_TRUE(GetIconInfo(
      reinterpret_cast<HICON>(static_cast<UINT_PTR>(icon.get(u"Handle").toInt32())), &info));
  BITMAP size{};
  GetObjectW(info.hbmColor, sizeof size, &size);
  DeleteObject(info.hbmColor);
  DeleteObject(info.hbmMask);
  EXPECT_EQ(size.bmWidth, GetSystemMetrics(SM_CXSMICON));
  EXPECT_THROW(pictures.icon(99), automation::Error);
}

TEST(PicturesTest, FreeTheirHandles) {
  Pictures pictures(GetModuleHandleW(nullptr));
  const auto use = [&] {
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
