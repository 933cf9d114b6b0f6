#pragma once

#include <string>

#include "windows/com/api.h"

namespace windows {

/// The class name of an object: as its class information or else its dispatch interface's type
/// information names it, without one leading underscore; "Object" when it tells neither.
std::u16string typeNameOf(IDispatch* object);

}  // namespace windows
