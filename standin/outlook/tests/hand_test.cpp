#include <gtest/gtest.h>

#include "simulator/data/MailboxReader.h"
#include "standin/outlook/Pace.h"
#include "standin/outlook/Session.h"
#include "standin/outlook/hand/HandDesk.h"

namespace {

TEST(HandDesk, AnOutlookThatStartsAtOnceHasWindowsOfItsOwn) {
  constexpr std::uint32_t SomeBeats = 300;
  standin::Session session(
      simulator::readMailbox(R"({"user": "A", "folders": [{"name": "Inbox", "holds": "mail"}]})",
                             "mailbox"),
      u"No.Such.Addin");
  const standin::HandDesk desk(session);
  const auto shown = [] {
    standin::Pace().wait(SomeBeats);
    return FindWindowW(L"OutlookStandinWindow", L"Inbox - Microsoft Outlook");
  };
  session.start(u"11.0");
  const HWND first = shown();
  ASSERT_NE(first, nullptr);
  EXPECT_EQ(shown(), first) << "a window stays as long as Outlook does";
  session.quit();
  session.start(u"12.0");
  const HWND second = shown();
  EXPECT_NE(second, nullptr);
  EXPECT_FALSE(IsWindow(first)) << "the window of an Outlook that has ended";
  session.quit();
  EXPECT_EQ(shown(), nullptr);
}

}  // namespace
