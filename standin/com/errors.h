#pragma once

#include "platform/automation.h"
#include "windows/com/api.h"

namespace standin {

/// What IDispatch::Invoke answers for an error: number and description go into `exception`, which
/// may be null.
HRESULT resultOf(const automation::Error& error, EXCEPINFO* exception) noexcept;

}  // namespace standin
