// The add-in for days on end: nothing that it holds may grow.

#include "simulator/player/Text.h"
#include "standin/client/names.h"
#include "standin/outlook/Pace.h"
#include "standin/proof/Held.h"
#include "standin/proof/ProofDesk.h"

namespace proof {
namespace {

constexpr int WarmUp = 50;

/// Bytes in the heaps that the system keeps when the client's running object is asked for so often.
std::size_t costOfFindingTheClient(int times) {
  const auto find = [] {
    windows::ComPtr<IUnknown> client;
    EXPECT_EQ(GetActiveObject(standin::ApplicationClassId, nullptr, client.receive()), S_OK);
  };
  for (int i = 0; i < WarmUp; ++i) find();
  const std::size_t before = heapBytes();
  for (int i = 0; i < times; ++i) find();
  return heapBytes() - before;
}

class Endurance : public ProofDesk {
 protected:
  Endurance() {
    // The trace file would be all that takes time.
    setText(u"Software\\K9T\\Logging", u"LogFile", u"0");
  }

  /// Does something again and again and compares what is held after the first times and after the
  /// last. `allowance` is what the system itself keeps in the heaps, in bytes.
  template <class Action>
  void endure(const std::string& what, int times, const Action& action, std::size_t allowance = 0) {
    for (int i = 0; i < WarmUp; ++i) action();
    windows::HandleMarks::settled();
    const Held before(session);
    for (int i = 0; i < times; ++i) action();
    const Held after(session);
    std::printf("%s, %d times after %d to warm up\n  before: %s\n  after:  %s\n", what.c_str(),
                times, WarmUp, before.line().c_str(), after.line().c_str());
    if (allowance != 0) {
      std::printf("  of the heap, %u bytes are the system's own\n",
                  static_cast<unsigned>(allowance));
    }
    // A little is the system's: caches of COM, the first use of something.
    constexpr std::size_t Slack = 16 * 1024;
    EXPECT_LE(after.heapBytes, before.heapBytes + allowance + Slack);
    EXPECT_LE(after.privateBytes, before.privateBytes + allowance + 1024 * 1024);
    EXPECT_LE(after.handles, before.handles + 2);
    EXPECT_NEAR(after.kernel, before.kernel, 5);
    EXPECT_NEAR(after.user, before.user, 5);
    EXPECT_NEAR(after.gdi, before.gdi, 5);
    EXPECT_EQ(after.windows, before.windows);
    EXPECT_EQ(after.exported, before.exported);
    EXPECT_EQ(after.objects, before.objects);
    EXPECT_EQ(after.sinks, before.sinks);
  }
};

TEST_F(Endurance, LoadedAndUnloaded) {
  endure("loaded and unloaded with Outlook 2003", 200, [this] {
    start();
    EXPECT_TRUE(dll.loaded());
    host().openItem(u"two");
    quit();
    EXPECT_FALSE(dll.loaded());
  });
  EXPECT_EQ(Held(session).exported, 0U);
}

TEST_F(Endurance, LoadedMoreOftenThanAProcessHasSlotsForThreads) {
  constexpr int Slots = 64 + 1024;
  for (int i = 0; i < Slots; ++i) {
    { const standin::ComAddin addin(AddinProgId, nullptr); }
    CoFreeUnusedLibrariesEx(0, 0);
    ASSERT_FALSE(dll.loaded());
  }
  const DWORD slot = TlsAlloc();
  EXPECT_NE(slot, TLS_OUT_OF_INDEXES);
  TlsFree(slot);
}

TEST_F(Endurance, SwitchedOffAndOn) {
  start();
  constexpr int Times = 200;
  endure("switched off and on in a running Outlook 2003", Times, [this] {
    session.switchAddin(false);
    EXPECT_FALSE(dll.loaded());
    session.switchAddin(true);
    select(u"two");
  });
}

TEST_F(Endurance, InspectorsOpenedAndClosed) {
  for (const char16_t* version : {u"11.0", u"12.0"}) {
    start(version);
    int count = 0;
    endure("inspector opened and closed in Outlook " + scenario::toUtf8(version), 500, [&] {
      const int window = host().openItem(++count % 2 ? u"two" : u"mail");
      host().activate(window);
      host().close(window);
      standin::deliverMessages();
    });
    quit();
  }
}

TEST_F(Endurance, ItemsSelectedAndNumbersDialled) {
  ASSERT_TRUE(client.startReady());
  start();
  int count = 0;
  constexpr int Times = 50;
  // A dialled number asks for it six times, a click on the button that hangs up twice.
  const std::size_t finding = 8 * costOfFindingTheClient(Times);
  endure(
      "item selected and called", Times,
      [&] {
        select(++count % 2 ? u"two" : u"one");
        type(u"4711");
        click(u"CxBtDrop");
        standin::deliverMessages();
      },
      finding);
  endure("item selected", 500, [&] { select(++count % 2 ? u"two" : u"one"); });
}

}  // namespace
}  // namespace proof
