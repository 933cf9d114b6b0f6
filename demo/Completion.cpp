#include "demo/Completion.h"

#include <algorithm>

#include "simulator/player/Commands.h"
#include "simulator/player/Controls.h"
#include "simulator/player/Expectations.h"
#include "simulator/player/MenuPath.h"
#include "simulator/player/Text.h"

namespace demo {
namespace {

using scenario::folded;
using scenario::toUtf16;
using scenario::toUtf8;

/// The line cut at its blanks; the last part is the one to complete, maybe empty, and may stand in
/// quotation marks that are still open.
struct Typed {
  std::vector<std::u16string> words;
  std::size_t from = 0;
  std::u16string last;
};

Typed cut(std::string_view line) {
  Typed typed;
  bool quoted = false;
  for (std::size_t i = 0; i < line.size(); ++i) {
    if (line[i] == '"') quoted = !quoted;
    if (quoted || (line[i] != ' ' && line[i] != '\t')) continue;
    if (i > typed.from)
      typed.words.push_back(folded(toUtf16(line.substr(typed.from, i - typed.from))));
    typed.from = i + 1;
  }
  typed.last = folded(toUtf16(line.substr(typed.from)));
  return typed;
}

std::string inQuotes(std::u16string_view text) {
  std::string result = "\"";
  for (const char c : toUtf8(text)) result += c == '"' ? "\"\"" : std::string(1, c);
  return result + "\"";
}

/// "new mail|task" gives mail and task: the bare words of a synopsis but for the command's own.
void addWords(std::vector<std::string>& offers, std::string_view synopsis) {
  const std::string_view command = synopsis.substr(0, synopsis.find(' '));
  bool quoted = false;
  std::string word;
  const auto end = [&] {
    const bool plain = std::ranges::all_of(word, [](char c) { return c >= 'a' && c <= 'z'; });
    if (plain && !word.empty() && word != command) offers.push_back(word);
    word.clear();
  };
  for (const char c : synopsis.substr(std::min(synopsis.find(' '), synopsis.size()))) {
    if (c == '"') quoted = !quoted;
    if (quoted || c == '"' || c == ' ' || c == '|' || c == '[' || c == ']')
      end();
    else
      word += c;
  }
  end();
}

/// Finds what can be named behind a command.
class Offers {
 public:
  Offers(scenario::Player& player, const Typed& typed)
      : player_(player),
        stage_(player.stage()),
        words_(typed.words),
        quoted_(typed.last.starts_with(u'"')),
        snapshot_(stage_.snapshot()) {}

  std::vector<std::string> find() {
    if (words_.empty()) {
      addMenu();
      for (const auto& command : scenario::commands()) offers_.push_back(toUtf8(command.word));
      return std::move(offers_);
    }
    const scenario::Command& command = scenario::findCommand(words_.front());
    if (words_.back() == u"in" && command.word != u"open") {
      addWindows();
    } else {
      addThings(command.word);
      if (command.word != u"wait" && command.word != u"native") addWords(offers_, command.synopsis);
      if (words_.size() == 1) std::erase(offers_, "in");  // something stands before it
    }
    return std::move(offers_);
  }

 private:
  void addThings(std::u16string_view command) {
    const std::u16string_view second = words_.size() > 1 ? words_[1] : std::u16string_view();
    if (command == u"folder") addFolders();
    if (command == u"open" && (second == u"explorer" || words_.back() == u"in"))
      addFolders();
    else if (command == u"open")
      for (const std::u16string& folder : stage_.folders()) addItems(folder);
    if (command == u"select" && !snapshot_.windows.empty()) addItems(shownFolder());
    if (command == u"click" && !snapshot_.windows.empty()) addButtons();
    if (command == u"activate" || command == u"close") addWindows();
    if (command == u"choose") addMenu();
    if (command == u"outlook")
      for (const char* version : {"9.0", "10.0", "11.0", "12.0"}) offers_.emplace_back(version);
    if (command == u"help") {
      for (const auto& group : scenario::commandGroups()) offers_.push_back(toUtf8(group.name));
      for (const auto& one : scenario::commands()) offers_.push_back(toUtf8(one.word));
    }
    if (command == u"expect")
      for (const std::string& line : scenario::expectationHelp())
        if (const auto at = line.find("expect "); at != line.npos)
          addWords(offers_, std::string_view(line).substr(at));
  }

