#include "demo/import/VCardLines.h"

#include <algorithm>
#include <optional>
#include <span>
#include <utility>

#include "simulator/data/Utf8.h"

namespace demo {
namespace {

struct PhysicalLine {
  std::string_view text;
  std::size_t number;
};

/// Lines end with CRLF, LF or CR.
std::vector<PhysicalLine> physicalLines(std::string_view bytes) {
  std::vector<PhysicalLine> lines;
  while (!bytes.empty()) {
    const std::size_t end = std::min(bytes.find_first_of("\r\n"), bytes.size());
    lines.push_back({bytes.substr(0, end), lines.size() + 1});
    bytes.remove_prefix(end);
    bytes.remove_prefix(bytes.starts_with("\r\n") ? 2 : std::min<std::size_t>(bytes.size(), 1));
  }
  return lines;
}

/// "BEGIN:VCARD" also as " begin : vcard "; the first column must not be blank, or the line would
/// continue another.
bool isMarker(std::string_view line, std::string_view word) {
  const std::size_t colon = line.find(':');
  if (colon == std::string_view::npos || line.starts_with(' ') || line.starts_with('\t'))
    return false;
  return upperCase(trimmed(line.substr(0, colon))) == word &&
         upperCase(trimmed(line.substr(colon + 1))) == "VCARD";
}

/// Nothing for a version that is unknown; cards that tell none are read as 3.0.
std::optional<CardVersion> versionOf(std::span<const PhysicalLine> lines) {
  for (const PhysicalLine& line : lines) {
    const std::size_t colon = line.text.find(':');
    if (colon == std::string_view::npos) continue;
    if (upperCase(trimmed(line.text.substr(0, colon))) != "VERSION") continue;
    const std::string_view version = trimmed(line.text.substr(colon + 1));
    if (version == "2.1") return CardVersion::V21;
    if (version == "3.0") return CardVersion::V30;
    if (version == "4.0") return CardVersion::V40;
    return std::nullopt;
  }
  return CardVersion::V30;
}

/// Puts the lines of one card together to properties.
class Unfolder {
 public:
  Unfolder(CardVersion version, std::vector<CardWarning>& warnings)
      : version_(version), warnings_(warnings) {}

  std::vector<CardProperty> unfold(std::span<const PhysicalLine> lines) {
    for (const PhysicalLine& line : lines)
      if (!continues(line)) begin(line);
    if (state_ == State::Head) passOver("no property of the form NAME:VALUE");
    return std::move(properties_);
  }

 private:
  /// Between: nothing goes on. Head: the colon is still missing.
  enum class State { Between, Head, Value, PassedOver };

  bool continues(const PhysicalLine& line) {
    CardProperty* const last = state_ == State::Value ? &properties_.back() : nullptr;
    if (last && last->quotedPrintable && last->value.ends_with('=')) {
      last->value.pop_back();
      last->value += line.text;
      return true;
    }
    if (trimmed(line.text).empty()) {
      if (state_ == State::Head) passOver("no property of the form NAME:VALUE");
      state_ = State::Between;
      return true;
    }
    const bool indented = line.text.front() == ' ' || line.text.front() == '\t';
    if (!indented || state_ == State::Between) {
      // Some programs do not indent these; nobody asks for their value.
      return last && last->base64 && line.text.find(':') == std::string_view::npos;
    }
    // 2.1 folds at blanks that belong to the text, the later versions insert one.
    const auto text = version_ == CardVersion::V21 ? line.text : line.text.substr(1);
    if (last) last->value += text;
    if (state_ == State::Head) readHead(text);
    return true;
  }

  void begin(const PhysicalLine& line) {
    if (state_ == State::Head) passOver("no property of the form NAME:VALUE");
    passedOverBefore_ = state_ == State::PassedOver;
    line_ = line.number;
    head_.clear();
    quoted_ = false;
    state_ = State::Head;
    readHead(line.text);
  }

  /// Looks for the colon that ends the head; one between quotes does not.
  void readHead(std::string_view text) {
    for (std::size_t i = 0; i < text.size(); ++i) {
      if (text[i] == '"') quoted_ = !quoted_;
      if (quoted_ || text[i] != ':') continue;
      head_ += text.substr(0, i);
      return endHead(text.substr(i + 1));
    }
    head_ += text;
  }

