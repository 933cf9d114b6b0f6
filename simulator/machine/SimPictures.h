#pragma once

#include <cstdint>
#include <optional>
#include <string>
#include <string_view>

#include "platform/pictures.h"
#include "simulator/Uptime.h"
#include "simulator/boundary.h"

namespace simulator {

/// The add-in's pictures and the clipboard. A picture is an object of the class "Picture" whose
/// member "Name" tells it apart: "dial" for the image over the blank one, "dial over drop" over any
/// other, "mask of dial" for its mask, "icon 101" for an icon. Observers' errors pass through.
class SimPictures : public platform::Pictures {
 public:
  SimPictures(Boundary& boundary, Uptime& uptime) : boundary_(boundary), uptime_(uptime) {}

  automation::Object icon(std::int32_t id) override;
  platform::Face overlay(std::u16string_view name, std::u16string_view background) override;
  void setClipboard(const platform::Face& face) override;
  bool awaitClipboard() override;

  // Not crossings: for the program that plays the machine.

  /// The name of the face that a paste would get; empty when the clipboard holds none or another
  /// program has it open.
  std::u16string clipboardFace() const { return held() ? std::u16string() : face_; }
  /// What the user has copied and has not been replaced.
  const std::u16string& copied() const { return copied_; }
  void copy(std::u16string_view text);
  /// From now on another program opens the clipboard for so long whenever something new is on it;
  /// 0 for none.
  void watchClipboard(std::uint32_t milliseconds) { watch_ = milliseconds; }
  /// The name of the face that a picture and its mask make, or "dial on a square" without a mask.
  /// Raises what Office raises: 13 for what is no picture, 5 for a mask that does not belong to it.
  static std::u16string faceName(const automation::Object& picture, const automation::Object& mask);
  /// The next `count` overlays, or attempts to put a picture on the clipboard, raise an error.
  void failOverlays(int count) { overlayFailures_ = count; }
  void failClipboard(int count) { clipboardFailures_ = count; }

 private:
  bool held() const { return uptime_.now() < heldUntil_; }
  /// The number of tries that failed before the clipboard was free; nothing when it never was.
  std::optional<int> open();

  Boundary& boundary_;
  Uptime& uptime_;
  std::u16string face_;
  std::u16string copied_;
  std::uint32_t watch_ = 0;
  std::int64_t heldUntil_ = 0;
  int overlayFailures_ = 0;
  int clipboardFailures_ = 0;
};

}  // namespace simulator
