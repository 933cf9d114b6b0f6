#pragma once

#include "simulator/outlook/Snapshot.h"
#include "simulator/player/Stage.h"

namespace scenario {

/// A window of the simulated host as the player draws it; whether it is active is left open.
WindowPicture pictureOf(const simulator::WindowView& window);

}  // namespace scenario
