#include "standin/outlook/Options.h"

#include <cstdio>
#include <string_view>

namespace standin {
namespace {

constexpr int WrongUsage = 2;

struct OptionRow {
  std::string_view name;
  const char* help;
  std::string Options::*value;
};

constexpr OptionRow Rows[] = {
    {"--mailbox", "FILE    the mailbox to open (JSON)", &Options::mailbox},
    {"--play",
     "FILE       play a scenario and print its transcript; without it the windows are\n"
     "                    for use by hand",
     &Options::play},
    {"--outlook", "VERSION the Outlook to be: 9.0, 10.0, 11.0 or 12.0", &Options::outlook},
    {"--client", "FILE     the telephony client's stand-in", &Options::client},
    {"--libraries", "DIR   the folder of the libraries' stand-ins", &Options::libraries},
    {"--addin", "PROGID    another add-in", &Options::addin},
};

void showUsage(std::FILE* file) {
  std::fputs("usage: outlook-standin --mailbox FILE [options]\n", file);
  for (const OptionRow& row : Rows) std::fprintf(file, "  %s %s\n", row.name.data(), row.help);
  std::fputs("  --hand            windows for use by hand, as without --play\n", file);
  std::fputs("  --trace           show the add-in's trace lines\n", file);
  std::fputs("  --show            show the windows while a scenario is played\n", file);
}

}  // namespace

std::optional<Options> readOptions(int argc, char** argv, int& status) {
  Options options;
  const auto wrong = [&](const char* what, std::string_view name) {
    std::fprintf(stderr, "outlook-standin: %s %.*s\n", what, static_cast<int>(name.size()),
                 name.data());
    showUsage(stderr);
    status = WrongUsage;
    return std::nullopt;
  };
  for (int i = 1; i < argc; ++i) {
    const std::string_view name = argv[i];
    if (name == "--help") {
      showUsage(stdout);
      status = 0;
      return std::nullopt;
    }
    if (name == "--trace" || name == "--show") {
      (name == "--trace" ? options.trace : options.show) = true;
      continue;
    }
    if (name == "--hand") {
      options.play.clear();
      continue;
    }
    const OptionRow* found = nullptr;
    for (const OptionRow& row : Rows)
      if (row.name == name) found = &row;
    if (!found) return wrong("unknown option", name);
    if (++i == argc) return wrong("missing value of", name);
    options.*(found->value) = argv[i];
  }
  if (options.mailbox.empty()) return wrong("missing", "--mailbox");
  return options;
}

}  // namespace standin
