#pragma once

#include <string>

namespace cxol {

/// A new identity for the controls of one window: the seconds since midnight, as text. Two windows
/// that are built within one step of that text get different ones all the same: a click must be
/// carried out once.
std::u16string NewInstanceIdentity();

}  // namespace cxol
