#include "tests/sweep/Theatre.h"

#include <algorithm>
#include <filesystem>
#include <stdexcept>

#include "demo/NativeAddin.h"
#include "simulator/data/Utf8.h"
#include "simulator/player/LineSource.h"
#include "simulator/player/Player.h"

namespace sweep {

void Theatre::build() {
  transcript_.clear();
  stage_.reset();
  services_.reset();
  injector_ = nullptr;
  stage_ = std::make_unique<WatchedStage>(
      *piece_.mailbox,
      [this](const platform::Platform& machine) -> std::unique_ptr<simulator::Addin> {
        if (!services_) services_.emplace(machine, stage_->boundary());
        services_->setInjector(injector_);
        return makeNativeAddin(services_->platform());
      });
}

FaultInjector Theatre::injector(std::optional<Fault> fault) {
  build();
  return {fault, stage_->boundary(), [this](FaultKind kind) { return stage_->disturb(kind); }};
}

void Theatre::play(FaultInjector& injector, Reader reader) {
  injector_ = &injector;
  stage_->boundary().setObserver(&injector);
  {
    scenario::TextSource source(piece_.text, piece_.name);
    std::function<void(std::string_view)> write;
    if (reader != Reader::None) {
      write = [this](std::string_view line) { transcript_.emplace_back(line); };
    }
    scenario::Player player(*stage_, std::move(write));
    player.transcript().traceShown = true;
    player.play(source);
    missed_ = player.score().good() ? std::string() : player.score().problems.front();
  }
  stage_->inspect(injector);
  stage_->unload();
  stage_->boundary().setObserver(nullptr);
  stage_->inspectAfterUnloading(injector);
}

std::vector<Piece> piecesOf(const std::string& folder,
                            const std::shared_ptr<const simulator::Mailbox>& mailbox) {
  std::vector<Piece> pieces;
  for (const auto& entry : std::filesystem::directory_iterator(folder)) {
    if (entry.path().extension() != ".scn") continue;
    auto text = simulator::readWholeFile(entry.path().string());
    if (!text) throw std::runtime_error(entry.path().string() + ": can't be read");
    pieces.push_back({entry.path().stem().string(), *std::move(text), mailbox});
  }
  std::ranges::sort(pieces, {}, &Piece::name);
  return pieces;
}

}  // namespace sweep
