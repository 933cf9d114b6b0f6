#include "simulator/data/VCardLines.h"

#include <algorithm>
#include <optional>
#include <span>
#include <utility>

#include "simulator/data/Utf8.h"

namespace simulator {
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

/// How the value of a content line runs on over further lines.
enum class Encoding { Plain, QuotedPrintable, Base64 };

Encoding encodingOf(std::string_view line) {
  const std::string head = upperCase(line.substr(0, line.find(':')));
  if (head.find("QUOTED-PRINTABLE") != std::string::npos) return Encoding::QuotedPrintable;
  const bool base64 = head.find("BASE64") != std::string::npos || head.ends_with("ENCODING=B") ||
                      head.find("ENCODING=B;") != std::string::npos;
  return base64 ? Encoding::Base64 : Encoding::Plain;
}

std::vector<CardLine> unfolded(std::span<const PhysicalLine> physical, CardVersion version) {
  std::vector<CardLine> lines;
  Encoding encoding = Encoding::Plain;
  for (const PhysicalLine& line : physical) {
    const bool softBreak =
        encoding == Encoding::QuotedPrintable && lines.back().text.ends_with('=');
    if (softBreak) {
      lines.back().text.pop_back();
      lines.back().text += line.text;
      continue;
    }
    if (trimmed(line.text).empty()) {
      encoding = Encoding::Plain;
      continue;
    }
    const bool indented = line.text.front() == ' ' || line.text.front() == '\t';
    if (indented && !lines.empty()) {
      // 2.1 folds at blanks that belong to the text, the later versions insert one.
      lines.back().text += version == CardVersion::V21 ? line.text : line.text.substr(1);
    } else if (encoding == Encoding::Base64 && line.text.find(':') == std::string_view::npos) {
      lines.back().text += line.text;  // some programs do not indent these
    } else {
      lines.push_back({std::string(line.text), line.number});
      encoding = encodingOf(line.text);
    }
  }
  return lines;
}

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
      file_.cards.push_back({begin_, *version, unfolded(lines_, *version)});
    else
      file_.warnings.push_back({begin_, "card skipped: its version is not 2.1, 3.0 or 4.0"});
    begin_ = 0;
  }

  void noEnd() { file_.warnings.push_back({begin_, "card skipped: it has no END:VCARD"}); }

  CardFile file_;
  std::size_t begin_ = 0;  // the open card's line; 0 outside of cards
  std::vector<PhysicalLine> lines_;
  int agents_ = 0;  // how many cards are open inside of the open one
  bool strayReported_ = false;
};

}  // namespace

CardFile splitCards(std::string_view bytes) {
  return Splitter().split(withoutByteOrderMark(bytes));
}

std::string upperCase(std::string_view text) {
  std::string upper(text);
  for (char& c : upper)
    if (c >= 'a' && c <= 'z') c = static_cast<char>(c - 'a' + 'A');
  return upper;
}

std::string_view trimmed(std::string_view text) {
  const std::size_t first = text.find_first_not_of(" \t");
  if (first == std::string_view::npos) return {};
  return text.substr(first, text.find_last_not_of(" \t") - first + 1);
}

}  // namespace simulator
