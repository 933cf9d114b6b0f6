#include <gtest/gtest.h>

#include <string>

#include "demo/NativeAddin.h"
#include "simulator/data/MailboxReader.h"
#include "simulator/player/NativeStage.h"
#include "simulator/player/NativeTrace.h"
#include "simulator/player/Player.h"

namespace scenario {
namespace {

/// Plays on the simulated host with the add-in in it. Its mailbox holds two contacts, A with two
/// numbers and B with one.
Score playNatively(const std::string& lines, std::string& transcript) {
  NativeStage stage(simulator::readMailbox(R"({"folders": [{"name": "Contacts", "holds": "contact",
      "items": [{"id": "a", "lastName": "A", "phones": {"work": "030 1", "home": "030 2"}},
                {"id": "b", "lastName": "B", "phones": {"mobile": "030 3"}}]}]})",
                                           "mailbox"),
                    makeNativeAddin);
  Player player(stage, [&](std::string_view line) { transcript += std::string(line) + "\n"; });
  TextSource source(lines, "t");
  player.play(source);
  return player.score();
}

TEST(ScenarioOnTheSimulatedHost, PlaysWhatCanHappenBetweenTwoLines) {
  const std::string start = "client running\noutlook 11.0\nwait 21 s\n";
  const struct {
    const char* what;
    std::string lines;
  } cases[] = {
      {"closing the last window ends Outlook; its bar is there in the next run",
       start + "expect bar visible\nclose\nexpect windows 0\nexpect references 0\n"
               "outlook 10.0\nexpect bar hidden\nwait 21 s\nexpect trace \"Re-use command bar\"\n"},
      {"starting Outlook again ends the run before",
       start + "open \"A\"\noutlook 2003\nexpect windows 1\nexpect trace \"RemoveMode = 0\"\n"},
      {"an add-in that is off stays off in the next run",
       start + "addin off\nexpect references 0\nquit\noutlook 11.0\nwait 21 s\nexpect bar none\n"
               "addin on\nwait 21 s\nexpect bar visible\n"},
      {"the client is gone while a menu is open",
       start + "select \"A\"\nclick dial\nexpect menu \"Work: 030 1\"\nvanish\nchoose 1\n"
               "expect told nothing\nexpect trace \"is Nothing in CxDial()\"\n"},
      {"timers tick while a menu is open",
       start + "select \"B\"\nselect \"A\"\nclick dial\nwait 400 ms\n"
               "expect trace \"Set title of action button to: A\"\nescape\nexpect told nothing\n"},
      {"without the logging library the trace comes from the add-in's file",
       "registry HKCU\\Software\\K9T\\Logging\\LogFile = \"1\"\nlibrary missing\noutlook 11.0\n"
       "expect trace \"Warning: InitK9TLog failed, use internal logging\"\n"
       "expect trace \"Debug: AddinInstance_OnStartupComplete\"\n"
       "quit\nregistry HKCU\\Software\\K9T\\Logging\\LogFile = none\noutlook 11.0\n"
       "expect no trace \"\"\n"},
      {"a bar of an earlier run is taken over",
       "bar explorer \"!!VELNOR_NEUTRAL!!\" CxBtTransfer\nlanguage de\noutlook 11.0\nwait 21 s\n"
       "expect bar \"Velnor\" visible\nexpect no button transfer\n"
       "expect bar \"!!VELNOR_NEUTRAL!!\" none\nexpect button dial caption \"W\u00E4hlen\"\n"},
      {"the ribbon is asked for early or late, from the next start on",
       "ribbon late\noutlook 2007\nribbon early\nopen \"A\"\nnew mail\n"
       "expect ribbon tab \"TabNewMailMessage\"\nquit\noutlook 2007\nopen \"A\"\nnew mail\n"
       "expect ribbon tab \"TabNewMailMessage\"\n"},
      {"the ribbon of an item that is new",
       "outlook 2007\nnew mail\nexpect ribbon tab \"TabNewMailMessage\"\nnew note\n"
       "expect ribbon none\n"},
      {"the second of two windows is clicked by its title",
       start + "open \"A\"\nopen \"B\"\nclick dial in \"A\"\nchoose 1\nexpect told \"dial\"\n"},
      {"a client that hangs costs its time and tells nothing",
       start + "select \"B\"\nhang\nclick dial\nexpect told nothing\nhang off\nclick dial\n"
               "expect told \"dial 0303\"\n"},
  };
  for (const auto& c : cases) {
    std::string transcript;
    const Score score = playNatively(c.lines, transcript);
    EXPECT_TRUE(score.good()) << c.what << "\n" << transcript;
    EXPECT_GT(score.held, 0) << c.what;
  }
}

TEST(ScenarioOnTheSimulatedHost, ComplainsAboutWhatCanNotBe) {
  for (const char* line :
       {"quit", "click dial", "open \"A\"", "select \"A\"", "ring \"1\"", "connect", "end call",
        "vanish", "hang", "freeze", "addin off", "registry HKCU\\Software\\A\\B = none",
        "outlook 11.0\naddin on", "outlook 11.0\nclick dial", "outlook 11.0\nclose\nclose",
        "client installed\nring \"1\""}) {
    std::string transcript;
    EXPECT_EQ(playNatively(line, transcript).mistakes, 1) << line << "\n" << transcript;
  }
}

TEST(ScenarioTrace, IsReadFromBothRoutes) {
  const Note written = traceOfLibrary(17, u"text", {2008, 3, 7, 14, 5, 9, 42});
  EXPECT_EQ(written.level, u"Warning");
  EXPECT_EQ(written.time, u"14:05:09.042");
  const Note read = traceOfFile(u"07.03.2008 14:05:09.042 Error:   some: text\r\n");
  EXPECT_EQ(read.level, u"Error");
  EXPECT_EQ(read.time, u"14:05:09.042");
  EXPECT_EQ(read.text, u"some: text");
  EXPECT_EQ(traceOfFile(u"short\r\n").text, u"short");
}

}  // namespace
}  // namespace scenario
