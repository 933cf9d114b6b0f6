#pragma once

#include <algorithm>
#include <cstddef>
#include <optional>
#include <string>
#include <utility>

namespace scenario {

/// A line of UTF-8 and where it was read, as "file:line"; empty when it was typed.
struct SourceLine {
  std::string text;
  std::string place;
};

/// Where the lines of a scenario come from.
class LineSource {
 public:
  virtual ~LineSource() = default;
  /// Nothing at the end. `menuOpen` lets a terminal prompt accordingly.
  virtual std::optional<SourceLine> next(bool menuOpen) = 0;
  /// Whether a person types the lines, so that they need no repeating in the transcript.
  virtual bool typed() const = 0;
};

/// The lines of a text in memory.
class TextSource : public LineSource {
 public:
  TextSource(std::string text, std::string name) : text_(std::move(text)), name_(std::move(name)) {}

  std::optional<SourceLine> next(bool) override {
    if (at_ >= text_.size()) return std::nullopt;
    const std::size_t end = std::min(text_.find('\n', at_), text_.size());
    std::string line = text_.substr(at_, end - at_);
    if (line.ends_with('\r')) line.pop_back();
    at_ = end + 1;
    return SourceLine{std::move(line), name_ + ":" + std::to_string(++number_)};
  }
  bool typed() const override { return false; }

 private:
  std::string text_;
  std::string name_;
  std::size_t at_ = 0;
  std::size_t number_ = 0;
};

}  // namespace scenario
