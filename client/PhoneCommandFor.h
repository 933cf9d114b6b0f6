#pragma once

#include <string_view>

#include "platform/velnor.h"

namespace cxol {

/// The running client's phone commands, or nothing with a line in the trace that names the asking
/// routine.
velnor::PhoneCommand PhoneCommandFor(std::u16string_view routine);

}  // namespace cxol
