#include "windows/services/Pictures.h"

#include <algorithm>

#include "windows/com/errors.h"
#include "windows/com/text.h"
#include "windows/com/values.h"
#include "windows/services/Clipboard.h"
#include "windows/services/graphics.h"

namespace windows {
namespace {

using automation::Error;
using automation::ErrorNumber;

/// Side of a button's face in pixels.
constexpr int FaceSize = 16;

/// Images that have a number in the resources.
constexpr struct {
  std::u16string_view name;
  int id;
} Numbered[] = {{u"dial", 101}, {u"drop", 102}, {u"action", 103}};

[[noreturn]] void raiseNotFound() {
  constexpr std::int32_t ElementNotFound = 35601;
  throw Error(ElementNotFound, u"Element not found");
}

/// Raises error 35601 when the module has none of this name.
Icon iconOf(HINSTANCE module, const wchar_t* name, int size) {
  auto icon = Icon::attach(static_cast<HICON>(LoadImageW(module, name, IMAGE_ICON, size, size, 0)));
  if (!icon) raiseNotFound();
  return icon;
}

Icon imageOf(HINSTANCE module, std::u16string_view name) {
  for (const auto& image : Numbered) {
    if (image.name == name) return iconOf(module, MAKEINTRESOURCEW(image.id), FaceSize);
  }
  return iconOf(module, wide(std::u16string(name)), FaceSize);
}

/// On success the picture owns the handle.
ComPtr<IDispatch> pictureOf(PICTDESC& description) {
  ComPtr<IDispatch> picture;
  check(OleCreatePictureIndirect(&description, IID_IPictureDisp, TRUE, picture.receiveVoid()));
  return picture;
}

/// A bitmap of a button's face, three bytes a pixel: what the system's alpha channel is, old Office
/// versions don't know.
class Canvas {
 public:
  Canvas() {
    BITMAPINFO info{};
    info.bmiHeader.biSize = sizeof info.bmiHeader;
    info.bmiHeader.biWidth = FaceSize;
    info.bmiHeader.biHeight = FaceSize;
    info.bmiHeader.biPlanes = 1;
    info.bmiHeader.biBitCount = 8 * BytesAPixel;
    info.bmiHeader.biSizeImage = Bytes;
    void* bits = nullptr;
    bitmap_ = Bitmap::attach(CreateDIBSection(nullptr, &info, DIB_RGB_COLORS, &bits, nullptr, 0));
    if (!bitmap_) throw Error(ErrorNumber::OutOfMemory);
    bits_ = static_cast<std::uint8_t*>(bits);
  }

  /// Draws icons one upon the other on a ground of one colour.
  void draw(COLORREF ground, const Icon& below, const Icon& above) {
    const auto device = MemoryContext::attach(CreateCompatibleDC(nullptr));
    const HGDIOBJ old = SelectObject(device.get(), bitmap_.get());
    const RECT all{0, 0, FaceSize, FaceSize};
    FillRect(device.get(), &all, Brush::attach(CreateSolidBrush(ground)).get());
    for (const Icon* icon : {&below, &above})
      DrawIconEx(device.get(), 0, 0, icon->get(), FaceSize, FaceSize, 0, nullptr, DI_NORMAL);
    SelectObject(device.get(), old);
    GdiFlush();
  }

  /// Rows of whole double words: no byte of them is padding.
  static constexpr int BytesAPixel = 3;
  static constexpr int Bytes = FaceSize * FaceSize * BytesAPixel;
  std::uint8_t* bits() noexcept { return bits_; }

  /// On success the picture owns the bitmap.
  automation::Object picture() {
    PICTDESC description{};
    description.cbSizeofstruct = sizeof description;
    description.picType = PICTYPE_BITMAP;
    description.bmp.hbitmap = bitmap_.get();
    const auto made = pictureOf(description);
    bitmap_.detach();
    return objectOf(made.get());
  }

 private:
  Bitmap bitmap_;
  std::uint8_t* bits_ = nullptr;
};

/// Makes a picture and its mask of what was drawn on black and on white: where the two differ, the
/// ground shines through. A mask knows no halves, so a pixel is drawn in its full colour or not at
/// all; there the picture has the colour of a button, for a host that does without the mask.
void separate(Canvas& onBlack, Canvas& onWhite) {
  const COLORREF button = GetSysColor(COLOR_BTNFACE);
  const std::uint8_t ground[] = {GetBValue(button), GetGValue(button), GetRValue(button)};
  constexpr int Full = 255;
  for (int at = 0; at < Canvas::Bytes; at += Canvas::BytesAPixel) {
    std::uint8_t* const colour = onBlack.bits() + at;
    std::uint8_t* const mask = onWhite.bits() + at;
    const int cover = Full - (mask[1] - colour[1]);
    const bool drawn = cover > Full / 2;
    for (int i = 0; i < Canvas::BytesAPixel; ++i) {
      colour[i] =
          drawn ? static_cast<std::uint8_t>(std::min(colour[i] * Full / cover, Full)) : ground[i];
      mask[i] = drawn ? 0 : Full;
    }
  }
}

HBITMAP bitmapOf(const automation::Object& object) {
  const auto dispatch = dispatchOf(object);
  const auto picture = dispatch.as<IPicture>();
  if (!picture) throw Error(ErrorNumber::TypeMismatch);
  OLE_HANDLE handle = 0;
  check(picture->get_Handle(&handle));
  return reinterpret_cast<HBITMAP>(static_cast<UINT_PTR>(handle));
}

}  // namespace

automation::Object Pictures::icon(std::int32_t id) {
  Icon icon = iconOf(module_, MAKEINTRESOURCEW(id), GetSystemMetrics(SM_CXSMICON));
  PICTDESC description{};
  description.cbSizeofstruct = sizeof description;
  description.picType = PICTYPE_ICON;
  description.icon.hicon = icon.get();
  const auto picture = pictureOf(description);
  icon.detach();
  return objectOf(picture.get());
}

platform::Face Pictures::overlay(std::u16string_view name, std::u16string_view background) {
  const Icon below = imageOf(module_, background);
  const Icon above = imageOf(module_, name);
  Canvas picture;
  Canvas mask;
  picture.draw(RGB(0, 0, 0), below, above);
  mask.draw(RGB(255, 255, 255), below, above);
  separate(picture, mask);
  return {picture.picture(), mask.picture()};
}

void Pictures::setClipboard(const platform::Face& face) {
  Clipboard().set(bitmapOf(face.picture), bitmapOf(face.mask));
}

bool Pictures::awaitClipboard() {
  return Clipboard::await() != 0;
}

}  // namespace windows
