#pragma once

#include <string>
#include <string_view>
#include <vector>

#include "simulator/player/Stage.h"

/// How a scenario names windows, controls and items.
namespace scenario {

/// The words for the controls: "dial", "hangup", "client", ...
const std::vector<std::u16string_view>& controlWords();

/// The word for a control with this tag or ribbon id; the tag itself when there is none.
std::u16string controlWord(std::u16string_view tag);

/// The control that `name` means in the window: one of the words, or, quoted, its caption. Nothing
/// when the window has none; raises Mistake for a word that is none. Without `hiddenToo` only what
/// a person can see is found.
struct FoundControl {
  const ControlView* view = nullptr;
  ControlPlace place;
  explicit operator bool() const { return view != nullptr; }
};
FoundControl findControl(const WindowView& window, std::u16string_view name, bool byCaption,
                         bool hiddenToo);

/// What a person can click in the window, for messages: "dial, hangup, actions".
std::string visibleControls(const WindowView& window);

/// The add-in's bar: the one with controls of the add-in, else one of that name; null for none.
const BarView* findBar(const WindowView& window, std::u16string_view name);

/// The window that `name` means: its number, or, quoted, a part of its title; empty means the
/// active one. Raises Mistake when there is none or several fit.
const WindowView& findWindow(const Snapshot& snapshot, std::u16string_view name, bool byTitle);

/// The entry whose title is `title`, else the only one that begins with it, else the only one that
/// contains it. Raises Mistake, naming what there is.
std::size_t findTitle(const std::vector<std::u16string>& titles, std::u16string_view title,
                      std::string_view what);

}  // namespace scenario
