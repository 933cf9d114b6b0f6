#include "simulator/player/Controls.h"

#include "simulator/player/Line.h"
#include "simulator/player/Text.h"

namespace scenario {
namespace {

struct ControlRow {
  std::u16string_view word;
  std::u16string_view tag;
  std::u16string_view ribbonId;
};

constexpr ControlRow rows[] = {
    {u"box", u"CxCbDial", u""},
    {u"dial", u"CxBtDial", u"IDS_WaehlenCombo"},
    {u"hangup", u"CxBtDrop", u"IDS_Auflegen"},
    {u"client", u"CxBtVelnor", u""},
    {u"actions", u"CxBtAction", u"IDS_Aktionen"},
    {u"transfer", u"CxBtTransfer", u""},
    {u"incognito", u"CxBtIncognito", u""},
    {u"pickup", u"CxBtPickup", u""},
    {u"callinfo", u"CxBtCallInfo", u""},
};

bool isCalled(const ControlView& control, std::u16string_view name, const ControlRow* row) {
  // A box shows its caption nowhere.
  if (!row)
    return !control.isBox() &&
           folded(trimmed(shownCaption(control.caption))) == folded(trimmed(name));
  return control.tag == row->tag || (!row->ribbonId.empty() && control.tag == row->ribbonId);
}

template <class Visit>
void eachControl(const WindowView& window, bool hiddenToo, Visit visit) {
  for (const BarView& bar : window.bars)
    for (const ControlView& control : bar.controls)
      if (hiddenToo || (bar.visible && control.visible)) visit(control, false);
  for (const simulator::RibbonGroupView& group : window.ribbon)
    for (const ControlView& control : group.controls) visit(control, true);
}

}  // namespace

const std::vector<std::u16string_view>& controlWords() {
  static const std::vector<std::u16string_view> words = [] {
    std::vector<std::u16string_view> list;
    for (const ControlRow& row : rows) list.push_back(row.word);
    return list;
  }();
  return words;
}

std::u16string controlWord(std::u16string_view tag) {
  for (const ControlRow& row : rows)
    if (row.tag == tag || row.ribbonId == tag) return std::u16string(row.word);
  return std::u16string(tag);
}

FoundControl findControl(const WindowView& window, std::u16string_view name, bool byCaption,
                         bool hiddenToo) {
  const ControlRow* row = nullptr;
  if (!byCaption) row = &rows[chooseWord(name, controlWords(), "as a button")];
  FoundControl found;
  eachControl(window, hiddenToo, [&](const ControlView& control, bool ribbon) {
    if (!found && isCalled(control, name, row))
      found = {&control,
               {window.number, ribbon, control.tag.empty() ? control.caption : control.tag}};
  });
  return found;
}

std::string visibleControls(const WindowView& window) {
  std::string list;
  eachControl(window, false, [&](const ControlView& control, bool) {
    if (!list.empty()) list += ", ";
    list += toUtf8(controlWord(control.tag));
  });
  return list.empty() ? "nothing to click" : list;
}

const BarView* findBar(const WindowView& window, std::u16string_view name) {
  for (const BarView& bar : window.bars) {
    if (!name.empty()) {
      if (trimmed(bar.name) == trimmed(name)) return &bar;
      continue;
    }
    for (const ControlView& control : bar.controls)
      if (control.tag.starts_with(u"Cx")) return &bar;
  }
  return name.empty() && window.bars.size() == 1 ? &window.bars.front() : nullptr;
}

const WindowView& findWindow(const Snapshot& snapshot, std::u16string_view name, bool byTitle) {
  if (snapshot.windows.empty()) throw Mistake("no window is open");
  if (name.empty()) {
    for (const WindowView& window : snapshot.windows)
      if (window.active) return window;
    return snapshot.windows.front();
  }
  if (byTitle) {
    std::vector<std::u16string> titles;
    for (const WindowView& window : snapshot.windows) titles.push_back(window.caption);
    return snapshot.windows[findTitle(titles, name, "window")];
  }
  std::string open;
  for (const WindowView& window : snapshot.windows) {
    const std::string number = std::to_string(window.number);
    if (toUtf8(name) == number) return window;
    open += (open.empty() ? "" : ", ") + number;
  }
  throw Mistake("no window " + inQuotes(name) + "; open are " + open);
}

std::size_t findTitle(const std::vector<std::u16string>& titles, std::u16string_view title,
                      std::string_view what) {
  const std::u16string wanted = folded(trimmed(title));
  std::vector<std::size_t> beginning;
  std::vector<std::size_t> fitting;
  for (std::size_t i = 0; i < titles.size(); ++i) {
    const std::u16string candidate = folded(trimmed(titles[i]));
    if (candidate == wanted) return i;
    if (wanted.empty() || candidate.find(wanted) == candidate.npos) continue;
    fitting.push_back(i);
    if (candidate.starts_with(wanted)) beginning.push_back(i);
  }
  if (beginning.size() == 1) return beginning.front();
  if (fitting.size() == 1) return fitting.front();
  constexpr std::size_t most = 8;
  if (fitting.empty())
    for (std::size_t i = 0; i < titles.size(); ++i) fitting.push_back(i);
  else
    throw Mistake(inQuotes(title) + " fits more than one " + std::string(what) + ": " +
                  inQuotes(titles[fitting[0]]) + ", " + inQuotes(titles[fitting[1]]));
  if (const auto near = nearest(title, titles))
    throw Mistake("no " + std::string(what) + " " + inQuotes(title) + "; did you mean " +
                  inQuotes(titles[*near]) + "?");
  std::string there;
  for (std::size_t i = 0; i < fitting.size() && i < most; ++i)
    there += (i ? ", " : "") + inQuotes(titles[fitting[i]]);
  if (fitting.size() > most) there += ", ...";
  throw Mistake("no " + std::string(what) + " " + inQuotes(title) + "; there is " +
                (there.empty() ? "none at all" : there));
}

}  // namespace scenario
