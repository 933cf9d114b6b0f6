#pragma once

#include <memory>
#include <string>
#include <vector>

#include "platform/facts.h"
#include "platform/platform.h"
#include "simulator/addin.h"

/// The add-in's logic as the simulated Outlook loads it: what the DLL is on Windows. The object's
/// life is the add-in's stay in the process. The services must outlive it.
std::unique_ptr<simulator::Addin> makeNativeAddin(const platform::Platform& services);

/// The report of velnor-doctor, after it has put right what it can if so wanted.
std::vector<std::u16string> diagnoseNatively(platform::Registry& registry, platform::Facts& facts,
                                             bool putRight);
