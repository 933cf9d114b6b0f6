#pragma once

#include <functional>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

#include "simulator/player/LineSource.h"
#include "simulator/player/Stage.h"
#include "simulator/player/Transcript.h"

namespace scenario {

struct Command;
struct Line;

/// What became of the expectations.
struct Score {
  int held = 0;
  int failed = 0;
  int mistakes = 0;                   ///< lines that could not be carried out
  std::vector<std::string> problems;  ///< one a failed expectation or mistake, with its place

  bool good() const { return failed == 0 && mistakes == 0; }
  /// "12 expectations held, 0 failed"
  std::string summary() const;
};

/// Plays scenarios on a stage. While a popup menu is open inside an action, the following lines
/// are read where the menu waits: they may choose, look, or let the world go on; a line of the
/// user's that has nothing to do with the menu closes it first.
class Player : private Listener {
 public:
  /// `print` gets the transcript line by line. The stage must outlive the player.
  Player(Stage& stage, std::function<void(std::string_view)> print);
  ~Player() override;
  Player(const Player&) = delete;
  Player& operator=(const Player&) = delete;

  void play(LineSource& source);
  const Score& score() const { return score_; }

  // For the commands.
  Stage& stage() { return stage_; }
  Transcript& transcript() { return transcript_; }
  const Journal& journal() const { return journal_; }
  /// The open menu; null for none.
  const std::vector<platform::PopupEntry>* menu() const { return menu_; }
  /// Closes the open menu when the current line is done: by this entry or by none.
  void answerMenu(std::optional<int> entry);
  /// Whether a person types the lines and is told more than a transcript holds.
  bool typed() const { return source_ && source_->typed(); }
  void judge(bool held, const std::string& expected, const std::string& found);
  /// The next line is for a simulated world only.
  void nextIsNativeOnly(std::string reason) { nativeOnly_ = std::move(reason); }
  void finish() { finished_ = true; }

 private:
  struct MenuAnswer {
    std::optional<int> entry;
  };

  void note(const Note& note) override;
  void messageBox(std::u16string_view text) override;
  std::optional<int> popup(const std::vector<platform::PopupEntry>& menu) override;

  std::optional<SourceLine> nextLine();
  void execute(const SourceLine& source);
  bool skipsHere(const Line& line);
  void run(const Command& command, const Line& line);
  void complain(std::string_view text);
  /// The line's words; a number alone chooses from an open menu.
  Line read(const SourceLine& source) const;
  /// Whether the line leaves an open menu alone.
  bool livesWithMenu(const SourceLine& source) const;
  void drawChanges();
  /// Tells a person why a click has changed nothing to be seen.
  void explainSilence(const Command& command);

  Stage& stage_;
  Transcript transcript_;
  Journal journal_;
  Score score_;
  LineSource* source_ = nullptr;
  std::optional<SourceLine> pending_;
  std::string place_;
  std::optional<std::string> nativeOnly_;
  const std::vector<platform::PopupEntry>* menu_ = nullptr;
  /// Lines shown when the user last did something; nothing when that needs no answer.
  std::optional<std::size_t> shownBefore_;
  std::optional<MenuAnswer> answer_;
  bool finished_ = false;
};

}  // namespace scenario
