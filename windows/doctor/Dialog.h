#pragma once

#include <string>

#include "doctor/texts.h"
#include "windows/com/api.h"
#include "windows/com/text.h"
#include "windows/doctor/DoctorWindow.h"
#include "windows/doctor/controls.h"

namespace windows {

/// A modal dialog of the program's resources, its controls' texts in the language of the report.
class Dialog {
 public:
  explicit Dialog(const Patient& patient)
      : patient_(patient), language_(doctor::reportLanguage(patient.registry, patient.facts)) {}
  virtual ~Dialog() = default;
  void run(HINSTANCE module, int id, HWND owner) {
    module_ = module;
    DialogBoxParamW(module, MAKEINTRESOURCEW(id), owner, procedure, reinterpret_cast<LPARAM>(this));
  }

 protected:
  virtual void begin() = 0;
  virtual void press(int control) = 0;
  virtual void tick() {}

  std::u16string text(doctor::Text id, std::u16string_view first = {}) const {
    return doctor::textOf(language_, id, first);
  }
  void label(int control, doctor::Text id) { set(control, text(id)); }
  void set(int control, const std::u16string& value) {
    SetDlgItemTextW(window_, control, wide(value));
  }
  bool checked(int control) const { return IsDlgButtonChecked(window_, control) == BST_CHECKED; }
  int box(const std::u16string& message, UINT flags) const {
    return MessageBoxW(window_, wide(message), wide(text(doctor::Text::Title)), flags);
  }

  HWND window_ = nullptr;
  HINSTANCE module_ = nullptr;
  const Patient patient_;
  const std::size_t language_;

 private:
  static INT_PTR CALLBACK procedure(HWND window, UINT message, WPARAM word, LPARAM data) {
    auto* dialog = reinterpret_cast<Dialog*>(GetWindowLongPtrW(window, DWLP_USER));
    switch (message) {
      case WM_INITDIALOG:
        dialog = reinterpret_cast<Dialog*>(data);
        SetWindowLongPtrW(window, DWLP_USER, data);
        dialog->window_ = window;
        SetWindowTextW(window, wide(dialog->text(doctor::Text::Title)));
        SendMessageW(window, WM_SETICON, ICON_BIG,
                     reinterpret_cast<LPARAM>(LoadIconW(dialog->module_, MAKEINTRESOURCEW(1))));
        dialog->begin();
        return TRUE;
      case WM_TIMER: dialog->tick(); return TRUE;
      case WM_COMMAND:
        // Escape, or the cross.
        if (LOWORD(word) == IDCANCEL) return EndDialog(window, 0);
        if (HIWORD(word) == BN_CLICKED && dialog) dialog->press(LOWORD(word));
        return TRUE;
      default: return FALSE;
    }
  }
};

}  // namespace windows
