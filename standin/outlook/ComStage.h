#pragma once

#include <memory>

#include "simulator/player/OutlookStage.h"
#include "standin/client/ClientControl.h"
#include "standin/outlook/Libraries.h"
#include "standin/outlook/ModalWatch.h"
#include "standin/outlook/Notes.h"
#include "standin/outlook/Pace.h"
#include "standin/outlook/RegistryKeeper.h"
#include "standin/outlook/Session.h"

namespace standin {

/// The real add-in as a stage: the simulated Outlook reaches it through COM, time, registry, menus
/// and message boxes are the machine's, and the telephony client is a program of its own. What a
/// scenario changes on the machine is put back in the end. The libraries' stand-ins are installed
/// where they are at hand. Of references it counts Outlook's objects and subscriptions only: the
/// client's are in the client's process.
class ComStage : public scenario::OutlookStage {
 public:
  /// All must outlive the stage. The client is null for a machine that never has one.
  ComStage(Session& session, ClientControl* client, Libraries& libraries);
  ~ComStage() override;

  bool native() const override { return false; }

  void startOutlook(std::u16string_view version) override;
  void switchAddin(bool on) override;

  void setLanguage(std::int32_t langId) override;
  void setRegistry(platform::RegistryRoot root, std::u16string_view key, std::u16string_view name,
                   const std::optional<platform::RegistryValue>& value) override;
  void setLoggingLibrary(bool present) override;
  void setMapiHelper(scenario::HelperState state) override;
  void copy(std::u16string_view text) override { copyText(text); }
  void watchClipboard(std::uint32_t milliseconds) override {
    session_.watchClipboard(milliseconds);
  }
  std::u16string copied() override { return copiedText(); }
  /// The machine's clock is not for a scenario to set.
  void setTime(int hour, int minute, int second) override;
  void wait(std::uint32_t milliseconds) override;

 private:
  simulator::Mailbox& mailbox() override { return session_.mailbox(); }
  simulator::BarStore& bars() override { return session_.bars(); }
  simulator::Boundary& boundary() override { return session_.boundary(); }
  simulator::OutlookHost* runningHost() const override;
  void settle() override { session_.settle(); }
  simulator::PlayedClient& client() override;
  std::u16string telephone() override { return client_ ? client_->status() : u"not installed"; }
  void clickButton(const scenario::ControlPlace& place) override;
  /// Tells also what came of it.
  void act(const std::function<void()>& action) override;
  /// Tells what the client was told and what the add-in traced since the last time.
  void tell();

  Session& session_;
  ClientControl* client_;
  Libraries& libraries_;
  Notes notes_;
  RegistryKeeper registry_;
  std::unique_ptr<ModalWatch> watch_;
  Pace pace_;
};

}  // namespace standin
