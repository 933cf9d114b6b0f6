#pragma once

#include "windows/com/Owner.h"

/// Owners of what is drawn, drawn with and drawn on.
namespace windows {

struct FreeGraphics {
  void operator()(HGDIOBJ object) const noexcept { DeleteObject(object); }
  void operator()(HICON icon) const noexcept { DestroyIcon(icon); }
  void operator()(HDC memory) const noexcept { DeleteDC(memory); }
};
using Bitmap = Owner<HBITMAP, FreeGraphics>;
using Brush = Owner<HBRUSH, FreeGraphics>;
using Icon = Owner<HICON, FreeGraphics>;
/// A context that draws on a bitmap.
using MemoryContext = Owner<HDC, FreeGraphics>;

struct ReleaseScreen {
  void operator()(HDC screen) const noexcept { ReleaseDC(nullptr, screen); }
};
using ScreenContext = Owner<HDC, ReleaseScreen>;
inline ScreenContext screenContext() noexcept {
  return ScreenContext::attach(GetDC(nullptr));
}

}  // namespace windows
