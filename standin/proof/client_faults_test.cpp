// The telephony client fails in its own process: the host lives on, the trace tells why, and the
// next client that comes up is used as if nothing had been.

#include <algorithm>

#include "standin/proof/ProofDesk.h"

namespace proof {
namespace {

constexpr char Refused[] =
    "Warning: GetVelnorPhoneCmdInservice() refused because GetVelnorAuxSvc() not found!";
constexpr char NotFound[] =
    "Error: ERROR in GetVelnorAuxSvc(): ActiveX component can't create object";
constexpr char Busy[] =
    "Error: ERROR in GetVelnorAuxSvc(): The message filter indicated that the application is busy.";
constexpr char BrokenOff[] = "Error: ERROR in GetVelnorAuxSvc(): Automation error";
constexpr char NoCommandToType[] =
    "Error: GetVelnorPhoneCmdInservice() is Nothing in OlCmdEvents.CbDial_Change(): ";
constexpr char NoCommandToDrop[] =
    "Error: GetVelnorPhoneCmdInservice() is Nothing in OlCmdEvents.BtDrop_Click(): ";
constexpr char NoCommandToDial[] = "Error: GetVelnorPhoneCmdInservice() is Nothing in CxDial(): ";
constexpr char NotInService[] =
    "Warning: GetVelnorPhoneCmdInservice() not in service after 20 sec waiting!";

class ClientFaults : public ProofDesk {
 protected:
  void SetUp() override {
    start();
    ASSERT_TRUE(client.startReady());
    EXPECT_EQ(complaints(), Lines{NoLogger});
  }

