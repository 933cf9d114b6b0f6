#include "simulator/player/Expectations.h"

#include <algorithm>
#include <vector>

#include "simulator/player/Commands.h"
#include "simulator/player/Controls.h"
#include "simulator/player/MenuPath.h"
#include "simulator/player/Text.h"

namespace scenario {
namespace {

struct Expectation {
  std::u16string_view word;
  std::string_view synopsis;
  std::string_view help;
  /// Whether "no" may stand before it.
  bool deniable;
  /// `denied` when "no" stood before it: with a text nothing like it may be there, without one
  /// nothing at all.
  Verdict (*judge)(Player& player, Arguments& args, bool denied);
};

bool takeSinceStart(Arguments& args) {
  if (!args.skip(u"since")) return false;
  if (!args.skip(u"start")) throw Mistake("expected: since start");
  return true;
}

std::string listed(const std::vector<std::string>& things) {
  constexpr std::size_t most = 6;
  std::string list;
  for (std::size_t i = 0; i < things.size() && i < most; ++i) list += (i ? ", " : "") + things[i];
  if (things.size() > most) list += " and " + std::to_string(things.size() - most) + " more";
  return list.empty() ? "nothing" : list;
}

Verdict judgeMenu(Player& player, Arguments& args, bool denied) {
  const bool disabled = args.skip(u"disabled");
  std::vector<std::u16string> wanted;
  while (!args.atEnd()) wanted.push_back(args.text("a caption"));
  std::vector<std::string> there;
  std::vector<const platform::PopupEntry*> entries;
  if (player.menu()) entries = allEntries(*player.menu());
  for (const platform::PopupEntry* entry : entries)
    there.push_back(inQuotes(shownCaption(entry->caption)) + (entry->enabled ? "" : " (disabled)"));
  const std::string found = player.menu() ? "a menu with " + listed(there) : "no menu open";

  if (wanted.empty())
    return {(player.menu() != nullptr) != denied, denied ? "no menu" : "a menu", found};
  // All texts must be there, one below the other.
  auto from = entries.begin();
  std::string expected = denied ? "no menu entry " : disabled ? "disabled entry " : "menu entry ";
  bool all = true;
  for (const std::u16string& text : wanted) {
    expected += (text == wanted.front() ? "" : ", ") + inQuotes(text);
    from = std::find_if(from, entries.end(), [&](const platform::PopupEntry* entry) {
      return shownCaption(entry->caption) == text && !(disabled && entry->enabled);
    });
    all = all && from != entries.end();
    if (from != entries.end()) ++from;
  }
  return {all != denied, expected, found};
}

/// The whole text, or whole words from its beginning.
bool saysTold(std::u16string_view told, std::u16string_view wanted) {
  if (!told.starts_with(wanted)) return false;
  const std::u16string_view behind = told.substr(wanted.size());
  return behind.empty() || behind.starts_with(u' ');
}

Verdict judgeTold(Player& player, Arguments& args, bool denied) {
  const bool nothing = args.skip(u"nothing");
  const std::u16string wanted = nothing ? u"" : args.text("what the client was told, or nothing");
  const bool sinceStart = takeSinceStart(args);
  args.end();
  std::vector<std::string> told;
  bool said = false;
  for (const Note& note : player.journal().notes(sinceStart)) {
    if (note.kind != Note::Kind::Told) continue;
    told.push_back(inQuotes(note.text));
    said = said || saysTold(note.text, wanted);
  }
  if (nothing) return {told.empty() != denied, "the client told nothing", listed(told)};
  return {said != denied, (denied ? "the client not told " : "the client told ") + inQuotes(wanted),
          listed(told)};
}

Verdict judgeTrace(Player& player, Arguments& args, bool denied) {
  const std::u16string wanted = args.text("a part of a trace line");
  const bool sinceStart = takeSinceStart(args);
  args.end();
  int count = 0;
  std::vector<std::string> written;
  for (const Note& note : player.journal().notes(sinceStart)) {
    if (note.kind != Note::Kind::Trace) continue;
    const std::u16string line = note.level + u": " + note.text;
    count += line.find(wanted) != line.npos;
    written.insert(written.begin(), inQuotes(note.text));
  }
  return {(count > 0) != denied,
          (denied ? "no trace line with " : "a trace line with ") + inQuotes(wanted),
          denied ? std::to_string(count) : listed(written)};
}

Verdict judgeBox(Player& player, Arguments& args, bool denied) {
  const bool any = !args.atText();
  const std::u16string wanted = any ? u"" : args.text("a text");
  const bool sinceStart = takeSinceStart(args);
  args.end();
  std::vector<std::string> shown;
  bool seen = false;
  for (const std::u16string& box : player.journal().boxes(sinceStart)) {
    shown.push_back(inQuotes(box));
    seen = seen || any || box == wanted;
  }
  return {seen != denied,
          (denied ? "no message box" : "a message box") + (any ? "" : " " + inQuotes(wanted)),
          listed(shown)};
}

std::string shownAs(const ControlView& control) {
  if (control.isBox()) return "box";
  if (!control.showsPicture()) return "text";
  return control.showsText() ? "both" : "picture";
}

/// One property of a control as text, by its word.
std::u16string property(const ControlView& control, std::size_t index) {
  switch (index) {
    case 0: return shownCaption(control.caption);
    case 1: return control.tooltip;
    case 2: return control.picture;
    case 3: return control.text;
    default: return toUtf16(shownAs(control));
  }
}

Verdict judgeButton(Player& player, Arguments& args, bool denied) {
  static const std::vector<std::u16string_view> words{u"caption", u"tooltip", u"picture",
                                                      u"text",    u"shown",   u"visible",
                                                      u"hidden",  u"enabled", u"disabled"};
  constexpr std::size_t firstState = 5;
  const Token name = args.take("a button such as dial, or its \"Caption\"");
  const Token* next = args.peek();
  const bool bare = !next || folded(next->text) == u"in";
  const std::size_t index = bare ? firstState : args.choice(words);
  const std::u16string wanted = index < firstState ? args.text("the text") : u"";
  const Snapshot snapshot = player.stage().snapshot();
  const WindowView& window = takeWindow(snapshot, args);
  args.end();

  const std::string subject = "button " + toUtf8(name.text);
  const bool hiddenToo = index == 6;
  const FoundControl control = findControl(window, name.text, name.quoted, hiddenToo);
  const FoundControl visible = findControl(window, name.text, name.quoted, false);
  const std::string missing = "no such button among " + visibleControls(window);
  if (index < firstState) {
    const std::u16string found = control ? property(*control.view, index) : u"";
    return {
        (control && found == wanted) != denied,
        (denied ? "no " : "") + subject + " with " + toUtf8(words[index]) + " " + inQuotes(wanted),
        control ? inQuotes(found) : missing};
  }
  bool holds = false;
  if (index == 5) holds = static_cast<bool>(visible);
  if (index == 6) holds = control && !visible;
  if (index == 7) holds = control && control.view->enabled;
  if (index == 8) holds = control && !control.view->enabled;
  const std::string state = !control                ? missing
                            : !visible              ? "it hidden"
                            : control.view->enabled ? "it visible and enabled"
                                                    : "it disabled";
  return {holds != denied, (denied ? "no " : "") + subject + " " + toUtf8(words[index]), state};
}

Verdict judgeBar(Player& player, Arguments& args, bool denied) {
  const std::u16string name = args.atText() ? args.text("a name") : u"";
  const std::size_t state = denied && (args.atEnd() || folded(args.peek()->text) == u"in")
                                ? 2
                                : args.choice({u"visible", u"hidden", u"none"});
  const Snapshot snapshot = player.stage().snapshot();
  const WindowView& window = takeWindow(snapshot, args);
  args.end();
  const BarView* bar = findBar(window, name);
  const std::size_t is = !bar ? 2 : bar->visible ? 0 : 1;
  const std::string states[] = {"a visible toolbar", "a hidden toolbar", "no toolbar"};
  const bool asked = is == state;
  return {denied && state != 2 ? !asked : asked,
          (denied && state != 2 ? "not " : "") + states[state] +
              (name.empty() ? "" : " " + inQuotes(name)),
          states[is]};
}

Verdict judgeRibbon(Player& player, Arguments& args, bool denied) {
  denied = args.skip(u"none") || denied;
  std::u16string tab;
  if (args.skip(u"tab")) tab = args.text("the id of a tab such as \"TabContact\"");
  const Snapshot snapshot = player.stage().snapshot();
  const WindowView& window = takeWindow(snapshot, args);
  args.end();
  std::vector<std::string> tabs;
  bool there = false;
  for (const simulator::RibbonGroupView& group : window.ribbon) {
    tabs.push_back(inQuotes(group.tab));
    there = there || tab.empty() || group.tab == tab;
  }
  return {there != denied,
          (denied ? "no group on the ribbon" : "a group on the ribbon") +
              (tab.empty() ? "" : " of tab " + inQuotes(tab)),
          listed(tabs)};
}

Verdict judgeNumber(Arguments& args, std::size_t found, const std::string& things) {
  const std::int32_t wanted = args.number("a number");
  args.end();
  return {static_cast<std::size_t>(wanted) == found, std::to_string(wanted) + " " + things,
          std::to_string(found)};
}

Verdict judgeWindows(Player& player, Arguments& args, bool) {
  return judgeNumber(args, player.stage().snapshot().windows.size(), "windows");
}

Verdict judgeReferences(Player& player, Arguments& args, bool) {
  return judgeNumber(args, player.stage().references(), "references");
}

Verdict judgeTitle(Player& player, Arguments& args, bool denied) {
  const std::u16string wanted = args.text("a title");
  const Snapshot snapshot = player.stage().snapshot();
  const WindowView& window = takeWindow(snapshot, args);
  args.end();
  return {(window.caption == wanted) != denied, "the title " + inQuotes(wanted),
          inQuotes(window.caption)};
}

Verdict judgeClipboard(Player& player, Arguments& args, bool denied) {
  const std::u16string wanted = args.text("what the user has copied");
  args.end();
  const std::u16string found = player.stage().copied();
  return {(found == wanted) != denied,
          std::string(denied ? "the clipboard without " : "the clipboard with ") + inQuotes(wanted),
          inQuotes(found)};
}

Verdict judgeTelephone(Player& player, Arguments& args, bool denied) {
  const std::u16string wanted = args.text("a state of the telephone");
  args.end();
  const std::u16string found = player.stage().snapshot().telephone;
  return {(found.find(wanted) != found.npos) != denied,
          std::string(denied ? "the telephone not " : "the telephone ") + inQuotes(wanted),
          inQuotes(found)};
}

constexpr Expectation ExpectationTable[] = {
    {u"menu", "[no] menu [disabled] [\"Home: 030 1\" ...]",
     "the open menu, with these entries one below the other", true, judgeMenu},
    {u"told", "[no] told \"dial 0301\" [since start] | told nothing",
     "what the client was told, or the first words of it", true, judgeTold},
    {u"trace", "[no] trace \"Warning: part of a line\" [since start]",
     "the trace lines of the last action", true, judgeTrace},
    {u"box", "[no] box [\"text\"] [since start]", "the message boxes of the last action", true,
     judgeBox},
    {u"button",
     "[no] button dial [caption|tooltip|picture|text|shown \"..\" | visible|hidden|enabled|"
     "disabled] [in 2]",
     "a button of a window; shown as \"picture\", \"text\" or \"both\"", true, judgeButton},
    {u"bar", "bar [\"Name\"] visible|hidden|none [in 2]", "the add-in's toolbar in a window", true,
     judgeBar},
    {u"ribbon", "ribbon [tab \"TabContact\"] [in 2] | ribbon none [in 2]",
     "the add-in's group on the ribbon", true, judgeRibbon},
    {u"windows", "windows 2", "the number of open windows", false, judgeWindows},
    {u"title", "title \"..\" [in 2]", "the title of a window", true, judgeTitle},
    {u"telephone", "[no] telephone \"connected\"", "a part of the telephone's state", true,
     judgeTelephone},
    {u"clipboard", "[no] clipboard \"a text\"", "what the user has copied", true, judgeClipboard},
    {u"references", "references 0", "objects of Outlook and client that the add-in holds", false,
     judgeReferences},
};

}  // namespace

Verdict judge(Player& player, Arguments& args) {
  const bool denied = args.skip(u"no") || args.skip(u"not");
  std::vector<std::u16string_view> words;
  for (const Expectation& row : ExpectationTable) words.push_back(row.word);
  const Expectation& row = ExpectationTable[args.choice(words)];
  if (denied && !row.deniable) throw Mistake(toUtf8(row.word) + " takes no \"no\"");
  return row.judge(player, args, denied);
}

std::span<const std::string> expectationHelp() {
  static const std::vector<std::string> lines = [] {
    std::vector<std::string> list;
    for (const Expectation& row : ExpectationTable) {
      list.push_back("    expect " + std::string(row.synopsis));
      list.push_back("          " + std::string(row.help));
    }
    return list;
  }();
  return lines;
}

}  // namespace scenario
