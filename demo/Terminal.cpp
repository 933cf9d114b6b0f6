#include "demo/Terminal.h"

#include <histedit.h>

#include <algorithm>
#include <csignal>
#include <cstdio>
#include <cstdlib>
#include <filesystem>
#include <system_error>

#include "demo/Completion.h"
#include "simulator/player/Text.h"

namespace demo {
namespace {

constexpr int HistoryLength = 500;
constexpr std::size_t MostListed = 60;

/// Where the user's programs keep what they remember; empty when there is no such place.
std::filesystem::path historyFile() {
  std::filesystem::path folder;
  if (const char* state = std::getenv("XDG_STATE_HOME"); state && *state == '/')
    folder = state;
  else if (const char* home = std::getenv("HOME"); home && *home)
    folder = std::filesystem::path(home) / ".local" / "state";
  else
    return {};
  folder /= "velnor-sim";
  std::error_code error;
  std::filesystem::create_directories(folder, error);
  return error ? std::filesystem::path() : folder / "history";
}

std::size_t lettersOf(std::string_view utf8) {
  return static_cast<std::size_t>(std::ranges::count_if(
      utf8, [](char c) { return (static_cast<unsigned char>(c) & 0xC0) != 0x80; }));
}

/// In columns, below the line.
void list(const std::vector<std::string>& offers) {
  constexpr std::size_t width = 78;
  std::size_t column = 0;
  for (const std::string& offer : offers) column = std::max(column, lettersOf(offer) + 2);
  const std::size_t columns = std::max<std::size_t>(1, width / column);
  std::puts("");
  for (std::size_t i = 0; i < std::min(offers.size(), MostListed); ++i) {
    const bool last = (i + 1) % columns == 0 || i + 1 == std::min(offers.size(), MostListed);
    std::printf("%s%s", scenario::padded(offers[i], last ? 0 : column).c_str(), last ? "\n" : "");
  }
  if (offers.size() > MostListed) std::printf("and %zu more\n", offers.size() - MostListed);
}

}  // namespace

/// The line editor with its history.
struct Terminal::Editor {
  Editor(scenario::Player& shownPlayer, bool withColours)
      : player(shownPlayer), colours(withColours) {
    el_set(line, EL_CLIENTDATA, this);
    el_set(line, EL_PROMPT_ESC, prompt, '\1');
    el_set(line, EL_EDITOR, "emacs");
    el_set(line, EL_SIGNAL, 1);
    el_set(line, EL_HIST, history, past);
    // Ctrl-C and Ctrl-Z come as keys while a line is typed; while a command runs they end it.
    el_set(line, EL_SETTY, "-d", "-isig", nullptr);
    bindKeys();
    HistEvent event;
    history(past, &event, H_SETSIZE, HistoryLength);
    history(past, &event, H_SETUNIQUE, 1);
    if (!file.empty()) history(past, &event, H_LOAD, file.c_str());
  }
  ~Editor() {
    el_end(line);
    history_end(past);
  }
  Editor(const Editor&) = delete;
  Editor& operator=(const Editor&) = delete;

  void bindKeys() {
    el_set(line, EL_ADDFN, "velnor-complete", "complete the word", completeWord);
    el_set(line, EL_ADDFN, "velnor-drop", "throw the line away", dropLine);
    el_set(line, EL_ADDFN, "velnor-suspend", "suspend the program", suspend);
    struct Binding {
      const char *key, *function;
    };
    constexpr Binding bindings[] = {
        {"^I", "velnor-complete"},         {"^C", "velnor-drop"},
        {"^Z", "velnor-suspend"},          {"^R", "em-inc-search-prev"},
        {"\\e[1~", "ed-move-to-beg"},      {"\\e[4~", "ed-move-to-end"},
        {"\\e[H", "ed-move-to-beg"},       {"\\e[F", "ed-move-to-end"},
        {"\\e[3~", "ed-delete-next-char"}, {"\\e[1;5C", "em-next-word"},
        {"\\e[1;5D", "ed-prev-word"},
    };
    for (const Binding& binding : bindings)
      el_set(line, EL_BIND, binding.key, binding.function, nullptr);
  }

  static Editor& of(EditLine* line) {
    void* self = nullptr;
    el_get(line, EL_CLIENTDATA, &self);
    return *static_cast<Editor*>(self);
  }

  static const char* prompt(EditLine* line) {
    const Editor& self = of(line);
    if (!self.colours) return self.menuOpen ? "menu> " : "> ";
    return self.menuOpen ? "\1\x1B[33m\1menu>\1\x1B[0m\1 " : "\1\x1B[1m\1>\1\x1B[0m\1 ";
  }

  static unsigned char completeWord(EditLine* line, int) {
    const LineInfo* const info = el_line(line);
    const std::string before(info->buffer, info->cursor);
    const Completion completion = complete(of(line).player, before);
    if (completion.offers.empty()) return CC_REFRESH_BEEP;
    const std::string word = before.substr(completion.from);
    const bool only = completion.offers.size() == 1;
    const std::string shared =
        only ? completion.offers[0] + " " : sharedBeginning(completion.offers);
    if (shared.size() > word.size()) {
      el_deletestr(line, static_cast<int>(lettersOf(word)));
      el_insertstr(line, shared.c_str());
      return CC_REFRESH;
    }
    list(completion.offers);
    return CC_REDISPLAY;
  }

  static unsigned char dropLine(EditLine* line, int) {
    const LineInfo* const info = el_line(line);
    el_cursor(line, static_cast<int>(info->lastchar - info->cursor));
    const std::string all(info->buffer, info->lastchar);
    std::puts("^C");
    el_deletestr(line, static_cast<int>(lettersOf(all)));
    return CC_REDISPLAY;
  }

  static unsigned char suspend(EditLine* line, int) {
    el_set(line, EL_PREP_TERM, 0);
    std::raise(SIGTSTP);
    el_set(line, EL_PREP_TERM, 1);
    return CC_REDISPLAY;
  }

  scenario::Player& player;
  const bool colours;
  bool menuOpen = false;
  const std::filesystem::path file = historyFile();
  EditLine* const line = el_init("velnor-sim", stdin, stdout, stderr);
  History* const past = history_init();
};

Terminal::Terminal(scenario::Player& player, bool colours)
    : editor_(std::make_unique<Editor>(player, colours)) {}

Terminal::~Terminal() = default;

std::optional<scenario::SourceLine> Terminal::next(bool menuOpen) {
  editor_->menuOpen = menuOpen;
  int count = 0;
  const char* const typed = el_gets(editor_->line, &count);
  if (!typed || count <= 0) {
    std::puts("");
    return std::nullopt;
  }
  std::string text = typed;
  while (text.ends_with('\n') || text.ends_with('\r')) text.pop_back();
  if (text.find_first_not_of(" \t") != text.npos) {
    HistEvent event;
    history(editor_->past, &event, H_ENTER, text.c_str());
    // At once: a terminal may be closed at any time.
    if (!editor_->file.empty()) history(editor_->past, &event, H_SAVE, editor_->file.c_str());
  }
  return scenario::SourceLine{std::move(text), ""};
}

}  // namespace demo
