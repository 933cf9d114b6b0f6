#pragma once

#include <string>

namespace standin {

/// Makes the program of this path known to COM: the classes of the application and of the remote
/// control, and the type library that the program's file may hold. Raises an error,
/// also when another client is installed.
void registerClient(const std::u16string& path);
/// Leaves nothing behind of that; another client's registration stays.
void unregisterClient();

}  // namespace standin
