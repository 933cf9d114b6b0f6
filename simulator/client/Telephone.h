#pragma once

#include <cstdint>
#include <map>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

namespace simulator {

/// The user's lines and the calls on them. A line is in one of these states, which is also the
/// number that the client tells:
///  - idle (4): usable for dialling;
///  - dialling (1): a call was dialled and the other side has not answered; not usable;
///  - signalling (2): an incoming call is signalling;
///  - connected (3).
/// Dialling takes the chosen line, or, when none is chosen or the user has no such line, the first
/// idle line from the first line on; dialling on a line that is not idle ends the call there.
/// The current line is that of the latest call; when that is over the first one with a call, else
/// the first.
class Telephone {
 public:
  enum class State : std::int32_t { Dialling = 1, Signalling = 2, Connected = 3, Idle = 4 };

  /// The user's lines, all idle; at first there are two, with the ids 1 and 2. Ends all calls.
  void setLines(const std::vector<std::int32_t>& ids);
  std::vector<std::int32_t> lines() const;
  /// The client tells this number for the line, whatever happens there; nothing for the truth.
  void forceState(std::int32_t line, std::optional<std::int32_t> state);
  /// The same for the question after the current line.
  void forceCurrentState(std::optional<std::int32_t> state) { forcedCurrent_ = state; }

  /// The number that the client tells; 0 for a line that the user does not have.
  std::int32_t stateOf(std::int32_t line) const;
  std::int32_t currentState() const;
  /// What really goes on on the current line, and with whom.
  State state() const;
  std::u16string_view number() const;
  /// Id of the current line; 0 when the user has none.
  std::int32_t currentLine() const;

  bool ring(std::u16string_view number);
  bool connect();
  bool end();
  void dial(std::int32_t firstLine, std::int32_t chosenLine, std::u16string_view number);
  /// Connects a signalling call of this line, 0 for the one that is signalling; false without one.
  bool pickUp(std::int32_t line);
  /// Ends the call of this line, 0 for the current one; false without one.
  bool hangUp(std::int32_t line);
  void endAll();

 private:
  struct Line {
    std::int32_t id = 0;
    State state = State::Idle;
    std::u16string number;
  };
  Line* find(std::int32_t id);
  const Line* find(std::int32_t id) const;
  Line* firstIdle(std::int32_t from);
  void begin(Line& line, State state, std::u16string_view number);

  std::vector<Line> lines_{{1, State::Idle, {}}, {2, State::Idle, {}}};
  std::int32_t current_ = 0;  // 0 before the first call
  std::map<std::int32_t, std::int32_t> forced_;
  std::optional<std::int32_t> forcedCurrent_;
};

}  // namespace simulator
