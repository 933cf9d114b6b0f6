#pragma once

#include "standin/client/Binding.h"

namespace standin {

/// Makes the COM object, with the dual interface of its class, for an object of the client. Raises
/// error 424 for an object of no known class.
windows::ComPtr<IDispatch> makeDual(ObjectHost& host, const automation::Object& object);

}  // namespace standin
