#pragma once

#include <memory>
#include <string>

namespace cxol {

/// What tells the controls of one window from those of all others: Office hands a click to every
/// window that has a control of the same tag, and it must be carried out once. Copies share an
/// identity, which lives as long as one of them.
class InstanceIdentity {
 public:
  /// That of a window without controls: an empty text.
  InstanceIdentity() = default;
  /// The seconds since midnight, or where a living one reads the same, as it may be when the clock
  /// was set back or two windows are built at once, the next behind all that live.
  static InstanceIdentity create();

  /// By value: while a host call is under way the window may be given another one.
  std::u16string text() const { return shared_ ? shared_->text : std::u16string(); }

  struct Shared {
    double seconds;
    std::u16string text;
  };

 private:
  std::shared_ptr<const Shared> shared_;
};

}  // namespace cxol
