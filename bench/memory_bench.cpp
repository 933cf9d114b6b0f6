// Bytes that the add-in holds for each window that is just open.
#include <benchmark/benchmark.h>

#include "bench/heap.h"
#include "tests/World.h"

namespace {

using bench::heldBytes;

/// What so many windows hold of the heap with the add-in, less what they hold when it goes.
void bytesPerWindow(benchmark::State& state) {
  const bool inspectors = state.range(0) == 1;
  constexpr int Windows = 500;
  double bytes = 0;
  for (auto _ : state) {
    tests::World world;
    world.switchTrace(false);
    for (int i = 0; i < Windows; ++i) {
      world.addContact(u"c" + automation::Value(i).toText());
    }
    world.startWithToolbar();
    for (int i = 0; i < Windows; ++i) {
      if (inspectors) {
        world.host->openItem(u"c" + automation::Value(i).toText());
      } else {
        world.host->openExplorer();
      }
    }
    world.machine.advance(30'000);
    auto& wrappers = cxol::globals();
    const double before = heldBytes();
    wrappers.g_colInspectors.clear();
    wrappers.g_colExplorers.clear();
    bytes = (before - heldBytes()) / Windows;
  }
  state.counters["bytes"] = bytes;
}
BENCHMARK(bytesPerWindow)->Arg(0)->Arg(1)->Iterations(1);

}  // namespace
