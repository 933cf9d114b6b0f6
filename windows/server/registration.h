#pragma once

namespace windows {

/// Whether the classes are registered, be it by another copy of the DLL.
bool isRegistered() noexcept;

/// Writes the classes, the type library and the user's Outlook add-in entry; raises an error when
/// that is refused. A user who may not write classes gets his entry where this copy of the DLL is
/// registered for the machine already.
void registerServer();

/// Deletes all of it, as far as it can. What is not there is no failure; raises error 70 when
/// something is that can't be deleted.
void unregisterServer();

}  // namespace windows