  /// A client that is there from now on is found and obeys.
  void expectAllWell() {
    ASSERT_TRUE(client.running() || client.startReady());
    told();
    complaints();
    type(u"4711");
    EXPECT_EQ(complaints(), Lines());
    EXPECT_EQ(told(), Lines{"dial 4711 on line 1 (first line 1)"});
    EXPECT_TRUE(client.endCall());
    EXPECT_EQ(boxes, Lines());
  }
};

void typeNumber(ProofDesk& desk) {
  desk.type(u"4711");
}
void drop(ProofDesk& desk) {
  desk.click(u"CxBtDrop");
}
void dial(ProofDesk& desk) {
  desk.click(u"CxBtDial");
}

TEST_F(ClientFaults, ItIsKilledInTheMiddleOfACall) {
  const struct {
    /// In its middle the client's process ends.
    const char16_t* member;
    void (*act)(ProofDesk& desk);
    Lines complaints;
  } rows[] = {
      {u"AuxiliaryService", typeNumber, {BrokenOff, Refused, NoCommandToType}},
      // The text is looked at without the client then.
      {u"IsNumber", typeNumber, {NotFound, Refused, NoCommandToDial}},
      {u"ConvertNumber", typeNumber, {"Error: ERROR in CxDial(): Automation error"}},
      {u"Lines", typeNumber, {"Error: ERROR in CxDial(): Automation error"}},
      {u"LineStateOf", typeNumber, {"Error: ERROR in CxDial(): Automation error"}},
      {u"Dial", typeNumber, {"Error: ERROR in CxDial(): Automation error"}},
      {u"Dial", dial, {"Error: ERROR in CxDial(): Automation error"}},
      {u"HangUp", drop, {"Error: BtDrop_Click: Automation error"}},
      {u"ShowNumber", [](ProofDesk& desk) { desk.click(u"CxBtVelnor"); }, {}},
      {u"ShowNumber", [](ProofDesk& desk) { desk.type(u"Meier"); }, {}},
      {u"ShowActions",
       [](ProofDesk& desk) { desk.click(u"CxBtAction"); },
       {"Error: ERROR in OpenVelnorActionDialog(): Automation error"}},
      {u"PickUp",
       [](ProofDesk& desk) {
         EXPECT_TRUE(desk.client.ring(u"110"));
         desk.click(u"CxBtDial");
       },
       {"Error: BtDial_Click: Automation error"}},
      {u"DirectDial",
       [](ProofDesk& desk) {
         desk.setNumber(AddinKey, u"DialRemote", 1);
         desk.type(u"4711");
         desk.setNumber(AddinKey, u"DialRemote", 0);
       },
       {"Error: ERROR in CxDial(): Automation error"}},
  };
  for (const auto& row : rows) {
    SCOPED_TRACE(std::string(row.member, row.member + std::u16string_view(row.member).size()));
    ASSERT_TRUE(client.dieIn(row.member));
    row.act(*this);
    EXPECT_FALSE(client.running());
    EXPECT_EQ(complaints(), row.complaints);
    EXPECT_EQ(told(), Lines());
    expectAllWell();
  }
}

// One test for each: a client that dies while it is waited for is waited for to the end.
TEST_F(ClientFaults, ItIsKilledWhenItIsAskedForItsCommands) {
  ASSERT_TRUE(client.dieIn(u"PhoneCommand"));
  typeNumber(*this);
  EXPECT_EQ(complaints(), (Lines{NotInService, NoCommandToType}));
  expectAllWell();
}

TEST_F(ClientFaults, ItIsKilledWhenItIsAskedForItsState) {
  ASSERT_TRUE(client.dieIn(u"LineState"));
  drop(*this);
  EXPECT_EQ(complaints(), (Lines{NotInService, NoCommandToDrop}));
  expectAllWell();
}

TEST_F(ClientFaults, ItIsKilledBeforeOrBetweenCalls) {
  client.vanish();
  typeNumber(*this);
  EXPECT_EQ(complaints(), (Lines{NotFound, Refused, NoCommandToType}));
  expectAllWell();

  // While the menu is open, from which the number is chosen.
  select(u"two");
  onMenu = [this](const auto& menu) -> std::optional<int> {
    client.vanish();
    return menu.at(0).id;
  };
  dial(*this);
  EXPECT_EQ(complaints(), (Lines{NotFound, Refused, NoCommandToDial}));
  expectAllWell();
}

TEST_F(ClientFaults, ItIsKilledBeforeItIsStoppedTogetherWithOutlook) {
  for (const bool inTheCall : {false, true}) {
    quit();
    setNumber(ClientOptionsKey, u"StopWithOutlook", 1);
    start();
    ASSERT_TRUE(client.running() || client.startReady());
    complaints();
    if (inTheCall)
      EXPECT_TRUE(client.dieIn(u"Stop"));
    else
      client.vanish();
    quit();
    // The toolbar has gone with its window already.
    EXPECT_EQ(complaints(), Lines{"Warning: No explorer command bar found!"});
    EXPECT_FALSE(session.running());
    EXPECT_FALSE(client.running());
    start();
    expectAllWell();
  }
}

TEST_F(ClientFaults, ItHangs) {
  // It takes no messages: it is not even asked, so that Outlook does not hang with it.
  ASSERT_TRUE(client.freeze(true));
  const DWORD start = GetTickCount();
  typeNumber(*this);
  EXPECT_EQ(complaints(), (Lines{Busy, Refused, NoCommandToType}));
  EXPECT_LT(GetTickCount() - start, 10000U);
  // Nor is a second one started beside it.
  traced();
  click(u"CxBtVelnor");
  EXPECT_EQ(std::ranges::count(traced(), "Debug: ShellExecuteVelnor"), 0);
  ASSERT_TRUE(client.freeze(false));
  expectAllWell();

  // It takes calls and answers each in the end that it is busy.
  ASSERT_TRUE(client.hang(true, 200));
  typeNumber(*this);
  EXPECT_EQ(complaints(), (Lines{Busy, Refused, NoCommandToType}));
  ASSERT_TRUE(client.hang(false));
  expectAllWell();
}

TEST_F(ClientFaults, ItIsKilledWhileACallHangs) {
  ASSERT_TRUE(client.hang(true, 30000));
  {
    const Later killing(400, [this] { client.vanish(); });
    typeNumber(*this);
  }
  EXPECT_EQ(complaints(), (Lines{BrokenOff, Refused, NoCommandToType}));
  expectAllWell();
}

TEST_F(ClientFaults, ItTellsNothingOfItsTypes) {
  client.vanish();
  auto settings = client.settings();
  settings.withoutTypes = true;
  client.set(settings);
  // Members are found by their names.
  expectAllWell();
  ASSERT_TRUE(client.ring(u"110"));
  dial(*this);
  drop(*this);
  type(u"Meier");
  click(u"CxBtAction");
  EXPECT_EQ(complaints(), Lines());
  EXPECT_EQ(told(), (Lines{"pick up", "hang up", "show number \"Meier\"",
                           "open actions \"books=outlook:STORE,FOLDER-1\\nrecordid=one\" (1, 1)"}));
}

}  // namespace
}  // namespace proof
