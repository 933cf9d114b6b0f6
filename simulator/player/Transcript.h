#pragma once

#include <cstddef>
#include <functional>
#include <map>
#include <span>
#include <string>
#include <string_view>
#include <vector>

#include "simulator/player/Stage.h"

namespace scenario {

/// What a scenario prints. Keeps in mind what the reader has seen of the windows, so that only
/// changes are drawn. Everything goes out line by line as UTF-8.
class Transcript {
 public:
  /// `print` gets one line at a time, without its end. Where it is empty nobody reads, and nothing
  /// is drawn.
  explicit Transcript(std::function<void(std::string_view)> print) : print_(std::move(print)) {}

  void line(std::string_view text) {
    ++shown_;
    if (print_) print_(text);
  }
  void lines(std::span<const std::string> texts);
  void note(const Note& note);
  void messageBox(std::u16string_view text);

  /// Draws what is new since the last drawing: opened windows, changed lines, closed windows, the
  /// window that became active, the state of the telephone.
  void changes(const Snapshot& snapshot);
  /// Draws everything.
  void whole(const Snapshot& snapshot);

  /// Whether anybody reads it.
  bool read() const { return static_cast<bool>(print_); }

  bool traceShown = false;
  /// Lines so far, without those of the trace.
  std::size_t shown() const { return shown_; }

 private:
  void drawChanged(const WindowView& window);

  std::function<void(std::string_view)> print_;
  std::size_t shown_ = 0;
  std::map<int, std::vector<std::string>> seen_;
  int activeWindow_ = 0;
  std::u16string telephone_;
};

/// Everything that happened in a run; the expectations look at it.
class Journal {
 public:
  void add(const Note& note) { notes_.push_back(note); }
  void addBox(std::u16string_view text) { boxes_.emplace_back(text); }
  /// A command begins: what happens from now on is its doing.
  void mark() {
    noteMark_ = notes_.size();
    boxMark_ = boxes_.size();
  }
  /// What happened since the last mark or since the start of the run.
  std::span<const Note> notes(bool sinceStart) const {
    return std::span(notes_).subspan(sinceStart ? 0 : noteMark_);
  }
  std::span<const std::u16string> boxes(bool sinceStart) const {
    return std::span(boxes_).subspan(sinceStart ? 0 : boxMark_);
  }

 private:
  std::vector<Note> notes_;
  std::vector<std::u16string> boxes_;
  std::size_t noteMark_ = 0;
  std::size_t boxMark_ = 0;
};

}  // namespace scenario
