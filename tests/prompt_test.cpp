// What a person at the prompt gets beyond a scenario's transcript.
#include <gtest/gtest.h>

#include <string>
#include <vector>

#include "demo/Completion.h"
#include "demo/NativeAddin.h"
#include "simulator/data/MailboxReader.h"
#include "simulator/player/NativeStage.h"

namespace demo {
namespace {

using Texts = std::vector<std::string>;

/// Types line after line; at one that ends with a tab only the offers are put down.
class Typist : public scenario::LineSource {
 public:
  Typist(scenario::Player& player, Texts lines) : player_(player), lines_(std::move(lines)) {}

  std::optional<scenario::SourceLine> next(bool) override {
    while (at_ < lines_.size()) {
      const std::string& line = lines_[at_++];
      if (!line.ends_with('\t')) return scenario::SourceLine{line, ""};
      offers.push_back(complete(player_, line.substr(0, line.size() - 1)).offers);
    }
    return std::nullopt;
  }
  bool typed() const override { return true; }

  std::vector<Texts> offers;

 private:
  scenario::Player& player_;
  Texts lines_;
  std::size_t at_ = 0;
};

struct Session {
  explicit Session(const Texts& lines)
      : stage(simulator::readMailbox(R"({"folders": [
          {"name": "Contacts", "holds": "contact", "items": [
            {"lastName": "Meier", "firstName": "Hans", "phones": {"work": "030 1", "home": "030 2"}},
            {"lastName": "Meier", "firstName": "Eva"}]},
          {"name": "In", "holds": "mail", "items": [{"subject": "Say \"x\""}]}]})",
                                     "mailbox"),
              makeNativeAddin) {
    scenario::TextSource start("client running\noutlook 11.0\nwait 21", "start");
    player.play(start);
    transcript.clear();
    Typist typist(player, lines);
    player.play(typist);
    offers = typist.offers;
  }
  bool told(const std::string& text) const { return transcript.find(text) != transcript.npos; }

  std::string transcript;
  std::vector<Texts> offers;
  scenario::NativeStage stage;
  scenario::Player player{
      stage, [this](std::string_view line) { transcript += std::string(line) + "\n"; }};
};

TEST(Prompt, CompletesWhatMayStandThere) {
  const struct {
    const char* typed;
    Texts offers;
  } cases[] = {
      {"se", {"select"}},
      {"click ", {"actions", "client", "dial", "hangup"}},
      {"click \"hang", {"\"Hang up\""}},
      {"select MEI", {"\"Meier, Eva\"", "\"Meier, Hans\""}},
      {"select \"Meier, h", {"\"Meier, Hans\""}},
      {"select all ", {"\"Meier, Eva\"", "\"Meier, Hans\"", "all", "in", "none"}},
      {"select all in ", {"\"Contacts - Microsoft Outlook\"", "1"}},
      {"folder ", {"\"Contacts\"", "\"In\""}},
      {"open s", {"\"Say \"\"x\"\"\""}},
      {"open explorer c", {"\"Contacts\""}},
      {"new m", {"mail"}},
      {"client never ser", {"service"}},
      {"expect tele", {"telephone"}},
      {"help us", {"user"}},
      {"choose ", {}},
      {"nonsense ", {}},
  };
  for (const auto& c : cases)
    EXPECT_EQ(Session({std::string(c.typed) + "\t"}).offers.at(0), c.offers) << c.typed;
  EXPECT_EQ(sharedBeginning({"\"Meier, Eva\"", "\"meier, Hans\""}), "\"Meier, ");
  EXPECT_EQ(sharedBeginning({"\xC3\x84x", "\xC3\x96x"}), "");
}

TEST(Prompt, TakesANumberAtAMenu) {
  const Session session({"select \"Hans\"", "click dial", "choose \t", "1", "1"});
  EXPECT_EQ(session.offers.at(0), (Texts{"\"Home: 030 2\"", "\"Work: 030 1\"", "1", "2"}));
  EXPECT_TRUE(session.told("client was told: dial 0301"));
  EXPECT_TRUE(session.told("\"1\" is unknown as a command")) << "there is no menu any more";
}

TEST(Prompt, TellsWhatATranscriptDoesNot) {
  constexpr const char* Silence = "(nothing changed";
  const struct {
    Texts lines;
    const char* text;
    bool told;
  } cases[] = {
      {{"client missing", "click dial"}, "(nothing changed; the trace says: GetVelnor", true},
      {{"select \"Hans\"", "client missing", "click dial", "1"}, Silence, true},
      {{"select \"Hans\"", "click dial", "escape"}, Silence, false},
      {{"select \"Hans\"", "click dial", "1"}, Silence, false},
      {{"wait 1"}, Silence, false},
      {{"registry HKCU\\Software\\K9T\\CXComAddIn\\UseMapi = dword:0"},
       "loaded the next time",
       true},
      {{"registry HKCU\\software\\k9t\\cxcomaddin\\dialremote = 1"}, "the next call", true},
      {{"registry HKCU\\Software\\K9T\\Log\\VBLogFile = \"1\""}, "the next trace line", true},
      {{"registry HKCU\\Software\\Else\\X = 1"}, "asks for no such value", true},
  };
  for (const auto& c : cases) {
    const Session session(c.lines);
    EXPECT_EQ(session.told(c.text), c.told) << c.lines.back() << "\n" << session.transcript;
  }
}

}  // namespace
}  // namespace demo
