#pragma once

#include <vector>

#include "platform/objects.h"

namespace windows {

/// A class whose server has a window: asking a server that hangs for its object would block, its
/// window tells beforehand.
struct ServerWindow {
  std::u16string_view className;
  std::u16string_view windowClass;
  /// A server that is busy for so long answers late; one that the system knows to hang is told at
  /// once.
  std::uint32_t milliseconds = 5000;
};

/// Objects of other programs, by way of COM's running-object table and class registration.
class Objects : public platform::Objects {
 public:
  explicit Objects(std::vector<ServerWindow> windows = {}) : windows_(std::move(windows)) {}

  bool registered(std::u16string_view className) override;
  automation::Object running(std::u16string_view className) override;
  automation::Object create(std::u16string_view className) override;
  bool answers(std::u16string_view className) override;

 private:
  void requireAnswer(std::u16string_view className);

  const std::vector<ServerWindow> windows_;
};

}  // namespace windows
