#pragma once

#include <string>
#include <string_view>
#include <utility>
#include <vector>

#include "demo/NativeAddin.h"
#include "simulator/data/MailboxReader.h"
#include "simulator/player/NativeStage.h"
#include "simulator/player/Player.h"

namespace tests {

/// The mailbox of tests that play scenarios, German in part.
inline simulator::Mailbox playedMailbox() {
  return simulator::readMailbox(R"({"user": "Anna", "folders": [
      {"name": "Kontakte", "holds": "contact", "items": [
        {"id": "c1", "fullName": "Müller, Eva", "phones": {"work": "030 11", "home": "030 12"}},
        {"id": "c2", "fullName": "Müller, Hans", "phones": {"mobile": "030 3"}},
        {"id": "c3", "fullName": "Smith, Jo"}]},
      {"name": "Posteingang", "holds": "mail", "items": [
        {"subject": "Angebot", "links": ["c1", "c2"], "to": ["Anna"],
         "sender": {"name": "Say \"x\" & Co", "numbers": ["030 41", "030 42"]}}]}]})",
                                "mailbox");
}

/// A scenario that has been played on the simulated machine, and what it printed.
class Played {
 public:
  explicit Played(const std::string& lines) { play(lines); }

  void play(const std::string& lines) {
    scenario::TextSource source(lines, "t");
    player.play(source);
  }
  bool printed(std::string_view text) const { return transcript.find(text) != transcript.npos; }
  const scenario::Score& score() const { return player.score(); }

  std::string transcript;
  scenario::NativeStage stage{playedMailbox(), makeNativeAddin};
  scenario::Player player{
      stage, [this](std::string_view line) { transcript += std::string(line) + "\n"; }};
};

/// The lines with which Outlook, its toolbar and the client are there.
inline const std::string Started = "client running\noutlook 11.0\nwait 21\n";

}  // namespace tests
