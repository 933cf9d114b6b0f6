// Outlook disconnects the add-in and drops its last reference in the middle of whatever the add-in
// is just doing: what runs comes to its end, and the DLL goes afterwards.

#include "simulator/client/Client.h"
#include "standin/outlook/Pace.h"
#include "standin/proof/ProofDesk.h"

namespace proof {
namespace {

constexpr std::u16string_view ListedAddin =
    u"Software\\Microsoft\\Office\\Outlook\\Addins\\VelnorOutlookCOMAddIn.Connect";

/// Lets Outlook drop the add-in at one of the calls that come from it.
class Dropping : public simulator::CrossingObserver {
 public:
  Dropping(ProofDesk& desk, int at) : desk_(desk), left_(at) {}

  automation::Value around(const simulator::Crossing&,
                           const std::function<automation::Value()>& proceed) override {
    meet();
    return proceed();
  }
  void before(const simulator::Crossing&) override { meet(); }
  bool dropped() const { return dropped_; }

 private:
  void meet() {
    if (dropped_ || --left_ > 0 || !desk_.session.addinOn()) return;
    dropped_ = true;
    // As the user does it, who then asks Outlook to let go of unused libraries.
    desk_.session.switchAddin(false);
    EXPECT_TRUE(desk_.dll.loaded()) << "its own code is still running";
  }

  ProofDesk& desk_;
  int left_;
  bool dropped_ = false;
};

struct Entry {
  const char* what;
  const char16_t* version;
  void (*prepare)(ProofDesk& desk);
  void (*act)(ProofDesk& desk);
};

class Release : public ProofDesk {
 protected:
  void dropInEach(const std::vector<Entry>& entries) {
    for (const Entry& entry : entries) {
      SCOPED_TRACE(entry.what);
      const int count = dropAtEveryCall(
          entry.version, [&] { entry.prepare(*this); }, [&] { entry.act(*this); });
      EXPECT_GT(count, 0);
      std::printf("%s: dropped at each of %d calls\n", entry.what, count);
    }
  }

  /// Does the same again and again, and drops the add-in at the first call from it, at the second,
  /// and so on to the last. How often that was.
  template <class Prepare, class Act>
  int dropAtEveryCall(const char16_t* version, const Prepare& prepare, const Act& act) {
    constexpr int Most = 500;
    for (int at = 1; at < Most; ++at) {
      // It was switched off.
      setNumber(ListedAddin, u"LoadBehavior", 3);
      session.bars() = {};
      session.start(version);
      EXPECT_TRUE(session.addinOn());
      prepare();
      complaints();
      Dropping dropping(*this, at);
      session.boundary().setObserver(&dropping);
      EXPECT_NO_THROW(act());
      session.boundary().setObserver(nullptr);
      // What was on its way when the add-in went.
      standin::deliverMessages();
      const bool dropped = dropping.dropped();
      if (dropped) expectGone();
      session.quit();
      if (!dropped) return at - 1;
    }
    ADD_FAILURE() << "there is no end to the calls";
    return Most;
  }

  void expectGone() {
    EXPECT_EQ(session.boundary().liveConnections(), 0U);
    EXPECT_EQ(session.boundary().liveHandles(), 0U);
    CoFreeUnusedLibrariesEx(0, 0);
    EXPECT_FALSE(dll.loaded()) << "it holds itself";
  }
};

void nothing(ProofDesk&) {}
void chooseOne(ProofDesk& desk) {
  desk.select(u"one");
}
void openItem(ProofDesk& desk) {
  desk.host().openItem(u"two");
}

TEST_F(Release, InTheMiddleOfWhatWindowsTell) {
  dropInEach({
      {"new explorer", u"11.0", nothing, [](ProofDesk& desk) { desk.host().openExplorer(); }},
      {"folder switched, toolbar built", u"11.0", nothing,
       [](ProofDesk& desk) { desk.host().switchFolder(1, u"Inbox"); }},
      {"tick of the selection timer", u"11.0", chooseOne,
       [](ProofDesk&) { standin::Pace().wait(450); }},
      {"explorer closed", u"11.0",
       [](ProofDesk& desk) {
         chooseOne(desk);
         desk.host().openExplorer();
       },
       [](ProofDesk& desk) { desk.host().close(1); }},
      {"new inspector", u"11.0", nothing, openItem},
      {"inspector closed", u"11.0", openItem, [](ProofDesk& desk) { desk.host().close(2); }},
      {"ribbon shown", u"12.0", nothing, openItem},
  });
}

TEST_F(Release, InTheMiddleOfCommands) {
  ASSERT_TRUE(client.startReady());
  dropInEach({
      {"number typed", u"11.0", chooseOne, [](ProofDesk& desk) { desk.type(u"4711"); }},
      {"dial", u"11.0", chooseOne, [](ProofDesk& desk) { desk.click(u"CxBtDial"); }},
      {"drop", u"11.0", chooseOne, [](ProofDesk& desk) { desk.click(u"CxBtDrop"); }},
      {"action", u"11.0", chooseOne, [](ProofDesk& desk) { desk.click(u"CxBtAction"); }},
      {"dial in an inspector", u"11.0", openItem,
       [](ProofDesk& desk) { desk.session.click(2, u"CxBtDial", false); }},
      {"action in an inspector", u"11.0", openItem,
       [](ProofDesk& desk) { desk.session.click(2, u"CxBtAction", false); }},
      {"ribbon's dial", u"12.0", openItem,
       [](ProofDesk& desk) { desk.session.click(2, u"IDS_WaehlenCombo", true); }},
  });
}

TEST_F(Release, InTheMiddleOfATickOfTheGeneralTimer) {
  start();
  quit();
  setNumber(ListedAddin, u"LoadBehavior", 3);
  // Nobody selects anything: the timer builds the toolbar once the window is old enough.
  session.start(u"11.0");
  Dropping dropping(*this, 1);
  session.boundary().setObserver(&dropping);
  standin::Pace().wait(21'000);
  session.boundary().setObserver(nullptr);
  EXPECT_TRUE(dropping.dropped());
  expectGone();
}

TEST_F(Release, WhileAMenuIsOpen) {
  ASSERT_TRUE(client.startReady());
  for (const bool chosen : {false, true}) {
    setNumber(ListedAddin, u"LoadBehavior", 3);
    session.start(u"11.0");
    select(u"two");
    onMenu = [&](const auto& menu) -> std::optional<int> {
      session.switchAddin(false);
      return chosen ? std::optional<int>(menu.at(0).id) : std::nullopt;
    };
    click(u"CxBtDial");
    EXPECT_FALSE(session.addinOn());
    expectGone();
    quit();
  }
}

TEST_F(Release, WhileABoxIsUp) {
  // A client without a window is started anew, which fails.
  client.setGaps({.window = true, .object = false, .service = false});
  ASSERT_TRUE(client.startReady());
  standin::RegistryKeeper spoiled;
  spoiled.setText(platform::RegistryRoot::LocalMachine,
                  u"Software\\Classes\\" + std::u16string(simulator::Client::RegistryKey), u"",
                  u"C:\\no such folder\\client.exe");
  start();
  onBox = [this] { session.switchAddin(false); };
  click(u"CxBtDrop");
  EXPECT_EQ(boxes, Lines{"Cannot start Velnor. Please re-install the software."});
  EXPECT_FALSE(session.addinOn());
  // What the user asked for is carried out all the same.
  EXPECT_EQ(told(), Lines{"hang up"});
  expectGone();
}

}  // namespace
}  // namespace proof
