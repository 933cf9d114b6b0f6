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
namespace {

constexpr std::u16string_view Faces[] = {u"dial", u"drop", u"velnor", u"action", u"transfer"};
constexpr std::int32_t Icons[] = {101, 102, 103};
/// Those that the icons are drawn in.
constexpr int IconSides[] = {16, 24, 32, 48};
constexpr int FaceSide = 16;

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
HBITMAP drawn(SIZE size, Draw&& draw) {
  const HDC screen = GetDC(nullptr);
  const HDC canvas = CreateCompatibleDC(screen);
  const HBITMAP bitmap = CreateCompatibleBitmap(screen, size.cx, size.cy);
  ReleaseDC(nullptr, screen);
  const HGDIOBJ old = SelectObject(canvas, bitmap);
  const RECT all{0, 0, size.cx, size.cy};
  const HBRUSH ground = CreateSolidBrush(HostPictures::Ground);
  FillRect(canvas, &all, ground);
  DeleteObject(ground);
  draw(canvas);
  SelectObject(canvas, old);
  DeleteDC(canvas);
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
  const HDC screen = GetDC(nullptr);
  GetDIBits(screen, bitmap, 0, static_cast<UINT>(size.cy), pixels.data(), &info, DIB_RGB_COLORS);
  ReleaseDC(nullptr, screen);
  constexpr std::uint32_t colour = 0xFFFFFF;
  for (std::uint32_t& pixel : pixels) pixel &= colour;
  return pixels;
}

/// The picture where the mask is black; all of it without one.
HBITMAP faceOf(HBITMAP picture, HBITMAP mask) {
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

HBITMAP drawnIcon(HICON icon) {
  ICONINFO info{};
  if (!GetIconInfo(icon, &info)) return nullptr;
  const SIZE size = sizeOf(info.hbmColor);
  DeleteObject(info.hbmColor);
  DeleteObject(info.hbmMask);
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
HBITMAP unpacked(const wchar_t* format) {
  const HANDLE memory = GetClipboardData(RegisterClipboardFormatW(format));
  const auto* info = static_cast<const BITMAPINFO*>(memory ? GlobalLock(memory) : nullptr);
  if (!info) return nullptr;
  const HDC screen = GetDC(nullptr);
  const HBITMAP bitmap =
      CreateDIBitmap(screen, &info->bmiHeader, CBM_INIT, info->bmiColors, info, DIB_RGB_COLORS);
  ReleaseDC(nullptr, screen);
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

/// A file whose resources are read, without running anything of it.
class ResourceFile {
 public:
  explicit ResourceFile(const std::u16string& path)
      : module_(path.empty()
                    ? nullptr
                    : LoadLibraryExW(windows::wide(path), nullptr, LOAD_LIBRARY_AS_DATAFILE)) {}
  ~ResourceFile() {
    if (module_) FreeLibrary(module_);
  }
  ResourceFile(const ResourceFile&) = delete;
  ResourceFile& operator=(const ResourceFile&) = delete;
  HMODULE module() const { return module_; }

 private:
  HMODULE module_;
};

}  // namespace

HostPictures::HostPictures(std::u16string_view progId) {
  const ResourceFile file(serverPath(progId));
  if (!file.module()) return;
  windows::Pictures pictures(file.module());
  for (const std::u16string_view name : Faces) {
    const auto face = pictures.overlay(name, u"blank");
    const auto picture = static_cast<HBITMAP>(handleOf(face.picture, PICTYPE_BITMAP));
    const auto mask = static_cast<HBITMAP>(handleOf(face.mask, PICTYPE_BITMAP));
    known(Kind::Face, name, faceOf(picture, mask));
    known(Kind::Face, std::u16string(name) + u" on a square", faceOf(picture, nullptr));
  }
  for (const std::int32_t id : Icons) {
    for (const int side : IconSides) {
      const auto icon = static_cast<HICON>(
          LoadImageW(file.module(), MAKEINTRESOURCEW(id), IMAGE_ICON, side, side, 0));
      std::u16string name = u"icon " + automation::int32Text(id);
      if (side != GetSystemMetrics(SM_CXSMICON))
        name += u" of " + automation::int32Text(side) + u" pixels";
      if (icon) known(Kind::Ribbon, name, drawnIcon(icon));
      if (icon) DestroyIcon(icon);
    }
  }
}

HostPictures::~HostPictures() {
  for (const Known& picture : known_) DeleteObject(picture.bitmap);
}

const HostPictures::Known& HostPictures::known(Kind kind, std::u16string_view name,
                                               HBITMAP bitmap) {
  const SIZE size = sizeOf(bitmap);
  known_.push_back({kind, std::u16string(name), size, pixelsOf(bitmap, size), bitmap});
  return known_.back();
}

const std::u16string& HostPictures::named(Kind kind, HBITMAP bitmap) {
  const SIZE size = sizeOf(bitmap);
  const auto pixels = pixelsOf(bitmap, size);
  const auto same = std::ranges::find_if(known_, [&](const Known& picture) {
    return picture.kind == kind && picture.size.cx == size.cx && picture.size.cy == size.cy &&
           picture.pixels == pixels;
  });
  if (same == known_.end()) {
    const auto number = static_cast<std::int32_t>(known_.size());
    return known(kind, u"picture " + automation::int32Text(number), bitmap).name;
  }
  DeleteObject(bitmap);
  return same->name;
}

std::u16string HostPictures::fromClipboard() {
  if (!OpenClipboard(nullptr)) return {};
  const HBITMAP picture = unpacked(L"Toolbar Button Face");
  const HBITMAP mask = unpacked(L"Toolbar Button Mask");
  const auto plain = static_cast<HBITMAP>(GetClipboardData(CF_BITMAP));
  HBITMAP face = nullptr;
  if (picture && mask)
    face = faceOf(picture, mask);
  else if (plain)
    face = faceOf(plain, nullptr);
  CloseClipboard();
  if (picture) DeleteObject(picture);
  if (mask) DeleteObject(mask);
  return face ? named(Kind::Face, face) : std::u16string();
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
  const HBITMAP shown = icon ? drawnIcon(icon) : bitmap ? faceOf(bitmap, nullptr) : nullptr;
  return shown ? std::make_shared<NamedPicture>(named(Kind::Ribbon, shown))->handle()
               : automation::Object();
}

HBITMAP HostPictures::find(std::u16string_view name) const {
  const auto found = std::ranges::find(known_, name, &Known::name);
  return found == known_.end() ? nullptr : found->bitmap;
}

}  // namespace standin
