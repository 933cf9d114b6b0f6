// Trace lines: switched off, and to a real file beside the bare writing of the same bytes.
#include <benchmark/benchmark.h>

#include <fcntl.h>
#include <unistd.h>

#include <algorithm>
#include <chrono>
#include <cstdlib>
#include <fstream>
#include <iterator>
#include <string>
#include <vector>

#include "infra/modK9TLog.h"
#include "platform/files.h"
#include "simulator/machine/Machine.h"
#include "state/process.h"

namespace {

constexpr std::u16string_view Line = u"CxDial (0711 5550188): cmd.Dial()...";

/// A file that goes away with its last user.
class TemporaryFile {
 public:
  TemporaryFile() : descriptor_(mkstemp(path_)) {}
  ~TemporaryFile() {
    close(descriptor_);
    unlink(path_);
  }
  TemporaryFile(const TemporaryFile&) = delete;
  TemporaryFile& operator=(const TemporaryFile&) = delete;
  const char* path() const { return path_; }

 private:
  char path_[32] = "velnor-trace-XXXXXX";
  int descriptor_;
};

void appendBare(const char* path, std::string_view bytes) {
  const int file = open(path, O_WRONLY | O_APPEND | O_CREAT, 0600);
  [[maybe_unused]] const auto written = write(file, bytes.data(), bytes.size());
  close(file);
}

/// Appends to one real file, whatever path is asked for.
class RealFile : public platform::Files {
 public:
  explicit RealFile(const char* path) : path_(path) {}
  std::optional<std::u16string> commonFilesFolder() override { return std::nullopt; }
  bool makeSureDirectoryPathExists(std::u16string_view) override { return true; }
  void append(std::u16string_view, std::u16string_view text) override {
    std::string bytes;
    bytes.reserve(text.size());
    for (const char16_t c : text) bytes.push_back(static_cast<char>(c));
    appendBare(path_, bytes);
  }

 private:
  const char* path_;
};

/// A machine that writes its trace to a real file.
struct TracingMachine {
  explicit TracingMachine(const char16_t* enabled) {
    machine.registry.setString(platform::RegistryRoot::CurrentUser, u"Software\\K9T\\Logging",
                               u"LogFile", enabled);
    cxol::LogDebug(u"the route is chosen");
  }

  TemporaryFile file;
  RealFile files{file.path()};
  simulator::Boundary boundary;
  simulator::Machine machine{boundary};
  cxol::Process process{[this] {
    const auto all = machine.platform();
    return platform::Platform{all.clock,      files,       all.language, all.loggingLibrary,
                              all.mapiHelper, all.objects, all.pictures, all.processes,
                              all.registry,   all.screen,  all.timers};
  }()};
};

std::string contentOf(const char* path) {
  std::ifstream file(path, std::ios::binary);
  return {std::istreambuf_iterator<char>(file), {}};
}

/// Nanoseconds that so many runs of the action take, for one.
template <class Action>
double nanosecondsOf(int times, Action action) {
  const auto start = std::chrono::steady_clock::now();
  for (int i = 0; i < times; ++i) action();
  const std::chrono::duration<double, std::nano> taken = std::chrono::steady_clock::now() - start;
  return taken.count() / times;
}

double median(std::vector<double> values) {
  const auto middle = values.begin() + static_cast<std::ptrdiff_t>(values.size() / 2);
  std::ranges::nth_element(values, middle);
  return *middle;
}

/// A line by the add-in beside open, append and close of the same bytes, by turns, so that both
/// meet the machine in the same state. The counters are medians over the turns.
void traceLineBesideBare(benchmark::State& state) {
  constexpr int Lines = 100;
  TracingMachine machine(u"1");
  const TemporaryFile bare;
  const auto before = contentOf(machine.file.path()).size();
  cxol::LogDebug(Line);
  const std::string bytes = contentOf(machine.file.path()).substr(before);
  std::vector<double> traced, direct, ratios;
  for (auto _ : state) {
    traced.push_back(nanosecondsOf(Lines, [] { cxol::LogDebug(Line); }));
    direct.push_back(nanosecondsOf(Lines, [&] { appendBare(bare.path(), bytes); }));
    ratios.push_back(traced.back() / direct.back());
  }
  state.counters["line ns"] = median(traced);
  state.counters["bare ns"] = median(direct);
  state.counters["ratio"] = median(ratios);
}
BENCHMARK(traceLineBesideBare)->Iterations(1'000)->Unit(benchmark::kMicrosecond);

void traceLineOff(benchmark::State& state) {
  TracingMachine machine(u"0");
  for (auto _ : state) cxol::LogDebug(Line);
}
BENCHMARK(traceLineOff);

}  // namespace
