#pragma once

#include <functional>
#include <string>
#include <string_view>
#include <vector>

#include "simulator/boundary.h"
#include "simulator/mailbox.h"
#include "simulator/outlook/OutlookHost.h"
#include "simulator/player/Stage.h"

namespace scenario {

/// The part of a stage that every add-in is shown on: the simulated Outlook, its user and what can
/// be seen of it. Who derives says how Outlook and the add-in come to be.
class OutlookStage : public Stage {
 public:
  void setListener(Listener* listener) override { listener_ = listener; }

  void quitOutlook() override;
  bool outlookRuns() const override { return runningHost() != nullptr; }
  void openExplorer(std::u16string_view folder) override;
  void openItem(std::u16string_view itemId) override;
  void newItem(outlook::ItemType type) override;
  void activate(int window) override;
  void close(int window) override;
  void switchFolder(int window, std::u16string_view folder) override;
  void switchView(int window) override;
  void select(int window, const std::vector<std::u16string>& itemIds) override;
  void click(const ControlPlace& place) override;
  void type(const ControlPlace& place, std::u16string_view text) override;
  void setWordMail(bool on) override { options_.wordIsMailEditor = on; }
  void setEarlyRibbon(bool on) override { options_.earlyRibbon = on; }
  void presetBar(const BarPreset& bar) override;
  void failMember(std::u16string_view className, std::u16string_view member,
                  FailureSpan span) override;
  void playClient(const std::function<void(simulator::PlayedClient&)>& action) override {
    act([&] { action(client()); });
  }

  Snapshot snapshot() override;
  std::vector<std::u16string> folders() override;
  std::vector<ItemEntry> items(std::u16string_view folder) override;
  /// Objects of Outlook and subscriptions, and the client's where that is simulated, too.
  std::size_t references() override;

 protected:
  /// What the mailbox, the bars and the border to the add-in are; they stay from one run of Outlook
  /// to the next.
  virtual simulator::Mailbox& mailbox() = 0;
  virtual simulator::BarStore& bars() = 0;
  virtual simulator::Boundary& boundary() = 0;
  /// Null while Outlook does not run.
  virtual simulator::OutlookHost* runningHost() const = 0;
  /// Lets go of an Outlook that has ended.
  virtual void settle() = 0;
  virtual simulator::PlayedClient& client() = 0;
  /// State of client and line in a few words.
  virtual std::u16string telephone() = 0;
  /// Clicks a button of a bar or of the ribbon.
  virtual void clickButton(const ControlPlace& place) = 0;
  /// Carries out what the user does.
  virtual void act(const std::function<void()>& action) { action(); }

  /// Raises Mistake while Outlook does not run.
  simulator::OutlookHost& host() const;
  Listener* listener() const { return listener_; }
  /// For the next start of Outlook; the version is that start's.
  simulator::OutlookOptions optionsFor(std::u16string_view version) const {
    auto options = options_;
    options.version = version;
    return options;
  }

 private:
  Listener* listener_ = nullptr;
  simulator::OutlookOptions options_;
};

}  // namespace scenario
