#pragma once

#include <map>
#include <memory>
#include <string>
#include <string_view>

#include "simulator/outlook/WindowObjects.h"

namespace simulator {

/// The add-in's part of the inspectors' ribbons: asks for the markup once a kind of inspector,
/// calls the callbacks that it names, and notes in the window what went wrong.
class Ribbons {
 public:
  explicit Ribbons(HostCore& core) : core_(core) {}

  /// Asks for the markup of an item's kind of inspector, unless that was answered before: any
  /// answer, a refused and an empty one too, stands for the session.
  void ask(const MailboxItem& item);
  /// What the answer puts into the ribbon, before the window's first Activate. Asks where nobody
  /// has asked yet.
  void show(const std::shared_ptr<WindowObject>& window);
  /// Raises HostError when the window's ribbon has no such button.
  void click(const std::shared_ptr<WindowObject>& window, std::u16string_view button);
  /// The add-in is gone, and what it put into the ribbons with it.
  void forget();

 private:
  /// Nothing when the callback is missing or fails.
  Value call(WindowState& state, std::u16string_view callback, const automation::Object& argument);
  automation::Object control(const std::shared_ptr<WindowObject>& window, std::u16string_view id);

  struct Answer {
    std::u16string markup;
    /// The callback of the markup's arrival was called.
    bool loaded = false;
  };

  HostCore& core_;
  /// By ribbon id.
  std::map<std::u16string, Answer> answers_;
};

}  // namespace simulator
