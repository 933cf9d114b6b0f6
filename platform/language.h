#pragma once

#include <cstdint>
#include <string>

#include "platform/clock.h"

namespace platform {

class Language {
 public:
  virtual ~Language() = default;
  /// The language id of the user's regional settings.
  virtual std::int32_t userDefaultLangId() = 0;
  /// A date without its time, in the session's short format.
  virtual std::u16string shortDate(const LocalTime& date) = 0;
};

}  // namespace platform
