#include "demo/Options.h"

#include <unistd.h>

#include <CLI/CLI.hpp>
#include <cstdlib>

namespace demo {
namespace {

constexpr int WrongUsage = 2;

}  // namespace

std::string samplePath(const std::string& name) {
  const char* folder = std::getenv("VELNOR_SAMPLES");
  return std::string(folder && *folder ? folder : CXOL_SAMPLES_DIR) + "/" + name;
}

std::optional<Options> readOptions(int argc, char** argv, int& status) {
  CLI::App app(
      "The Velnor add-in in a simulated Outlook, with a simulated telephone.\n"
      "On a terminal it takes commands, one a line; \"help\" lists them.");
  app.name("velnor-sim");
  app.footer(
      "Without a terminal and without arguments it plays the sample of a first call.\n"
      "VELNOR_SAMPLES names another folder for the samples.");
  Options options;
  std::string play;
  app.add_option("--mailbox", options.mailbox, "Mailbox to open instead of the sample (JSON)")
      ->check(CLI::ExistingFile);
  app.add_option("--contacts", options.contacts, "Contacts to add to it (vCard)")
      ->check(CLI::ExistingFile);
  app.add_option("--registry", options.registry, "Registry settings (.reg)")
      ->check(CLI::ExistingFile);
  app.add_option("--language", options.language,
                 "The user's language: de, en, fr, it, es, pt or a language id");
  app.add_option("--outlook", options.outlook,
                 "Outlook to start: 9.0, 10.0, 11.0, 12.0, or 2000 to 2007");
  app.add_flag("--trace", options.trace, "Show the add-in's trace lines as they are written");
  CLI::Option* playOption =
      app.add_option("--play", play,
                     "Play a scenario and print its transcript: a file, - for the standard "
                     "input, by default the first call. The exit status tells whether its "
                     "expectations held.")
          ->expected(0, 1)
          ->type_name("FILE");
  try {
    app.parse(argc, argv);
  } catch (const CLI::ParseError& error) {
    status = app.exit(error) == 0 ? 0 : WrongUsage;
    return std::nullopt;
  }
  if (playOption->count() > 0)
    options.play = play;
  else if (!isatty(STDIN_FILENO))
    options.play = argc == 1 ? "" : "-";
  return options;
}

}  // namespace demo
