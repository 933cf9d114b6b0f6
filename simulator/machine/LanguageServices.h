#pragma once

#include <functional>
#include <span>

#include "simulator/object.h"

namespace simulator {

/// The maker's language service, for `SimObjects::offer`.
class LanguageServices : public TableObject<LanguageServices> {
 public:
  static constexpr std::u16string_view Name = u"BRLanguageServices";
  static constexpr std::u16string_view ClassName = u"BoreaLogonUM.BRLanguageServices";
  static std::span<const MemberRow<LanguageServices>> members();

  /// `answer` gives what GetCurrentUserLanguage answers; it may raise an error.
  explicit LanguageServices(std::function<Value()> answer) : answer_(std::move(answer)) {}

 private:
  std::function<Value()> answer_;
};

}  // namespace simulator
