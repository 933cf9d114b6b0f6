#include "standin/outlook/hand/RibbonWindow.h"

#include "simulator/player/Text.h"
#include "windows/com/text.h"

namespace standin {
namespace {

constexpr int Margin = 6;
constexpr int TabHeight = 20;
/// A button of normal size shows its picture as small as the system's small icons.
constexpr int PictureSide = 16;
constexpr int LabelHeight = 16;
constexpr int ButtonHeight = PictureSide + LabelHeight + 3 * Margin;
constexpr int GroupHeight = ButtonHeight + LabelHeight + Margin;
constexpr std::size_t None = static_cast<std::size_t>(-1);

/// A screen device for measuring and painting with the dialogs' font.
class FontIn {
 public:
  explicit FontIn(HDC canvas) : canvas_(canvas), old_(SelectObject(canvas, dialogFont())) {
    SetBkMode(canvas_, TRANSPARENT);
  }
  ~FontIn() { SelectObject(canvas_, old_); }
  FontIn(const FontIn&) = delete;
  FontIn& operator=(const FontIn&) = delete;

 private:
  HDC canvas_;
  HGDIOBJ old_;
};

int widthOf(HDC canvas, const std::u16string& text) {
  SIZE size{};
  GetTextExtentPoint32W(canvas, windows::wide(text), static_cast<int>(text.size()), &size);
  return size.cx;
}

void drawText(HDC canvas, const std::u16string& text, RECT place, UINT how) {
  DrawTextW(canvas, windows::wide(text), static_cast<int>(text.size()), &place,
            how | DT_SINGLELINE | DT_VCENTER | DT_NOPREFIX | DT_END_ELLIPSIS);
}

/// The name of a tab as Outlook shows it: a built-in one has an id only.
std::u16string tabTitle(std::u16string_view tab) {
  constexpr std::u16string_view prefix = u"Tab";
  if (tab.ends_with(u"Message")) return u"Message";
  return std::u16string(tab.starts_with(prefix) ? tab.substr(prefix.size()) : tab);
}

}  // namespace

RibbonWindow::RibbonWindow(HWND parent, const HostPictures& pictures, Click click)
    : pictures_(pictures), click_(std::move(click)), hot_(None) {
  create({{}, WS_CHILD | WS_VISIBLE, {0, 0, 0, 0}, parent, nullptr});
}

int RibbonWindow::height() const {
  if (!groups_.empty()) return TabHeight + GroupHeight + 2 * Margin;
  return tabs_ ? TabHeight + Margin : 0;
}

void RibbonWindow::show(const std::vector<simulator::RibbonGroupView>& groups) {
  if (groups == groups_) return;
  groups_ = groups;
  layOut();
  InvalidateRect(hwnd(), nullptr, TRUE);
}

void RibbonWindow::layOut() {
  frames_.clear();
  places_.clear();
  const HDC canvas = GetDC(hwnd());
  {
    const FontIn font(canvas);
    LONG x = Margin;
    for (std::size_t g = 0; g < groups_.size(); ++g) {
      RECT frame{x, TabHeight + Margin, x + Margin, TabHeight + Margin + GroupHeight};
      for (std::size_t b = 0; b < groups_[g].controls.size(); ++b) {
        const auto label = scenario::shownCaption(groups_[g].controls[b].caption);
        const int width = std::max(PictureSide, widthOf(canvas, label)) + 2 * Margin;
        places_.push_back(
            {{frame.right, frame.top + 2, frame.right + width, frame.top + 2 + ButtonHeight},
             g,
             b});
        frame.right += width;
      }
      const int needed = widthOf(canvas, groups_[g].label) + 2 * Margin;
      frame.right = std::max(frame.right + Margin, frame.left + needed);
      frames_.push_back(frame);
      x = frame.right + Margin;
    }
  }
  ReleaseDC(hwnd(), canvas);
}

const simulator::ControlView& RibbonWindow::buttonAt(const Place& place) const {
  return groups_[place.group].controls[place.button];
}

void RibbonWindow::paintButton(HDC canvas, const Place& place, bool hot) const {
  const simulator::ControlView& button = buttonAt(place);
  RECT rect = place.rect;
  if (hot) DrawEdge(canvas, &rect, BDR_RAISEDINNER, BF_RECT);
  if (const HBITMAP bitmap = pictures_.find(button.picture)) {
    BITMAP data{};
    GetObjectW(bitmap, sizeof data, &data);
    const HDC source = CreateCompatibleDC(canvas);
    const HGDIOBJ old = SelectObject(source, bitmap);
    GdiTransparentBlt(canvas, (rect.left + rect.right - PictureSide) / 2, rect.top + Margin,
                      PictureSide, PictureSide, source, 0, 0, static_cast<int>(data.bmWidth),
                      static_cast<int>(data.bmHeight), HostPictures::Ground);
    SelectObject(source, old);
    DeleteDC(source);
  }
  rect.top += PictureSide + 2 * Margin;
  drawText(canvas, scenario::shownCaption(button.caption), rect, DT_CENTER);
}

void RibbonWindow::paintTabs(HDC canvas) const {
  std::vector<std::u16string> titles;
  for (const auto& group : groups_) {
    if (titles.empty() || titles.back() != tabTitle(group.tab))
      titles.push_back(tabTitle(group.tab));
  }
  const std::size_t active = titles.size();
  // Others that windows of items have.
  titles.insert(titles.end(), {u"Insert", u"Format Text"});
  RECT area{};
  GetClientRect(hwnd(), &area);
  area.top = TabHeight;
  DrawEdge(canvas, &area, EDGE_ETCHED, BF_TOP);
  RECT tab{Margin, 2, 0, TabHeight + 1};
  for (std::size_t i = 0; i < titles.size(); ++i) {
    tab.right = tab.left + widthOf(canvas, titles[i]) + 4 * Margin;
    if (i < active) {
      FillRect(canvas, &tab, GetSysColorBrush(COLOR_BTNFACE));
      DrawEdge(canvas, &tab, EDGE_ETCHED, BF_LEFT | BF_TOP | BF_RIGHT);
    }
    drawText(canvas, titles[i], tab, DT_CENTER);
    tab.left = tab.right;
  }
}

void RibbonWindow::paint(HDC canvas) const {
  const FontIn font(canvas);
  if (tabs_) paintTabs(canvas);
  for (std::size_t g = 0; g < groups_.size(); ++g) {
    RECT frame = frames_[g];
    DrawEdge(canvas, &frame, EDGE_ETCHED, BF_RECT);
    frame.top = frame.bottom - LabelHeight - 2;
    SetTextColor(canvas, GetSysColor(COLOR_GRAYTEXT));
    drawText(canvas, groups_[g].label, frame, DT_CENTER);
    SetTextColor(canvas, GetSysColor(COLOR_BTNTEXT));
  }
  for (std::size_t i = 0; i < places_.size(); ++i) paintButton(canvas, places_[i], i == hot_);
}

std::size_t RibbonWindow::hit(LPARAM position) const {
  const POINT point{static_cast<short>(LOWORD(position)), static_cast<short>(HIWORD(position))};
  for (std::size_t i = 0; i < places_.size(); ++i)
    if (PtInRect(&places_[i].rect, point)) return i;
  return None;
}

LRESULT RibbonWindow::onMessage(UINT message, WPARAM wParam, LPARAM lParam) {
  switch (message) {
    case WM_PAINT: {
      PAINTSTRUCT paintStruct;
      paint(BeginPaint(hwnd(), &paintStruct));
      EndPaint(hwnd(), &paintStruct);
      return 0;
    }
    case WM_MOUSEMOVE: {
      const std::size_t hot = hit(lParam);
      if (hot != std::exchange(hot_, hot)) InvalidateRect(hwnd(), nullptr, TRUE);
      return 0;
    }
    case WM_LBUTTONUP:
      if (const std::size_t index = hit(lParam); index != None) {
        const simulator::ControlView button = buttonAt(places_[index]);
        click_(button);
      }
      return 0;
    default: return NativeWindow::onMessage(message, wParam, lParam);
  }
}

std::optional<RECT> RibbonWindow::placeOf(std::u16string_view name) const {
  for (const Place& place : places_) {
    if (buttonAt(place).tag != name) continue;
    RECT rect = place.rect;
    MapWindowPoints(hwnd(), nullptr, reinterpret_cast<POINT*>(&rect), 2);
    return rect;
  }
  return std::nullopt;
}

}  // namespace standin
