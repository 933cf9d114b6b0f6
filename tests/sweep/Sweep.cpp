#include "tests/sweep/Sweep.h"

#include <algorithm>
#include <cstdio>

#include "tests/sweep/breadcrumb.h"

namespace sweep {
namespace {

using Transcript = std::vector<std::string>;

std::string describe(const Piece& piece, const Fault& fault) {
  return "\"" + piece.name + "\", " + std::string(nameOf(fault.kind)) +
         (fault.lasting ? " from " : " at ") + "crossing " + std::to_string(fault.crossing);
}

/// The first line in which two transcripts differ.
std::string difference(const Transcript& expected, const Transcript& found) {
  const auto [a, b] = std::mismatch(expected.begin(), expected.end(), found.begin(), found.end());
  if (a == expected.end() && b == found.end()) return {};
  return "expected \"" + (a == expected.end() ? "nothing" : *a) + "\", found \"" +
         (b == found.end() ? "nothing" : *b) + "\"";
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

Model modelOf(const Piece& piece, Counts& counts) {
  Model model;
  Theatre theatre(piece);
  leaveBreadcrumb("\"" + piece.name + "\" without a fault");
  for (int life = 1; life <= 2; ++life) {
    FaultInjector injector = theatre.injector(std::nullopt);
    theatre.play(injector, Theatre::Reader::Comparing);
    for (const auto& finding : theatre.findings()) {
      report(piece.name, "without a fault", finding, counts);
    }
    if (!theatre.missed().empty()) {
      report(piece.name, "without a fault", "missed: " + theatre.missed(), counts);
    }
    if (life == 1) {
      model = {injector.possible(), theatre.transcript()};
    } else if (const auto differs = difference(model.transcript, theatre.transcript());
               !differs.empty()) {
      report(piece.name, "without a fault", "the second life differs: " + differs, counts);
    }
  }
  return model;
}

std::vector<std::size_t> crossingsFor(const Way& way, const Model& model, std::size_t most) {
  std::vector<std::size_t> all;
  for (std::size_t i = 0; i < model.possible.size(); ++i) {
    if (model.possible[i].test(indexOf(way.kind))) all.push_back(i + 1);
  }
  if (most == 0 || all.size() <= most) return all;
  // Each kind looks at other places than the kind before it.
  const std::size_t shift = (indexOf(way.kind) * 2 + (way.lasting ? 1 : 0)) % (2 * FaultKinds);
  std::vector<std::size_t> chosen;
  for (std::size_t i = 0; i < most; ++i) {
    chosen.push_back(all[(i * all.size() + all.size() * shift / (2 * FaultKinds)) / most]);
  }
  return chosen;
}

void playOne(const Piece& piece, const Fault& fault, const Model& model, Counts& counts) {
  Theatre theatre(piece);
  const auto where = describe(piece, fault);
  leaveBreadcrumb(where);
  FaultInjector faulty = theatre.injector(fault);
  theatre.play(faulty, Theatre::Reader::None);
  ++counts.runs[indexOf(fault.kind)];
  counts.faults[indexOf(fault.kind)] += faulty.injected();
  for (const auto& finding : theatre.findings()) report(where, faulty.place(), finding, counts);

  leaveBreadcrumb(where + ", the repeat after it");
  FaultInjector none = theatre.injector(std::nullopt);
  theatre.play(none, Theatre::Reader::Comparing);
  if (const auto differs = difference(model.transcript, theatre.transcript()); !differs.empty()) {
    report(where, faulty.place(), "the repeat differs: " + differs, counts);
  }
}

}  // namespace

std::vector<Way> waysOf(std::optional<FaultKind> kind) {
  std::vector<Way> ways;
  for (std::size_t i = 0; i < FaultKinds; ++i) {
    const auto each = static_cast<FaultKind>(i);
    if (kind && each != *kind) continue;
    ways.push_back({each, false});
    if (each < FaultKind::Quit) ways.push_back({each, true});
  }
  return ways;
}

void run(const Piece& piece, std::span<const Way> ways, std::size_t most, Counts& counts) {
  const Model model = modelOf(piece, counts);
  for (const Way& way : ways) {
    for (const std::size_t crossing : crossingsFor(way, model, most)) {
      playOne(piece, {way.kind, crossing, way.lasting}, model, counts);
    }
  }
}

void show(const Piece& piece, const std::optional<Fault>& fault) {
  Theatre theatre(piece);
  leaveBreadcrumb("\"" + piece.name + "\", shown");
  FaultInjector injector = theatre.injector(fault);
  theatre.play(injector, Theatre::Reader::Comparing);
  for (const auto& line : theatre.transcript()) std::printf("%s\n", line.c_str());
  for (const auto& finding : theatre.findings()) std::printf("FINDING %s\n", finding.c_str());
  std::printf("%zu crossings, %zu faults, the first at %s\n", injector.crossings(),
              injector.injected(), injector.place().c_str());
  if (!theatre.missed().empty()) std::printf("missed: %s\n", theatre.missed().c_str());
}

}  // namespace sweep
