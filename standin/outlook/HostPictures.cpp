#include "standin/outlook/HostPictures.h"

#include <algorithm>
#include <span>

#include "platform/conversions.h"
#include "simulator/object.h"
#include "windows/com/ComPtr.h"
#include "windows/com/text.h"
#include "windows/com/values.h"
#include "windows/services/Pictures.h"
#include "windows/services/Registry.h"

namespace standin {

using windows::Bitmap;

namespace {

constexpr std::u16string_view Faces[] = {u"dial", u"drop", u"velnor", u"action", u"transfer"};
constexpr std::int32_t Icons[] = {101, 102, 103};
/// Those that the icons are drawn in.
constexpr int IconSides[] = {16, 24, 32, 48};

class NamedPicture : public simulator::TableObject<NamedPicture> {
 public:
  static constexpr std::u16string_view Name = u"Picture";
  static std::span<const simulator::MemberRow<NamedPicture>> members() {
    static constexpr simulator::MemberRow<NamedPicture> Rows[] = {
        {u"Name",
         [](NamedPicture& self, simulator::Arguments) -> automation::Value { return self.name_; }}};
    return Rows;
  }
  explicit NamedPicture(std::u16string name) : name_(std::move(name)) {}

 private:
  std::u16string name_;
};

SIZE sizeOf(HBITMAP bitmap) {
  BITMAP data{};
  GetObjectW(bitmap, sizeof data, &data);
  return {data.bmWidth, data.bmHeight};
}

/// Draws on a new bitmap of this size and the ground's colour.
template <class Draw>
Bitmap drawn(SIZE size, Draw&& draw) {
  const auto screen = windows::screenContext();
  const auto canvas = windows::MemoryContext::attach(CreateCompatibleDC(screen.get()));
  auto bitmap = Bitmap::attach(CreateCompatibleBitmap(screen.get(), size.cx, size.cy));
  const HGDIOBJ old = SelectObject(canvas.get(), bitmap.get());
  const RECT all{0, 0, size.cx, size.cy};
  FillRect(canvas.get(), &all,
           windows::Brush::attach(CreateSolidBrush(HostPictures::Ground)).get());
  draw(canvas.get());
  SelectObject(canvas.get(), old);
  return bitmap;
}

/// Colours row by row, without what the fourth byte holds.
std::vector<std::uint32_t> pixelsOf(HBITMAP bitmap, SIZE size) {
  std::vector<std::uint32_t> pixels(static_cast<std::size_t>(size.cx * size.cy));
  BITMAPINFO info{};
  info.bmiHeader.biSize = sizeof info.bmiHeader;
  info.bmiHeader.biWidth = size.cx;
  info.bmiHeader.biHeight = -size.cy;
  info.bmiHeader.biPlanes = 1;
  info.bmiHeader.biBitCount = 32;
  info.bmiHeader.biCompression = BI_RGB;
  GetDIBits(windows::screenContext().get(), bitmap, 0, static_cast<UINT>(size.cy), pixels.data(),
            &info, DIB_RGB_COLORS);
  constexpr std::uint32_t colour = 0xFFFFFF;
  for (std::uint32_t& pixel : pixels) pixel &= colour;
  return pixels;
}

/// The picture where the mask is black; all of it without one.
Bitmap faceOf(HBITMAP picture, HBITMAP mask) {
  const SIZE size = sizeOf(picture);
  const auto colours = pixelsOf(picture, size);
  const auto cover = mask ? pixelsOf(mask, size) : std::vector<std::uint32_t>(colours.size());
  return drawn(size, [&](HDC canvas) {
    for (std::size_t i = 0; i < colours.size(); ++i) {
      const std::uint32_t c = colours[i];
      if (cover[i] == 0)
        SetPixel(canvas, static_cast<int>(i) % size.cx, static_cast<int>(i) / size.cx,
                 RGB(c >> 16 & 0xFF, c >> 8 & 0xFF, c & 0xFF));
    }
  });
}

Bitmap drawnIcon(HICON icon) {
  ICONINFO info{};
  if (!GetIconInfo(icon, &info)) return {};
  const auto colours = Bitmap::attach(info.hbmColor);
  const auto mask = Bitmap::attach(info.hbmMask);
  const SIZE size = sizeOf(colours.get());
  return drawn(size, [&](HDC canvas) {
    DrawIconEx(canvas, 0, 0, icon, size.cx, size.cy, 0, nullptr, DI_NORMAL);
  });
}

/// The handle of a COM picture of this kind; null for any other object.
HANDLE handleOf(const automation::Object& object, SHORT kind) {
  const auto picture = windows::dispatchOf(object).as<IPicture>();
  SHORT type = PICTYPE_NONE;
  OLE_HANDLE handle = 0;
  if (!picture || FAILED(picture->get_Type(&type)) || type != kind ||
      FAILED(picture->get_Handle(&handle)))
    return nullptr;
  return reinterpret_cast<HANDLE>(static_cast<UINT_PTR>(handle));
}

/// A new bitmap of a registered format's data on the open clipboard; null when it is not there.
Bitmap unpacked(const wchar_t* format) {
  const HANDLE memory = GetClipboardData(RegisterClipboardFormatW(format));
  const auto* info = static_cast<const BITMAPINFO*>(memory ? GlobalLock(memory) : nullptr);
  if (!info) return {};
  auto bitmap = Bitmap::attach(CreateDIBitmap(windows::screenContext().get(), &info->bmiHeader,
                                              CBM_INIT, info->bmiColors, info, DIB_RGB_COLORS));
  GlobalUnlock(memory);
  return bitmap;
}

/// The file of the server that the program id stands for; empty when there is none.
std::u16string serverPath(std::u16string_view progId) {
  windows::Registry registry;
  CLSID id;
  wchar_t text[40] = {};
  if (FAILED(CLSIDFromProgID(windows::wide(std::u16string(progId)), &id)) ||
      StringFromGUID2(id, text, static_cast<int>(std::size(text))) == 0)
    return {};
  const std::u16string key = u"CLSID\\" + std::u16string(windows::utf16(text));
  return platform::textOf(
      registry.read(platform::RegistryRoot::ClassesRoot, key + u"\\InprocServer32", u""));
}

struct FreeModule {
  void operator()(HMODULE module) const noexcept { FreeLibrary(module); }
};

}  // namespace

HostPictures::HostPictures(std::u16string_view progId) {
  const std::u16string path = serverPath(progId);
  if (path.empty()) return;
  // Its resources are read, without running anything of it.
  const auto file = windows::Owner<HMODULE, FreeModule>::attach(
      LoadLibraryExW(windows::wide(path), nullptr, LOAD_LIBRARY_AS_DATAFILE));
  if (!file) return;
  windows::Pictures pictures(file.get());
  for (const std::u16string_view name : Faces) {
    const auto face = pictures.overlay(name, u"blank");
    const auto picture = static_cast<HBITMAP>(handleOf(face.picture, PICTYPE_BITMAP));
    const auto mask = static_cast<HBITMAP>(handleOf(face.mask, PICTYPE_BITMAP));
    known(Kind::Face, name, faceOf(picture, mask));
    known(Kind::Face, std::u16string(name) + u" on a square", faceOf(picture, nullptr));
  }
  for (const std::int32_t id : Icons) {
    for (const int side : IconSides) {
      const auto icon = windows::Icon::attach(static_cast<HICON>(
          LoadImageW(file.get(), MAKEINTRESOURCEW(id), IMAGE_ICON, side, side, 0)));
      std::u16string name = u"icon " + automation::int32Text(id);
      if (side != GetSystemMetrics(SM_CXSMICON))
        name += u" of " + automation::int32Text(side) + u" pixels";
      if (icon) known(Kind::Ribbon, name, drawnIcon(icon.get()));
    }
  }
}

const HostPictures::Known& HostPictures::known(Kind kind, std::u16string_view name, Bitmap bitmap) {
  const SIZE size = sizeOf(bitmap.get());
  auto pixels = pixelsOf(bitmap.get(), size);
  known_.push_back({kind, std::u16string(name), size, std::move(pixels), std::move(bitmap)});
  return known_.back();
}

const std::u16string& HostPictures::named(Kind kind, Bitmap bitmap) {
  const SIZE size = sizeOf(bitmap.get());
  const auto pixels = pixelsOf(bitmap.get(), size);
  const auto same = std::ranges::find_if(known_, [&](const Known& picture) {
    return picture.kind == kind && picture.size.cx == size.cx && picture.size.cy == size.cy &&
           picture.pixels == pixels;
  });
  if (same == known_.end()) {
    const auto number = static_cast<std::int32_t>(known_.size());
    return known(kind, u"picture " + automation::int32Text(number), std::move(bitmap)).name;
  }
  return same->name;
}

std::u16string HostPictures::fromClipboard() {
  if (!OpenClipboard(nullptr)) return {};
  const Bitmap picture = unpacked(L"Toolbar Button Face");
  const Bitmap mask = unpacked(L"Toolbar Button Mask");
  const auto plain = static_cast<HBITMAP>(GetClipboardData(CF_BITMAP));
  Bitmap face;
  if (picture && mask)
    face = faceOf(picture.get(), mask.get());
  else if (plain)
    face = faceOf(plain, nullptr);
  CloseClipboard();
  return face ? named(Kind::Face, std::move(face)) : std::u16string();
}

std::u16string HostPictures::face(const automation::Object& picture,
                                  const automation::Object& mask) {
  const auto bitmapOf = [](const automation::Object& object) {
    const auto bitmap = static_cast<HBITMAP>(handleOf(object, PICTYPE_BITMAP));
    if (!bitmap) throw automation::Error(automation::ErrorNumber::TypeMismatch);
    const SIZE size = sizeOf(bitmap);
    if (size.cx != FaceSide || size.cy != FaceSide)
      throw automation::Error(automation::ErrorNumber::InvalidProcedureCall);
    return bitmap;
  };
  const HBITMAP colours = bitmapOf(picture);
  return named(Kind::Face, faceOf(colours, mask ? bitmapOf(mask) : nullptr));
}

automation::Object HostPictures::fromPicture(const automation::Object& picture) {
  const auto icon = static_cast<HICON>(handleOf(picture, PICTYPE_ICON));
  const auto bitmap = static_cast<HBITMAP>(handleOf(picture, PICTYPE_BITMAP));
  Bitmap shown = icon ? drawnIcon(icon) : bitmap ? faceOf(bitmap, nullptr) : Bitmap();
  return shown ? std::make_shared<NamedPicture>(named(Kind::Ribbon, std::move(shown)))->handle()
               : automation::Object();
}

HBITMAP HostPictures::find(std::u16string_view name) const {
  const auto found = std::ranges::find(known_, name, &Known::name);
  return found == known_.end() ? nullptr : found->bitmap.get();
}

}  // namespace standin
