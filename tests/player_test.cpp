#include "simulator/player/Player.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <span>

#include "simulator/player/Commands.h"
#include "simulator/player/RegistryLine.h"
#include "simulator/player/Text.h"
#include "tests/Played.h"

namespace scenario {
namespace {

using tests::Played;
using tests::Started;

struct Case {
  std::string lines;
  const char* text;
};

/// Plays each in a started Outlook; the text must be printed and nothing be wrong.
void expectPrinted(std::span<const Case> cases) {
  for (const Case& c : cases) {
    const Played played(Started + c.lines);
    EXPECT_TRUE(played.printed(c.text)) << c.lines << "\n" << played.transcript;
    EXPECT_TRUE(played.score().good()) << c.lines << "\n" << played.transcript;
  }
}

TEST(ScenarioLines, AreReadAsAPersonWritesThem) {
  const Case cases[] = {
      {"outlook 2002", "toolbar Velnor: hidden"},  // one that runs is ended first
      {"OPEN EXPLORER \"posteingang\"", "[2] Posteingang - Microsoft Outlook"},
      {"open \"Angebot\"", "[2] Angebot"},
      {"open \"smith\" in Kontakte", "[2] Smith, Jo"},
      {"new task", "[2] Untitled"},
      {"open \"smith\"\nact 1", "[1] is active"},
      {"folder Posteingang", "Posteingang, 1 item; selected: none"},
      {"select \"eva\", \"Smith, Jo\"", "selected: \"Müller, Eva\", \"Smith, Jo\""},
      {"select \"MÜLLER, HANS\"", "selected: \"Müller, Hans\""},
      {"select 3 1 in 1", "selected: \"Smith, Jo\", \"Müller, Eva\""},
      {"select all", "selected: \"Müller, Eva\", \"Müller, Hans\", \"Smith, Jo\""},
      {"select all\nselect none", "selected: none"},
      {"clic cl", "client was told: show"},
      {"click \"velnor\" in \"outlook\"", "client was told: show"},
      {"type \"0711 \"\"12\"\"\" # a comment", "told: show number \"0711 \\\"12\\\"\""},
      {"type \"a \"0711 12\"\" in 1", "told: show number \"a \\\"0711 12\\\"\""},
      {"type \"say \"\"hi\"\" now\"", "told: show number \"say \\\"hi\\\" now\""},
      {"client never object\nclient hidden\ntrace on\ntype \"1\"", "Warning: "},
      {"ring \"089\"\nend call", "end call\n    telephone: running\n"},
      {"ring \"089\"\nhangup remote", "hangup remote\n    telephone: running\n"},
      {"ring \"089\"\nstop call", "stop call\n    telephone: running\n"},
      {"freeze\nfreeze off\ntype \"0711\"", "client was told: dial 0711"},
      {"quit\nlanguage PT\noutlook 11.0\nwait 21", "Discar"},
      {"quit\nlanguage 2055\noutlook 11.0\nwait 21", "Dial"},
      {"time 23:59:50\ntrace on\nclick dial", "~ 23:59:50.000 "},
      {"midnight\ntrace on\nclick dial", "~ 23:59:59.000 "},
      {"time 9:00\nwait 400 ms\ntrace on\nclick dial", "~ 09:00:00.400 "},
      {"time 9:00\nwait 1.5s\ntrace on\nclick dial", "~ 09:00:01.500 "},
      {"time 9:00\nwait 21\ntrace on\nclick dial", "~ 09:00:21.000 "},
      {"time 9:00\nwait 1 min\ntrace on\nclick dial", "~ 09:01:00.000 "},
      {"fail CommandBar.FindControl once\ntrace on\nopen \"Angebot\"", "Automation error"},
      {"\xEF\xBB\xBFquit", "[1] closed"},
  };
  expectPrinted(cases);
}

TEST(ScenarioLines, SayWhatIsWrongAndGoOn) {
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
      {"click transfer", "shows no \"transfer\"; it shows box, dial, hangup, client, actions"},
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
      {"connect", "there is no call to connect"},
      {"expect sunshine", "\"sunshine\" is unknown here; expected menu, told"},
      {"native only", "expected: native only: and the reason"},
  };
  for (const Case& c : cases) {
    const Played played(Started + "select \"eva\"\n" + c.lines + "\nring \"5\"");
    EXPECT_TRUE(played.printed("?? t:5: ")) << c.lines << "\n" << played.transcript;
    EXPECT_TRUE(played.printed(c.text)) << c.lines << "\n" << played.transcript;
    EXPECT_TRUE(played.printed("telephone: running, ringing: 5")) << c.lines;
    EXPECT_EQ(played.score().mistakes, 1) << c.lines;
    EXPECT_FALSE(played.score().good());
  }
}

TEST(ScenarioMenus, LinesActInsideAnOpenMenuUntilOneChooses) {
  const Played played(Started +
                      "folder Posteingang\nselect 1\nopen \"Angebot\"\nclick dial\n"
                      "wait 3 s\n"
                      "ring \"0711\"\n"
                      "expect menu\n"
                      "choose 2\n"
                      "expect told \"dial 03042\"\n"
                      "expect no menu\n");
  EXPECT_EQ(played.score().summary(), "3 expectations held, 0 failed") << played.transcript;
}

TEST(ScenarioMenus, EndInEveryWayThatAPersonHas) {
  const Case cases[] = {
      // From the menu of a contact its first number is dialled, whichever entry is chosen.
      {"choose 2", "client was told: dial 03011"},
      {"choose \"e: 030 12\"", "client was told: dial 03011"},
      {"choose \"work\"", "client was told: dial 03011"},
      {"escape", "> escape\n"},
      {"", "(the menu closes)"},
      {"view", "(the menu closes)\n> view"},
      {"exit\nview", "> exit\n"},
      // A second click closes the first menu before its own opens.
      {"click dial\nchoose 1", "(the menu closes)\n> click dial\n    +- menu"},
  };
  for (const Case& c : cases) {
    const Played played(Started + "select \"eva\"\nclick dial\n" + c.lines);
    EXPECT_TRUE(played.printed(c.text)) << c.lines << "\n" << played.transcript;
    EXPECT_FALSE(played.player.menu()) << c.lines;
    EXPECT_EQ(played.printed("client was told: dial"), c.lines.find("choose") != std::string::npos)
        << c.lines << "\n"
        << played.transcript;
  }
}

TEST(ScenarioExpectations, ThatHold) {
  const Played played(Started +
                      "expect windows 1\n"
                      "expect told nothing\n"
                      "expect bar visible\n"
                      "expect bar \"Velnor\" visible in 1\n"
                      "expect no bar \"Other\"\n"
                      "expect button dial caption \"Dial\"\n"
                      "expect button \"Dial\" picture \"dial\"\n"
                      "expect button dial shown \"picture\"\n"
                      "expect button actions\n"
                      "expect button actions enabled\n"
                      "expect no button transfer\n"
                      "expect no ribbon\n"
                      "expect ribbon none\n"
                      "expect title \"Kontakte - Microsoft Outlook\"\n"
                      "expect telephone \"running\"\n"
                      "select \"eva\"\n"
                      "click dial\n"
                      "expect trace \"Debug: Form1 - ShowMenu\"\n"
                      "expect menu \"Work: 030 11\" \"Home: 030 12\"\n"
                      "expect no menu \"Home\"\n"
                      "choose 1\n"
                      "expect told \"dial 03011\"\n"
                      "expect no told \"dial 0301\"\n"
                      "expect told \"dial\"\n"
                      "expect no trace \"Form1 - ShowMenu\"\n"
                      "expect trace \"Form1 - ShowMenu\" since start\n"
                      "select \"Smith\"\n"
                      "click dial\n"
                      "expect menu disabled \"<No phone numbers>\"\n"
                      "choose 1\n"  // disabled: stays open
                      "expect menu\n"
                      "escape\n"
                      "client never window\n"
                      "client hidden\n"
                      "registry HKCR\\CLSID\\{4B7D2A91-3C5E-11D4-9F21-00A0C9E4B7D3}"
                      "\\LocalServer32\\ = -\n"
                      "type \"5\"\n"
                      "expect box \"Cannot start Velnor. Please re-install the software.\"\n"
                      "expect told \"dial 5\"\n"
                      "close\n"
                      "expect no box\n"
                      "expect windows 0\n"
                      "expect references 0\n");
  EXPECT_EQ(played.score().summary(), "30 expectations held, 0 failed") << played.transcript;
  EXPECT_TRUE(played.printed("re-install the software.\"  [OK]"));
  EXPECT_TRUE(played.printed("disabled: nothing happens"));
}

TEST(ScenarioExpectations, ThatFailNameWhatWasExpectedAndFound) {
  const Case cases[] = {
      {"expect windows 2", "expected 2 windows, found 1"},
      {"expect told \"dial 1\"", "expected the client told \"dial 1\", found nothing"},
      {"expect menu \"A\"", "expected menu entry \"A\", found no menu open"},
      {"expect trace \"xyz\"", "expected a trace line with \"xyz\", found "},
      {"expect box", "expected a message box, found nothing"},
      {"expect bar hidden", "expected a hidden toolbar, found a visible toolbar"},
      {"expect bar none", "expected no toolbar, found a visible toolbar"},
      {"expect no bar visible", "expected not a visible toolbar, found a visible toolbar"},
      {"expect button dial caption \"Wahl\"",
       "expected button dial with caption \"Wahl\", found \"Dial\""},
      {"expect button transfer",
       "expected button transfer visible, found no such button among box"},
      {"expect button dial disabled", "found it visible and enabled"},
      {"expect no button dial", "expected no button dial visible, found it visible"},
      {"expect ribbon tab \"TabTask\"", "of tab \"TabTask\", found nothing"},
      {"expect telephone \"connected\"", "found \"running\""},
      {"expect references 0", "expected 0 references, found "},
      {"select \"eva\"\nclick dial\nexpect menu \"Work: 030 11\" \"Work: 030 11\"",
       "found a menu with \"Work: 030 11\", \"Home: 030 12\""},
      {"select \"eva\"\nclick dial\nexpect menu disabled \"Work: 030 11\"",
       "expected disabled entry"},
      {"type \"0301\"\nexpect told nothing", "found \"dial 0301 on line 1"},
      {"type \"0301\"\nexpect told \"dial 030\"", "found \"dial 0301 on line 1"},
  };
  for (const Case& c : cases) {
    const Played played(Started + c.lines);
    EXPECT_EQ(played.score().failed, 1) << c.lines << "\n" << played.transcript;
    EXPECT_TRUE(played.printed(c.text)) << c.lines << "\n" << played.transcript;
    ASSERT_EQ(played.score().problems.size(), 1u) << c.lines;
    const auto line = 4 + std::ranges::count(c.lines, '\n');
    EXPECT_TRUE(played.score().problems[0].starts_with("t:" + std::to_string(line) + ": expected "))
        << played.score().problems[0];
  }
}

TEST(ScenarioTranscript, DrawsWhatChangedAndNothingElse) {
  Played played(Started);
  played.transcript.clear();
  played.play(
      "# A person looks on.\n"
      "ring \"0711\"\n"
      "end call\n"
      "select 1\n"
      "wait 1\n"
      "click dial\n"
      "trace on\n"
      "choose 1\n"
      "trace off\n"
      "close\n");
  EXPECT_EQ(played.transcript, R"(# A person looks on.
> ring "0711"
    telephone: running, ringing: 0711
> end call
    telephone: running
> select 1
[1] Kontakte - Microsoft Outlook
    Kontakte, 3 items; selected: "Müller, Eva"
> wait 1
[1] Kontakte - Microsoft Outlook
        actions    "Müller, Eva"            Actions
> click dial
    +- menu
    |  1    Work: 030 11
    |  2    Home: 030 12
    +-
> trace on
> choose 1
    ~ 09:00:22.000 Debug:   callno_Click (0)
    ~ 09:00:22.000 Debug:   CxDial (Work: 030 11)
    ~ 09:00:22.000 Debug:   GetVelnorPhoneCmdInservice() entered...
    ~ 09:00:22.000 Debug:   GetVelnorPhoneCmdInservice() ShellExecuteVelnorWait()...
    ~ 09:00:22.000 Debug:   GetVelnorPhoneCmdInservice() GetObject()...
    ~ 09:00:22.000 Debug:   GetVelnorPhoneCmdInservice() WaitForInService()...
    ~ 09:00:22.000 Debug:   CxDial (Work: 030 11): DialWithRemoteInterface = False
    ~ 09:00:22.000 Debug:   CxDial (03011): cmd.Dial()...
    client was told: dial 03011 on line 1 (first line 1)
    telephone: running, dialling: 03011
> trace off
> close
[1] closed
)");
}

TEST(ScenarioTranscript, SkipsNativeLinesOnOtherStages) {
  struct RealStage : NativeStage {
    using NativeStage::NativeStage;
    bool native() const override { return false; }
  };
  const std::string lines = "native only: the clock is real\n\nring \"1\"\nring \"2\"\n";
  EXPECT_TRUE(Played(Started + lines).printed("ringing: 1"));

  RealStage stage(tests::playedMailbox(), makeNativeAddin);
  std::string transcript;
  Player player(stage, [&](std::string_view line) { transcript += std::string(line) + "\n"; });
  TextSource source(Started + lines, "t");
  player.play(source);
  EXPECT_EQ(transcript.find("ringing: 1"), transcript.npos) << transcript;
  EXPECT_NE(transcript.find("ringing: 2"), transcript.npos) << transcript;
  EXPECT_NE(transcript.find("> ring \"1\"\n    (native only: the clock is real)\n"),
            transcript.npos);
}

TEST(ScenarioRegistry, ReadsEveryKindOfValue) {
  using platform::RegistryType;
  struct ValueCase {
    const char16_t* value;
    RegistryType type;
    std::u16string text;
    std::vector<int> bytes;
  };
  const ValueCase cases[] = {
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
  for (const ValueCase& c : cases) {
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
  EXPECT_TRUE(played.score().good());
  for (const Command& command : commands()) {
    EXPECT_TRUE(played.printed("\n  " + std::string(command.synopsis))) << command.synopsis;
    EXPECT_EQ(&findCommand(command.word), &command);
  }
  EXPECT_TRUE(played.printed("expect references 0"));
}

}  // namespace
}  // namespace scenario
