#pragma once

#include <string>

namespace sweep {

/// Says what is being played, for a process that dies of it.
void leaveBreadcrumb(const std::string& text);

}  // namespace sweep
