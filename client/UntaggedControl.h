#pragma once

#include <utility>

#include "infra/errors.h"
#include "platform/office.h"

namespace cxol {

/// The control that a toolbar's build has added and not tagged yet. Controls are found again by
/// their tags: one without would stay on its bar for ever, and each further build would add
/// another.
class UntaggedControl {
 public:
  const office::CommandBarControl& control() const noexcept { return control_; }
  void hold(const office::CommandBarControl& added) { control_ = added; }
  /// It has its tag now, or was deleted.
  void letGo() noexcept { control_ = {}; }
  /// Takes it off its bar; false when there is none.
  bool remove() noexcept {
    const auto blank = std::exchange(control_, {});
    if (!blank) return false;
    trapQuietly([&] { blank.remove(); });
    return true;
  }

 private:
  office::CommandBarControl control_;
};

}  // namespace cxol
