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
constexpr int IconSide = 32;

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

/// Draws on a new bitmap of this size with the colour of a button's face.
template <class Draw>
HBITMAP drawn(SIZE size, Draw&& draw) {
  const HDC screen = GetDC(nullptr);
  const HDC canvas = CreateCompatibleDC(screen);
  const HBITMAP bitmap = CreateCompatibleBitmap(screen, size.cx, size.cy);
  ReleaseDC(nullptr, screen);
  const HGDIOBJ old = SelectObject(canvas, bitmap);
  const RECT all{0, 0, size.cx, size.cy};
  FillRect(canvas, &all, GetSysColorBrush(COLOR_BTNFACE));
  draw(canvas);
  SelectObject(canvas, old);
  DeleteDC(canvas);
  return bitmap;
}

HBITMAP copyOf(HBITMAP bitmap) {
  const SIZE size = sizeOf(bitmap);
  return drawn(size, [&](HDC canvas) {
    const HDC source = CreateCompatibleDC(canvas);
    const HGDIOBJ old = SelectObject(source, bitmap);
    BitBlt(canvas, 0, 0, size.cx, size.cy, source, 0, 0, SRCCOPY);
    SelectObject(source, old);
    DeleteDC(source);
  });
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

/// What a COM picture shows, as a new bitmap; null for an empty picture and other objects.
HBITMAP bitmapOf(const automation::Object& object) {
  const auto picture = windows::dispatchOf(object).as<IPicture>();
  SHORT type = PICTYPE_NONE;
  OLE_HANDLE handle = 0;
  if (!picture || FAILED(picture->get_Type(&type)) || FAILED(picture->get_Handle(&handle)))
    return nullptr;
  const auto pointer = static_cast<UINT_PTR>(handle);
  if (type == PICTYPE_BITMAP) return copyOf(reinterpret_cast<HBITMAP>(pointer));
  if (type != PICTYPE_ICON) return nullptr;
  return drawn({IconSide, IconSide}, [&](HDC canvas) {
    DrawIconEx(canvas, 0, 0, reinterpret_cast<HICON>(pointer), IconSide, IconSide, 0, nullptr,
               DI_NORMAL);
  });
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
  const auto path =
      registry.read(platform::RegistryRoot::ClassesRoot, key + u"\\InprocServer32", u"");
  return path ? path->text.substr(0, path->text.find(u'\0')) : std::u16string();
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
  for (const std::u16string_view face : Faces)
    known(face, bitmapOf(pictures.overlay(face, u"blank")));
  for (const std::int32_t icon : Icons)
    known(u"icon " + automation::int32Text(icon), bitmapOf(pictures.icon(icon)));
}

HostPictures::~HostPictures() {
  for (const Known& picture : known_) DeleteObject(picture.bitmap);
}

const HostPictures::Known& HostPictures::known(std::u16string_view name, HBITMAP bitmap) {
  const SIZE size = sizeOf(bitmap);
  known_.push_back({std::u16string(name), size, pixelsOf(bitmap, size), bitmap});
  return known_.back();
}

automation::Object HostPictures::named(HBITMAP bitmap) {
  const SIZE size = sizeOf(bitmap);
  const auto pixels = pixelsOf(bitmap, size);
  const auto same = std::ranges::find_if(known_, [&](const Known& picture) {
    return picture.size.cx == size.cx && picture.size.cy == size.cy && picture.pixels == pixels;
  });
  std::u16string name;
  if (same != known_.end()) {
    DeleteObject(bitmap);
    name = same->name;
  } else {
    name =
        known(u"picture " + automation::int32Text(static_cast<std::int32_t>(known_.size())), bitmap)
            .name;
  }
  return std::make_shared<NamedPicture>(std::move(name))->handle();
}

automation::Object HostPictures::fromClipboard() {
  if (!OpenClipboard(nullptr)) return {};
  const auto bitmap = static_cast<HBITMAP>(GetClipboardData(CF_BITMAP));
  const HBITMAP copy = bitmap ? copyOf(bitmap) : nullptr;
  CloseClipboard();
  return copy ? named(copy) : automation::Object();
}

automation::Object HostPictures::fromPicture(const automation::Object& picture) {
  const HBITMAP bitmap = bitmapOf(picture);
  return bitmap ? named(bitmap) : automation::Object();
}

HBITMAP HostPictures::find(std::u16string_view name) const {
  const auto found = std::ranges::find(known_, name, &Known::name);
  return found == known_.end() ? nullptr : found->bitmap;
}

}  // namespace standin
