#pragma once

#include <string_view>

namespace cxol {

/// Makes a new task to call a number and displays it. Its subject names the contacts that the
/// current item is linked to, or without any what names the item itself. Raises what the host
/// raises.
void CreateCallTask(std::u16string_view number);

}  // namespace cxol
