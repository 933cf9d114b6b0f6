#include "simulator/player/Player.h"

#include <utility>

#include "platform/automation.h"
#include "simulator/player/Commands.h"
#include "simulator/player/Picture.h"
#include "simulator/player/Text.h"

namespace scenario {
namespace {

std::string counted(int count, std::string_view thing) {
  return std::to_string(count) + " " + std::string(thing) + (count == 1 ? "" : "s");
}

/// Puts a value back at the end of a scope, whatever happens in it.
template <class T>
class Restored {
 public:
  Restored(T& variable, T value) : variable_(variable), before_(std::exchange(variable, value)) {}
  ~Restored() { variable_ = before_; }
  Restored(const Restored&) = delete;
  Restored& operator=(const Restored&) = delete;

 private:
  T& variable_;
  T before_;
};

}  // namespace

std::string Score::summary() const {
  std::string text = counted(held, "expectation") + " held, " + std::to_string(failed) + " failed";
  if (mistakes > 0) text += ", " + counted(mistakes, "line") + " not carried out";
  return text;
}

Player::Player(Stage& stage, std::function<void(std::string_view)> print)
    : stage_(stage), transcript_(std::move(print)) {
  stage_.setListener(this);
}

Player::~Player() {
  stage_.setListener(nullptr);
}

void Player::play(LineSource& source) {
  const Restored<LineSource*> current(source_, &source);
  while (const std::optional<SourceLine> line = nextLine()) execute(*line);
}

std::optional<SourceLine> Player::nextLine() {
  if (finished_ || !source_) return std::nullopt;
  if (pending_) return std::exchange(pending_, std::nullopt);
  return source_->next(menu_ != nullptr);
}

void Player::execute(const SourceLine& source) {
  const std::u16string text = toUtf16(source.text);
  const std::u16string_view shown = trimmed(text);
  const Restored<std::string> here(place_, source.place);
  try {
    if (!source_->typed()) {
      const bool comment = shown.empty() || shown.starts_with(u'#');
      transcript_.line((comment ? "" : "> ") + toUtf8(shown));
    }
    const Line line = read(source);
    if (line.empty() || skipsHere(line)) return;
    run(findCommand(line.word), line);
  } catch (const automation::Error& error) {
    complain("failed with error " + std::to_string(error.number()) + ": " +
             toUtf8(error.description()));
  } catch (const std::exception& error) {
    complain(error.what());
  }
}

Line Player::read(const SourceLine& source) const {
  Line line = Line::read(toUtf16(source.text));
  if (menu_ && !line.empty() && line.word.find_first_not_of(u"0123456789.") == line.word.npos) {
    line.args.insert(line.args.begin(), Token{line.word});
    line.word = u"choose";
  }
  return line;
}

bool Player::skipsHere(const Line& line) {
  if (!nativeOnly_ || findCommand(line.word).word == u"native") return false;
  const std::string reason = *std::exchange(nativeOnly_, std::nullopt);
  if (stage_.native()) return false;
  transcript_.line("    (native only: " + reason + ")");
  return true;
}

void Player::run(const Command& command, const Line& line) {
  if (command.actor == Actor::Menu && !menu_) throw Mistake("no menu is open");
  if (command.actor != Actor::Looker) journal_.mark();
  if (command.actor != Actor::Looker) shownBefore_ = transcript_.shown();
  Arguments args(line);
  command.run(*this, args);
  if (command.actor == Actor::Looker) return;
  drawChanges();
  explainSilence(command);
}

void Player::drawChanges() {
  if (transcript_.read()) transcript_.changes(stage_.snapshot());
}

void Player::explainSilence(const Command& command) {
  const bool clicks = command.word == u"click" || command.word == u"type";
  if (!typed() || !clicks || shownBefore_ != transcript_.shown()) return;
  const Note* reason = nullptr;
  for (const Note& note : journal_.notes(false))
    if (note.kind == Note::Kind::Trace && (note.level == u"Warning" || note.level == u"Error"))
      reason = &note;
  transcript_.line("    (nothing changed" +
                   (reason ? "; the trace says: " + oneLine(reason->text) : std::string()) + ")");
}

void Player::complain(std::string_view text) {
  ++score_.mistakes;
  const std::string problem = (place_.empty() ? "" : place_ + ": ") + std::string(text);
  score_.problems.push_back(problem);
  transcript_.line("?? " + problem);
}

void Player::judge(bool held, const std::string& expected, const std::string& found) {
  ++(held ? score_.held : score_.failed);
  if (held) {
    if (typed()) transcript_.line("    holds");
    return;
  }
  const std::string problem =
      (place_.empty() ? "" : place_ + ": ") + "expected " + expected + ", found " + found;
  score_.problems.push_back(problem);
  transcript_.line("!! " + problem);
}

void Player::note(const Note& note) {
  journal_.add(note);
  transcript_.note(note);
}

void Player::messageBox(std::u16string_view text) {
  journal_.addBox(text);
  transcript_.messageBox(text);
}

void Player::answerMenu(std::optional<int> entry) {
  answer_ = MenuAnswer{entry};
}

bool Player::livesWithMenu(const SourceLine& source) const {
  try {
    const Line line = read(source);
    return line.empty() || findCommand(line.word).actor != Actor::User;
  } catch (const Mistake&) {
    return true;  // Executing it complains; the menu has nothing to do with that.
  }
}

std::optional<int> Player::popup(const std::vector<platform::PopupEntry>& menu) {
  const Restored<const std::vector<platform::PopupEntry>*> open(menu_, &menu);
  drawChanges();
  transcript_.lines(drawMenu(menu));
  while (std::optional<SourceLine> line = nextLine()) {
    if (!livesWithMenu(*line)) {
      transcript_.line("    (the menu closes)");
      pending_ = std::move(line);
      return std::nullopt;
    }
    execute(*line);
    if (const auto answer = std::exchange(answer_, std::nullopt)) {
      if (!answer->entry) shownBefore_ = std::nullopt;
      return answer->entry;
    }
  }
  if (!finished_) transcript_.line("    (the menu closes)");
  return std::nullopt;
}

}  // namespace scenario
