#pragma once

#include <gtest/gtest.h>

#include <cstdint>
#include <functional>
#include <string>
#include <string_view>
#include <vector>

#include "platform/velnor.h"
#include "simulator/boundary.h"
#include "simulator/machine/Machine.h"
#include "simulator/machine/dates.h"
#include "tests/errorOf.h"

namespace tests {

using automation::Error;
using automation::Value;
using platform::RegistryRoot;
using simulator::Client;
using Texts = std::vector<std::u16string>;

/// A machine alone, without Outlook and add-in. Checks at the end that no handle is left over.
class SimulatedMachine : public testing::Test {
 protected:
  ~SimulatedMachine() override {
    EXPECT_EQ(boundary.liveHandles(), 0u);
    EXPECT_EQ(boundary.liveConnections(), 0u);
  }

  /// Milliseconds since the machine was switched on.
  std::int64_t elapsed() const {
    return simulator::calendarMilliseconds(machine.clock.now()) - start;
  }
  /// A timer that notes its moments.
  std::uint32_t noteTicks(std::uint32_t interval, std::vector<std::int64_t>& moments,
                          std::function<void()> then = {}) {
    return on.timers.setTimer(interval, [this, &moments, then] {
      moments.push_back(elapsed());
      if (then) then();
    });
  }
  velnor::Application application() {
    return velnor::Application(on.objects.running(velnor::ApplicationClass));
  }
  std::int32_t runningError() {
    return errorOf([this] { on.objects.running(velnor::ApplicationClass); });
  }
  Texts told() const {
    Texts lines;
    for (const auto& told : machine.client.told()) lines.push_back(told.line());
    return lines;
  }

  simulator::Boundary boundary;
  simulator::Machine machine{boundary};
  platform::Platform on = machine.platform();
  std::int64_t start = simulator::calendarMilliseconds(machine.clock.now());
};

}  // namespace tests
