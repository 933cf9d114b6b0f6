#include "windows/services/Pictures.h"

#include "windows/com/errors.h"
#include "windows/com/text.h"
#include "windows/com/values.h"
#include "windows/services/Clipboard.h"

namespace windows {
namespace {

using automation::Error;
using automation::ErrorNumber;

/// Sides of a button's face and of a picture of the ribbon, in pixels.
constexpr int FaceSize = 16;
constexpr int IconSize = 32;

/// Images that have a number in the resources.
constexpr struct {
  std::u16string_view name;
  int id;
} Numbered[] = {{u"dial", 101}, {u"drop", 102}, {u"action", 103}};

[[noreturn]] void raiseNotFound() {
  constexpr std::int32_t ElementNotFound = 35601;
  throw Error(ElementNotFound, u"Element not found");
}

/// Owns an icon until it is handed on.
class Icon {
 public:
  /// Raises error 35601 when the module has none of this name.
  Icon(HINSTANCE module, const wchar_t* name, int size)
      : handle_(static_cast<HICON>(LoadImageW(module, name, IMAGE_ICON, size, size, 0))) {
    if (!handle_) raiseNotFound();
  }
  ~Icon() {
    if (handle_) DestroyIcon(handle_);
  }
  Icon(const Icon&) = delete;
  Icon& operator=(const Icon&) = delete;

  HICON get() const noexcept { return handle_; }
  void release() noexcept { handle_ = nullptr; }

 private:
  HICON handle_;
};

Icon imageOf(HINSTANCE module, std::u16string_view name) {
  for (const auto& image : Numbered) {
    if (image.name == name) return {module, MAKEINTRESOURCEW(image.id), FaceSize};
  }
  return {module, wide(std::u16string(name)), FaceSize};
}

/// A bitmap of a button's face that is drawn upon as long as the object lives.
class Face {
 public:
  Face() {
    const HDC screen = GetDC(nullptr);
    canvas_ = CreateCompatibleDC(screen);
    bitmap_ = CreateCompatibleBitmap(screen, FaceSize, FaceSize);
    ReleaseDC(nullptr, screen);
    old_ = SelectObject(canvas_, bitmap_);
    const RECT all{0, 0, FaceSize, FaceSize};
    FillRect(canvas_, &all, GetSysColorBrush(COLOR_BTNFACE));
  }
  ~Face() {
    if (finish()) DeleteObject(bitmap_);
  }
  Face(const Face&) = delete;
  Face& operator=(const Face&) = delete;

  void draw(const Icon& icon) {
    DrawIconEx(canvas_, 0, 0, icon.get(), FaceSize, FaceSize, 0, nullptr, DI_NORMAL);
  }
  /// Ends the drawing.
  HBITMAP finish() {
    if (canvas_) {
      SelectObject(canvas_, old_);
      DeleteDC(std::exchange(canvas_, nullptr));
    }
    return bitmap_;
  }
  /// The bitmap has another owner now.
  void release() noexcept { bitmap_ = nullptr; }

 private:
  HDC canvas_ = nullptr;
  HBITMAP bitmap_ = nullptr;
  HGDIOBJ old_ = nullptr;
};

/// On success the picture owns the handle.
ComPtr<IDispatch> pictureOf(PICTDESC& description) {
  ComPtr<IDispatch> picture;
  check(OleCreatePictureIndirect(&description, IID_IPictureDisp, TRUE, picture.receiveVoid()));
  return picture;
}

}  // namespace

automation::Object Pictures::icon(std::int32_t id) {
  Icon icon(module_, MAKEINTRESOURCEW(id), IconSize);
  PICTDESC description{};
  description.cbSizeofstruct = sizeof description;
  description.picType = PICTYPE_ICON;
  description.icon.hicon = icon.get();
  const auto picture = pictureOf(description);
  icon.release();
  return objectOf(picture.get());
}

automation::Object Pictures::overlay(std::u16string_view name, std::u16string_view background) {
  const Icon below = imageOf(module_, background);
  const Icon above = imageOf(module_, name);
  Face face;
  face.draw(below);
  face.draw(above);
  PICTDESC description{};
  description.cbSizeofstruct = sizeof description;
  description.picType = PICTYPE_BITMAP;
  description.bmp.hbitmap = face.finish();
  if (!description.bmp.hbitmap) throw Error(ErrorNumber::OutOfMemory);
  const auto picture = pictureOf(description);
  face.release();
  return objectOf(picture.get());
}

void Pictures::clearClipboard() {
  Clipboard().clear();
}

void Pictures::setClipboard(const automation::Object& picture) {
  const auto dispatch = dispatchOf(picture);
  const auto bitmap = dispatch.as<IPicture>();
  if (!bitmap) throw Error(ErrorNumber::TypeMismatch);
  OLE_HANDLE handle = 0;
  check(bitmap->get_Handle(&handle));
  Clipboard().set(reinterpret_cast<HBITMAP>(static_cast<UINT_PTR>(handle)));
}

}  // namespace windows
