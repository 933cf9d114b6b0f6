#include "simulator/player/NativePicture.h"

namespace scenario {
namespace {

ControlPicture pictureOf(const simulator::ControlView& control) {
  ControlPicture picture;
  picture.tag = control.tag;
  picture.editBox = control.type == office::ControlType::Edit;
  const bool hasFace = !control.picture.empty();
  switch (control.style) {
    case office::ButtonStyle::Automatic: picture.showsPicture = hasFace; break;
    case office::ButtonStyle::Icon:
    case office::ButtonStyle::IconAndCaption: picture.showsPicture = true; break;
    case office::ButtonStyle::Caption: break;
  }
  picture.showsText = !picture.showsPicture || control.style == office::ButtonStyle::IconAndCaption;
  picture.picture = control.picture;
  picture.caption = control.caption;
  picture.tooltip = control.tooltip;
  picture.text = control.text;
  picture.visible = control.visible;
  picture.enabled = control.enabled;
  picture.beginGroup = control.beginGroup;
  picture.width = control.width;
  return picture;
}

ControlPicture pictureOf(const simulator::RibbonButtonView& button) {
  ControlPicture picture;
  picture.tag = button.id;
  picture.showsPicture = !button.picture.empty();
  picture.picture = button.picture;
  picture.caption = button.label;
  return picture;
}

}  // namespace

WindowPicture pictureOf(const simulator::WindowView& window) {
  WindowPicture picture;
  picture.number = window.number;
  picture.inspector = window.kind == simulator::WindowKind::Inspector;
  picture.title = window.caption;
  picture.folder = window.folder;
  picture.itemCount = window.itemCount;
  picture.selectedCount = window.selectedCount;
  picture.selected = window.selection;
  for (const simulator::BarView& bar : window.bars) {
    BarPicture& drawn = picture.bars.emplace_back(BarPicture{bar.name, bar.visible, {}});
    for (const auto& control : bar.controls) drawn.controls.push_back(pictureOf(control));
  }
  for (const simulator::RibbonGroupView& group : window.ribbon) {
    GroupPicture& drawn = picture.groups.emplace_back(GroupPicture{group.tab, group.label, {}});
    for (const auto& button : group.buttons) drawn.controls.push_back(pictureOf(button));
  }
  picture.problems = window.ribbonProblems;
  return picture;
}

}  // namespace scenario
