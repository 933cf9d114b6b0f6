#include "demo/Terminal.h"

#include <cstdio>
// The library's header wants <stdio.h> before it.
#include <editline/readline.h>

#include <cstdlib>
#include <cstring>
#include <memory>

#include "simulator/player/Commands.h"
#include "simulator/player/Text.h"

namespace demo {
namespace {

constexpr int HistoryLength = 500;

struct Freed {
  void operator()(char* text) const { std::free(text); }
};

/// Offers the words that begin like `start`, one a call, null when there are no more.
char* nextCommand(const char* start, int state) {
  static std::size_t at = 0;
  if (state == 0) at = 0;
  const auto& commands = scenario::commands();
  while (at < commands.size()) {
    const std::string word = scenario::toUtf8(commands[at++].word);
    if (word.starts_with(start)) return strdup(word.c_str());
  }
  return nullptr;
}

char** complete(const char* text, int start, int) {
  rl_attempted_completion_over = 1;  // No file names.
  return start == 0 ? rl_completion_matches(text, nextCommand) : nullptr;
}

}  // namespace

Terminal::Terminal() {
  using_history();
  stifle_history(HistoryLength);
  rl_attempted_completion_function = complete;
}

std::optional<scenario::SourceLine> Terminal::next(bool menuOpen) {
  const std::unique_ptr<char, Freed> line(readline(menuOpen ? "menu> " : "> "));
  if (!line) {
    std::puts("");
    return std::nullopt;
  }
  if (*line.get()) add_history(line.get());
  return scenario::SourceLine{line.get(), ""};
}

}  // namespace demo
