// Opening and closing inspectors, one after the other: the time of one must not grow with the
// number that came before it, nor must what is held.
#include <benchmark/benchmark.h>

#include "tests/World.h"

namespace {

void inspectorsOpenedAndClosed(benchmark::State& state) {
  tests::World world;
  world.machine.registry.remove(platform::RegistryRoot::CurrentUser, u"Software\\K9T\\Logging",
                                u"LogFile");
  world.addContact(u"Meier");
  world.start();
  world.host->close(world.host->openItem(u"Meier"));
  const auto held = world.boundary.liveHandles();
  const auto windows = state.range(0);
  for (auto _ : state) {
    for (std::int64_t i = 0; i < windows; ++i) world.host->close(world.host->openItem(u"Meier"));
  }
  if (world.boundary.liveHandles() != held) state.SkipWithError("references pile up");
  if (cxol::globals().g_colInspectors.count() > 1) state.SkipWithError("wrappers pile up");
  state.counters["per_window"] =
      benchmark::Counter(static_cast<double>(windows * state.iterations()),
                         benchmark::Counter::kIsRate | benchmark::Counter::kInvert);
}
BENCHMARK(inspectorsOpenedAndClosed)->Arg(10)->Arg(100)->Arg(1'000);

}  // namespace
