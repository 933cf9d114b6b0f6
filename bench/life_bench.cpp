// Start-up, toolbars, ticks, windows.
#include <benchmark/benchmark.h>

#include "explorer/SDKTimer.h"
#include "tests/World.h"
#include "tests/allocations.h"

namespace {

using tests::World;

std::u16string numbered(std::u16string_view start, int number) {
  return std::u16string(start) + automation::Value(number).toText();
}

void fillContacts(World& world, int count) {
  for (int i = 0; i < count; ++i) world.addContact(numbered(u"c", i));
}

/// An add-in that does nothing: what the simulated host itself costs.
class EmptyAddin : public simulator::Addin {
 public:
  void onConnection(const automation::Object&, std::int32_t, const automation::Object&) override {}
  void onStartupComplete() override {}
  void onBeginShutdown() override {}
  void onDisconnection(std::int32_t) override {}
  std::u16string getCustomUi(std::u16string_view) override { return {}; }
  automation::Value ribbonCallback(std::u16string_view,
                                   std::span<const automation::Value>) override {
    return {};
  }
};

std::unique_ptr<simulator::Addin> makeEmptyAddin(const platform::Platform&) {
  return std::make_unique<EmptyAddin>();
}

/// From the creation of the add-in's object to the end of start-up completion.
void startUp(benchmark::State& state) {
  World world;
  world.switchTrace(false);
  for (auto _ : state) {
    world.start();
    state.PauseTiming();
    world.stop();
    state.ResumeTiming();
  }
}
BENCHMARK(startUp);

void startUpEmptyAddin(benchmark::State& state) {
  World world(makeEmptyAddin);
  for (auto _ : state) {
    world.start();
    state.PauseTiming();
    world.stop();
    state.ResumeTiming();
  }
}
BENCHMARK(startUpEmptyAddin);

/// The tick that builds the first window's toolbar: `range` 0 for a new bar, 1 for a found one, 2
/// for an old layout.
void toolbar(benchmark::State& state) {
  const std::vector<simulator::StoredBar> bars[] = {
      {},
      {simulator::storedBar(u"Velnor ",
                            {u"CxCbDial", u"CxBtDial", u"CxBtDrop", u"CxBtVelnor", u"CxBtAction"})},
      {simulator::storedBar(u"Ondaris Station 1", {u"CxBtDial", u"CxBtTransfer", u"Other"})}};
  for (auto _ : state) {
    state.PauseTiming();
    World world;
    world.switchTrace(false);
    world.bars.explorers = bars[state.range(0)];
    world.start();
    world.machine.advance(20'000);
    state.ResumeTiming();
    world.machine.advance(400);
    state.PauseTiming();
    world.stop();
    state.ResumeTiming();
  }
}
BENCHMARK(toolbar)->DenseRange(0, 2);

/// One tick over 50 explorers and 200 inspectors.
void idleTick(benchmark::State& state) {
  World world;
  world.switchTrace(false);
  fillContacts(world, 200);
  world.startWithToolbar();
  for (int i = 1; i < 50; ++i) world.host->openExplorer();
  for (int i = 0; i < 200; ++i) world.host->openItem(numbered(u"c", i));
  world.machine.advance(30'000);
  const auto before = tests::allocations().count;
  for (auto _ : state) cxol::GeneralTick();
  state.counters["allocations"] = static_cast<double>(tests::allocations().count - before);
}
BENCHMARK(idleTick);

/// An inspector opening and closing while so many others are open.
void inspectorAmongOthers(benchmark::State& state) {
  World world;
  world.switchTrace(false);
  const auto others = static_cast<int>(state.range(0));
  fillContacts(world, others + 1);
  world.start();
  for (int i = 0; i < others; ++i) world.host->openItem(numbered(u"c", i));
  const auto last = numbered(u"c", others);
  for (auto _ : state) world.host->close(world.host->openItem(last));
}
BENCHMARK(inspectorAmongOthers)->Arg(10)->Arg(100)->Arg(1'000)->Unit(benchmark::kMicrosecond);

/// The same with the add-in that does nothing.
void inspectorAmongOthersEmptyAddin(benchmark::State& state) {
  World world(makeEmptyAddin);
  const auto others = static_cast<int>(state.range(0));
  fillContacts(world, others + 1);
  world.start();
  for (int i = 0; i < others; ++i) world.host->openItem(numbered(u"c", i));
  const auto last = numbered(u"c", others);
  for (auto _ : state) world.host->close(world.host->openItem(last));
}
BENCHMARK(inspectorAmongOthersEmptyAddin)
    ->Arg(10)
    ->Arg(100)
    ->Arg(1'000)
    ->Unit(benchmark::kMicrosecond);

void ribbonMarkup(benchmark::State& state) {
  World world;
  world.switchTrace(false);
  fillContacts(world, 1);
  world.start(u"12.0.4518.1014");
  world.host->openItem(u"c0");
  for (auto _ : state) {
    auto markup = world.addin->getCustomUi(u"Microsoft.Outlook.Contact");
    benchmark::DoNotOptimize(markup);
  }
}
BENCHMARK(ribbonMarkup);

}  // namespace
