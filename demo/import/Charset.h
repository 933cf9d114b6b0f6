#pragma once

#include <optional>
#include <string>
#include <string_view>

namespace demo {

/// Decodes bytes in the named character set. Without a name, and for bytes that are invalid in the
/// named one, they are UTF-8 if they can be, else Windows-1252, which is what programs that name
/// nothing write. Nothing when the character set is unknown.
std::optional<std::u16string> decodeCharset(std::string_view bytes, const std::string& charset);

}  // namespace demo
