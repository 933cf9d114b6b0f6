#include "standin/outlook/hand/BarWindow.h"

#include <algorithm>

#include "simulator/player/Text.h"
#include "windows/com/errors.h"
#include "windows/com/text.h"

namespace standin {
namespace {

using simulator::ControlView;

constexpr int BoxWidth = 150;
constexpr int NoImage = -2;  // I_IMAGENONE
/// Ids of commands begin here.
constexpr int FirstCommand = 100;
constexpr wchar_t OwnerProperty[] = L"OutlookStandinBar";

}  // namespace

std::u16string plainCaption(std::u16string_view caption) {
  return scenario::shownCaption(caption);
}

BarWindow::BarWindow(HWND parent, const HostPictures& pictures, Hand hand)
    : pictures_(pictures), hand_(std::move(hand)) {
  create({{}, WS_CHILD | WS_VISIBLE | WS_CLIPCHILDREN, {0, 0, 0, 0}, parent, nullptr});
  toolbar_ = createControl(TOOLBARCLASSNAMEW,
                           TBSTYLE_FLAT | TBSTYLE_LIST | TBSTYLE_TOOLTIPS | CCS_NODIVIDER |
                               CCS_NOPARENTALIGN | CCS_NORESIZE,
                           hwnd());
  SendMessageW(toolbar_, TB_BUTTONSTRUCTSIZE, sizeof(TBBUTTON), 0);
  SendMessageW(toolbar_, TB_SETEXTENDEDSTYLE, 0, TBSTYLE_EX_MIXEDBUTTONS);
  images_ = ImageList_Create(HostPictures::FaceSide, HostPictures::FaceSide, ILC_COLOR24 | ILC_MASK,
                             0, 8);
  SendMessageW(toolbar_, TB_SETIMAGELIST, 0, reinterpret_cast<LPARAM>(images_));
}

BarWindow::~BarWindow() {
  clear();
  ImageList_Destroy(images_);
}

void BarWindow::clear() {
  for (const Box& box : boxes_) DestroyWindow(box.window);
  boxes_.clear();
  while (SendMessageW(toolbar_, TB_DELETEBUTTON, 0, 0) != 0) {
  }
  ImageList_Remove(images_, -1);
}

int BarWindow::imageOf(const ControlView& control) {
  const bool wanted = control.style != office::ButtonStyle::Caption;
  const HBITMAP bitmap = wanted ? pictures_.find(control.picture) : nullptr;
  if (!bitmap) return NoImage;
  // The list spoils the bitmap that it gets.
  const auto copy = static_cast<HBITMAP>(CopyImage(bitmap, IMAGE_BITMAP, 0, 0, 0));
  const int index = ImageList_AddMasked(images_, copy, HostPictures::Ground);
  DeleteObject(copy);
  return index;
}

void BarWindow::show(const simulator::BarView& bar) {
  if (bar == shown_) return;
  clear();
  shown_ = bar;
  for (std::size_t i = 0; i < shown_.controls.size(); ++i)
    if (shown_.controls[i].visible) addControl(i);
  SendMessageW(toolbar_, TB_AUTOSIZE, 0, 0);
  for (const Box& box : boxes_) {
    RECT place{};
    SendMessageW(toolbar_, TB_GETRECT, FirstCommand + box.index, reinterpret_cast<LPARAM>(&place));
    MoveWindow(box.window, place.left + 2, place.top + 1, place.right - place.left - 4,
               place.bottom - place.top - 2, TRUE);
  }
}

void BarWindow::addControl(std::size_t index) {
  const ControlView& control = shown_.controls[index];
  TBBUTTON button{};
  if (control.beginGroup && SendMessageW(toolbar_, TB_BUTTONCOUNT, 0, 0) > 0) {
    button.fsStyle = TBSTYLE_SEP;
    SendMessageW(toolbar_, TB_ADDBUTTONSW, 1, reinterpret_cast<LPARAM>(&button));
  }
  if (control.type == office::ControlType::Edit) return addBox(index);
  button = {};
  button.iBitmap = imageOf(control);
  button.idCommand = FirstCommand + static_cast<int>(index);
  button.fsState = control.enabled ? TBSTATE_ENABLED : 0;
  button.fsStyle = BTNS_AUTOSIZE;
  const bool captioned = control.style == office::ButtonStyle::Caption ||
                         control.style == office::ButtonStyle::IconAndCaption ||
                         button.iBitmap == NoImage;
  if (captioned) button.fsStyle |= BTNS_SHOWTEXT;
  // Without its caption the button would have the next one's.
  button.iString = reinterpret_cast<INT_PTR>(windows::wide(control.caption));
  SendMessageW(toolbar_, TB_ADDBUTTONSW, 1, reinterpret_cast<LPARAM>(&button));
}

void BarWindow::addBox(std::size_t index) {
  const ControlView& control = shown_.controls[index];
  TBBUTTON gap{};
  gap.fsStyle = TBSTYLE_SEP;
  gap.iBitmap = control.width > 0 ? control.width : BoxWidth;
  gap.idCommand = FirstCommand + static_cast<int>(index);
  SendMessageW(toolbar_, TB_ADDBUTTONSW, 1, reinterpret_cast<LPARAM>(&gap));
  const HWND box = createControl(L"EDIT", WS_BORDER | ES_AUTOHSCROLL, toolbar_);
  SetWindowTextW(box, windows::wide(control.text));
  SetPropW(box, OwnerProperty, this);
  const auto old = SetWindowLongW(box, GWL_WNDPROC, reinterpret_cast<LONG>(boxProcedure));
  boxes_.push_back({box, index, reinterpret_cast<WNDPROC>(old)});
  const auto tips = reinterpret_cast<HWND>(SendMessageW(toolbar_, TB_GETTOOLTIPS, 0, 0));
  TOOLINFOW tool{};
  tool.cbSize = sizeof tool;
  tool.uFlags = TTF_IDISHWND | TTF_SUBCLASS;
  tool.hwnd = toolbar_;
  tool.uId = reinterpret_cast<UINT_PTR>(box);
  tool.lpszText = const_cast<wchar_t*>(windows::wide(control.tooltip));
  SendMessageW(tips, TTM_ADDTOOLW, 0, reinterpret_cast<LPARAM>(&tool));
}

LRESULT CALLBACK BarWindow::boxProcedure(HWND window, UINT message, WPARAM wParam,
                                         LPARAM lParam) noexcept {
  auto* bar = static_cast<BarWindow*>(GetPropW(window, OwnerProperty));
  const auto box = std::ranges::find(bar->boxes_, window, &Box::window);
  if (box == bar->boxes_.end()) return DefWindowProcW(window, message, wParam, lParam);
  // Without this the edit control sounds the bell.
  if (message == WM_CHAR && wParam == VK_RETURN) return 0;
  if (message != WM_KEYDOWN || wParam != VK_RETURN)
    return CallWindowProcW(box->procedure, window, message, wParam, lParam);
  windows::guardedQuietly([&] {
    wchar_t text[256] = {};
    GetWindowTextW(window, text, static_cast<int>(std::size(text)));
    // The bar may be built anew while this is handled.
    const ControlView control = bar->shown_.controls[box->index];
    bar->hand_.type(control, windows::utf16(text));
  });
  return 0;
}

LRESULT BarWindow::onNotify(NMHDR& header) {
  if (header.code != TBN_GETINFOTIPW) return 0;
  auto& info = reinterpret_cast<NMTBGETINFOTIPW&>(header);
  const auto index = static_cast<std::size_t>(info.iItem - FirstCommand);
  if (index >= shown_.controls.size() || info.cchTextMax <= 0) return 0;
  const ControlView& control = shown_.controls[index];
  const std::u16string tip =
      plainCaption(control.tooltip.empty() ? control.caption : control.tooltip);
  lstrcpynW(info.pszText, windows::wide(tip), info.cchTextMax);
  return 0;
}

LRESULT BarWindow::onMessage(UINT message, WPARAM wParam, LPARAM lParam) {
  switch (message) {
    case WM_SIZE: MoveWindow(toolbar_, 0, 0, LOWORD(lParam), HIWORD(lParam), TRUE); return 0;
    case WM_NOTIFY: return onNotify(*reinterpret_cast<NMHDR*>(lParam));
    case WM_COMMAND: {
      const auto index = static_cast<std::size_t>(LOWORD(wParam) - FirstCommand);
      if (reinterpret_cast<HWND>(lParam) != toolbar_ || index >= shown_.controls.size()) break;
      const ControlView control = shown_.controls[index];
      hand_.click(control);
      return 0;
    }
    default: break;
  }
  return NativeWindow::onMessage(message, wParam, lParam);
}

std::optional<RECT> BarWindow::placeOf(std::u16string_view name) const {
  for (std::size_t i = 0; i < shown_.controls.size(); ++i) {
    if (shown_.controls[i].name() != name) continue;
    RECT place{};
    SendMessageW(toolbar_, TB_GETRECT, FirstCommand + i, reinterpret_cast<LPARAM>(&place));
    MapWindowPoints(toolbar_, nullptr, reinterpret_cast<POINT*>(&place), 2);
    return place;
  }
  return std::nullopt;
}

int BarWindow::height() const {
  const auto size = static_cast<DWORD>(SendMessageW(toolbar_, TB_GETBUTTONSIZE, 0, 0));
  constexpr int margin = 4;
  return HIWORD(size) + margin;
}

}  // namespace standin
