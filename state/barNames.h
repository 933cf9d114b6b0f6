#pragma once

#include <array>
#include <string>

namespace cxol {

/// The names that a bar of the add-in may have, in the order in which one is looked for: the
/// product's present name, those it had before, and the neutral one of a bar without a name.
/// Copies: the product's name may change in the middle of a host call that looks for one.
std::array<std::u16string, 6> BarNames();

}  // namespace cxol
