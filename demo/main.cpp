#include <clocale>
#include <cstdio>
#include <exception>
#include <iterator>
#include <string>

#include "demo/Colours.h"
#include "demo/NativeAddin.h"
#include "demo/Options.h"
#include "demo/Terminal.h"
#include "demo/import/RegFile.h"
#include "demo/import/VCardReader.h"
#include "simulator/data/MailboxReader.h"
#include "simulator/data/Utf8.h"
#include "simulator/player/NativeStage.h"
#include "simulator/player/Player.h"

namespace {

constexpr int Failed = 1;
constexpr int Unusable = 2;

std::string contentOf(const std::string& path) {
  std::optional<std::string> content = simulator::readWholeFile(path);
  if (!content) throw std::runtime_error(path + ": can't be read");
  return *std::move(content);
}

simulator::Mailbox readMailbox(const demo::Options& options) {
  simulator::Mailbox mailbox = simulator::readMailboxFile(
      options.mailbox.empty() ? demo::samplePath("mailbox.json") : options.mailbox);
  if (options.contacts.empty()) return mailbox;
  demo::ReadCards cards = demo::readCardFile(options.contacts);
  for (const std::string& warning : cards.warnings)
    std::fprintf(stderr, "velnor-sim: %s\n", warning.c_str());
  std::fprintf(stderr, "velnor-sim: %s: %s\n", options.contacts.c_str(), cards.summary().c_str());
  demo::addContacts(mailbox, std::move(cards.contacts));
  return mailbox;
}

void importRegistry(scenario::NativeStage& stage, const std::string& path) {
  try {
    demo::importRegFile(stage.machine().registry, contentOf(path));
  } catch (const scenario::RegError& error) {
    throw std::runtime_error(path + ": " + error.what());
  }
}

std::string readStandardInput() {
  std::string text;
  for (int c = std::getchar(); c != EOF; c = std::getchar()) text += static_cast<char>(c);
  return text;
}

int play(scenario::Player& player, const demo::Options& options) {
  const bool standardInput = *options.play == "-";
  const std::string path =
      options.play->empty() ? demo::samplePath("first-call.scn") : *options.play;
  scenario::TextSource source(standardInput ? readStandardInput() : contentOf(path),
                              standardInput ? "input" : path);
  if (!options.outlook.empty()) {
    scenario::TextSource start("outlook " + options.outlook, "--outlook");
    player.play(start);
  }
  player.play(source);

  const scenario::Score& score = player.score();
  std::printf("\n%s\n", score.summary().c_str());
  for (const std::string& problem : score.problems) std::printf("  %s\n", problem.c_str());
  return score.good() ? 0 : Failed;
}

int converse(scenario::Player& player, const demo::Options& options) {
  std::puts(
      "The Velnor add-in in a simulated Outlook. \"?\" is help, \"show\" draws everything, "
      "\"exit\"\n"
      "leaves; Tab completes. Time stands still until you let it pass: the toolbar comes up after\n"
      "\"wait 21\".\n");
  scenario::TextSource start(
      "client running\noutlook " + (options.outlook.empty() ? "11.0" : options.outlook), "start");
  player.play(start);
  demo::Terminal terminal(player, demo::coloursWanted());
  player.play(terminal);
  return 0;
}

int run(const demo::Options& options) {
  scenario::NativeStage stage(readMailbox(options), makeNativeAddin, diagnoseNatively);
  if (!options.registry.empty()) importRegistry(stage, options.registry);
  // A transcript is plain whatever it is written to.
  const bool colours = !options.play && demo::coloursWanted();
  scenario::Player player(stage, [colours](std::string_view line) {
    std::puts((colours ? demo::coloured(line) : std::string(line)).c_str());
  });
  player.transcript().traceShown = options.trace;
  if (!options.language.empty()) {
    scenario::TextSource language("language " + options.language, "--language");
    player.play(language);
  }
  return options.play ? play(player, options) : converse(player, options);
}

}  // namespace

int main(int argc, char** argv) {
  std::setlocale(LC_CTYPE, "");
  int status = 0;
  try {
    const std::optional<demo::Options> options = demo::readOptions(argc, argv, status);
    return options ? run(*options) : status;
  } catch (const std::exception& error) {
    std::fprintf(stderr, "velnor-sim: %s\n", error.what());
    return Unusable;
  }
}
