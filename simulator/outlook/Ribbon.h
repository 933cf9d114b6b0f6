#pragma once

#include <string>
#include <string_view>
#include <vector>

#include "platform/outlook.h"
#include "simulator/outlook/Snapshot.h"

namespace simulator {

/// What Office makes of an add-in's ribbon markup.
struct RibbonView {
  std::vector<RibbonGroupView> groups;
  std::vector<std::u16string> hiddenTabSets;
  std::vector<std::u16string> problems;
  std::u16string onLoad;
  /// Callbacks of each button, in the order of the groups' buttons.
  struct Callbacks {
    std::u16string id;
    std::u16string onAction;
    std::u16string getImage;
  };
  std::vector<Callbacks> callbacks;
};

/// Reads markup as Office 2007 does for the inspectors of a ribbon id: malformed XML, another name
/// space, a tab or tab set that these inspectors lack, an unknown element or attribute or a doubled
/// id lose all of it, and the problem says why.
RibbonView readRibbon(std::u16string_view markup, std::u16string_view ribbonId);

}  // namespace simulator
