#include "simulator/player/Player.h"

#include <gtest/gtest.h>

#include <algorithm>

#include "simulator/player/Commands.h"
#include "simulator/player/RegistryLine.h"
#include "simulator/player/Text.h"
#include "tests/FakeStage.h"

namespace scenario {
namespace {

using Done = std::vector<std::string>;

TEST(ScenarioLines, ReachTheStage) {
  struct Case {
    const char* line;
    const char* done;
  };
  const Case cases[] = {
      {"outlook 11.0", "quit"},  // one that runs is ended first
      {"OPEN EXPLORER \"posteingang\"", "explorer Posteingang"},
      {"open \"Angebot\"", "open m1"},
      {"open \"smith\" in Kontakte", "open c3"},
      {"new task", "new 3"},
      {"act 1", "activate 1"},
      {"folder Posteingang", "folder Posteingang"},
      {"select \"eva\", \"Smith, Jo\"", "select c1;c3;"},
      {"select \"M\u00DCLLER, HANS\"", "select c2;"},
      {"select 3 1 in 1", "select c3;c1;"},
      {"select all", "select c1;c2;c3;"},
      {"select none", "select"},
      {"clic cl", "click 2"},
      {"click \"velnor\" in \"outlook\"", "click 2"},
      {"type \"0711 \"\"12\"\"\" # a comment", "type 0711 \"12\""},
      {"type \"a \"0711 12\"\" in 1", "type a \"0711 12\""},
      {"type \"say \"\"hi\"\" now\"", "type say \"hi\" now"},
      {"type \"\"", "type"},
      {"client never object", "gap 2"},
      {"client hidden", "client 3"},
      {"end call", "end"},
      {"hangup remote", "end"},
      {"stop call", "end"},
      {"hang", "hang on"},
      {"freeze off", "freeze off"},
      {"language PT", "language 1046"},
      {"language 3079", "language 3079"},
      {"registry HKCU\\Software\\K9T\\CXComAddIn\\UseMapi = 0 # off",
       "registry Software\\K9T\\CXComAddIn|UseMapi"},
      {"mapi failing", "mapi 2"},
      {"time 23:59:50", "time 23 59 50"},
      {"midnight", "time 23 59 59"},
      {"wait 400 ms", "wait 400"},
      {"wait 1.5s", "wait 1500"},
      {"wait 21", "wait 21000"},
      {"wait 1 min", "wait 60000"},
      {"bar inspector \"Velnor\" empty 20 CxBtDial CxBtDrop refuses", "bar Velnor i2 20 r"},
      {"fail CommandBar.FindControl", "fail CommandBar|FindControl 0"},
      {"fail Explorer.CommandBars once", "fail Explorer|CommandBars 1"},
      {"\xEF\xBB\xBFquit", "quit"},
  };
  for (const Case& c : cases) {
    const Played played(c.line);
    ASSERT_FALSE(played.stage->done.empty()) << c.line << "\n" << played.transcript;
    EXPECT_EQ(played.stage->done.front(), c.done) << c.line;
    EXPECT_TRUE(played.score.good()) << played.transcript;
  }
}

TEST(ScenarioLines, SayWhatIsWrongAndGoOn) {
  struct Case {
    const char* line;
    const char* complaint;
  };
  const Case cases[] = {
      {"dance", "\"dance\" is unknown as a command; help lists what there is"},
      {"c 1", "could be "},
      {"type \"0711", "the text \"0711\" has no closing quotation mark"},
      {"\"type\" this", "a command comes first"},
      {"select \"M\u00FCller\"", "fits more than one item here: \"M\u00FCller, Eva\""},
      {"select \"Nobody\"", "there is \"M\u00FCller, Eva\", \"M\u00FCller, Hans\", \"Smith, Jo\""},
      {"select 4", "no item number 4; Kontakte holds 3"},
      {"open \"Nobody\"", "no item \"Nobody\""},
      {"folder \"Nowhere\"", "no folder \"Nowhere\"; there is \"Kontakte\", \"Posteingang\""},
      {"click hangup", "shows no \"hangup\"; it shows box, dial, client, actions"},
      {"click actions", "the button is disabled"},
      {"click box", "the box is for typing"},
      {"click dial in 7", "no window \"7\"; open are 1"},
      {"click", "missing: a button"},
      {"clcik dial", "\"clcik\" is unknown as a command; did you mean click?"},
      {"click hangpu", "did you mean hangup?"},
      {"folder \"Kontkate\"", "no folder \"Kontkate\"; did you mean \"Kontakte\"?"},
      {"select \"Smiht\"", "did you mean \"Smith, Jo\"?"},
      {"wait 3 h", "is not a time such as 400 ms"},
      {"wait soon", "is not a time such as 400 ms"},
      {"time 24:00:00", "is no time"},
      {"time 12:60", "is no time"},
      {"outlook eleven", "is no version"},
      {"language klingon", "expected de, en, fr, it, es or pt"},
      {"client never mind", "expected window, object, service or nothing"},
      {"registry HKCU\\Software\\X = maybe", "is no value"},
      {"choose 1", "no menu is open"},
      {"ring \"1\" \"2\"", "\"2\" is too much here"},
      {"vanish", "no client runs"},
      {"expect sunshine", "\"sunshine\" is unknown here; expected menu, told"},
      {"native only", "expected: native only: and the reason"},
  };
  for (const Case& c : cases) {
    const Played played(std::string(c.line) + "\nring \"5\"");
    EXPECT_TRUE(played.printed("?? t:1: ")) << c.line << "\n" << played.transcript;
    EXPECT_TRUE(played.printed(c.complaint)) << c.line << "\n" << played.transcript;
    EXPECT_EQ(played.stage->done, Done{"ring 5"}) << c.line;
    EXPECT_EQ(played.score.mistakes, 1) << c.line;
    EXPECT_FALSE(played.score.good());
  }
}

TEST(ScenarioMenus, LinesActInsideAnOpenMenuUntilOneChooses) {
  const Played played(
      "click dial\n"
      "wait 3 s\n"
      "ring \"0711\"\n"
      "choose 3\n"  // disabled: stays open
      "expect menu\n"
      "choose 2\n"
      "expect told \"dial 03012\"\n"
      "expect no menu\n");
  EXPECT_EQ(played.stage->done, (Done{"wait 3000", "ring 0711", "menu closed 12"}));
  EXPECT_EQ(played.score.summary(), "3 expectations held, 0 failed") << played.transcript;
  EXPECT_TRUE(played.printed("|  3    <No phone numbers>  (disabled)"));
  EXPECT_TRUE(played.printed("|  2    Home & more: 030 12\n    |  --------\n"));
  EXPECT_TRUE(played.printed("disabled: nothing happens"));
}

TEST(ScenarioMenus, EndInEveryWayThatAPersonHas) {
  struct Case {
    const char* lines;
    Done done;
  };
  const Case cases[] = {
      {"choose 4.2", {"menu closed 16"}},
      {"choose \"b: 030\"", {"menu closed 16"}},
      {"choose \"home & more\"", {"menu closed 12"}},
      {"escape", {"menu closed none"}},
      {"", {"menu closed none"}},
      {"view", {"menu closed none", "view"}},
      {"exit\nview", {"menu closed none"}},
      {"choose 4\nchoose 9\nchoose nobody\nescape", {"menu closed none"}},
      // A second click closes the first menu before its own opens.
      {"click dial\nchoose 1", {"menu closed none", "menu closed 11"}},
  };
  for (const Case& c : cases) {
    const Played played(std::string("click dial\n") + c.lines);
    EXPECT_EQ(played.stage->done, c.done) << c.lines << "\n" << played.transcript;
  }
}

TEST(ScenarioExpectations, ThatHold) {
  auto stage = std::make_unique<FakeStage>();
  stage->boxOnType = u"Cannot start Velnor.";
  const Played played(std::move(stage),
                      "expect windows 1\n"
                      "expect told nothing\n"
                      "expect bar visible\n"
                      "expect bar \"Velnor\" visible in 1\n"
                      "expect no bar \"Other\"\n"
                      "expect button dial caption \"Dial\"\n"
                      "expect button client caption \"Velnor \"\n"
                      "expect button \"M\u00FCller & Co\" picture \"action\"\n"
                      "expect button dial shown \"picture\"\n"
                      "expect button actions disabled\n"
                      "expect button dial\n"
                      "expect no button hangup\n"
                      "expect button \"Dial\" picture \"dial\"\n"
                      "expect no ribbon\n"
                      "expect ribbon none\n"
                      "expect title \"Kontakte - Microsoft Outlook\"\n"
                      "expect telephone \"idle\"\n"
                      "expect references 0\n"
                      "click dial\n"
                      "expect trace \"Debug: menu\"\n"
                      "expect menu \"Work: 030 11\" \"b: 030 16\"\n"
                      "expect menu disabled \"<No phone numbers>\"\n"
                      "expect no menu \"Home\"\n"
                      "choose 1\n"
                      "expect told \"dial 03011\"\n"
                      "expect no told \"dial 0301\"\n"
                      "expect told \"dial 03011 on line 7\"\n"
                      "expect told \"dial\"\n"
                      "expect no trace \"menu\"\n"
                      "expect trace \"menu\" since start\n"
                      "type \"5\"\n"
                      "expect box \"Cannot start Velnor.\"\n"
                      "expect told nothing\n"
                      "close\n"
                      "expect no box\n"
                      "expect windows 0\n");
  EXPECT_EQ(played.score.summary(), "32 expectations held, 0 failed") << played.transcript;
  EXPECT_TRUE(played.printed("message box: \"Cannot start Velnor.\"  [OK]"));
}

TEST(ScenarioExpectations, ThatFailNameWhatWasExpectedAndFound) {
  struct Case {
    const char* line;
    const char* report;
  };
  const Case cases[] = {
      {"expect windows 2", "expected 2 windows, found 1"},
      {"expect told \"dial 1\"", "expected the client told \"dial 1\", found nothing"},
      {"expect menu \"A\"", "expected menu entry \"A\", found no menu open"},
      {"expect trace \"x\"", "expected a trace line with \"x\", found nothing"},
      {"expect box", "expected a message box, found nothing"},
      {"expect bar hidden", "expected a hidden toolbar, found a visible toolbar"},
      {"expect bar none", "expected no toolbar, found a visible toolbar"},
      {"expect no bar visible", "expected not a visible toolbar, found a visible toolbar"},
      {"expect button dial caption \"Wahl\"",
       "expected button dial with caption \"Wahl\", found \"Dial\""},
      {"expect button hangup", "expected button hangup visible, found no such button among box"},
      {"expect button dial disabled", "found it visible and enabled"},
      {"expect no button dial", "expected no button dial visible, found it visible"},
      {"expect ribbon tab \"TabTask\"", "of tab \"TabTask\", found nothing"},
      {"expect telephone \"connected\"", "found \"running, idle\""},
      {"expect references 1", "expected 1 references, found 0"},
      {"click dial\nexpect menu \"Work: 030 11\" \"Work: 030 11\"",
       "found a menu with \"Work: 030 11\", \"Home & more: 030 12\", \"<No phone numbers>\" "
       "(disabled)"},
      {"click dial\nexpect menu disabled \"Work: 030 11\"", "expected disabled entry"},
      {"click dial\nchoose 1\nexpect told nothing", "found \"dial 03011 on line 7\""},
      {"click dial\nchoose 1\nexpect told \"dial 030\"", "found \"dial 03011 on line 7\""},
  };
  for (const Case& c : cases) {
    const Played played(c.line);
    EXPECT_EQ(played.score.failed, 1) << c.line << "\n" << played.transcript;
    EXPECT_TRUE(played.printed(c.report)) << c.line << "\n" << played.transcript;
    ASSERT_EQ(played.score.problems.size(), 1u) << c.line;
    const auto lines = std::count(c.line, c.line + std::string_view(c.line).size(), '\n') + 1;
    EXPECT_TRUE(played.score.problems[0].starts_with("t:" + std::to_string(lines) + ": expected "))
        << played.score.problems[0];
  }
}

TEST(ScenarioTranscript, DrawsWhatChangedAndNothingElse) {
  const Played played(
      "# A person looks on.\n"
      "ring \"0711\"\n"
      "select 2\n"
      "trace on\n"
      "click dial\n"
      "choose 1\n"
      "close\n");
  EXPECT_EQ(played.transcript,
            "# A person looks on.\n"
            "> ring \"0711\"\n"
            "[1] Kontakte - Microsoft Outlook\n"
            "    Kontakte, 3 items; selected: none\n"
            "    toolbar Velnor: (     ) <dial> | <velnor> <action>\n"
            "        box        \"Dial\"\n"
            "        dial       \"Dial\"\n"
            "        client     \"Velnor \"\n"
            "        actions    \"M\u00FCller & Co\"            (disabled)\n"
            "    telephone: running, ringing: 0711\n"
            "> select 2\n"
            "[1] Kontakte - Microsoft Outlook\n"
            "    Kontakte, 3 items; selected: \"c2\"\n"
            "> trace on\n"
            "> click dial\n"
            "    ~ 09:00:00.000 Debug:   menu opens\n"
            "    +- menu\n"
            "    |  1    Work: 030 11\n"
            "    |  2    Home & more: 030 12\n"
            "    |  --------\n"
            "    |  3    <No phone numbers>  (disabled)\n"
            "    |  4    New task  >\n"
            "    |  4.1  a\n"
            "    |  4.2  b: 030 16\n"
            "    +-\n"
            "> choose 1\n"
            "    client was told: dial 03011 on line 7\n"
            "> close\n"
            "[1] closed\n");
}

TEST(ScenarioTranscript, SkipsNativeLinesOnOtherStages) {
  const std::string lines = "native only: the clock is real\n\nmidnight\nquit\n";
  EXPECT_EQ(Played(lines).stage->done, (Done{"time 23 59 59", "quit"}));

  auto real = std::make_unique<FakeStage>();
  real->isNative = false;
  const Played played(std::move(real), lines);
  EXPECT_EQ(played.stage->done, Done{"quit"});
  EXPECT_TRUE(played.printed("> midnight\n    (native only: the clock is real)\n"));
}

TEST(ScenarioRegistry, ReadsEveryKindOfValue) {
  using platform::RegistryType;
  struct Case {
    const char16_t* value;
    RegistryType type;
    std::u16string text;
    std::vector<int> bytes;
  };
  const Case cases[] = {
      {u"1", RegistryType::Dword, u"", {1, 0, 0, 0}},
      {u"dword:ffffffff # most", RegistryType::Dword, u"", {255, 255, 255, 255}},
      {u"\"C:\\\\new # \\\"x\\\"\" # text",
       RegistryType::String,
       std::u16string(u"C:\\new # \"x\"\0", 13),
       {}},
      {u"\"\"", RegistryType::String, std::u16string(1, u'\0'), {}},
      {u"hex:01,fF", RegistryType::Binary, u"", {1, 255}},
      {u"hex:", RegistryType::Binary, u"", {}},
      {u"hex(1):31,00", RegistryType::String, u"1", {}},
      {u"hex(b):01,00,00,00,00,00,00,00", RegistryType::Qword, u"", {1, 0, 0, 0, 0, 0, 0, 0}},
  };
  for (const Case& c : cases) {
    const RegistryLine line =
        RegistryLine::read(u"HKEY_LOCAL_MACHINE\\Software\\A b\\Name = " + std::u16string(c.value));
    EXPECT_EQ(line.root, platform::RegistryRoot::LocalMachine);
    EXPECT_EQ(line.key, u"Software\\A b");
    EXPECT_EQ(line.name, u"Name");
    ASSERT_TRUE(line.value) << toUtf8(c.value);
    EXPECT_EQ(line.value->type, c.type) << toUtf8(c.value);
    EXPECT_EQ(line.value->text, c.text) << toUtf8(c.value);
    std::vector<int> bytes;
    for (const std::byte byte : line.value->bytes) bytes.push_back(std::to_integer<int>(byte));
    EXPECT_EQ(bytes, c.bytes) << toUtf8(c.value);
  }
  for (const char16_t* gone : {u"hkcu\\A\\B=-", u"hkcu\\A\\B = none # gone"})
    EXPECT_FALSE(RegistryLine::read(gone).value);
  EXPECT_EQ(RegistryLine::read(u"\"HKCR\\CLSID\\{4B}\\\" = \"x\"").name, u"");
  for (const char16_t* bad :
       {u"HKCU\\A\\B", u"HKXX\\A\\B = 1", u"HKEY_USERS\\A\\B = 1", u"HKCU\\B = 1",
        u"HKCU\\A\\B = 4294967296", u"HKCU\\A\\B = -1", u"HKCU\\A\\B = 1x", u"HKCU\\A\\B = hex:zz",
        u"HKCU\\A\\B = hex(1:00", u"HKCU\\A\\B = \"open", u"HKCU\\A\\B = \"a\" b", u"HKCU\\A\\B ="})
    EXPECT_THROW(RegistryLine::read(bad), Mistake) << toUtf8(bad);
}

TEST(ScenarioText, SurvivesTheWayThroughUtf8) {
  const std::u16string all = u"a\u00FC\u20AC\U0001F4DE";
  EXPECT_EQ(toUtf8(all), "a\xC3\xBC\xE2\x82\xAC\xF0\x9F\x93\x9E");
  EXPECT_EQ(toUtf16(toUtf8(all)), all);
  const std::u16string lone{u'x', char16_t{0xD83D}};
  EXPECT_EQ(toUtf8(lone), "x\xEF\xBF\xBD");
  for (const char* bad : {"\x80", "\xC3", "\xC0\x80", "\xED\xA0\x80", "\xF5\x80\x80\x80"})
    EXPECT_EQ(toUtf16(bad).front(), u'\uFFFD') << bad;
  EXPECT_EQ(folded(u"\u00C4RGER \u0141\u017D\u0416"), u"\u00E4rger \u0142\u017E\u0436");
  EXPECT_EQ(shownCaption(u"&Dial && hang &up&"), u"Dial & hang up");
}

TEST(ScenarioHelp, NamesEveryCommandOnce) {
  const Played played("?\nhelp user\nhelp phone\nhelp machine\n? looking\nhelp expect\n");
  EXPECT_TRUE(played.score.good());
  for (const Command& command : commands()) {
    EXPECT_TRUE(played.printed("\n  " + std::string(command.synopsis))) << command.synopsis;
    EXPECT_EQ(&findCommand(command.word), &command);
  }
  EXPECT_TRUE(played.printed("expect references 0"));
}

}  // namespace
}  // namespace scenario
