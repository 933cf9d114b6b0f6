#pragma once

#include <functional>
#include <memory>

#include "platform/platform.h"
#include "simulator/addin.h"
#include "simulator/boundary.h"
#include "simulator/machine/Machine.h"
#include "simulator/mailbox.h"
#include "simulator/outlook/OutlookHost.h"
#include "simulator/player/Stage.h"

namespace scenario {

/// Makes the add-in as Outlook does when it loads it. The object's end is its unloading.
using AddinFactory =
    std::function<std::unique_ptr<simulator::Addin>(const platform::Platform& services)>;

/// The simulated host, client and machine as a stage. Mailbox, bars and machine stay from one run
/// of Outlook to the next. The logging library is installed, so that there is a trace.
class NativeStage : public Stage, private simulator::ScreenUser {
 public:
  NativeStage(simulator::Mailbox mailbox, AddinFactory makeAddin);
  ~NativeStage() override;

  simulator::Machine& machine() { return machine_; }
  /// For those who watch what crosses it.
  simulator::Boundary& boundary() { return boundary_; }

  void setListener(Listener* listener) override { listener_ = listener; }
  bool native() const override { return true; }

  void startOutlook(std::u16string_view version) override;
  void quitOutlook() override;
  bool outlookRuns() const override { return host_ != nullptr; }
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
  void switchAddin(bool on) override;
  void setWordMail(bool on) override { wordMail_ = on; }
  void presetBar(const BarPreset& bar) override;

  void ring(std::u16string_view number) override;
  void connectCall() override;
  void endCall() override;
  void hangClient(bool on) override;
  void vanishClient() override;
  void setClient(ClientState state) override;
  void setClientGap(ClientGap gap) override;
  void setClientErrors(bool on) override;

  void setLanguage(std::int32_t langId) override { machine_.language.setLangId(langId); }
  void setRegistry(platform::RegistryRoot root, std::u16string_view key, std::u16string_view name,
                   const std::optional<platform::RegistryValue>& value) override;
  void setLoggingLibrary(bool present) override { machine_.loggingLibrary.setPresent(present); }
  void setMapiHelper(HelperState state) override;
  void setTime(int hour, int minute, int second) override;
  void wait(std::uint32_t milliseconds) override { machine_.advance(milliseconds); }

  Snapshot snapshot() override;
  std::vector<std::u16string> folders() override;
  std::vector<ItemEntry> items(std::u16string_view folder) override;
  std::size_t references() override;

 private:
  void messageBox(std::u16string_view text) override;
  std::optional<int> popup(const std::vector<platform::PopupEntry>& menu,
                           platform::Point place) override;

  void listen();
  void tell(const Note& note);
  /// Lets go of an Outlook that has ended.
  void settle();
  const simulator::MapiFacts* factsOf(const automation::Object& item) const;
  simulator::OutlookHost& host();
  /// Tag or id, or where that is empty the caption, of a control.
  std::u16string nameOf(const ControlPlace& place);

  simulator::Mailbox mailbox_;
  AddinFactory makeAddin_;
  simulator::BarStore bars_;
  simulator::Boundary boundary_;
  simulator::Machine machine_{boundary_};
  platform::Platform services_ = machine_.platform();
  std::unique_ptr<simulator::Addin> addin_;
  std::unique_ptr<simulator::OutlookHost> host_;
  Listener* listener_ = nullptr;
  bool wordMail_ = false;
  bool addinOn_ = true;
};

}  // namespace scenario
