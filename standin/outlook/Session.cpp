#include "standin/outlook/Session.h"

#include <stdexcept>
#include <utility>

#include "standin/outlook/Libraries.h"
#include "windows/com/Bstr.h"
#include "windows/com/api.h"

namespace standin {
namespace {

/// Reads a date as the user's regional settings write it.
std::optional<platform::LocalTime> parseDate(std::u16string_view text) {
  DATE date = 0;
  SYSTEMTIME time{};
  if (FAILED(VarDateFromStr(windows::Bstr(text).get(), LOCALE_USER_DEFAULT, VAR_DATEVALUEONLY,
                            &date)) ||
      !VariantTimeToSystemTime(date, &time))
    return std::nullopt;
  return platform::LocalTime{time.wYear, time.wMonth, time.wDay, 0, 0, 0, 0};
}

}  // namespace

FrameWindow::FrameWindow()
    : window_(CreateWindowExW(WS_EX_TOOLWINDOW, L"STATIC", nullptr, WS_POPUP | WS_VISIBLE, 0, 0, 0,
                              0, nullptr, nullptr, nullptr, nullptr)) {}

FrameWindow::~FrameWindow() {
  DestroyWindow(window_);
}

Session::Session(simulator::Mailbox mailbox, std::u16string progId)
    : mailbox_(std::move(mailbox)),
      entry_(registry_, std::move(progId)),
      pictures_(entry_.progId()) {}

Session::~Session() {
  try {
    if (host_) quit();
  } catch (const std::exception&) {
    // Outlook is gone in any case.
  }
}

std::unique_ptr<ComAddin> Session::createAddin() {
  return std::make_unique<ComAddin>(entry_.progId(), [this](const automation::Object& picture) {
    return pictures_.fromPicture(picture);
  });
}

void Session::start(std::u16string_view version) {
  simulator::OutlookOptions options;
  options.version = version;
  start(std::move(options));
}

void Session::start(simulator::OutlookOptions options) {
  options.progId = entry_.progId();
  simulator::OutlookServices services;
  services.clipboard = [this] {
    if (clipboardWatch_) clipboardWatch_->catchUp();
    return pictures_.fromClipboard();
  };
  services.face = [this](const auto& picture, const auto& mask) {
    return pictures_.face(picture, mask);
  };
  services.parseDate = parseDate;
  problem_.clear();
  while (windows_.size() < 2) windows_.emplace_back();
  host_ = std::make_unique<simulator::OutlookHost>(mailbox_, std::move(options), bars_, boundary_,
                                                   std::move(services));
  ++starts_;
  if (entry_.loadsAtStart()) {
    try {
      addin_ = createAddin();
    } catch (const automation::Error& error) {
      problem_ = error.description();
      entry_.keepConnected(false);
    }
  }
  host_->start(addin_.get());
  if (addin_ && addin_->failed()) {
    problem_ = u"the add-in reported an error";
    entry_.keepConnected(false);
  }
}

void Session::quit() {
  host_->quit();
  settle();
}

void Session::settle() {
  if (!host_ || host_->running()) return;
  // The end of the message loop is on its way already when the add-in is released.
  PostQuitMessage(0);
  dropAddin();
  MSG message;
  const bool ends = PeekMessageW(&message, nullptr, WM_QUIT, WM_QUIT, PM_REMOVE);
  host_.reset();
  windows_.clear();
  endLibraries();
  if (!ends) throw std::runtime_error("Outlook stays, without a window: its end was taken away");
}

void Session::click(int window, const std::u16string& button, bool ribbon) {
  const Click click{window, button};
  if (beforeClick_) beforeClick_(click);
  const Click* const before = std::exchange(clicking_, &click);
  try {
    if (ribbon)
      host_->clickRibbon(window, button);
    else
      host_->click(window, button);
  } catch (...) {
    clicking_ = before;
    throw;
  }
  clicking_ = before;
}

void Session::dropAddin() {
  addin_.reset();
  // At once, where Outlook ends its process.
  CoFreeUnusedLibrariesEx(0, 0);
}

void Session::watchClipboard(std::uint32_t milliseconds) {
  clipboardWatch_.reset();
  if (milliseconds != 0) clipboardWatch_ = std::make_unique<ClipboardWatch>(milliseconds);
}

void Session::switchAddin(bool on) {
  if (on) {
    addin_ = createAddin();
    host_->connectAddin(*addin_);
  } else {
    host_->disconnectAddin();
    dropAddin();
  }
  entry_.keepConnected(on);
}

}  // namespace standin
