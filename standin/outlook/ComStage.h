#pragma once

#include <cstddef>
#include <memory>

#include "simulator/player/Stage.h"
#include "standin/outlook/ClientDesk.h"
#include "standin/outlook/Libraries.h"
#include "standin/outlook/ModalWatch.h"
#include "standin/outlook/Pace.h"
#include "standin/outlook/RegistryKeeper.h"
#include "standin/outlook/Session.h"
#include "standin/outlook/TraceTail.h"

namespace standin {

/// The real add-in as a stage: the simulated Outlook reaches it through COM, time, registry, menus
/// and message boxes are the machine's, and the telephony client is a program of its own. What a
/// scenario changes on the machine is put back in the end. With the libraries' stand-ins at hand
/// they are installed; without them the add-in writes its own trace file.
class ComStage : public scenario::Stage {
 public:
  /// All must outlive the stage.
  ComStage(Session& session, ClientDesk& client, Libraries& libraries);
  ~ComStage() override;

  void setListener(scenario::Listener* listener) override { listener_ = listener; }
  bool native() const override { return false; }

  void startOutlook(std::u16string_view version) override;
  void quitOutlook() override;
  bool outlookRuns() const override { return session_.running(); }
  void openExplorer(std::u16string_view folder) override;
  void openItem(std::u16string_view itemId) override;
  void newItem(outlook::ItemType type) override;
  void activate(int window) override;
  void close(int window) override;
  void switchFolder(int window, std::u16string_view folder) override;
  void switchView(int window) override;
  void select(int window, const std::vector<std::u16string>& itemIds) override;
  void click(const scenario::ControlPlace& place) override;
  void type(const scenario::ControlPlace& place, std::u16string_view text) override;
  void switchAddin(bool on) override;
  void setWordMail(bool on) override { wordMail_ = on; }
  void presetBar(const scenario::BarPreset& bar) override;

  void ring(std::u16string_view number) override;
  void connectCall() override;
  void endCall() override;
  void hangClient(bool on) override;
  void vanishClient() override;
  void setClient(scenario::ClientState state) override;
  void setClientGap(scenario::ClientGap gap) override;
  void setClientErrors(bool on) override;

  void setLanguage(std::int32_t langId) override;
  void setRegistry(platform::RegistryRoot root, std::u16string_view key, std::u16string_view name,
                   const std::optional<platform::RegistryValue>& value) override;
  void setLoggingLibrary(bool present) override;
  void setMapiHelper(scenario::HelperState state) override;
  /// The machine's clock is not for a scenario to set.
  void setTime(int hour, int minute, int second) override;
  void wait(std::uint32_t milliseconds) override;

  scenario::Snapshot snapshot() override;
  std::vector<std::u16string> folders() override;
  std::vector<scenario::ItemEntry> items(std::u16string_view folder) override;
  /// Counts Outlook's objects and subscriptions only: the client's are in the client's process.
  std::size_t references() override;

 private:
  simulator::OutlookHost& host();
  std::u16string nameOf(const scenario::ControlPlace& place);
  /// Does something and tells what came of it.
  template <class Action>
  void act(Action&& action);
  /// Tells what the client was told and what the add-in traced since the last time, in the order
  /// in which it came.
  void tell();

  Session& session_;
  ClientDesk& client_;
  Libraries& libraries_;
  RegistryKeeper registry_;
  TraceFile traceFile_;
  LibraryLog libraryLog_;
  std::unique_ptr<ModalWatch> watch_;
  Pace pace_;
  scenario::Listener* listener_ = nullptr;
  bool wordMail_ = false;
};

}  // namespace standin
