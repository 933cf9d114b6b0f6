#pragma once

#include <cstddef>
#include <cstdint>
#include <string>
#include <vector>

#include "platform/office.h"

/// What a person in front of the simulated Outlook would see, as plain values.
namespace simulator {

enum class WindowKind { Explorer, Inspector };

struct ControlView {
  office::ControlType type = office::ControlType::Button;
  std::u16string tag;
  std::u16string caption;
  std::u16string tooltip;
  std::u16string onAction;
  std::u16string parameter;
  std::u16string text;     ///< of an edit box
  std::u16string picture;  ///< name of the face; empty for none
  office::ButtonStyle style = office::ButtonStyle::Automatic;
  std::int32_t left = 0;  ///< screen pixels, as the next three
  std::int32_t top = 0;
  std::int32_t width = 0;
  std::int32_t height = 0;
  bool beginGroup = false;
  bool visible = true;
  bool enabled = true;

  /// What it is told apart by.
  const std::u16string& name() const { return tag.empty() ? caption : tag; }
  bool isBox() const { return type == office::ControlType::Edit; }
  /// What of picture and caption is shown; with the automatic style one of the two.
  bool showsPicture() const {
    return style == office::ButtonStyle::Automatic ? !isBox() && !picture.empty()
                                                   : style != office::ButtonStyle::Caption;
  }
  bool showsText() const { return !showsPicture() || style == office::ButtonStyle::IconAndCaption; }

  friend bool operator==(const ControlView&, const ControlView&) = default;
};

struct BarView {
  std::u16string name;
  bool visible = false;
  office::BarPosition position = office::BarPosition::Floating;
  std::vector<ControlView> controls;

  friend bool operator==(const BarView&, const BarView&) = default;
};

struct RibbonGroupView {
  std::u16string tab;  ///< the built-in tab's id, or the label of a tab of the add-in's own
  std::u16string label;
  std::vector<ControlView> controls;  ///< their ids stand in the tags

  friend bool operator==(const RibbonGroupView&, const RibbonGroupView&) = default;
};

struct WindowView {
  WindowKind kind = WindowKind::Explorer;
  int number = 0;  ///< the window's name for the user; never used twice
  bool active = false;
  std::u16string caption;
  std::u16string folder;                      ///< an explorer's folder
  std::u16string view;                        ///< an explorer's view
  std::size_t itemCount = 0;                  ///< items in the explorer's folder
  std::vector<std::u16string> items;          ///< titles, as many as were asked for
  std::size_t selectedCount = 0;              ///< items selected in the explorer
  std::vector<std::u16string> selection;      ///< titles, as many as were asked for
  std::u16string itemId;                      ///< an inspector's item
  bool wordMail = false;                      ///< Word edits the inspector's mail
  std::vector<BarView> bars;                  ///< custom bars, hidden ones included
  std::vector<RibbonGroupView> ribbon;        ///< groups that the add-in put into the ribbon
  std::vector<std::u16string> hiddenTabSets;  ///< contextual tab sets that the add-in hid
  /// What the host found wrong with the add-in's ribbon markup.
  std::vector<std::u16string> ribbonProblems;

  bool isInspector() const { return kind == WindowKind::Inspector; }

  friend bool operator==(const WindowView&, const WindowView&) = default;
};

/// All windows, the topmost first.
struct OutlookView {
  bool running = false;
  bool addinConnected = false;
  std::vector<WindowView> windows;

  friend bool operator==(const OutlookView&, const OutlookView&) = default;
};

}  // namespace simulator
