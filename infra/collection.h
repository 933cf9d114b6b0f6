#pragma once

#include <algorithm>
#include <cstddef>
#include <cstdint>
#include <vector>

#include "platform/automation.h"

namespace cxol {

/// An ordered collection that counts from 1 and raises error 9 for an index outside it.
template <class T>
class Collection {
 public:
  std::int32_t count() const { return static_cast<std::int32_t>(items_.size()); }
  const T& item(std::int32_t index) const { return items_[offset(index)]; }
  /// Makes room for so many more items at once, where their number is known.
  void makeRoom(std::size_t further) {
    const std::size_t needed = items_.size() + further;
    // Never less than twice as much: many small steps must not copy everything each time.
    if (needed > items_.capacity()) items_.reserve(std::max(needed, 2 * items_.capacity()));
  }
  void add(T value) { items_.push_back(std::move(value)); }
  /// The item goes away after it has left the collection, so that what its end triggers finds the
  /// collection consistent.
  void remove(std::int32_t index) {
    const auto at = items_.begin() + static_cast<std::ptrdiff_t>(offset(index));
    [[maybe_unused]] const T removed = std::move(*at);
    items_.erase(at);
  }
  void clear() { items_.clear(); }
  auto begin() const { return items_.begin(); }
  auto end() const { return items_.end(); }

 private:
  std::size_t offset(std::int32_t index) const {
    if (index < 1 || index > count()) {
      throw automation::Error(automation::ErrorNumber::SubscriptOutOfRange);
    }
    return static_cast<std::size_t>(index) - 1;
  }
  std::vector<T> items_;
};

}  // namespace cxol
