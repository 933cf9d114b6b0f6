#pragma once

#include <string_view>

namespace cxol {

/// Places a call to the number as it stands. While a call is connected the number is offered in the
/// client's window instead, where the user decides; otherwise it is dialled through the client's
/// remote object or on a line of the user's, as the settings say. Never raises; a failure is one
/// line in the trace.
void CxDial(std::u16string_view number) noexcept;

}  // namespace cxol
