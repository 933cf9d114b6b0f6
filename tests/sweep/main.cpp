#include <sys/mman.h>
#include <sys/wait.h>
#include <unistd.h>

#include <CLI/CLI.hpp>
#include <algorithm>
#include <atomic>
#include <cstdio>
#include <iterator>
#include <new>
#include <stdexcept>

#include "simulator/data/MailboxReader.h"
#include "tests/sweep/Sweep.h"

namespace {

using namespace sweep;

/// How many crossings of each kind are faulted without --long: as many as fit into some minutes, of
/// which the sanitizers take their share.
#ifdef CXOL_SANITIZED
constexpr std::size_t UsualMost = 4;
#else
constexpr std::size_t UsualMost = 100;
#endif

struct Options {
  bool list = false;
  std::size_t most = UsualMost;
  std::size_t jobs = 2;
  std::string only;
  std::string kind;
  std::size_t crossing = 0;
  bool lasting = false;
};

/// Scenarios in which the add-in waits 20 seconds cross the line up to 18,000 times, again and
/// again in the same way.
constexpr std::size_t LongMost = 1000;

/// Shared by all processes.
struct Board {
  std::atomic<std::size_t> runs[FaultKinds]{};
  std::atomic<std::size_t> faults[FaultKinds]{};
  std::atomic<std::size_t> findings{0};
};

Board* sharedBoard() {
  void* memory =
      mmap(nullptr, sizeof(Board), PROT_READ | PROT_WRITE, MAP_SHARED | MAP_ANONYMOUS, -1, 0);
  if (memory == MAP_FAILED) throw std::bad_alloc();
  return new (memory) Board;
}

/// One scenario in a process of its own, whose crash costs no other scenario.
[[noreturn]] void work(const Piece& piece, std::span<const Way> ways, std::size_t most,
                       Board& board) {
  Counts counts;
  run(piece, ways, most, counts);
  for (std::size_t kind = 0; kind < FaultKinds; ++kind) {
    board.runs[kind] += counts.runs[kind];
    board.faults[kind] += counts.faults[kind];
  }
  board.findings += counts.findings;
  std::fflush(nullptr);
  // Not _exit: a leak is to be found.
  std::exit(0);
}

/// Waits for any process; true when it has died of its scenario.
bool anyDied() {
  int status = 0;
  if (wait(&status) < 0) return false;
  return !WIFEXITED(status) || WEXITSTATUS(status) != 0;
}

std::optional<FaultKind> kindNamed(const std::string& name) {
  for (std::size_t i = 0; i < FaultKinds; ++i) {
    if (nameOf(static_cast<FaultKind>(i)) == name) return static_cast<FaultKind>(i);
  }
  return std::nullopt;
}

/// Deals the scenarios out to processes, several at a time; the number of those that died.
std::size_t deal(const std::vector<Piece>& pieces, const Options& options, Board& board) {
  const auto ways = waysOf(kindNamed(options.kind));
  std::size_t running = 0;
  std::size_t died = 0;
  std::fflush(nullptr);
  for (const Piece& piece : pieces) {
    if (running == options.jobs) {
      died += anyDied();
      --running;
    }
    const pid_t child = fork();
    if (child < 0) throw std::runtime_error("no process can be made");
    if (child == 0) work(piece, ways, options.most, board);
    ++running;
  }
  for (; running > 0; --running) died += anyDied();
  return died;
}

std::size_t print(const Board& board) {
  std::size_t runs = 0;
  std::size_t faults = 0;
  std::printf("%-18s %8s %10s\n", "fault", "runs", "injected");
  for (std::size_t i = 0; i < FaultKinds; ++i) {
    std::printf("%-18s %8zu %10zu\n", std::string(nameOf(static_cast<FaultKind>(i))).c_str(),
                board.runs[i].load(), board.faults[i].load());
    runs += board.runs[i];
    faults += board.faults[i];
  }
  std::printf("%-18s %8zu %10zu\n", "all", runs, faults);
  return faults;
}

int sweepAll(const std::vector<Piece>& pieces, const Options& options) {
  Board& board = *sharedBoard();
  const std::size_t died = deal(pieces, options, board);
  const std::size_t faults = print(board);
  std::printf("%zu scenarios, %zu findings, %zu processes died\n", pieces.size(),
              board.findings.load(), died);
  return died == 0 && board.findings == 0 && faults != 0 ? 0 : 1;
}

}  // namespace

int main(int argc, char** argv) {
  Options options;
  CLI::App app{"Fails every call that the add-in makes, one after the other, in every scenario"};
  app.add_flag_callback(
      "--long", [&] { options.most = LongMost; },
      "every crossing of every scenario, but for those that wait thousands of times in a row");
  app.add_flag("--list", options.list, "print the scenarios");
  app.add_option("--most", options.most, "crossings for each scenario, kind and way");
  app.add_option("--jobs", options.jobs, "processes")->check(CLI::Range(1, 64));
  app.add_option("--only", options.only, "the scenario of this name");
  app.add_option("--kind", options.kind, "faults of this kind");
  app.add_option(
      "--at", options.crossing,
      "play --only once with the fault --kind at this crossing and print the transcript; "
      "0 for no fault");
  app.add_flag("--lasting", options.lasting, "from that crossing on");
  CLI11_PARSE(app, argc, argv);

  installBreadcrumb();
  const auto mailbox = std::make_shared<const simulator::Mailbox>(
      simulator::readMailboxFile(CXOL_SAMPLES_DIR "/mailbox.json"));
  auto pieces = piecesOf(CXOL_SCENARIOS_DIR, mailbox);
  std::ranges::move(piecesOf(CXOL_SAMPLES_DIR, mailbox), std::back_inserter(pieces));
  if (!options.only.empty()) {
    std::erase_if(pieces, [&](const Piece& piece) { return piece.name != options.only; });
  }
  if (pieces.empty()) return std::fprintf(stderr, "no such scenario\n"), 2;
  if (options.list) {
    for (const Piece& piece : pieces) std::printf("%s\n", piece.name.c_str());
    return 0;
  }
  if (app.count("--at") == 0) return sweepAll(pieces, options);
  std::optional<Fault> fault;
  const auto kind = kindNamed(options.kind);
  if (kind && options.crossing) fault = {*kind, options.crossing, options.lasting};
  show(pieces.front(), fault);
  return 0;
}
