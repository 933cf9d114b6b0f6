#pragma once

#include "platform/clock.h"

namespace windows {

class Clock : public platform::Clock {
 public:
  platform::LocalTime localTime() override;
  void sleep(std::uint32_t milliseconds) override;
  void pumpMessages() override;
};

}  // namespace windows
