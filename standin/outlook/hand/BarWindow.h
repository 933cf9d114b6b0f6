#pragma once

#include <functional>
#include <optional>
#include <string>
#include <vector>

#include "simulator/outlook/Snapshot.h"
#include "standin/outlook/HostPictures.h"
#include "standin/outlook/hand/NativeWindow.h"

#include <commctrl.h>

namespace standin {

/// A command bar as a real toolbar: buttons with pictures and captions, edit boxes, tooltips.
class BarWindow : public NativeWindow {
 public:
  struct Hand {
    std::function<void(const simulator::ControlView&)> click;
    /// Enter was pressed in an edit box with this text.
    std::function<void(const simulator::ControlView&, std::u16string_view)> type;
  };

  BarWindow(HWND parent, const HostPictures& pictures, Hand hand);
  ~BarWindow() override;

  void show(const simulator::BarView& bar);
  /// Where the control of this tag or caption stands on the screen.
  std::optional<RECT> placeOf(std::u16string_view control) const;
  int height() const;

 private:
  LRESULT onMessage(UINT message, WPARAM wParam, LPARAM lParam) override;
  LRESULT onNotify(NMHDR& header);
  void clear();
  void addControl(std::size_t index);
  void addBox(std::size_t index);
  int imageOf(const simulator::ControlView& control);
  static LRESULT CALLBACK boxProcedure(HWND box, UINT message, WPARAM wParam,
                                       LPARAM lParam) noexcept;

  /// An edit control over its place in the toolbar.
  struct Box {
    HWND window;
    std::size_t index;
    WNDPROC procedure;
  };

  const HostPictures& pictures_;
  const Hand hand_;
  HWND toolbar_ = nullptr;
  HIMAGELIST images_ = nullptr;
  simulator::BarView shown_;
  std::vector<Box> boxes_;
};

/// A caption with the place of its letter for the keyboard left out.
std::u16string plainCaption(std::u16string_view caption);

}  // namespace standin
