#include "addin/identity.h"

#include "addin/globals.h"
#include "infra/runtime.h"
#include "platform/clock.h"
#include "platform/conversions.h"

namespace cxol {
namespace {

std::u16string textOf(double seconds) {
  return automation::singleText(static_cast<float>(seconds));
}

}  // namespace

std::u16string NewInstanceIdentity() {
  /// Seconds between two identities of one moment, and how long a moment can get to be.
  constexpr double Step = 0.01;
  constexpr double Moment = 10;

  auto& last = globals().lastIdentity;
  double seconds = platform::secondsSinceMidnight(machine().clock.localTime());
  if (last >= 0 && seconds < last && last - seconds < Moment) seconds = last;
  while (last >= 0 && textOf(seconds) == textOf(last)) seconds += Step;
  last = seconds;
  return textOf(seconds);
}

}  // namespace cxol
