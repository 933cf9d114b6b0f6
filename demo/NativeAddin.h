#pragma once

#include <memory>

#include "platform/platform.h"
#include "simulator/addin.h"

/// The add-in's logic as the simulated Outlook loads it: what the DLL is on Windows. The object's
/// life is the add-in's stay in the process. The services must outlive it.
std::unique_ptr<simulator::Addin> makeNativeAddin(const platform::Platform& services);
