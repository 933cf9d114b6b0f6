#include <algorithm>
#include <filesystem>
#include <stdexcept>

#include "demo/NativeAddin.h"
#include "simulator/data/MailboxReader.h"
#include "simulator/data/Utf8.h"
#include "simulator/player/LineSource.h"
#include "simulator/player/NativeStage.h"
#include "simulator/player/Player.h"
#include "tests/sweep/AlteredServices.h"
#include "tests/sweep/Theatre.h"

namespace sweep {
namespace {

using simulator::Told;

/// A stage that looks at what each action did.
class WatchedStage : public scenario::NativeStage {
 public:
  using NativeStage::NativeStage;

  std::vector<std::string> findings;

  void click(const scenario::ControlPlace& place) override {
    watch([&] { NativeStage::click(place); });
  }
  void type(const scenario::ControlPlace& place, std::u16string_view text) override {
    watch([&] { NativeStage::type(place, text); });
  }

 private:
  template <class Action>
  void watch(const Action& action) {
    const std::size_t before = dials();
    action();
    if (dials() > before + 1) findings.emplace_back("one action dialled twice");
  }
  std::size_t dials() {
    return static_cast<std::size_t>(
        std::ranges::count_if(machine().client.told(), [](const Told& told) {
          return told.kind == Told::Kind::Dial || told.kind == Told::Kind::DirectDial;
        }));
  }
};

/// Plays a scenario file. Each life has a stage of its own, as these files describe a whole world.
class SampleTheatre : public Theatre {
 public:
  SampleTheatre(const std::string& text, const simulator::Mailbox& mailbox)
      : text_(text), mailbox_(mailbox) {
    build();
  }

  FaultInjector injector(std::optional<Fault> fault) override {
    build();
    return {fault, stage_->boundary(), [this](FaultKind kind) { return disturb(kind); }};
  }

  void play(FaultInjector& injector) override {
    injector_ = &injector;
    stage_->boundary().setObserver(&injector);
    {
      scenario::TextSource source(text_, "sample");
      scenario::Player player(*stage_, [this](std::string_view line) {
        transcript_.emplace_back(line.begin(), line.end());
      });
      player.transcript().traceShown = true;
      player.play(source);
      missed_ = player.score().good() ? std::string() : player.score().problems.front();
    }
    inspect();
    end();
    stage_->boundary().setObserver(nullptr);
    inspectAfterUnloading();
  }

  const std::vector<std::u16string>& transcript() const override { return transcript_; }
  const std::vector<std::string>& findings() const override { return stage_->findings; }
  std::string missed() const override { return missed_; }

 private:
  void build() {
    transcript_.clear();
    stage_.reset();
    services_.reset();
    injector_ = nullptr;
    stage_ = std::make_unique<WatchedStage>(
        mailbox_, [this](const platform::Platform& machine) -> std::unique_ptr<simulator::Addin> {
          if (!services_) services_.emplace(machine, stage_->boundary());
          services_->setInjector(injector_);
          return makeNativeAddin(services_->platform());
        });
  }

  void end() {
    try {
      if (stage_->outlookRuns()) stage_->quitOutlook();
    } catch (const scenario::Mistake&) {
      // The fault has ended it already.
    }
  }

  /// The stage takes an Outlook that has ended down at once, which can't be done in the middle of
  /// one of its calls: the events that end it are left to the other scenarios.
  bool disturb(FaultKind kind) {
    if (kind == FaultKind::TimerTick) {
      stage_->wait(400);
      return true;
    }
    if (!stage_->outlookRuns()) return false;
    const auto windows = stage_->snapshot().windows;
    const auto active = std::ranges::find_if(windows, &scenario::WindowPicture::active);
    if (active == windows.end()) return false;
    try {
      switch (kind) {
        case FaultKind::Activation: stage_->activate(active->number); return true;
        case FaultKind::SelectionChange: return selectFirst(windows);
        case FaultKind::WindowClose:
          if (windows.size() < 2) return false;
          stage_->close(active->number);
          return true;
        default: return false;
      }
    } catch (const std::runtime_error&) {
      return false;
    }
  }

  bool selectFirst(const std::vector<scenario::WindowPicture>& windows) {
    for (const auto& window : windows) {
      if (window.inspector) continue;
      const auto items = stage_->items(window.folder);
      if (items.empty()) return false;
      stage_->select(window.number, {items.front().id});
      return true;
    }
    return false;
  }

  void find(std::string_view what) { stage_->findings.emplace_back(what); }

  void inspect() {
    if (stage_->machine().screen.anchor() && !injector_->hit(u"hideAnchor")) {
      find("the anchor is left shown");
    }
  }

  void inspectAfterUnloading() {
    if (stage_->boundary().liveHandles() != 0) find("objects of the host are held after unloading");
    if (stage_->boundary().liveConnections() != 0) find("subscriptions are left after unloading");
    if (stage_->machine().timers.liveCount() != 0 && !injector_->hit(u"killTimer")) {
      find("a timer is left after unloading");
    }
    if (stage_->machine().screen.anchor() && !injector_->hit(u"hideAnchor")) {
      find("the anchor is left shown after unloading");
    }
  }

  const std::string& text_;
  const simulator::Mailbox& mailbox_;
  std::unique_ptr<WatchedStage> stage_;
  std::optional<AlteredServices> services_;
  FaultInjector* injector_ = nullptr;
  std::vector<std::u16string> transcript_;
  std::string missed_;
};

struct Sample {
  std::string text;
  simulator::Mailbox mailbox;
};

}  // namespace

std::vector<Piece> samplePieces(const std::string& folder) {
  const auto mailbox = simulator::readMailboxFile(folder + "/mailbox.json");
  std::vector<std::filesystem::path> files;
  for (const auto& entry : std::filesystem::directory_iterator(folder)) {
    if (entry.path().extension() == ".scn") files.push_back(entry.path());
  }
  std::ranges::sort(files);
  std::vector<Piece> pieces;
  for (const auto& file : files) {
    auto text = simulator::readWholeFile(file.string());
    if (!text) throw std::runtime_error(file.string() + ": can't be read");
    auto sample = std::make_shared<const Sample>(Sample{*std::move(text), mailbox});
    pieces.push_back({file.filename().string(), [sample] {
                        return std::make_unique<SampleTheatre>(sample->text, sample->mailbox);
                      }});
  }
  return pieces;
}

}  // namespace sweep
