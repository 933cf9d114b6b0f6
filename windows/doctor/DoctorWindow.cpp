#include "windows/doctor/DoctorWindow.h"

#include <commdlg.h>

#include "doctor/TraceLines.h"
#include "windows/doctor/Dialog.h"
#include "windows/doctor/WindowsFacts.h"

namespace windows {
namespace {

using doctor::Text;

/// As much of the trace's end as is shown and saved.
constexpr std::size_t ShownTrace = 1024 * 1024;

class DoctorWindow : public Dialog {
 public:
  using Dialog::Dialog;

 private:
  void begin() override {
    label(COPY_BUTTON, Text::Copy);
    label(SAVE_BUTTON, Text::Save);
    label(CURE_BUTTON, Text::PutRightButton);
    label(TRACE_BUTTON, Text::TraceButton);
    // Behind the longest word for a verdict, in quarters of a letter.
    constexpr UINT Column = 40;
    SendDlgItemMessageW(window_, REPORT_TEXT, EM_SETTABSTOPS, 1, reinterpret_cast<LPARAM>(&Column));
    examine();
  }

  void press(int control) override {
    switch (control) {
      case COPY_BUTTON:
        SendDlgItemMessageW(window_, REPORT_TEXT, EM_SETSEL, 0, -1);
        SendDlgItemMessageW(window_, REPORT_TEXT, WM_COPY, 0, 0);
        break;
      case SAVE_BUTTON: save(); break;
      case CURE_BUTTON: putRight(); break;
      case TRACE_BUTTON:
        showTrace(module_, window_, patient_);
        examine();
        break;
      default: break;
    }
  }

  void examine() {
    report_ = doctor::examine(patient_.registry, patient_.facts);
    set(REPORT_TEXT, joined(report_.lines(true)));
  }

  void save() {
    wchar_t path[MAX_PATH] = L"velnor-support.txt";
    OPENFILENAMEW chosen{};
    chosen.lStructSize = OPENFILENAME_SIZE_VERSION_400W;
    chosen.hwndOwner = window_;
    chosen.lpstrFilter = L"*.txt\0*.txt\0";
    chosen.lpstrFile = path;
    chosen.nMaxFile = MAX_PATH;
    chosen.lpstrDefExt = L"txt";
    chosen.Flags = OFN_OVERWRITEPROMPT | OFN_HIDEREADONLY | OFN_NOCHANGEDIR;
    if (!GetSaveFileNameW(&chosen)) return;
    if (!writeText(utf16(path), patient_.forSupport())) {
      box(std::u16string(utf16(path)), MB_OK | MB_ICONERROR);
    }
  }

  void putRight() {
    examine();
    if (report_.cures.empty()) {
      box(text(Text::NothingToPutRight), MB_OK);
      return;
    }
    bool changed = false;
    for (const auto& cure : report_.cures) {
      if (box(text(Text::AskPutRight, cure.text), MB_YESNO | MB_ICONQUESTION) != IDYES) continue;
      if (doctor::apply(patient_.registry, cure)) {
        changed = true;
      } else {
        box(text(Text::AskAdministrator), MB_OK | MB_ICONERROR);
      }
    }
    if (changed) box(text(Text::RestartOutlook), MB_OK);
    examine();
  }

  doctor::Report report_;
};

class TraceWindow : public Dialog {
 public:
  using Dialog::Dialog;

 private:
  static constexpr UINT Second = 1000;

  void begin() override {
    label(WRITE_BOX, Text::WriteTrace);
    label(PROBLEMS_BOX, Text::OnlyProblems);
    label(EMPTY_BUTTON, Text::EmptyButton);
    CheckDlgButton(window_, WRITE_BOX,
                   doctor::traceIsOn(patient_.registry) ? BST_CHECKED : BST_UNCHECKED);
    SendDlgItemMessageW(window_, REPORT_TEXT, EM_SETLIMITTEXT, 0, 0);
    if (size() > doctor::BigTrace && box(text(Text::AskEmpty), MB_YESNO) == IDYES) empty();
    show();
    SetTimer(window_, 1, Second, nullptr);
  }

  void press(int control) override {
    if (control == WRITE_BOX) write();
    if (control == PROBLEMS_BOX) show();
    if (control == EMPTY_BUTTON) {
      empty();
      show();
    }
  }

  void tick() override {
    if (size() != shown_) show();
  }

  void write() {
    try {
      doctor::switchTrace(patient_.registry, checked(WRITE_BOX));
    } catch (const automation::Error& error) {
      box(error.description(), MB_OK | MB_ICONERROR);
    }
  }

  void empty() {
    const auto file = doctor::traceFile(patient_.registry);
    if (!emptyFile(file)) box(text(Text::TraceNotWritable, file), MB_OK | MB_ICONERROR);
  }

  std::uint64_t size() const {
    return patient_.facts.fileSize(doctor::traceFile(patient_.registry)).value_or(0);
  }

  /// The newest lines are at the end; who reads further up is left there.
  void show() {
    const HWND lines = GetDlgItem(window_, REPORT_TEXT);
    SCROLLINFO place{sizeof place, SIF_ALL, 0, 0, 0, 0, 0};
    GetScrollInfo(lines, SB_VERT, &place);
    const bool atEnd = shown_ == 0 || place.nPos + static_cast<int>(place.nPage) >= place.nMax;
    const LRESULT first = SendMessageW(lines, EM_GETFIRSTVISIBLELINE, 0, 0);
    shown_ = size();
    set(REPORT_TEXT, patient_.explainedTrace(checked(PROBLEMS_BOX)));
    const LRESULT count = SendMessageW(lines, EM_GETLINECOUNT, 0, 0);
    SendMessageW(lines, EM_LINESCROLL, 0, atEnd ? count : first);
  }

  std::uint64_t shown_ = 0;
};

}  // namespace

std::u16string Patient::trace() const {
  return facts.fromAnsi(facts.lastBytes(doctor::traceFile(registry), ShownTrace));
}

std::u16string Patient::explainedTrace(bool onlyProblems) const {
  return doctor::explainedTrace(trace(), doctor::reportLanguage(registry, facts), onlyProblems);
}

std::u16string Patient::forSupport() const {
  return doctor::maskedReport(joined(doctor::examine(registry, facts).lines())) + u"\r\n" +
         doctor::maskedTrace(trace());
}

std::u16string joined(const std::vector<std::u16string>& lines) {
  std::u16string text;
  for (const auto& line : lines) text += line + u"\r\n";
  return text;
}

void showDoctor(HINSTANCE module, const Patient& patient) {
  DoctorWindow(patient).run(module, DOCTOR_DIALOG, nullptr);
}

void showTrace(HINSTANCE module, HWND owner, const Patient& patient) {
  TraceWindow(patient).run(module, TRACE_DIALOG, owner);
}

}  // namespace windows
