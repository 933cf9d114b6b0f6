#pragma once

#include <map>
#include <memory>
#include <optional>
#include <string>

#include "simulator/outlook/Snapshot.h"
#include "standin/outlook/hand/BarWindow.h"
#include "standin/outlook/hand/ItemList.h"
#include "standin/outlook/hand/NativeWindow.h"
#include "standin/outlook/hand/RibbonWindow.h"

namespace standin {

class HandDesk;

/// One window of the simulated Outlook as a real one. It shows what the host tells and hands what
/// the user does on to the desk.
class HostWindow : public NativeWindow {
 public:
  HostWindow(HandDesk& desk, const simulator::WindowView& view);

  /// Draws what is new; does nothing when nothing is.
  void show(const simulator::WindowView& view);
  /// Where a control of a bar or of the ribbon stands on the screen.
  std::optional<RECT> placeOf(std::u16string_view control) const;

 private:
  LRESULT onMessage(UINT message, WPARAM wParam, LPARAM lParam) override;
  LRESULT onNotify(const NMHDR& header);
  void onCommand(int id, int notification);
  void onSelection();
  /// The toolbar that Outlook has of its own.
  void addStandardBar();
  void showBars();
  void showItems();
  void layOut();
  bool explorer() const { return view_.kind == simulator::WindowKind::Explorer; }

  HandDesk& desk_;
  simulator::WindowView view_;
  std::unique_ptr<BarWindow> standard_;
  std::map<std::u16string, std::unique_ptr<BarWindow>> bars_;
  std::unique_ptr<RibbonWindow> ribbon_;
  std::unique_ptr<ItemList> items_;
  HWND folders_ = nullptr;
  bool selectionPosted_ = false;
};

}  // namespace standin
