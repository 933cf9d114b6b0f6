#pragma once

#include "windows/com/api.h"

namespace windows {

/// The system clipboard, open for this program as long as the object lives.
class Clipboard {
 public:
  /// Raises error 521 while another program has it open.
  Clipboard();
  ~Clipboard();
  Clipboard(const Clipboard&) = delete;
  Clipboard& operator=(const Clipboard&) = delete;

  void clear();
  /// Puts a copy of the bitmap in the place of what is there; raises an error when that fails.
  void set(HBITMAP bitmap);

 private:
  /// Without an owner the clipboard takes nothing.
  HWND owner_;
};

}  // namespace windows
