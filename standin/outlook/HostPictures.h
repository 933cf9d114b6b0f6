#pragma once

#include <memory>
#include <string>
#include <vector>

#include "platform/automation.h"
#include "windows/com/api.h"

namespace standin {

/// Tells the pictures that the add-in hands over apart by what is on them: the icons of its DLL are
/// known, as button faces ("dial") and as ribbon pictures ("icon 101"). Any other picture gets a
/// name of its own. Keeps each picture for the windows to draw.
class HostPictures {
 public:
  /// `progId` is the add-in's; of one that has no such icons no picture is known.
  explicit HostPictures(std::u16string_view progId);
  ~HostPictures();
  HostPictures(const HostPictures&) = delete;
  HostPictures& operator=(const HostPictures&) = delete;

  /// The bitmap on the clipboard as an object with a member "Name"; null when there is none.
  automation::Object fromClipboard();
  /// The same for a COM picture object; a null one for any other object.
  automation::Object fromPicture(const automation::Object& picture);

  /// The picture as it was handed over, on the colour of a button's face; null for a name that
  /// nothing got. The object's own.
  HBITMAP find(std::u16string_view name) const;

 private:
  struct Known {
    std::u16string name;
    SIZE size;
    std::vector<std::uint32_t> pixels;
    HBITMAP bitmap;
  };
  const Known& known(std::u16string_view name, HBITMAP bitmap);
  automation::Object named(HBITMAP bitmap);

  std::vector<Known> known_;
};

}  // namespace standin
