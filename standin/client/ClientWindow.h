#pragma once

#include <string>

#include "standin/client/ClientServer.h"

namespace standin {

/// The client's main window: its caption tells the state, its area what the client was told lately,
/// its menu plays the telephone by hand.
class ClientWindow {
 public:
  explicit ClientWindow(ClientServer& server);
  ~ClientWindow();
  ClientWindow(const ClientWindow&) = delete;
  ClientWindow& operator=(const ClientWindow&) = delete;

  /// Shows what is to be seen now.
  void refresh();

 private:
  static LRESULT CALLBACK procedure(HWND window, UINT message, WPARAM first, LPARAM second);
  LRESULT take(UINT message, WPARAM first, LPARAM second);
  void paint() const;

  ClientServer& server_;
  HWND window_ = nullptr;
  std::u16string caption_;
  std::u16string latest_;
};

}  // namespace standin
