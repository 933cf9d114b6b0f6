#include <algorithm>
#include <filesystem>
#include <stdexcept>
#include <utility>

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

/// A stage that looks at what each action did, and can be disturbed in the middle of it.
class WatchedStage : public scenario::NativeStage {
 public:
  using NativeStage::NativeStage;

  std::vector<std::string> findings;

  /// What happens in the middle of a call; false when it can't happen now.
  bool disturb(FaultKind kind) {
    // Outside of an action nobody would let go of an Outlook or an add-in that has ended.
    if (!acting()) return false;
    if (kind == FaultKind::TimerTick) {
      wait(400);
      return true;
    }
    try {
      return outlookRuns() && disturbOutlook(kind);
    } catch (const std::runtime_error&) {
      return false;
    }
  }

 private:
  bool disturbOutlook(FaultKind kind) {
    const auto active = host().activeWindow();
    switch (kind) {
      case FaultKind::Activation: return active && (activate(*active), true);
      case FaultKind::SelectionChange: return selectFirst();
      case FaultKind::WindowClose: return active && (close(*active), true);
      case FaultKind::Quit: quitOutlook(); return true;
      case FaultKind::SwitchOff:
      case FaultKind::Release:
        if (!host().addinConnected()) return false;
        host().disconnectAddin();
        released_ = kind == FaultKind::Release;
        return true;
      default: return false;
    }
  }

  bool selectFirst() {
    for (const auto& window : snapshot().windows) {
      if (window.inspector) continue;
      const auto all = items(window.folder);
      if (all.empty()) return false;
      select(window.number, {all.front().id});
      return true;
    }
    return false;
  }

  void act(const std::function<void()>& action) override {
    const std::size_t before = dials();
    NativeStage::act(action);
    if (acting()) return;
    if (dials() > before + 1) findings.emplace_back("one action dialled twice");
    if (std::exchange(released_, false)) world().addin.reset();
  }
  std::size_t dials() {
    return static_cast<std::size_t>(
        std::ranges::count_if(machine().client.told(), [](const Told& told) {
          return told.kind == Told::Kind::Dial || told.kind == Told::Kind::DirectDial;
        }));
  }

  /// A fault has released the add-in.
  bool released_ = false;
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
    return {fault, stage_->boundary(), [this](FaultKind kind) { return stage_->disturb(kind); }};
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
