#pragma once

#include <cstdint>
#include <string>
#include <string_view>

#include "platform/registry.h"

namespace cxol {

/// The value as text: a string up to its first NUL, a 32-bit number in decimal, a two-byte binary
/// as a signed decimal; empty for absent values and other types. Raises error 5 for a string
/// without a NUL inside its size. Traces nothing: the trace itself reads through here.
std::u16string GetRegString(platform::RegistryRoot root, std::u16string_view key,
                            std::u16string_view name);

/// The number that the text of `GetRegString` reads as; 0 for anything else.
std::int32_t GetRegLong(platform::RegistryRoot root, std::u16string_view key,
                        std::u16string_view name) noexcept;

/// The user's local application-data folder with a backslash at its end; "\" when unknown.
std::u16string GetLocalAppDataFolder();

}  // namespace cxol
