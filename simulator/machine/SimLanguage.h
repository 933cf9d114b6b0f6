#pragma once

#include <cstdint>
#include <string>

#include "platform/language.h"
#include "simulator/boundary.h"

namespace simulator {

/// The user's regional settings. An observer's error passes through.
class SimLanguage : public platform::Language {
 public:
  explicit SimLanguage(Boundary& boundary) : boundary_(boundary) {}

  std::int32_t userDefaultLangId() override;
  std::u16string shortDate(const platform::LocalTime& date) override;

  // Not crossings: for the program that plays the machine.

  void setLangId(std::int32_t langId) { langId_ = langId; }
  std::int32_t langId() const { return langId_; }

 private:
  Boundary& boundary_;
  std::int32_t langId_ = 1033;
};

}  // namespace simulator
