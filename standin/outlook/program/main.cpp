#include <fcntl.h>
#include <io.h>

#include <cfloat>
#include <cstdio>
#include <exception>
#include <memory>

#include "simulator/data/MailboxReader.h"
#include "simulator/data/Utf8.h"
#include "simulator/player/Player.h"
#include "simulator/player/Text.h"
#include "simulator/player/Transcript.h"
#include "standin/outlook/ComStage.h"
#include "standin/outlook/HostTypes.h"
#include "standin/outlook/Notes.h"
#include "standin/outlook/Options.h"
#include "standin/outlook/hand/HandDesk.h"
#include "windows/com/errors.h"
#include "windows/com/text.h"

namespace {

constexpr int Failed = 1;
constexpr int Unusable = 2;

/// COM for this thread, as long as the object lives.
class Com {
 public:
  Com() { windows::check(OleInitialize(nullptr)); }
  ~Com() { OleUninitialize(); }
  Com(const Com&) = delete;
  Com& operator=(const Com&) = delete;
};

std::string contentOf(const std::string& path) {
  std::optional<std::string> content = simulator::readWholeFile(path);
  if (!content) throw std::runtime_error(path + ": can't be read");
  return *std::move(content);
}

void printLine(std::string_view line) {
  std::printf("%.*s\n", static_cast<int>(line.size()), line.data());
  std::fflush(stdout);
}

int play(standin::ComStage& stage, const standin::Options& options) {
  scenario::Player player(stage, printLine);
  player.transcript().traceShown = options.trace;
  if (!options.outlook.empty()) {
    scenario::TextSource start("outlook " + options.outlook, "--outlook");
    player.play(start);
  }
  scenario::TextSource source(contentOf(options.play), options.play);
  player.play(source);

  const scenario::Score& score = player.score();
  std::printf("\n%s\n", score.summary().c_str());
  for (const std::string& problem : score.problems) std::printf("  %s\n", problem.c_str());
  std::fflush(stdout);
  return score.good() ? 0 : Failed;
}

int useByHand(standin::Session& session, standin::HandDesk& hand, standin::ClientControl* client,
              standin::Libraries& libraries, const standin::Options& options) {
  // The call buttons never start a client.
  if (client && !client->setState(simulator::ClientState::Running))
    throw std::runtime_error("the client does not come up");
  if (libraries.available()) libraries.setMapiHelper(scenario::HelperState::Present);
  standin::Notes notes(client, libraries);
  scenario::Transcript transcript(printLine);
  transcript.traceShown = options.trace;
  session.start(windows::fromAnsi(options.outlook.empty() ? "11.0" : options.outlook));
  if (!session.problem().empty()) {
    std::fprintf(stderr, "outlook-standin: the add-in was not loaded: %s\n",
                 scenario::toUtf8(session.problem()).c_str());
  }
  hand.run([&] { notes.tell([&](const scenario::Note& note) { transcript.note(note); }); });
  return 0;
}

int run(const standin::Options& options) {
  const Com com;
  standin::offerHostObjects();
  standin::Session session(simulator::readMailboxFile(options.mailbox),
                           windows::fromAnsi(options.addin));
  standin::Libraries libraries(standin::fullPath(options.libraries),
                               standin::fullPath(options.mailbox));
  std::optional<standin::ClientControl> installed;
  if (!options.client.empty()) installed.emplace(standin::fullPath(options.client));
  standin::ClientControl* const client = installed ? &*installed : nullptr;
  std::optional<standin::HandDesk> hand;
  if (options.show || options.play.empty()) hand.emplace(session);
  if (options.play.empty()) return useByHand(session, *hand, client, libraries, options);
  standin::ComStage stage(session, client, libraries);
  return play(stage, options);
}

}  // namespace

int main(int argc, char** argv) {
  // Outlook's run-time library has the processor calculate with doubles; this program's would have
  // it keep more digits in some places than in others.
  _controlfp(_PC_53, _MCW_PC);
  // The transcript is UTF-8 with plain line ends.
  _setmode(_fileno(stdout), _O_BINARY);
  int status = 0;
  try {
    const auto options = standin::readOptions(argc, argv, status);
    return options ? run(*options) : status;
  } catch (const std::exception& error) {
    std::fprintf(stderr, "outlook-standin: %s\n", error.what());
    return Unusable;
  }
}
