// What the fault sweep has found, each as a row of its own.
#include <gtest/gtest.h>

#include "client/clsVelnorCmds.h"
#include "tests/Once.h"
#include "tests/World.h"

namespace tests {
namespace {

using simulator::Crossing;

constexpr std::u16string_view ExplorerSource = u"{0006304F-0000-0000-C000-000000000046}";
constexpr std::u16string_view ButtonSource = u"{000C0351-0000-0000-C000-000000000046}";

/// A call in the middle of which it happens.
struct Moment {
  const char* why;
  std::u16string_view owner;
  std::u16string_view member;
};

class SweepRegressionTest : public testing::TestWithParam<Moment> {
 protected:
  /// Plays until Outlook or the add-in is gone.
  void play() {
    world.addContact(u"Meier");
    world.addContact(u"Smith");
    world.start();
    const std::function<void()> actions[] = {[&] { world.select(u"Contacts", u"Meier"); },
                                             [&] { world.host->openItem(u"Smith"); }};
    for (const auto& action : actions) {
      if (!world.host->addinConnected()) return;
      try {
        action();
      } catch (const simulator::HostError&) {
        // The window went in the middle of it.
      }
    }
  }
  void expectNothingHeld() {
    EXPECT_EQ(world.boundary.liveHandles(), 0u);
    EXPECT_EQ(world.boundary.liveConnections(), 0u);
  }
  void expectNothingLeft() {
    expectNothingHeld();
    EXPECT_EQ(world.machine.timers.liveCount(), 0u);
    EXPECT_FALSE(world.machine.mapiHelper.initialized());
  }

  World world;
};

// Outlook disconnects the add-in, or ends, in the middle of a call: nothing may be taken hold of
// afterwards.

TEST_P(SweepRegressionTest, DisconnectedInTheMiddleOfACallItHoldsNothing) {
  Once once(world.boundary, GetParam().owner, GetParam().member, [&] {
    if (world.host->addinConnected()) world.host->disconnectAddin();
  });
  play();
  ASSERT_TRUE(once.happened());
  ASSERT_FALSE(world.host->addinConnected());
  expectNothingHeld();
  world.stop();
  expectNothingLeft();
}

TEST_P(SweepRegressionTest, LeftByOutlookInTheMiddleOfACallItHoldsNothing) {
  Once once(world.boundary, GetParam().owner, GetParam().member, [&] { world.host->quit(); });
  play();
  ASSERT_TRUE(once.happened());
  // While the add-in is being connected there is no window to close yet.
  if (!world.host->running()) expectNothingHeld();
  world.stop();
  expectNothingLeft();
}

INSTANTIATE_TEST_SUITE_P(
    , SweepRegressionTest,
    testing::Values(Moment{"ProgId", u"COMAddIn", u"ProgId"},
                    Moment{"Explorers", u"Application", u"Explorers"},
                    Moment{"Inspectors", u"Application", u"Inspectors"},
                    Moment{"FirstWindow", u"Application", u"ActiveExplorer"},
                    Moment{"HelperInit", u"MapiHelper", u"init"},
                    Moment{"WindowSubscription", u"Explorer", ExplorerSource},
                    Moment{"ToolbarSought", u"Explorer", u"CommandBars"},
                    Moment{"ControlAdded", u"CommandBarControls", u"Add"},
                    Moment{"ButtonSubscription", u"CommandBarButton", ButtonSource},
                    Moment{"ButtonConfigured", u"CommandBarButton", u"Parameter"},
                    Moment{"InspectorItem", u"Inspector", u"CurrentItem"},
                    Moment{"InspectorBars", u"Inspector", u"CommandBars"},
                    Moment{"InspectorKind", u"Inspector", u"IsWordMail"}),
    [](const auto& row) { return std::string(row.param.why); });

/// Fails one operation of a service for good.
class Failing : public simulator::CrossingObserver {
 public:
  Failing(simulator::Boundary& boundary, std::u16string_view operation)
      : boundary_(boundary), operation_(operation) {
    boundary_.setObserver(this);
  }
  ~Failing() override { boundary_.setObserver(nullptr); }
  void before(const Crossing& crossing) override {
    if (crossing.kind == Crossing::Kind::Service && crossing.member == operation_) {
      throw automation::Error(automation::ErrorNumber::AutomationFailed);
    }
  }

 private:
  simulator::Boundary& boundary_;
  std::u16string_view operation_;
};

TEST_F(SweepRegressionTest, ATimerThatCanNotBeKilledDoesNotEndTheProcess) {
  world.start();
  world.host->disconnectAddin();
  const Failing failing(world.boundary, u"killTimer");
  world.addin.reset();
  // Its ticks find nothing to work on.
  world.machine.advance(60'000);
}

TEST_F(SweepRegressionTest, AnInspectorClosedInTheMiddleOfItsBuildHoldsNoButton) {
  world.addContact(u"Meier");
  world.start();
  const auto held = world.boundary.liveHandles();
  Once once(world.boundary, u"CommandBarControls", u"Add", [&] { world.host->close(2); });
  world.host->openItem(u"Meier");
  ASSERT_TRUE(once.happened());
  EXPECT_EQ(world.boundary.liveHandles(), held);
}

TEST_F(SweepRegressionTest, ACommandKeepsTheIdentityThatItWasGiven) {
  world.addContact(u"Meier");
  world.startClient();
  world.start();
  world.host->openItem(u"Meier");
  const auto bar = cxol::globals().g_olApp.activeInspector().commandBars().item(u"Velnor ");
  const auto button = bar.findControl(u"CxBtDrop");
  auto identity = button.parameter();
  // The window's buttons are built anew in the middle of the click.
  Once once(world.boundary, u"CommandBarButton", u"Parameter", [&] { identity.assign(100, u'x'); });
  cxol::clsVelnorCmds().Drop(button, identity);
  ASSERT_TRUE(once.happened());
  EXPECT_EQ(world.told(), Texts{u"hang up"});
}

TEST_F(SweepRegressionTest, AnExplorerClosedInTheMiddleOfItsBuildHoldsNoButton) {
  world.addContact(u"Meier");
  world.start();
  const int second = world.host->openExplorer(u"Inbox");
  const auto held = world.boundary.liveHandles();
  Once once(world.boundary, u"CommandBarControls", u"Add", [&] { world.host->close(second); });
  world.host->switchFolder(second, u"Contacts");
  ASSERT_TRUE(once.happened());
  EXPECT_LT(world.boundary.liveHandles(), held);
}

}  // namespace
}  // namespace tests