  void endHead(std::string_view value) {
    try {
      CardProperty property = parseProperty(head_, value);
      property.version = version_;
      property.line = line_;
      properties_.push_back(std::move(property));
      state_ = State::Value;
    } catch (const CardError& error) {
      passOver(error.what());
    }
  }

  /// Of lines that follow one another the first is told: a torn value would tell a hundred.
  void passOver(const std::string& reason) {
    if (!passedOverBefore_) warnings_.push_back({line_, "line passed over: " + reason});
    state_ = State::PassedOver;
  }

  const CardVersion version_;
  std::vector<CardWarning>& warnings_;
  std::vector<CardProperty> properties_;
  State state_ = State::Between;
  bool passedOverBefore_ = false;
  std::size_t line_ = 0;
  std::string head_;
  bool quoted_ = false;
};

class Splitter {
 public:
  CardFile split(std::string_view bytes) {
    for (const PhysicalLine& line : physicalLines(bytes)) {
      if (begin_ == 0)
        outside(line);
      else
        inside(line);
    }
    if (begin_ != 0) noEnd();
    return std::move(file_);
  }

 private:
  void outside(const PhysicalLine& line) {
    if (isMarker(line.text, "BEGIN"))
      open(line.number);
    else if (!trimmed(line.text).empty() && !std::exchange(strayReported_, true))
      file_.warnings.push_back({line.number, "text outside of a card"});
  }

  void inside(const PhysicalLine& line) {
    if (agents_ > 0) {
      agents_ += isMarker(line.text, "BEGIN") ? 1 : isMarker(line.text, "END") ? -1 : 0;
    } else if (isMarker(line.text, "END")) {
      close();
    } else if (isMarker(line.text, "BEGIN")) {
      if (lastIsAgent()) {
        agents_ = 1;
      } else {
        noEnd();
        open(line.number);
      }
    } else {
      const std::size_t colon = line.text.find(':');
      const bool agent = upperCase(line.text.substr(0, 5)) == "AGENT";
      if (agent && colon != std::string_view::npos &&
          isMarker(line.text.substr(colon + 1), "BEGIN"))
        agents_ = 1;
      else
        lines_.push_back(line);
    }
  }

  bool lastIsAgent() const {
    if (lines_.empty()) return false;
    return upperCase(lines_.back().text.substr(0, 5)) == "AGENT" &&
           trimmed(lines_.back().text).ends_with(':');
  }

  void open(std::size_t line) {
    begin_ = line;
    lines_.clear();
    strayReported_ = false;
  }

  void close() {
    if (const auto version = versionOf(lines_))
      file_.cards.push_back({begin_, Unfolder(*version, file_.warnings).unfold(lines_)});
    else
      skip("its version is not 2.1, 3.0 or 4.0");
    begin_ = 0;
  }

  void noEnd() { skip("it has no END:VCARD"); }

  void skip(const std::string& reason) {
    ++file_.skipped;
    file_.warnings.push_back({begin_, "card skipped: " + reason});
  }

  CardFile file_;
  std::size_t begin_ = 0;  // the open card's line; 0 outside of cards
  std::vector<PhysicalLine> lines_;
  int agents_ = 0;  // how many cards are open inside of the open one
  bool strayReported_ = false;
};

}  // namespace

CardFile splitCards(std::string_view bytes) {
  const bool little = bytes.starts_with("\xFF\xFE");
  if (!little && !bytes.starts_with("\xFE\xFF"))
    return Splitter().split(simulator::withoutByteOrderMark(bytes));
  bytes.remove_prefix(2);
  CardFile file = Splitter().split(simulator::toUtf8(
      little ? simulator::fromUtf16LittleEndian(bytes) : simulator::fromUtf16BigEndian(bytes)));
  // What names a character set means how it would be written in a file of bytes.
  for (CardText& card : file.cards)
    for (CardProperty& property : card.properties)
      if (!property.quotedPrintable) property.charset.clear();
  return file;
}

}  // namespace demo
