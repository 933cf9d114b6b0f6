#include "standin/outlook/hand/ItemList.h"

#include <algorithm>

#include "windows/com/text.h"

namespace standin {

ItemList::ItemList(HWND parent, const std::vector<std::u16string>& columns)
    : list_(createControl(WC_LISTVIEWW, LVS_REPORT | LVS_SHOWSELALWAYS | WS_BORDER, parent)),
      columns_(columns.size()) {
  SendMessageW(list_, LVM_SETEXTENDEDLISTVIEWSTYLE, LVS_EX_FULLROWSELECT, LVS_EX_FULLROWSELECT);
  constexpr int width = 220;
  for (std::size_t i = 0; i < columns.size(); ++i) {
    LVCOLUMNW column{};
    column.mask = LVCF_TEXT | LVCF_WIDTH;
    column.cx = i + 1 == columns.size() ? 2 * width : width;
    column.pszText = const_cast<wchar_t*>(windows::wide(columns[i]));
    SendMessageW(list_, LVM_INSERTCOLUMNW, i, reinterpret_cast<LPARAM>(&column));
  }
}

void ItemList::show(const std::vector<Line>& lines) {
  if (lines == lines_) return;
  updating_ = true;
  lines_ = lines;
  SendMessageW(list_, LVM_DELETEALLITEMS, 0, 0);
  for (std::size_t i = 0; i < lines_.size(); ++i) {
    for (std::size_t c = 0; c < std::min(columns_, lines_[i].size()); ++c) {
      LVITEMW item{};
      item.mask = LVIF_TEXT;
      item.iItem = static_cast<int>(i);
      item.iSubItem = static_cast<int>(c);
      item.pszText = const_cast<wchar_t*>(windows::wide(lines_[i][c]));
      SendMessageW(list_, c == 0 ? LVM_INSERTITEMW : LVM_SETITEMW, 0,
                   reinterpret_cast<LPARAM>(&item));
    }
  }
  updating_ = false;
}

void ItemList::select(const std::vector<std::size_t>& places) {
  if (places == selected()) return;
  updating_ = true;
  for (std::size_t i = 0; i < lines_.size(); ++i) {
    LVITEMW item{};
    item.stateMask = LVIS_SELECTED;
    item.state = std::ranges::find(places, i) != places.end() ? LVIS_SELECTED : 0;
    SendMessageW(list_, LVM_SETITEMSTATE, i, reinterpret_cast<LPARAM>(&item));
  }
  updating_ = false;
}

std::vector<std::size_t> ItemList::selected() const {
  std::vector<std::size_t> places;
  for (auto at = static_cast<LRESULT>(-1);
       (at = SendMessageW(list_, LVM_GETNEXTITEM, static_cast<WPARAM>(at), LVNI_SELECTED)) >= 0;)
    places.push_back(static_cast<std::size_t>(at));
  return places;
}

}  // namespace standin
