#include "tests/sweep/Sweep.h"

#include <algorithm>
#include <cstdio>

#include "platform/automation.h"
#include "tests/sweep/breadcrumb.h"

namespace sweep {
namespace {

using Transcript = std::vector<std::u16string>;

std::string describe(const Task& task, std::size_t crossing) {
  return "\"" + task.piece->name + "\", " + std::string(nameOf(task.kind)) +
         (task.lasting ? " from " : " at ") + "crossing " + std::to_string(crossing);
}

std::string narrow(const std::u16string& text) {
  return automation::Error(0, text).what();
}

/// The first line in which two transcripts differ.
std::string difference(const Transcript& expected, const Transcript& found) {
  const auto [a, b] = std::mismatch(expected.begin(), expected.end(), found.begin(), found.end());
  if (a == expected.end() && b == found.end()) return {};
  return "expected \"" + (a == expected.end() ? "nothing" : narrow(*a)) + "\", found \"" +
         (b == found.end() ? "nothing" : narrow(*b)) + "\"";
}

void report(const std::string& where, const std::string& place, const std::string& what,
            Counts& counts) {
  ++counts.findings;
  std::fprintf(stderr, "FINDING %s (%s): %s\n", where.c_str(), place.c_str(), what.c_str());
}

/// A life without a fault: what could happen in it, and its transcript.
struct Model {
  std::vector<KindSet> possible;
  Transcript transcript;
};

Model modelOf(const Task& task, Counts& counts) {
  Model model;
  Theatre theatre(*task.piece);
  leaveBreadcrumb("\"" + task.piece->name + "\" without a fault");
  for (int life = 1; life <= 2; ++life) {
    FaultInjector injector = theatre.injector(std::nullopt);
    theatre.play(injector);
    for (const auto& finding : theatre.findings()) {
      report(task.piece->name, "without a fault", finding, counts);
    }
    if (!theatre.missed().empty()) {
      report(task.piece->name, "without a fault", "missed: " + theatre.missed(), counts);
    }
    if (life == 1) {
      model = {injector.possible(), theatre.transcript()};
    } else if (const auto differs = difference(model.transcript, theatre.transcript());
               !differs.empty()) {
      report(task.piece->name, "without a fault", "the second life differs: " + differs, counts);
    }
  }
  return model;
}

std::vector<std::size_t> crossingsFor(const Task& task, const Model& model, std::size_t most) {
  std::vector<std::size_t> all;
  for (std::size_t i = 0; i < model.possible.size(); ++i) {
    if (model.possible[i].test(indexOf(task.kind))) all.push_back(i + 1);
  }
  if (most == 0 || all.size() <= most) return all;
  // Each kind looks at other places than the kind before it.
  const std::size_t shift = (indexOf(task.kind) * 2 + (task.lasting ? 1 : 0)) % (2 * FaultKinds);
  std::vector<std::size_t> chosen;
  for (std::size_t i = 0; i < most; ++i) {
    chosen.push_back(all[(i * all.size() + all.size() * shift / (2 * FaultKinds)) / most]);
  }
  return chosen;
}

void playOne(const Task& task, std::size_t crossing, const Model& model, Counts& counts) {
  Theatre theatre(*task.piece);
  const auto where = describe(task, crossing);
  leaveBreadcrumb(where);
  FaultInjector faulty = theatre.injector(Fault{task.kind, crossing, task.lasting});
  theatre.play(faulty);
  ++counts.runs[indexOf(task.kind)];
  counts.faults[indexOf(task.kind)] += faulty.injected();
  for (const auto& finding : theatre.findings()) report(where, faulty.place(), finding, counts);

  leaveBreadcrumb(where + ", the repeat after it");
  FaultInjector none = theatre.injector(std::nullopt);
  theatre.play(none);
  if (const auto differs = difference(model.transcript, theatre.transcript()); !differs.empty()) {
    report(where, faulty.place(), "the repeat differs: " + differs, counts);
  }
}

}  // namespace

std::vector<Task> tasksOf(const std::vector<Piece>& pieces) {
  std::vector<Task> tasks;
  for (const Piece& piece : pieces) {
    for (std::size_t i = 0; i < FaultKinds; ++i) {
      const auto kind = static_cast<FaultKind>(i);
      tasks.push_back({&piece, kind, false});
      if (kind < FaultKind::Quit) tasks.push_back({&piece, kind, true});
    }
  }
  return tasks;
}

void run(const Task& task, std::size_t most, Counts& counts) {
  const Model model = modelOf(task, counts);
  for (const std::size_t crossing : crossingsFor(task, model, most)) {
    playOne(task, crossing, model, counts);
  }
}

void show(const Piece& piece, const std::optional<Fault>& fault) {
  Theatre theatre(piece);
  leaveBreadcrumb("\"" + piece.name + "\", shown");
  FaultInjector injector = theatre.injector(fault);
  theatre.play(injector);
  for (const auto& line : theatre.transcript()) std::printf("%s\n", narrow(line).c_str());
  for (const auto& finding : theatre.findings()) std::printf("FINDING %s\n", finding.c_str());
  std::printf("%zu crossings, %zu faults, the first at %s\n", injector.crossings(),
              injector.injected(), injector.place().c_str());
  if (!theatre.missed().empty()) std::printf("missed: %s\n", theatre.missed().c_str());
}

}  // namespace sweep
