#pragma once

namespace windows {

/// Whether the classes are registered, be it by another copy of the DLL.
bool isRegistered() noexcept;

/// Writes the classes, the type library and the user's Outlook add-in entry; raises an error when
/// that is refused.
void registerServer();

/// Deletes all of it. What is not there is no failure.
void unregisterServer();

}  // namespace windows
