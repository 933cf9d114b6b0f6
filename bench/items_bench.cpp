// Selections, clicks, evaluation.
#include <benchmark/benchmark.h>

#include "bench/heap.h"
#include "items/EvalObjects.h"
#include "tests/World.h"
#include "tests/allocations.h"

namespace {

using outlook::ObjectClass;
using tests::World;

/// `range` 0: the same item again; 1: another one.
void selectionChange(benchmark::State& state) {
  World world;
  world.switchTrace(false);
  for (const char16_t* id : {u"Meier", u"Smith"}) world.addContact(id);
  world.startWithToolbar();
  world.select(u"Contacts", u"Meier");
  world.machine.advance(400);
  bool other = false;
  for (auto _ : state) {
    other = !other && state.range(0) == 1;
    world.select(u"Contacts", other ? u"Smith" : u"Meier");
    world.machine.advance(400);
  }
}
BENCHMARK(selectionChange)->Arg(0)->Arg(1);

/// `range` 0: contact with one number; 1: mail; 2: task.
void dialClick(benchmark::State& state) {
  World world;
  world.switchTrace(false);
  world.addContact(u"one", {{u"HomeTelephoneNumber", u"1"}});
  auto& mail = world.add(u"Inbox", ObjectClass::Mail, u"mail");
  mail.mapi.telephoneNames = {u"Smith"};
  mail.mapi.telephoneNumbers = {u"1"};
  world.add(u"Tasks", ObjectClass::Task, u"Tel. 1");
  world.startClient();
  world.startWithToolbar();
  const std::u16string_view items[][2] = {
      {u"Contacts", u"one"}, {u"Inbox", u"mail"}, {u"Tasks", u"Tel. 1"}};
  const auto& item = items[state.range(0)];
  world.select(item[0], item[1]);
  for (auto _ : state) {
    world.host->click(1, u"CxBtDial");
    world.machine.client.telephone().endAll();
    world.machine.client.clearTold();
  }
}
BENCHMARK(dialClick)->DenseRange(0, 2);

/// Evaluates the current item again and again; the figures are for each of `items`.
void evaluate(benchmark::State& state, std::int64_t items) {
  double held = 0;
  // Twice: what the simulated host notes at the first time is not the evaluation's.
  for (int i = 0; i < 2; ++i) {
    const double before = bench::heldBytes();
    cxol::Texts references;
    cxol::EvaluateCurrentItem(references);
    held = bench::heldBytes() - before;
    if (references.count() != items) return state.SkipWithError("not every item was read");
  }
  const auto before = tests::allocations().bytes;
  for (auto _ : state) {
    cxol::Texts references;
    cxol::EvaluateCurrentItem(references);
  }
  const auto all = static_cast<double>(items);
  const auto allocated = static_cast<double>(tests::allocations().bytes - before);
  state.counters["per item"] = benchmark::Counter(
      all, benchmark::Counter::kIsIterationInvariantRate | benchmark::Counter::kInvert);
  state.counters["held"] = held / all;
  state.counters["allocated"] = allocated / static_cast<double>(state.iterations()) / all;
}

/// `range` contacts, all of them selected.
void selectContacts(World& world, benchmark::State& state) {
  world.switchTrace(false);
  for (std::int64_t i = 0; i < state.range(0); ++i) {
    world.addContact(u"c" + automation::Value(static_cast<std::int32_t>(i)).toText());
  }
  world.startWithToolbar();
  world.host->switchFolder(1, u"Contacts");
  world.host->selectAll(1);
}

void evaluateSelection(benchmark::State& state) {
  World world;
  selectContacts(world, state);
  evaluate(state, state.range(0));
}
BENCHMARK(evaluateSelection)->Arg(1'000)->Arg(10'000)->Arg(100'000)->Unit(benchmark::kMillisecond);

/// The host calls that the evaluation needs and nothing else: what the simulated host takes of its
/// time.
void readSelection(benchmark::State& state) {
  World world;
  selectContacts(world, state);
  std::size_t length = 0;
  for (auto _ : state) {
    const auto selection = cxol::globals().g_olApp.activeExplorer().selection();
    const auto count = selection.count();
    for (std::int32_t i = 1; i <= count; ++i) {
      const auto item = selection.item(i);
      if (item.objectClass() != ObjectClass::Contact) return state.SkipWithError("no contact");
      length += item.parent().storeId().size() + item.parent().entryId().size();
      length += item.entryId().size() + static_cast<std::size_t>(item.links().count());
    }
  }
  benchmark::DoNotOptimize(length);
  state.counters["per item"] = benchmark::Counter(
      static_cast<double>(state.range(0)),
      benchmark::Counter::kIsIterationInvariantRate | benchmark::Counter::kInvert);
}
BENCHMARK(readSelection)->Arg(1'000)->Arg(10'000)->Arg(100'000)->Unit(benchmark::kMillisecond);

/// As many texts as a selection has references, each as long as one, made and dropped: what the
/// heap takes of the time.
void holdTexts(benchmark::State& state) {
  const std::u16string reference(48, u'r');
  for (auto _ : state) {
    std::vector<std::u16string> texts;
    texts.reserve(static_cast<std::size_t>(state.range(0)));
    for (std::int64_t i = 0; i < state.range(0); ++i) texts.push_back(reference);
    benchmark::DoNotOptimize(texts.data());
  }
  state.counters["per item"] = benchmark::Counter(
      static_cast<double>(state.range(0)),
      benchmark::Counter::kIsIterationInvariantRate | benchmark::Counter::kInvert);
}
BENCHMARK(holdTexts)->Arg(1'000)->Arg(10'000)->Arg(100'000)->Unit(benchmark::kMillisecond);

void evaluateRecipients(benchmark::State& state) {
  World world;
  world.switchTrace(false);
  auto& mail = world.add(u"Inbox", ObjectClass::Mail, u"mail");
  mail.mapi.receivedBy = u"me";
  mail.mapi.recipients[0].assign(static_cast<std::size_t>(state.range(0)), u"someone@example.org");
  world.startWithToolbar();
  world.select(u"Inbox", u"mail");
  evaluate(state, state.range(0));
}
BENCHMARK(evaluateRecipients)->Arg(1'000)->Arg(10'000)->Unit(benchmark::kMicrosecond);

}  // namespace
