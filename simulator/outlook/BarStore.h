#pragma once

#include <cstdint>
#include <string>
#include <string_view>
#include <vector>

#include "platform/office.h"

namespace simulator {

/// A control of a custom bar as Office keeps it.
struct StoredControl {
  office::ControlType type = office::ControlType::Button;
  std::u16string tag;
  std::u16string caption;
  std::u16string tooltip;
  std::u16string onAction;
  std::u16string parameter;
  std::u16string text;     ///< what stands in an edit box
  std::u16string picture;  ///< name of its face; empty for none
  office::ButtonStyle style = office::ButtonStyle::Automatic;
  std::int32_t width = 0;  ///< pixels; 0 lets Office choose
  bool beginGroup = false;
  bool visible = true;
  bool enabled = true;
};

/// A custom bar as Office keeps it from one run of Outlook to the next.
struct StoredBar {
  std::u16string name;
  bool visible = false;
  office::BarPosition position = office::BarPosition::Floating;
  std::vector<StoredControl> controls;
  /// For so many activations of its window the bar is there, but without its controls.
  int emptyActivations = 0;
  /// Adding a control raises an error, until the bar is deleted.
  bool refusesControls = false;
};

/// Outlook's custom bars between two runs. Whoever plays several runs keeps it and hands it to each
/// host in turn. The bars of explorers are written back when an explorer closes, those of
/// inspectors when an inspector closes.
struct BarStore {
  std::vector<StoredBar> explorers;
  std::vector<StoredBar> inspectors;
};

/// A bar left by an earlier run, with one button for each tag.
inline StoredBar storedBar(std::u16string_view name,
                           const std::vector<std::u16string>& buttonTags = {}) {
  StoredBar bar;
  bar.name = name;
  bar.position = office::BarPosition::Top;
  for (const std::u16string& tag : buttonTags) {
    StoredControl control;
    control.tag = tag;
    control.caption = tag;
    control.style = office::ButtonStyle::Icon;
    bar.controls.push_back(std::move(control));
  }
  return bar;
}

/// The bar of this name, or null.
inline const StoredBar* findBar(const std::vector<StoredBar>& bars, std::u16string_view name) {
  for (const StoredBar& bar : bars) {
    if (bar.name == name) return &bar;
  }
  return nullptr;
}

}  // namespace simulator
