#pragma once

#include <functional>
#include <string>
#include <vector>

#include "standin/outlook/hand/NativeWindow.h"

#include <commctrl.h>

namespace standin {

/// A list of lines with one or two columns, of which several may be selected.
class ItemList {
 public:
  ItemList(HWND parent, const std::vector<std::u16string>& columns);

  HWND hwnd() const { return list_; }
  using Line = std::vector<std::u16string>;
  void show(const std::vector<Line>& lines);
  void select(const std::vector<std::size_t>& places);
  /// Places of the selected lines, from 0.
  std::vector<std::size_t> selected() const;
  /// Whether this list has been changing by `show` or `select` when it sent a message.
  bool updating() const { return updating_; }

 private:
  HWND list_;
  std::vector<Line> lines_;
  std::size_t columns_;
  bool updating_ = false;
};

}  // namespace standin
