#pragma once

#include <functional>
#include <optional>
#include <string>
#include <vector>

#include "simulator/outlook/Snapshot.h"
#include "standin/outlook/HostPictures.h"
#include "standin/outlook/hand/NativeWindow.h"

namespace standin {

/// The add-in's groups of a ribbon, drawn as panels: large pictures with their labels below, the
/// group's label at the bottom, the tabs' names above.
class RibbonWindow : public NativeWindow {
 public:
  using Click = std::function<void(const simulator::ControlView&)>;
  RibbonWindow(HWND parent, const HostPictures& pictures, Click click);

  /// From now on there is a strip of tabs, with groups below or without.
  void showTabs() { tabs_ = true; }
  void show(const std::vector<simulator::RibbonGroupView>& groups);
  std::optional<RECT> placeOf(std::u16string_view button) const;
  int height() const;

 private:
  struct Place {
    RECT rect;
    std::size_t group;
    std::size_t button;
  };
  LRESULT onMessage(UINT message, WPARAM wParam, LPARAM lParam) override;
  void layOut();
  void paintTabs(HDC canvas) const;
  void paint(HDC canvas) const;
  void paintButton(HDC canvas, const Place& place, bool hot) const;
  std::size_t hit(LPARAM position) const;
  const simulator::ControlView& buttonAt(const Place& place) const;

  const HostPictures& pictures_;
  const Click click_;
  std::vector<simulator::RibbonGroupView> groups_;
  std::vector<RECT> frames_;
  std::vector<Place> places_;
  std::size_t hot_;
  bool tabs_ = false;
};

}  // namespace standin
