#pragma once

#include <memory>
#include <string>
#include <vector>

#include "platform/automation.h"
#include "windows/services/graphics.h"

namespace standin {

/// Tells the pictures that the add-in hands over apart by what is on them: the icons of its DLL are
/// known, as button faces ("dial", or "dial on a square" without a mask) and as ribbon pictures
/// ("icon 101", which has the system's small-icon size; one that Office would have to shrink or
/// enlarge is "icon 101 of 32 pixels"). Any other picture gets a name of its own. Keeps each
/// picture for the windows to draw.
class HostPictures {
 public:
  /// `progId` is the add-in's; of one that has no such icons no picture is known.
  explicit HostPictures(std::u16string_view progId);

  /// The name of the face on the clipboard: of picture and mask, or of a plain bitmap where these
  /// are not; empty when there is none. Looks once: a clipboard that another program has open has
  /// none.
  std::u16string fromClipboard();
  /// The name of the face that two COM picture objects make, the mask null for none. Raises 13 for
  /// what is no bitmap and 5 for one that has not the size of a face.
  std::u16string face(const automation::Object& picture, const automation::Object& mask);
  /// A COM picture object as an object with a member "Name"; a null one for any other object.
  automation::Object fromPicture(const automation::Object& picture);

  /// The picture as it was handed over, on a ground of this colour; null for a name that nothing
  /// got. The object's own.
  HBITMAP find(std::u16string_view name) const;
  /// That of Outlook 2003's toolbars: not a button's, so that squares can be told.
  /// Pixels of a button's face.
  static constexpr int FaceSide = 16;
  static constexpr COLORREF Ground = RGB(0x9E, 0xBE, 0xF5);

 private:
  /// One and the same drawing may be a face and an icon.
  enum class Kind { Face, Ribbon };
  struct Known {
    Kind kind;
    std::u16string name;
    SIZE size;
    std::vector<std::uint32_t> pixels;
    windows::Bitmap bitmap;
  };
  const Known& known(Kind kind, std::u16string_view name, windows::Bitmap bitmap);
  const std::u16string& named(Kind kind, windows::Bitmap bitmap);

  std::vector<Known> known_;
};

}  // namespace standin
