#pragma once

#include <cstdint>
#include <string>
#include <string_view>

#include "platform/pictures.h"
#include "simulator/boundary.h"

namespace simulator {

/// The add-in's pictures and the clipboard. A picture is an object of the class "Picture" whose
/// member "Name" tells it apart: "dial" for the image over the blank one, "dial over drop" over any
/// other, "icon 101" for an icon. Observers' errors pass through.
class SimPictures : public platform::Pictures {
 public:
  explicit SimPictures(Boundary& boundary) : boundary_(boundary) {}

  automation::Object icon(std::int32_t id) override;
  automation::Object overlay(std::u16string_view name, std::u16string_view background) override;
  void clearClipboard() override;
  void setClipboard(const automation::Object& picture) override;

  // Not crossings: for the program that plays the machine.

  /// What a paste would get; null when the clipboard is empty or holds no picture.
  automation::Object clipboardPicture() const { return clipboard_; }
  /// Its name; empty for none.
  std::u16string clipboardName() const;
  /// The next `count` overlays, or attempts to put a picture on the clipboard, raise an error.
  void failOverlays(int count) { overlayFailures_ = count; }
  void failClipboard(int count) { clipboardFailures_ = count; }

 private:
  Boundary& boundary_;
  automation::Object clipboard_;
  int overlayFailures_ = 0;
  int clipboardFailures_ = 0;
};

}  // namespace simulator
