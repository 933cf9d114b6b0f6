#pragma once

#include <functional>
#include <list>
#include <memory>
#include <string>
#include <utility>

#include "simulator/boundary.h"
#include "simulator/mailbox.h"
#include "simulator/outlook/OutlookHost.h"
#include "standin/outlook/AddinEntry.h"
#include "standin/outlook/ComAddin.h"
#include "standin/outlook/HostPictures.h"
#include "standin/outlook/UserClipboard.h"
#include "windows/services/Registry.h"

namespace standin {

/// A window of Outlook's as the system sees it: visible, but without extent.
class FrameWindow {
 public:
  FrameWindow();
  ~FrameWindow();
  FrameWindow(const FrameWindow&) = delete;
  FrameWindow& operator=(const FrameWindow&) = delete;

 private:
  HWND window_;
};

/// The simulated Outlook with the add-in that is registered on this machine. Mailbox and bars stay
/// from one run of Outlook to the next.
class Session {
 public:
  /// `progId` is the add-in's.
  Session(simulator::Mailbox mailbox, std::u16string progId);
  ~Session();
  Session(const Session&) = delete;
  Session& operator=(const Session&) = delete;

  /// Starts Outlook, which loads the add-in when its entry in the registry says so.
  void start(simulator::OutlookOptions options);
  void start(std::u16string_view version);
  void quit();
  /// To be called after the last window may have been closed: lets go of an Outlook that has ended,
  /// and of the add-in's DLL.
  void settle();
  bool running() const { return host_ != nullptr; }
  /// How often Outlook was started: tells one Outlook from the next.
  unsigned starts() const { return starts_; }
  /// Must be running.
  simulator::OutlookHost& host() { return *host_; }

  /// A control that the user is just clicking.
  struct Click {
    int window = 0;
    std::u16string control;
  };
  /// Clicks a button of a bar or of the ribbon, named by tag, id, or where it has none by caption.
  void click(int window, const std::u16string& button, bool ribbon);
  void setBeforeClick(std::function<void(const Click&)> hook) { beforeClick_ = std::move(hook); }
  /// The innermost click that is going on; null for none.
  const Click* clicking() const { return clicking_; }

  bool addinOn() const { return addin_ != nullptr; }
  /// The user ticks or unticks the add-in. Raises the error of an add-in that can't be loaded.
  void switchAddin(bool on);
  /// Why the add-in could not be loaded, in words; empty when nothing went wrong.
  const std::u16string& problem() const { return problem_; }

  /// From now on another program opens the clipboard for so long whenever something new is on it;
  /// 0 for none.
  void watchClipboard(std::uint32_t milliseconds);

  simulator::Mailbox& mailbox() { return mailbox_; }
  simulator::BarStore& bars() { return bars_; }
  simulator::Boundary& boundary() { return boundary_; }
  const HostPictures& pictures() const { return pictures_; }

 private:
  std::unique_ptr<ComAddin> createAddin();
  void dropAddin();

  simulator::Mailbox mailbox_;
  simulator::BarStore bars_;
  simulator::Boundary boundary_;
  windows::Registry registry_;
  AddinEntry entry_;
  HostPictures pictures_;
  std::unique_ptr<ClipboardWatch> clipboardWatch_;
  std::unique_ptr<ComAddin> addin_;
  std::unique_ptr<simulator::OutlookHost> host_;
  unsigned starts_ = 0;
  /// Two: a message box must keep the user from all of them.
  std::list<FrameWindow> windows_;
  std::u16string problem_;
  std::function<void(const Click&)> beforeClick_;
  const Click* clicking_ = nullptr;
};

}  // namespace standin
