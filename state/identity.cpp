#include "state/identity.h"

#include <algorithm>

#include "infra/runtime.h"
#include "platform/clock.h"
#include "platform/conversions.h"
#include "state/globals.h"

namespace cxol {
namespace {

/// Seconds. Far enough that neighbours stay apart when they are rounded to single precision and
/// to the digits of its text.
constexpr double Step = 0.02;

std::u16string textOf(double seconds) {
  return automation::singleText(static_cast<float>(seconds));
}

}  // namespace

InstanceIdentity InstanceIdentity::create() {
  auto& known = globals().identities;
  std::erase_if(known, [](const auto& each) { return each.expired(); });
  double seconds = platform::secondsSinceMidnight(machine().clock.localTime());
  auto text = textOf(seconds);
  bool taken = false;
  double greatest = seconds;
  for (const auto& each : known) {
    const auto living = each.lock();
    taken = taken || living->text == text;
    greatest = std::max(greatest, living->seconds);
  }
  if (taken) {
    seconds = greatest + Step;
    text = textOf(seconds);
  }
  InstanceIdentity identity;
  identity.shared_ = std::make_shared<const Shared>(Shared{seconds, std::move(text)});
  known.push_back(identity.shared_);
  return identity;
}

}  // namespace cxol