  void addFolders() {
    for (const std::u16string& folder : stage_.folders()) offers_.push_back(inQuotes(folder));
  }

  void addItems(const std::u16string& folder) {
    for (const auto& item : stage_.items(folder)) offers_.push_back(inQuotes(item.title));
  }

  const std::u16string& shownFolder() const {
    const auto shown = std::ranges::find_if(snapshot_.windows, [](const auto& window) {
      return window.active && !window.isInspector();
    });
    const auto first =
        std::ranges::find(snapshot_.windows, false, &scenario::WindowView::isInspector);
    return (shown != snapshot_.windows.end()   ? *shown
            : first != snapshot_.windows.end() ? *first
                                               : snapshot_.windows.front())
        .folder;
  }

  void addButtons() {
    const auto& window = scenario::findWindow(snapshot_, u"", false);
    const auto add = [this](const scenario::ControlView& control) {
      if (!control.visible || control.isBox()) return;
      offers_.push_back(toUtf8(scenario::controlWord(control.tag)));
      // Its word is shorter; who wants the caption has begun it.
      if (quoted_)
        offers_.push_back(inQuotes(scenario::trimmed(scenario::shownCaption(control.caption))));
    };
    for (const auto& bar : window.bars)
      if (bar.visible) std::ranges::for_each(bar.controls, add);
    for (const auto& group : window.ribbon) std::ranges::for_each(group.controls, add);
  }

  void addWindows() {
    for (const auto& window : snapshot_.windows) {
      offers_.push_back(std::to_string(window.number));
      offers_.push_back(inQuotes(window.caption));
    }
  }

  void addMenu() {
    if (!player_.menu()) return;
    for (const auto* entry : scenario::allEntries(*player_.menu()))
      if (entry->enabled && !words_.empty())
        offers_.push_back(inQuotes(scenario::shownCaption(entry->caption)));
    std::size_t number = 0;
    for (const auto& entry : *player_.menu())
      if (!entry.separator) offers_.push_back(std::to_string(++number));
  }

  scenario::Player& player_;
  scenario::Stage& stage_;
  const std::vector<std::u16string>& words_;
  const bool quoted_;
  scenario::Snapshot snapshot_;
  std::vector<std::string> offers_;
};

}  // namespace

Completion complete(scenario::Player& player, std::string_view line) {
  const Typed typed = cut(line);
  Completion completion{typed.from, {}};
  try {
    completion.offers = Offers(player, typed).find();
  } catch (const scenario::Mistake&) {
    return completion;  // No such command: what follows it nobody knows.
  }
  // A text may be begun with or without its quotation mark.
  std::erase_if(completion.offers, [&](const std::string& offer) {
    const std::u16string text = folded(toUtf16(offer));
    return !text.starts_with(typed.last) &&
           !(text.starts_with(u'"') && text.substr(1).starts_with(typed.last));
  });
  std::ranges::sort(completion.offers);
  const auto twice = std::unique(completion.offers.begin(), completion.offers.end());
  completion.offers.erase(twice, completion.offers.end());
  return completion;
}

std::string sharedBeginning(const std::vector<std::string>& texts) {
  const auto lower = [](char c) { return c >= 'A' && c <= 'Z' ? static_cast<char>(c + 32) : c; };
  std::string shared = texts.front();
  for (const std::string& text : texts) {
    const auto differing = std::ranges::mismatch(shared, text, {}, lower, lower);
    shared.erase(differing.in1, shared.end());
  }
  // Not in the middle of a letter.
  while (!shared.empty() && shared.size() < texts.front().size() &&
         (static_cast<unsigned char>(texts.front()[shared.size()]) & 0xC0) == 0x80)
    shared.pop_back();
  return shared;
}

}  // namespace demo
