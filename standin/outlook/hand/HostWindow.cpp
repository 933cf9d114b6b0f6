#include "standin/outlook/hand/HostWindow.h"

#include <algorithm>

#include "standin/outlook/hand/HandDesk.h"
#include "standin/outlook/hand/HandMenu.h"
#include "windows/com/text.h"

namespace standin {
namespace {

constexpr int FoldersWidth = 140;
constexpr UINT SelectionMessage = WM_APP;

/// Buttons of Outlook's own toolbar, of which the first works.
constexpr const char16_t* StandardOfExplorer[] = {u"New", u"Print", u"Delete", u"Find"};
constexpr const char16_t* StandardOfInspector[] = {u"Close", u"Print", u"Delete", u"Copy"};

RECT startPlace(int number) {
  constexpr int step = 28;
  const int offset = (number - 1) % 10 * step;
  return {20 + offset, 20 + offset, 680, 420};
}

}  // namespace

HostWindow::HostWindow(HandDesk& desk, const simulator::WindowView& view) : desk_(desk) {
  view_.kind = view.kind;
  const bool main = view.kind == simulator::WindowKind::Explorer;
  create({view.caption, WS_OVERLAPPEDWINDOW | WS_CLIPCHILDREN, startPlace(view.number), nullptr,
          main || !desk_.hasRibbon() ? createHandMenu(view.kind) : nullptr});
  items_ =
      std::make_unique<ItemList>(hwnd(), main ? std::vector<std::u16string>{u"Subject"}
                                              : std::vector<std::u16string>{u"Field", u"Value"});
  if (main) {
    folders_ = createControl(L"LISTBOX", LBS_NOTIFY | LBS_NOINTEGRALHEIGHT | WS_BORDER, hwnd());
    for (const std::u16string& folder : desk_.folders())
      SendMessageW(folders_, LB_ADDSTRING, 0, reinterpret_cast<LPARAM>(windows::wide(folder)));
  }
  ribbon_ = std::make_unique<RibbonWindow>(hwnd(), desk_.pictures(),
                                           [this](const simulator::ControlView& button) {
                                             desk_.clickRibbon(view_.number, button.tag);
                                           });
  if (!main && desk_.hasRibbon()) ribbon_->showTabs();
  if (main || !desk_.hasRibbon()) addStandardBar();
  show(view);
  ShowWindow(hwnd(), SW_SHOW);
}

void HostWindow::show(const simulator::WindowView& view) {
  if (view == view_) return;
  view_ = view;
  SetWindowTextW(hwnd(), windows::wide(view_.caption));
  showBars();
  ribbon_->show(view_.ribbon);
  showItems();
  layOut();
}

void HostWindow::addStandardBar() {
  using simulator::ControlView;
  simulator::BarView bar;
  bar.name = u"Standard";
  for (const char16_t* caption : explorer() ? StandardOfExplorer : StandardOfInspector) {
    ControlView control;
    control.caption = caption;
    control.style = office::ButtonStyle::Caption;
    // What the stand-in can't do looks like it.
    control.enabled = bar.controls.empty();
    bar.controls.push_back(control);
  }
  const auto first = explorer() ? HandCommand::NewItem : HandCommand::Close;
  standard_ = std::make_unique<BarWindow>(
      hwnd(), desk_.pictures(),
      BarWindow::Hand{[this, first](const ControlView&) {
                        desk_.command(view_.number, static_cast<int>(first));
                      },
                      [](const ControlView&, std::u16string_view) {}});
  standard_->show(bar);
}

void HostWindow::showBars() {
  std::erase_if(bars_, [this](const auto& entry) {
    return std::ranges::none_of(view_.bars, [&](const simulator::BarView& bar) {
      return bar.visible && bar.name == entry.first;
    });
  });
  for (const simulator::BarView& bar : view_.bars) {
    if (!bar.visible) continue;
    std::unique_ptr<BarWindow>& window = bars_[bar.name];
    if (!window) {
      window = std::make_unique<BarWindow>(
          hwnd(), desk_.pictures(),
          BarWindow::Hand{
              [this](const simulator::ControlView& control) { desk_.click(view_.number, control); },
              [this](const simulator::ControlView& control, std::u16string_view text) {
                desk_.type(view_.number, control, text);
              }});
    }
    window->show(bar);
  }
}

void HostWindow::showItems() {
  if (!explorer()) return items_->show(desk_.fieldsOf(view_.itemId));
  std::vector<ItemList::Line> lines;
  for (const std::u16string& title : view_.items) lines.push_back({title});
  items_->show(lines);
  std::vector<std::size_t> selected;
  for (std::size_t i = 0; i < view_.items.size(); ++i)
    if (std::ranges::find(view_.selection, view_.items[i]) != view_.selection.end())
      selected.push_back(i);
  // Equal titles can't be told apart; what the user has selected stays.
  if (selected.size() == view_.selection.size()) items_->select(selected);
  const auto index = SendMessageW(folders_, LB_FINDSTRINGEXACT, static_cast<WPARAM>(-1),
                                  reinterpret_cast<LPARAM>(windows::wide(view_.folder)));
  SendMessageW(folders_, LB_SETCURSEL, static_cast<WPARAM>(index), 0);
}

void HostWindow::layOut() {
  RECT area{};
  GetClientRect(hwnd(), &area);
  const int width = area.right;
  int top = 0;
  if (standard_) {
    MoveWindow(standard_->hwnd(), 0, 0, width, standard_->height(), TRUE);
    top = standard_->height();
  }
  for (const simulator::BarView& bar : view_.bars) {
    const auto window = bars_.find(bar.name);
    if (window == bars_.end()) continue;
    MoveWindow(window->second->hwnd(), 0, top, width, window->second->height(), TRUE);
    top += window->second->height();
  }
  MoveWindow(ribbon_->hwnd(), 0, top, width, ribbon_->height(), TRUE);
  top += ribbon_->height();
  const int left = explorer() ? FoldersWidth : 0;
  const int height = std::max<int>(0, area.bottom - top);
  if (folders_) MoveWindow(folders_, 0, top, FoldersWidth, height, TRUE);
  MoveWindow(items_->hwnd(), left, top, width - left, height, TRUE);
  RedrawWindow(hwnd(), nullptr, nullptr, RDW_INVALIDATE | RDW_ERASE | RDW_ALLCHILDREN);
}

std::optional<RECT> HostWindow::placeOf(std::u16string_view control) const {
  for (const auto& [name, bar] : bars_)
    if (const auto place = bar->placeOf(control)) return place;
  return ribbon_->placeOf(control);
}

void HostWindow::onSelection() {
  selectionPosted_ = false;
  std::vector<std::size_t> places = items_->selected();
  // The host counts from 1.
  for (std::size_t& place : places) ++place;
  desk_.select(view_.number, places);
}

LRESULT HostWindow::onNotify(const NMHDR& header) {
  if (!explorer() || header.hwndFrom != items_->hwnd() || items_->updating()) return 0;
  if (header.code == LVN_ITEMCHANGED && !selectionPosted_) {
    // One click changes several lines.
    selectionPosted_ = true;
    PostMessageW(hwnd(), SelectionMessage, 0, 0);
  }
  if (header.code == NM_DBLCLK || header.code == NM_RETURN) {
    const auto places = items_->selected();
    if (!places.empty()) desk_.openItem(view_.folder, places.front());
  }
  return 0;
}

void HostWindow::onCommand(int id, int notification) {
  if (notification == LBN_SELCHANGE && id == 0) {
    const auto index = static_cast<std::size_t>(SendMessageW(folders_, LB_GETCURSEL, 0, 0));
    const auto folders = desk_.folders();
    if (index < folders.size()) desk_.switchFolder(view_.number, folders[index]);
    return;
  }
  desk_.command(view_.number, id);
}

LRESULT HostWindow::onMessage(UINT message, WPARAM wParam, LPARAM lParam) {
  switch (message) {
    case WM_SIZE: layOut(); return 0;
    case WM_CLOSE: desk_.close(view_.number); return 0;
    case WM_ACTIVATE:
      if (LOWORD(wParam) != WA_INACTIVE) desk_.activate(view_.number);
      return 0;
    case WM_NCACTIVATE:
      // A menu or the client coming up takes the focus: Outlook's front window looks active still.
      return NativeWindow::onMessage(message, wParam != 0 || desk_.isFront(view_.number), lParam);
    case WM_NOTIFY: return onNotify(*reinterpret_cast<const NMHDR*>(lParam));
    case WM_COMMAND: onCommand(LOWORD(wParam), HIWORD(wParam)); return 0;
    case SelectionMessage: onSelection(); return 0;
    default: return NativeWindow::onMessage(message, wParam, lParam);
  }
}

}  // namespace standin
