#include "simulator/player/Transcript.h"

#include <algorithm>
#include <utility>

#include "simulator/player/Picture.h"
#include "simulator/player/Text.h"

namespace scenario {
namespace {

/// Texts of the size that a selection of thousands of items brings would drown everything else.
std::string shortened(std::u16string_view text) {
  constexpr std::size_t most = 600;
  if (text.size() <= most) return oneLine(text);
  return oneLine(text.substr(0, most)) + " ... (" + std::to_string(text.size()) + " characters)";
}

}  // namespace

void Transcript::lines(std::span<const std::string> texts) {
  for (const std::string& text : texts) line(text);
}

void Transcript::note(const Note& note) {
  if (!read()) return;
  if (note.kind == Note::Kind::Told) return line("    client was told: " + shortened(note.text));
  if (!traceShown) return;
  print_("    ~ " + toUtf8(note.time) + " " + padded(toUtf8(note.level) + ":", 9) +
         shortened(note.text));
}

void Transcript::messageBox(std::u16string_view text) {
  line("    message box: " + inQuotes(text) + "  [OK]");
}

void Transcript::drawChanged(const WindowView& window) {
  std::vector<std::string> drawn = drawWindow(window);
  std::vector<std::string>& before = seen_[window.number];
  if (drawn == before) return;
  line(drawn.front());
  // A line that was there before, wherever it stood, is known to the reader.
  for (std::size_t i = 1; i < drawn.size(); ++i)
    if (std::find(before.begin(), before.end(), drawn[i]) == before.end()) line(drawn[i]);
  const auto isToolbar = [](const std::string& text) { return text.starts_with("    toolbar "); };
  if (std::any_of(before.begin(), before.end(), isToolbar) &&
      std::none_of(drawn.begin(), drawn.end(), isToolbar))
    line("    no toolbar any more");
  before = std::move(drawn);
}

void Transcript::changes(const Snapshot& snapshot) {
  std::erase_if(seen_, [&](const auto& entry) {
    const bool open =
        std::any_of(snapshot.windows.begin(), snapshot.windows.end(),
                    [&](const WindowView& window) { return window.number == entry.first; });
    if (!open) line("[" + std::to_string(entry.first) + "] closed");
    return !open;
  });
  for (const WindowView& window : snapshot.windows) {
    const bool known = seen_.contains(window.number);
    drawChanged(window);
    if (window.active && window.number != std::exchange(activeWindow_, window.number) && known)
      line("[" + std::to_string(window.number) + "] is active");
  }
  if (snapshot.telephone != telephone_) line("    telephone: " + oneLine(snapshot.telephone));
  telephone_ = snapshot.telephone;
}

void Transcript::whole(const Snapshot& snapshot) {
  if (snapshot.windows.empty()) line("no window is open");
  seen_.clear();
  for (const WindowView& window : snapshot.windows) {
    seen_[window.number] = drawWindow(window);
    lines(seen_[window.number]);
    if (window.active) line("    (active)");
  }
  telephone_ = snapshot.telephone;
  line("    telephone: " + oneLine(telephone_));
}

}  // namespace scenario
