#pragma once

#include "platform/language.h"

namespace windows {

class Language : public platform::Language {
 public:
  std::int32_t userDefaultLangId() override;
  std::u16string shortDate(const platform::LocalTime& date) override;
};

}  // namespace windows
