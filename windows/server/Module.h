#pragma once

#include <string>

#include "windows/com/ComPtr.h"

namespace windows {

/// This DLL in its host process.
class Module {
 public:
  static HINSTANCE instance() noexcept;
  static void setInstance(HINSTANCE instance) noexcept;
  /// Full path of the DLL's file.
  static std::u16string path();

  /// The type library among the resources; raises an error when it can't be read.
  static ComPtr<ITypeLib> typeLibrary();
  static ComPtr<ITypeInfo> typeInfo(REFIID iid);

  /// A host may ask for the DLL to stay without holding an object.
  static void lock(bool locked) noexcept;
  static bool canUnload() noexcept;
};

}  // namespace windows
