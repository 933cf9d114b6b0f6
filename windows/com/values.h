#pragma once

#include "platform/automation.h"
#include "windows/com/ComPtr.h"
#include "windows/com/Variant.h"

/// Values at the edge to COM.
namespace windows {

/// What a VARIANT holds, by value or by reference; the caller keeps it. Null is nothing, a date its
/// serial number, a currency amount a floating-point number. Raises error 13 for what has no
/// counterpart.
automation::Value valueOf(const VARIANT& variant);

/// Objects go out as IDispatch, arrays as arrays of VARIANT counted from 0.
Variant variantOf(const automation::Value& value);

/// The elements of a one-dimensional array; none for a null one.
automation::Array elementsOf(SAFEARRAY* array);

/// A handle of an object that came in; a null one for null. What this module offered itself comes
/// back as it was.
automation::Object objectOf(IDispatch* dispatch);

/// The interface under which an object goes out: its own, when it came in from COM, else one that
/// this module offers it under. Null for a null handle; raises error 13 for an object of a module
/// that offers none.
ComPtr<IDispatch> dispatchOf(const automation::Object& object);

/// How a module offers objects of its own to COM. The add-in has none: what it sends out came in.
struct OwnObjects {
  /// The object behind an interface that the module made; a null handle for any other.
  automation::Object (*find)(IDispatch* dispatch) = nullptr;
  /// The interface for an object that did not come in from COM.
  ComPtr<IDispatch> (*offer)(const automation::Object& object) = nullptr;
};
/// To be called before the first object goes out.
void setOwnObjects(const OwnObjects& own) noexcept;

/// Writes a Boolean back to where an argument by reference points, when that holds one.
void writeBack(const VARIANT& argument, const automation::Value& value) noexcept;

}  // namespace windows
