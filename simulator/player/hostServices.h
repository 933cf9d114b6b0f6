#pragma once

#include "simulator/machine/Machine.h"
#include "simulator/machine/dates.h"
#include "simulator/outlook/OutlookHost.h"

namespace simulator {

/// What an Outlook on the simulated machine takes from it: pictures, the clipboard and the
/// language's dates.
/// The machine must outlive it.
inline OutlookServices hostServices(Machine& machine) {
  OutlookServices services;
  services.clipboard = [&machine] { return machine.pictures.clipboardFace(); };
  services.face = SimPictures::faceName;
  services.parseDate = [&machine](std::u16string_view text) {
    return parseShortDate(machine.language.langId(), text);
  };
  return services;
}

}  // namespace simulator
