#include <gtest/gtest.h>

#include <string>

#include "simulator/player/NativeTrace.h"
#include "tests/Played.h"

namespace scenario {
namespace {

using tests::Played;

TEST(ScenarioOnTheSimulatedHost, PlaysWhatCanHappenBetweenTwoLines) {
  const std::string start = tests::Started;
  const struct {
    const char* what;
    std::string lines;
  } cases[] = {
      {"closing the last window ends Outlook; its bar is there in the next run",
       start + "expect bar visible\nclose\nexpect windows 0\nexpect references 0\n"
               "outlook 10.0\nexpect bar hidden\nwait 21 s\nexpect trace \"Re-use command bar\"\n"},
      {"starting Outlook again ends the run before",
       start + "open \"eva\"\noutlook 2003\nexpect windows 1\nexpect trace \"RemoveMode = 0\"\n"},
      {"an add-in that is off stays off in the next run",
       start + "addin off\nexpect references 0\nquit\noutlook 11.0\nwait 21 s\nexpect bar none\n"
               "addin on\nwait 21 s\nexpect bar visible\n"},
      {"the client is gone while a menu is open",
       start + "select \"eva\"\nclick dial\nexpect menu \"Work: 030 11\"\nvanish\nchoose 1\n"
               "expect told nothing\nexpect trace \"is Nothing in CxDial()\"\n"},
      {"timers tick while a menu is open",
       start + "select \"hans\"\nselect \"eva\"\nclick dial\nwait 400 ms\n"
               "expect trace \"Set title of action button to: Müller, Eva\"\nescape\nexpect told "
               "nothing\n"},
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
       "ribbon late\noutlook 2007\nribbon early\nopen \"eva\"\nnew mail\n"
       "expect ribbon tab \"TabNewMailMessage\"\nquit\noutlook 2007\nopen \"eva\"\nnew mail\n"
       "expect ribbon tab \"TabNewMailMessage\"\n"},
      {"the ribbon of an item that is new",
       "outlook 2007\nnew mail\nexpect ribbon tab \"TabNewMailMessage\"\nnew note\n"
       "expect ribbon none\n"},
      {"the second of two windows is clicked by its title",
       start +
           "open \"eva\"\nopen \"hans\"\nclick dial in \"eva\"\nchoose 1\nexpect told \"dial\"\n"},
      {"a client that hangs costs its time and tells nothing",
       start + "select \"hans\"\nhang\nclick dial\nexpect told nothing\nhang off\nclick dial\n"
               "expect told \"dial 0303\"\n"},
  };
  for (const auto& c : cases) {
    const Played played(c.lines);
    EXPECT_TRUE(played.score().good()) << c.what << "\n" << played.transcript;
    EXPECT_GT(played.score().held, 0) << c.what;
  }
}

TEST(ScenarioOnTheSimulatedHost, ComplainsAboutWhatCanNotBe) {
  for (const char* line :
       {"quit", "click dial", "open \"eva\"", "select \"eva\"", "ring \"1\"", "connect", "end call",
        "vanish", "hang", "freeze", "addin off", "registry HKCU\\Software\\A\\B = none",
        "outlook 11.0\naddin on", "outlook 11.0\nclick dial", "outlook 11.0\nclose\nclose",
        "client installed\nring \"1\""}) {
    const Played played(line);
    EXPECT_EQ(played.score().mistakes, 1) << line << "\n" << played.transcript;
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
