#pragma once

#include <functional>

#include "simulator/World.h"
#include "simulator/machine/SimFacts.h"
#include "simulator/player/OutlookStage.h"

namespace scenario {

/// Carries out the diagnosis of a machine.
using Doctor = std::function<std::vector<std::u16string>(platform::Registry& registry,
                                                         platform::Facts& facts, bool putRight)>;

/// The simulated host, client and machine as a stage. Mailbox, bars and machine stay from one run
/// of Outlook to the next. The logging library is installed, so that there is a trace.
class NativeStage : public OutlookStage, private simulator::ScreenUser {
 public:
  NativeStage(simulator::Mailbox mailbox, simulator::AddinFactory makeAddin, Doctor doctor = {});
  ~NativeStage() override;

  simulator::Machine& machine() { return machine_; }
  /// For those who watch what crosses it.
  simulator::Boundary& boundary() override { return world_.boundary; }

  bool native() const override { return true; }

  void startOutlook(std::u16string_view version) override;
  void switchAddin(bool on) override;

  void setLanguage(std::int32_t langId) override { machine_.language.setLangId(langId); }
  void setRegistry(platform::RegistryRoot root, std::u16string_view key, std::u16string_view name,
                   const std::optional<platform::RegistryValue>& value) override;
  void setLoggingLibrary(bool present) override { machine_.loggingLibrary.setPresent(present); }
  void setMapiHelper(HelperState state) override;
  void copy(std::u16string_view text) override { machine_.pictures.copy(text); }
  void watchClipboard(std::uint32_t milliseconds) override {
    machine_.pictures.watchClipboard(milliseconds);
  }
  std::u16string copied() override { return machine_.pictures.copied(); }
  void setTime(int hour, int minute, int second) override;
  std::vector<std::u16string> diagnose(bool putRight) override;
  void wait(std::uint32_t milliseconds) override;

 protected:
  /// Carries out what the user does. An Outlook that ends meanwhile, even in the middle of one of
  /// the add-in's calls, is let go of at the end of the outermost action.
  void act(const std::function<void()>& action) override;
  /// Whether an action is going on.
  bool acting() const { return acting_ != 0; }
  simulator::World& world() { return world_; }

 private:
  void messageBox(std::u16string_view text) override;
  std::optional<int> popup(const std::vector<platform::PopupEntry>& menu,
                           platform::Point place) override;

  simulator::Mailbox& mailbox() override { return world_.mailbox; }
  simulator::BarStore& bars() override { return world_.bars; }
  simulator::OutlookHost* runningHost() const override;
  void settle() override;
  simulator::PlayedClient& client() override { return machine_.client; }
  std::u16string telephone() override { return machine_.client.status(); }
  void clickButton(const ControlPlace& place) override;

  void listen();
  void tell(const Note& note);

  simulator::World world_;
  simulator::Machine& machine_ = world_.machine;
  Doctor doctor_;
  int acting_ = 0;
};

}  // namespace scenario
