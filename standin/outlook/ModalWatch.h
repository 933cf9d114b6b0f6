#pragma once

#include <functional>
#include <optional>
#include <string>
#include <vector>

#include "platform/screen.h"
#include "windows/com/api.h"

namespace standin {

/// Sits in front of the screen in place of a person: sees the popup menus and message boxes of this
/// thread as they come up and answers them. It looks at every beat of a timer, which the modal
/// loops of menus and boxes go on delivering; so everything happens on this thread, inside the
/// modal loop. One at a time.
class ModalWatch {
 public:
  struct Answers {
    /// The id of the entry to choose, or nothing. May let messages be delivered meanwhile.
    std::function<std::optional<int>(const std::vector<platform::PopupEntry>&)> menu;
    /// Called while the box is up, with its text, and behind that a remark in brackets on one that
    /// is not modal to the whole thread or not in front.
    std::function<void(std::u16string_view)> box;
  };

  explicit ModalWatch(Answers answers);
  ~ModalWatch();
  ModalWatch(const ModalWatch&) = delete;
  ModalWatch& operator=(const ModalWatch&) = delete;

 private:
  static void CALLBACK onTimer(HWND, UINT, UINT_PTR, DWORD) noexcept;
  void look();
  void lookAt(HWND window);
  void answerMenu(HWND window);
  void answerBox(HWND box);

  Answers answers_;
  UINT_PTR timer_ = 0;
  /// Menus that were answered, or are just being answered, and are still open.
  std::vector<HMENU> answeredMenus_;
  std::vector<HWND> answeredBoxes_;
};

}  // namespace standin
