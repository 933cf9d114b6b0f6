#include <gtest/gtest.h>

#include "standin/outlook/ModalWatch.h"
#include "standin/outlook/Pace.h"
#include "windows/services/Menu.h"

namespace {

using platform::PopupEntry;
using standin::ModalWatch;

const std::vector<PopupEntry> Menu{
    {101, u"&First", true, false, {}},
    {102, u"Not now", false, false, {}},
    {600, u"", true, true, {}},
    {700,
     u"Below",
     true,
     false,
     {{201, u"Inner", true, false, {}}, {202, u"Last", true, false, {}}}},
    {103, u"Smith && Sons", true, false, {}},
};

int ticks = 0;
void CALLBACK countTick(HWND, UINT, UINT_PTR, DWORD) {
  ++ticks;
}

/// Opens menus as the add-in does, with this thread's watch in front of them.
class ModalTest : public testing::Test {
 protected:
  ModalTest()
      : owner_(CreateWindowExW(WS_EX_TOOLWINDOW, L"STATIC", nullptr, WS_POPUP | WS_VISIBLE, 0, 0, 0,
                               0, nullptr, nullptr, nullptr, nullptr)) {}
  ~ModalTest() override { DestroyWindow(owner_); }

  int track() {
    const windows::Menu menu = windows::popupMenu(Menu);
    SetForegroundWindow(owner_);
    return TrackPopupMenu(menu.get(), TPM_RETURNCMD | TPM_NONOTIFY, 10, 10, 0, owner_, nullptr);
  }

  HWND owner_;
};

TEST_F(ModalTest, MenuIsReadAndEveryEntryCanBeChosen) {
  std::optional<int> wanted;
  std::vector<PopupEntry> seen;
  int asked = 0;
  const ModalWatch watch({[&](const auto& menu) {
                            seen = menu;
                            ++asked;
                            return wanted;
                          },
                          {}});
  // One after the other, as two clicks would; the last one leaves the menu.
  const std::optional<int> choices[] = {101, 103, 201, 202, 101, std::nullopt};
  for (const auto& choice : choices) {
    wanted = choice;
    EXPECT_EQ(track(), choice.value_or(0));
  }
  EXPECT_EQ(asked, static_cast<int>(std::size(choices)));
  ASSERT_EQ(seen.size(), Menu.size());
  for (std::size_t i = 0; i < Menu.size(); ++i) {
    EXPECT_EQ(seen[i].caption, Menu[i].caption) << i;
    EXPECT_EQ(seen[i].enabled, Menu[i].enabled) << i;
    EXPECT_EQ(seen[i].separator, Menu[i].separator) << i;
    EXPECT_EQ(seen[i].entries.size(), Menu[i].entries.size()) << i;
  }
}

TEST_F(ModalTest, TimePassesBehindAnOpenMenuAndItIsAskedForOnce) {
  int asked = 0;
  ticks = 0;
  const UINT_PTR timer = SetTimer(nullptr, 0, 20, countTick);
  const ModalWatch watch({[&](const auto&) -> std::optional<int> {
                            ++asked;
                            standin::Pace().wait(200);
                            return 103;
                          },
                          {}});
  EXPECT_EQ(track(), 103);
  KillTimer(nullptr, timer);
  EXPECT_EQ(asked, 1);
  EXPECT_GE(ticks, 5);
}

TEST_F(ModalTest, BoxIsReadAndClosedAlsoWhileAMenuIsOpen) {
  constexpr UINT Modal = MB_OK | MB_TASKMODAL | MB_SETFOREGROUND;
  std::vector<std::u16string> boxes;
  const ModalWatch watch({[&](const auto&) -> std::optional<int> {
                            MessageBoxW(nullptr, L"Inner \u00fc", L"Title", Modal);
                            return 101;
                          },
                          [&](std::u16string_view text) { boxes.emplace_back(text); }});
  EXPECT_EQ(MessageBoxW(nullptr, L"Cannot start.\nRe-install.", L"Title", Modal), IDOK);
  EXPECT_EQ(MessageBoxW(nullptr, L"Not modal.", L"Title", MB_OK), IDOK);
  // A box that comes up takes the menu away.
  track();
  ASSERT_EQ(boxes.size(), 3u);
  EXPECT_TRUE(boxes[0] == u"Cannot start.\nRe-install.");
  EXPECT_TRUE(boxes[1] == u"Not modal. [another window can be used]");
  EXPECT_TRUE(boxes[2] == u"Inner \u00fc");
}

TEST(Pace, WaitsAddUpWithoutTheTimeBetweenThem) {
  standin::Pace pace;
  const DWORD start = GetTickCount();
  pace.wait(100);
  Sleep(60);
  pace.wait(100);
  const DWORD passed = GetTickCount() - start;
  EXPECT_GE(passed, 200u);
  EXPECT_LT(passed, 290u);
}

}  // namespace
