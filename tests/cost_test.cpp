// What operations cost, in counts: host calls beside the number that their steps need, and
// allocations. Times belong to the benchmark program.
#include <gtest/gtest.h>

#include "explorer/SDKTimer.h"
#include "infra/modK9TLog.h"
#include "infra/modRegistry.h"
#include "items/EvalObjects.h"
#include "tests/HostCalls.h"
#include "tests/World.h"
#include "tests/allocations.h"
#include "tests/raised.h"

namespace tests {
namespace {

class CostTest : public testing::Test {
 protected:
  /// Host calls of one action.
  std::size_t callsOf(const std::function<void()>& action) {
    const HostCalls calls(world.boundary);
    action();
    return calls.count();
  }
  void select(std::u16string_view folder, std::u16string_view item) {
    world.select(folder, item);
    world.machine.advance(400);
  }
  /// 50 explorers and 200 inspectors, for which everything is done.
  void openCrowd() {
    for (int i = 0; i < 200; ++i) world.addContact(u"c" + automation::Value(i).toText());
    world.startWithToolbar();
    for (int i = 1; i < 50; ++i) world.host->openExplorer();
    for (int i = 0; i < 200; ++i) world.host->openItem(u"c" + automation::Value(i).toText());
    world.machine.advance(30'000);
    ASSERT_EQ(cxol::globals().g_colExplorers.count(), 50);
    ASSERT_EQ(cxol::globals().g_colInspectors.count(), 200);
  }

  World world;
};

// The parts of which the sums below are made.

/// Explorer.CommandBars and Item for each look by name, and where none is found
/// Explorer.CommandBars and Add.
constexpr std::size_t findBarExplorer(std::size_t looks) {
  return 2 * looks;
}
constexpr std::size_t AddBar = 2;
constexpr std::size_t LogName = 1;
/// Bar's position, name and final visibility.
constexpr std::size_t ConfigureBar = 3;
/// FindControl of a button of the oldest layout.
constexpr std::size_t LookForOldLayout = 1;
/// FindControl for each of the five controls and the four obsolete ones, and the subscription.
constexpr std::size_t FindControls = 5 + 4;
constexpr std::size_t Subscribe = 5;
/// Controls and Add for each; style, picture and mask of the four buttons. As many in Outlook 2000,
/// which has a picture refused and pastes it.
constexpr std::size_t CreateControls = 5 * 2 + 4 * 3;
/// Caption, tag, action, tooltip, visible, parameter of each; three begin a group, two have a
/// width.
constexpr std::size_t ConfigureControls = 5 * 6 + 3 + 2;

TEST_F(CostTest, StartingUpCallsOncePerStep) {
  // ProgId; Explorers and Inspectors with their subscriptions; the first window with its own.
  EXPECT_EQ(callsOf([&] {
              world.start();
              world.machine.advance(12'000);
            }),
            1u + 2 * 2 + 2);
}

TEST_F(CostTest, StartingUpRaisesNoErrorForWhatMostMachinesLack) {
  // The first exception after each load takes the DLL a millisecond: neither the maker's libraries
  // nor the language service is there.
  for (const bool traced : {true, false}) {
    world.switchTrace(traced);
    const std::size_t before = raised();
    world.start();
    EXPECT_EQ(raised() - before, 0u);
    world.stop();
  }
}

/// Counts the values that are asked of the registry.
class RegistryQuestions : public simulator::CrossingObserver {
 public:
  explicit RegistryQuestions(simulator::Boundary& boundary) : boundary_(boundary) {
    boundary_.setObserver(this);
  }
  ~RegistryQuestions() override { boundary_.setObserver(nullptr); }
  void before(const simulator::Crossing& crossing) override {
    if (crossing.owner == u"Registry" && crossing.member == u"read") ++count;
  }
  std::size_t count = 0;

 private:
  simulator::Boundary& boundary_;
};

TEST_F(CostTest, StartingUpAsksTheRegistryOncePerSettingAndTraceLine) {
  // The language of the application and of the user, each once more for a value that is garbled.
  constexpr std::size_t languages = 2 * 2;
  // Five of the user and one of the machine.
  constexpr std::size_t options = 6;
  // For the name of the file, once.
  constexpr std::size_t folder = 1;
  std::size_t lines = 0;
  for (const bool traced : {true, false}) {
    SCOPED_TRACE(traced);
    world.switchTrace(traced);
    world.forget();
    const RegistryQuestions questions(world.boundary);
    world.start();
    if (traced) lines = world.trace().size();
    EXPECT_EQ(questions.count, lines + languages + options + (traced ? folder : 0));
    world.stop();
  }
}

TEST_F(CostTest, BuildingAToolbarCallsOncePerStep) {
  const Texts all = {u"CxCbDial", u"CxBtDial", u"CxBtDrop", u"CxBtVelnor", u"CxBtAction"};
  const struct {
    const char* why;
    std::vector<simulator::StoredBar> bars;
    std::size_t calls;
  } cases[] = {
      {"new", {}, findBarExplorer(7) + AddBar + CreateControls},
      {"found", {simulator::storedBar(Product, all)}, findBarExplorer(1) + LogName},
      // Controls and Count, and Item and Delete of each.
      {"old layout",
       {simulator::storedBar(u"Ondaris Station 1", {u"CxBtDial", u"CxBtTransfer", u"Other"})},
       findBarExplorer(4) + LogName + CreateControls + 2 + 3 * 2},
  };
  for (const auto& c : cases) {
    SCOPED_TRACE(c.why);
    world.bars.explorers = c.bars;
    world.start();
    EXPECT_EQ(
        callsOf([&] { world.machine.advance(21'000); }),
        c.calls + ConfigureBar + LookForOldLayout + FindControls + Subscribe + ConfigureControls);
    world.stop();
  }
}

TEST_F(CostTest, AnotherItemIsReadOnceAndTheSameOneNotAgain) {
  for (const char16_t* id : {u"Meier", u"Smith"}) world.addContact(id);
  world.startWithToolbar();
  select(u"Contacts", u"Meier");
  // Selection, Count, Item, EntryID.
  constexpr std::size_t identify = 4;
  // The active window and its class, ActiveExplorer, the folder and its id, which is not that of
  // the Outbox; Selection, Count, Item; class and name; the caption.
  constexpr std::size_t name = 2 + 1 + 2 + 3 + 2 + 1;
  EXPECT_EQ(callsOf([&] { select(u"Contacts", u"Smith"); }), identify + name);
  EXPECT_EQ(callsOf([&] { select(u"Contacts", u"Smith"); }), identify);
}

TEST_F(CostTest, ADialClickCallsOncePerStep) {
  world.addContact(u"one", {{u"HomeTelephoneNumber", u"1"}});
  world.addContact(u"two", {{u"HomeTelephoneNumber", u"1"}, {u"PagerNumber", u"2"}});
  auto& mail = world.add(u"Inbox", ObjectClass::Mail, u"mail");
  mail.mapi.telephoneNames = {u"Smith"};
  mail.mapi.telephoneNumbers = {u"1"};
  world.add(u"Tasks", ObjectClass::Task, u"Tel. 1");
  world.add(u"Notes", ObjectClass::Note, u"note");
  world.startClient();
  world.startWithToolbar();

  // The button's parameter; the auxiliary service as the proof that the client runs; the wait's
  // PhoneCommand and LineState; PhoneCommand for the result.
  constexpr std::size_t readyClient = 4;
  constexpr std::size_t lineState = 1;
  constexpr std::size_t click = 1 + readyClient + lineState;
  // The active window and its class, ActiveExplorer, folder and its id, Selection, Count, Item,
  // and the item's class.
  constexpr std::size_t currentItem = 9;
  // The client again, its line state, the service, ConvertNumber, Lines, LineStateOf, Dial.
  constexpr std::size_t dial = readyClient + lineState + 5;
  constexpr std::size_t place = 3;
  // Subject; UserProperties and Item, which is not there.
  constexpr std::size_t readOther = 1 + 2;
  const struct {
    const char* why;
    std::u16string_view folder;
    std::u16string_view item;
    std::size_t calls;
  } cases[] = {
      {"contact, one number", u"Contacts", u"one", currentItem + 14 + dial},
      {"contact, menu", u"Contacts", u"two", currentItem + 14 + place},
      {"mail", u"Inbox", u"mail", currentItem + readOther + dial},
      {"task", u"Tasks", u"Tel. 1", currentItem + readOther + dial},
      // AuxiliaryService and ShowNumber.
      {"note", u"Notes", u"note", currentItem + 2},
  };
  for (const auto& c : cases) {
    SCOPED_TRACE(c.why);
    select(c.folder, c.item);
    world.machine.client.telephone().endAll();
    EXPECT_EQ(callsOf([&] { world.host->click(1, u"CxBtDial"); }), click + c.calls);
  }
}

TEST_F(CostTest, AnInspectorCallsOncePerStepAndNoMoreInACrowd) {
  for (int i = 0; i < 40; ++i) world.addContact(u"c" + automation::Value(i).toText());
  world.start();
  // Version twice, IsWordMail, the subscription; item and class; the bar: CommandBars, six looks,
  // CommandBars and Add, three properties, the look for an old layout; three buttons: FindControl,
  // Controls, Add, style, picture, mask, visible, subscription, caption, tag, action, tooltip,
  // parameter; two begin a group; the look for an obsolete one.
  constexpr std::size_t build = 4 + 2 + (1 + 6 + 2 + 3 + 1) + 3 * 13 + 2 + 1;
  int first = 0;
  EXPECT_EQ(callsOf([&] { first = world.host->openItem(u"c0"); }), build);
  // Name and Visible of the bar.
  EXPECT_EQ(callsOf([&] { world.host->close(first); }), 2u);

  std::vector<std::size_t> calls;
  for (int i = 1; i < 40; ++i) {
    calls.push_back(callsOf([&] { world.host->openItem(u"c" + automation::Value(i).toText()); }));
  }
  // The purge asks the collection once, and for each open window once.
  for (std::size_t i = 1; i < calls.size(); ++i) EXPECT_LE(calls[i], calls[i - 1] + 1);
}

TEST_F(CostTest, RibbonMarkupCallsOncePerStep) {
  world.addContact(u"Meier");
  world.add(u"Tasks", ObjectClass::Task, u"task");
  world.start(u"12.0.4518.1014");
  // NewInspector: the version. Markup: inspector, item, class. Bars to remove: CommandBars, six
  // looks. Each button's picture: its id.
  constexpr std::size_t calls = 1 + 3 + (1 + 6) + 3;
  EXPECT_EQ(callsOf([&] { world.host->openItem(u"Meier"); }), calls);
  // Over another kind of item, the last one: Inspectors, Count, Item, item, class.
  EXPECT_EQ(callsOf([&] { world.host->openItem(u"task"); }), calls + 5);
}

TEST_F(CostTest, ATickWithNothingToDoCallsNothing) {
  openCrowd();
  EXPECT_EQ(callsOf([] { cxol::GeneralTick(); }), 0u);
}

TEST_F(CostTest, ATickWithNothingToDoAllocatesNothing) {
  openCrowd();
  const auto before = allocations();
  ASSERT_GT(before.count, 1000u) << "nobody counts";
  cxol::GeneralTick();
  EXPECT_EQ(allocations().count, before.count);
}

TEST_F(CostTest, ATraceThatIsOffAllocatesWhatItsRegistryReadDoes) {
  world.start();
  world.switchTrace(false);
  const std::u16string line(200, u'x');
  const auto allocationsOf = [](const auto& action) {
    const auto before = allocations().count;
    action();
    return allocations().count - before;
  };
  const auto read = allocationsOf(
      [] { cxol::GetRegString(RegistryRoot::CurrentUser, u"Software\\K9T\\Logging", u"LogFile"); });
  EXPECT_EQ(allocationsOf([&] { cxol::LogDebug(line); }), read);
}

TEST_F(CostTest, EvaluationTakesTheSameForEachItem) {
  constexpr std::size_t most = 4'000;
  for (std::size_t i = 0; i < most; ++i) {
    auto& mail = world.add(u"Inbox", ObjectClass::Mail,
                           u"m" + automation::Value(static_cast<std::int32_t>(i)).toText());
    mail.mapi.receivedBy = u"me";
    mail.mapi.senderAddresses[0] = u"a@x";
  }
  world.startWithToolbar();
  const auto costOf = [&](std::size_t items) {
    std::vector<std::size_t> places;
    for (std::size_t i = 1; i <= items; ++i) places.push_back(i);
    world.host->selectAt(1, places);
    const HostCalls calls(world.boundary);
    cxol::Texts references;
    cxol::EvaluateCurrentItem(references);
    EXPECT_EQ(references.count(), static_cast<std::int32_t>(items));
    return calls.count();
  };
  costOf(1);  // asks once for the Outbox
  const auto one = costOf(1);
  const auto two = costOf(2);
  EXPECT_EQ(costOf(most) - one, (most - 1) * (two - one));
}

TEST_F(CostTest, RecipientsCostNoHostCall) {
  auto& mail = world.add(u"Inbox", ObjectClass::Mail, u"mail");
  mail.mapi.receivedBy = u"me";
  world.startWithToolbar();
  select(u"Inbox", u"mail");
  const auto cost = [&] {
    return callsOf([] {
      cxol::Texts references;
      cxol::EvaluateCurrentItem(references);
    });
  };
  const auto without = cost();
  world.mailbox.folders[0].items[0].mapi.recipients[1].assign(10'000, u"a@x");
  EXPECT_EQ(cost(), without);
}

}  // namespace
}  // namespace tests
