#pragma once

#include "windows/com/api.h"

namespace windows {

/// Where the system stands in its tables of a process's handles, of windows, menus and icons, and
/// of drawing objects: freed places are handed out again first, so that equal marks mean that
/// nothing was kept in between. (Wine does not count a process's objects.)
struct HandleMarks {
  int kernel;
  int user;
  int gdi;

  /// Windows of other programs count as well: waits until none comes or goes, five seconds at most.
  static HandleMarks settled() {
    constexpr DWORD Step = 250;
    HandleMarks marks;
    for (int i = 0; i < 20; ++i) {
      Sleep(Step);
      const HandleMarks next;
      if (next.user == marks.user) return next;
      marks = next;
    }
    return marks;
  }

  HandleMarks() {
    const HANDLE event = CreateEventW(nullptr, FALSE, FALSE, nullptr);
    // The lowest two bits are free for programs.
    kernel = index(event) >> 2;
    CloseHandle(event);
    const HMENU menu = CreateMenu();
    user = index(menu);
    DestroyMenu(menu);
    const HBRUSH brush = CreateSolidBrush(RGB(1, 2, 3));
    gdi = index(brush);
    DeleteObject(brush);
  }

 private:
  static int index(const void* handle) {
    return static_cast<int>(reinterpret_cast<UINT_PTR>(handle) & 0xFFFF);
  }
};

}  // namespace windows
