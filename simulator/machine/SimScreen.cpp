#include "simulator/machine/SimScreen.h"

#include <cmath>

namespace simulator {
namespace {

using platform::Point;
using platform::PopupEntry;

/// The nearest one.
std::int32_t toPixels(std::int32_t twips, double twipsPerPixel) {
  return static_cast<std::int32_t>(std::lround(twips / twipsPerPixel));
}

/// Whether a person can choose an entry with this id.
bool offers(const std::vector<PopupEntry>& menu, int id) {
  for (const PopupEntry& entry : menu) {
    if (!entry.enabled || entry.separator) continue;
    if (entry.entries.empty() ? entry.id == id : offers(entry.entries, id)) return true;
  }
  return false;
}

}  // namespace

void SimScreen::messageBox(std::u16string_view text) {
  boundary_.service(u"Screen", u"messageBox");
  messageBoxes_.emplace_back(text);
  if (user_) user_->messageBox(text);
}

Point SimScreen::cursorPosition() {
  boundary_.service(u"Screen", u"cursorPosition");
  return cursor_;
}

platform::TwipsPerPixel SimScreen::twipsPerPixel() {
  boundary_.service(u"Screen", u"twipsPerPixel");
  return twipsPerPixel_;
}

void SimScreen::showAnchor(Point twips) {
  boundary_.service(u"Screen", u"showAnchor");
  anchor_ = twips;
}

void SimScreen::hideAnchor() {
  boundary_.service(u"Screen", u"hideAnchor");
  anchor_.reset();
}

std::optional<int> SimScreen::trackPopup(const std::vector<PopupEntry>& menu, Point twips) {
  boundary_.service(u"Screen", u"trackPopup");
  const Point base = anchor_.value_or(Point{});
  const Point pixels{toPixels(base.x + twips.x, twipsPerPixel_.x),
                     toPixels(base.y + twips.y, twipsPerPixel_.y)};
  popups_.push_back({menu, anchor_, twips, pixels, std::nullopt});
  if (!user_) return std::nullopt;
  // The log may grow or be cleared while the menu is open.
  const std::size_t place = popups_.size() - 1;
  std::optional<int> chosen = user_->popup(menu, pixels);
  if (chosen && !offers(menu, *chosen)) chosen.reset();
  if (place < popups_.size()) popups_[place].chosen = chosen;
  return chosen;
}

void SimScreen::clearLog() {
  messageBoxes_.clear();
  popups_.clear();
}

}  // namespace simulator
