#pragma once

// The one place that includes Windows' headers: they define macros that must look the same
// everywhere.

#include <windows.h>

#include <oaidl.h>
#include <ocidl.h>
#include <ole2.h>
#include <oleauto.h>
#include <olectl.h>
#include <shellapi.h>
