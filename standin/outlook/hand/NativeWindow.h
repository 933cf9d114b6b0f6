#pragma once

#include <string>

#include "windows/com/api.h"

namespace standin {

/// A window whose messages come to an object, which owns it.
class NativeWindow {
 public:
  NativeWindow(const NativeWindow&) = delete;
  NativeWindow& operator=(const NativeWindow&) = delete;
  virtual ~NativeWindow();

  HWND hwnd() const { return hwnd_; }

 protected:
  struct Form {
    std::u16string title;
    DWORD style = 0;
    RECT place{CW_USEDEFAULT, CW_USEDEFAULT, CW_USEDEFAULT, CW_USEDEFAULT};  ///< with its size
    HWND parent = nullptr;
    HMENU menu = nullptr;
  };
  NativeWindow() = default;
  /// Raises an error when the window can't be made.
  void create(const Form& form);
  /// What is not handled goes to DefWindowProc. May throw.
  virtual LRESULT onMessage(UINT message, WPARAM wParam, LPARAM lParam);

 private:
  static LRESULT CALLBACK procedure(HWND window, UINT message, WPARAM wParam,
                                    LPARAM lParam) noexcept;
  HWND hwnd_ = nullptr;
};

/// Makes a child control with the font of dialogs.
HWND createControl(const wchar_t* className, DWORD style, HWND parent);
HFONT dialogFont();

}  // namespace standin
