#include "simulator/player/Picture.h"

#include <algorithm>

#include "simulator/player/Controls.h"
#include "simulator/player/Text.h"

namespace scenario {
namespace {

constexpr std::size_t PixelsPerCharacter = 10;

/// (box), <picture>, <picture> Caption or [Caption].
std::string drawControl(const ControlView& control) {
  if (control.isBox()) {
    const std::size_t width = static_cast<std::size_t>(std::max(control.width, 0));
    return "(" + padded(toUtf8(control.text), width / PixelsPerCharacter) + ")";
  }
  const std::string caption = toUtf8(trimmed(shownCaption(control.caption)));
  if (!control.showsPicture()) return "[" + caption + "]";
  const std::string picture = "<" + toUtf8(control.picture) + ">";
  return control.showsText() ? picture + " " + caption : picture;
}

std::string drawRow(const std::vector<ControlView>& controls) {
  std::string row;
  for (const ControlView& control : controls) {
    if (!control.visible) continue;
    if (!row.empty()) row += control.beginGroup ? " | " : " ";
    row += drawControl(control);
  }
  return row.empty() ? "(empty)" : row;
}

/// A line a control: the word for it, caption and tooltip.
void describe(std::vector<std::string>& lines, const std::vector<ControlView>& controls) {
  for (const ControlView& control : controls) {
    if (!control.visible) continue;
    std::string line = "        " + padded(toUtf8(controlWord(control.tag)), 10) + " " +
                       padded(inQuotes(shownCaption(control.caption)), 24);
    if (!control.tooltip.empty()) line += " " + toUtf8(control.tooltip);
    if (!control.enabled) line += " (disabled)";
    line.erase(line.find_last_not_of(' ') + 1);
    lines.push_back(std::move(line));
  }
}

std::string describeSelection(const WindowView& window) {
  constexpr std::size_t most = 3;
  std::string line = "    " + toUtf8(window.folder) + ", " + std::to_string(window.itemCount) +
                     (window.itemCount == 1 ? " item" : " items") + "; selected: ";
  for (std::size_t i = 0; i < window.selection.size() && i < most; ++i)
    line += (i ? ", " : "") + inQuotes(window.selection[i]);
  if (window.selectedCount == 0) line += "none";
  if (window.selectedCount > most)
    line += " and " + std::to_string(window.selectedCount - most) + " more";
  return line;
}

void drawEntries(std::vector<std::string>& lines, const std::vector<platform::PopupEntry>& entries,
                 const std::string& prefix) {
  int number = 0;
  for (const platform::PopupEntry& entry : entries) {
    if (entry.separator) {
      lines.push_back("    |  --------");
      continue;
    }
    const std::string path = prefix + std::to_string(++number);
    lines.push_back("    |  " + padded(path, 4) + " " + toUtf8(shownCaption(entry.caption)) +
                    (entry.enabled ? "" : "  (disabled)") + (entry.entries.empty() ? "" : "  >"));
    drawEntries(lines, entry.entries, path + ".");
  }
}

}  // namespace

std::vector<std::string> drawWindow(const WindowView& window) {
  std::vector<std::string> lines{"[" + std::to_string(window.number) + "] " +
                                 toUtf8(window.caption)};
  if (!window.isInspector()) lines.push_back(describeSelection(window));
  for (const BarView& bar : window.bars) {
    const std::string name = "    toolbar " + toUtf8(trimmed(bar.name)) + ": ";
    lines.push_back(name + (bar.visible ? drawRow(bar.controls) : "hidden"));
    if (bar.visible) describe(lines, bar.controls);
  }
  for (const simulator::RibbonGroupView& group : window.ribbon) {
    lines.push_back("    ribbon " + toUtf8(group.tab) + ", group " + toUtf8(trimmed(group.label)) +
                    ": " + drawRow(group.controls));
    describe(lines, group.controls);
  }
  for (const std::u16string& problem : window.ribbonProblems)
    lines.push_back("    ribbon markup refused: " + oneLine(problem));
  return lines;
}

std::vector<std::string> drawMenu(const std::vector<platform::PopupEntry>& menu) {
  std::vector<std::string> lines{"    +- menu"};
  drawEntries(lines, menu, "");
  lines.push_back("    +-");
  return lines;
}

std::vector<std::string> drawItems(const std::vector<ItemEntry>& items) {
  constexpr std::size_t most = 40;
  std::vector<std::string> lines;
  for (std::size_t i = 0; i < items.size() && i < most; ++i)
    lines.push_back("        " + padded(std::to_string(i + 1), 3) + " " + toUtf8(items[i].title));
  if (items.size() > most)
    lines.push_back("        ... and " + std::to_string(items.size() - most) + " more");
  return lines;
}

}  // namespace scenario
