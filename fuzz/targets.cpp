#include "fuzz/targets.h"

namespace fuzz {

std::span<const Target> targets() {
  static constexpr Target Targets[] = {
      {"caller-data", callerData}, {"subject", subject}, {"menus", menus},
      {"references", references},  {"ribbon", ribbon},   {"registry", registry},
      {"mailbox", mailbox},        {"vcard", vcard},     {"regfile", regfile},
  };
  return Targets;
}

}  // namespace fuzz
