#pragma once

#include <functional>
#include <memory>
#include <string>
#include <vector>

#include "tests/World.h"
#include "tests/sweep/AlteredServices.h"
#include "tests/sweep/FaultInjector.h"

namespace sweep {

/// What a run was found guilty of.
using Findings = std::vector<std::string>;

/// A world that plays one life of the add-in after the other, each under the eyes of an injector,
/// and checks after every action of the user, and at the end, what must hold whatever failed.
class Actor : public tests::World {
 public:
  Actor();

  /// One life: machine and mailbox as they were made, `prepare` for what is special, `play`, and
  /// the add-in's end. The transcript is what the client was told, what the user was shown and the
  /// trace.
  void live(FaultInjector& injector, const std::function<void(Actor&)>& prepare,
            const std::function<void(Actor&)>& play);
  const tests::Texts& transcript() const { return transcript_; }
  const Findings& findings() const { return findings_; }
  /// Actions that were not possible: none without a fault.
  const std::string& missed() const { return missed_; }

  // The user's actions. What is not possible any more is passed over.

  void startOutlook(std::u16string_view version = u"11.0.5608");
  void wait(std::uint32_t milliseconds);
  void pick(std::u16string_view folder, std::u16string_view item);
  void pickAll(std::u16string_view folder);
  void showFolder(std::u16string_view folder);
  void open(std::u16string_view item);
  void openSecondExplorer(std::u16string_view folder);
  void click(std::u16string_view tag);
  void clickRibbon(std::u16string_view id);
  void type(std::u16string_view text);
  void bringToFront(int window);
  void closeWindow(int window);
  void closeActive();
  void switchOff();
  void switchOn();
  void quit();
  /// From each menu the first entry of its submenu is chosen.
  void chooseTask() { machine.screen.setUser(&taskChooser_); }

  /// What happens in the middle of a call; false when it can't happen now.
  bool disturb(FaultKind kind);

 private:
  class TaskChooser : public simulator::ScreenUser {
   public:
    std::optional<int> popup(const std::vector<platform::PopupEntry>& menu,
                             platform::Point) override;
  };

  void releaseIfDue();
  void resetWorld();
  void act(const std::function<void()>& action);
  std::size_t dials() const;
  int activeWindow() const;
  void find(std::string_view what) { findings_.emplace_back(what); }
  void inspect();
  void reconnectInspectors();
  /// Given time, each open window has its toolbar.
  void inspectWindows();
  void inspectBars();
  void inspectAfterUnloading();
  void unload();
  void writeTranscript();

  TaskChooser taskChooser_;
  FaultInjector* injector_ = nullptr;
  AlteredServices services_{machine.platform(), boundary};
  std::size_t libraryLines_ = 0;
  tests::Texts transcript_;
  Findings findings_;
  std::string missed_;
  bool ribbonVersion_ = false;
  /// A fault has released the add-in.
  bool released_ = false;
};

}  // namespace sweep
