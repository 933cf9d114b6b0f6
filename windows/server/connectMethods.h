#pragma once

#include "addin/Connect.h"
#include "windows/com/api.h"

/// The late-bound methods of the `Connect` object.
namespace windows {

/// The interfaces of the object that number the methods differently.
enum class ConnectFamily { Extensibility, Ribbon };

/// DISP_E_UNKNOWNNAME for a name that is no method; found without regard to case.
HRESULT connectIdOf(ConnectFamily family, LPOLESTR* names, UINT count, DISPID* ids) noexcept;

/// Carries a method out; the methods themselves never fail. `result` may be null.
HRESULT connectInvoke(ConnectFamily family, cxol::Connect& connect, DISPID id, WORD flags,
                      const DISPPARAMS* params, VARIANT* result) noexcept;

}  // namespace windows
