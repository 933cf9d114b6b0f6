#include "windows/com/values.h"

#include <limits>

#include "platform/conversions.h"
#include "windows/com/Bstr.h"
#include "windows/com/ComObject.h"
#include "windows/com/SafeArray.h"
#include "windows/com/errors.h"

namespace windows {
namespace {

using automation::Array;
using automation::ErrorNumber;
using automation::Object;
using automation::Value;

/// What the module offers itself; in the add-in nothing.
OwnObjects ownObjects;

/// The 32-bit integer, or a floating-point number where it does not fit.
template <class Integer>
Value integerValue(Integer number) {
  if (std::in_range<std::int32_t>(number)) return static_cast<std::int32_t>(number);
  return static_cast<double>(number);
}

/// The number that a person reads, not its binary neighbour: 0.1 stays 0.1.
Value singleValue(float number) {
  const auto nearest = automation::parseNumber(automation::singleText(number));
  return nearest.value_or(static_cast<double>(number));
}

Value decimalValue(DECIMAL decimal) {
  double number = 0;
  check(VarR8FromDec(&decimal, &number));
  return number;
}

Value currencyValue(const CY& amount) {
  constexpr double Parts = 10000;
  return static_cast<double>(amount.int64) / Parts;
}

Value textValue(BSTR text) {
  return std::u16string(utf16(text, SysStringLen(text)));
}

Value unknownValue(IUnknown* unknown) {
  if (!unknown) return Object();
  ComPtr<IDispatch> dispatch;
  check(unknown->QueryInterface(IID_IDispatch, dispatch.receiveVoid()));
  return objectOf(dispatch.get());
}

/// An omitted argument is an error code; no other one is a value here.
Value errorValue(SCODE code) {
  if (code != DISP_E_PARAMNOTFOUND) throw automation::Error(ErrorNumber::TypeMismatch);
  return automation::Missing{};
}

/// A value of this type at this place.
Value valueAt(VARTYPE type, const void* place) {
  const auto at = [place]<class T>(T) { return *static_cast<const T*>(place); };
  switch (type) {
    case VT_EMPTY:
    case VT_NULL: return {};
    case VT_ERROR: return errorValue(at(SCODE()));
    case VT_BOOL: return at(VARIANT_BOOL()) != VARIANT_FALSE;
    case VT_I1: return integerValue(at(static_cast<signed char>(0)));
    case VT_UI1: return integerValue(at(static_cast<unsigned char>(0)));
    case VT_I2: return integerValue(at(SHORT()));
    case VT_UI2: return integerValue(at(USHORT()));
    case VT_I4:
    case VT_INT: return integerValue(at(INT()));
    case VT_UI4:
    case VT_UINT: return integerValue(at(UINT()));
    case VT_I8: return integerValue(at(LONGLONG()));
    case VT_UI8: return integerValue(at(ULONGLONG()));
    case VT_R4: return singleValue(at(FLOAT()));
    case VT_R8:
    case VT_DATE: return at(DOUBLE());
    case VT_CY: return currencyValue(at(CY()));
    case VT_DECIMAL: return decimalValue(at(DECIMAL()));
    case VT_BSTR: return textValue(at(BSTR()));
    case VT_DISPATCH: return objectOf(at(static_cast<IDispatch*>(nullptr)));
    case VT_UNKNOWN: return unknownValue(at(static_cast<IUnknown*>(nullptr)));
    case VT_VARIANT: return valueOf(*static_cast<const VARIANT*>(place));
    default: throw automation::Error(ErrorNumber::TypeMismatch);
  }
}

SafeArray arrayOf(const Array& elements) {
  auto array =
      SafeArray::attach(SafeArrayCreateVector(VT_VARIANT, 0, static_cast<ULONG>(elements.size())));
  if (!array.get()) throw std::bad_alloc();
  LONG index = 0;
  for (const Value& element : elements) {
    Variant variant = variantOf(element);
    // Copies.
    check(SafeArrayPutElement(array.get(), &index, &variant.get()));
    ++index;
  }
  return array;
}

/// Fills a VARIANT with each kind of value.
struct Fill {
  VARIANT& variant;

  void operator()(std::monostate) const {}
  void operator()(automation::Missing) const {
    variant.vt = VT_ERROR;
    variant.scode = DISP_E_PARAMNOTFOUND;
  }
  void operator()(bool value) const {
    variant.vt = VT_BOOL;
    variant.boolVal = value ? VARIANT_TRUE : VARIANT_FALSE;
  }
  void operator()(std::int32_t value) const {
    variant.vt = VT_I4;
    variant.lVal = value;
  }
  void operator()(double value) const {
    variant.vt = VT_R8;
    variant.dblVal = value;
  }
  void operator()(const std::u16string& value) const {
    variant.bstrVal = Bstr(value).detach();
    variant.vt = VT_BSTR;
  }
  void operator()(const Object& value) const {
    variant.pdispVal = dispatchOf(value).detach();
    variant.vt = VT_DISPATCH;
  }
  void operator()(const Array& value) const {
    variant.parray = arrayOf(value).detach();
    variant.vt = VT_ARRAY | VT_VARIANT;
  }
};

}  // namespace

Value valueOf(const VARIANT& variant) {
  const bool byReference = (variant.vt & VT_BYREF) != 0;
  const auto type = static_cast<VARTYPE>(variant.vt & ~VT_BYREF);
  if ((type & VT_ARRAY) != 0) {
    return elementsOf(byReference ? *variant.pparray : variant.parray);
  }
  if (byReference) {
    if (!variant.byref) throw automation::Error(ErrorNumber::TypeMismatch);
    return valueAt(type, variant.byref);
  }
  // A decimal number fills the VARIANT from its start, all else stands in the union.
  if (type == VT_DECIMAL) return decimalValue(variant.decVal);
  return valueAt(type, &variant.byref);
}

Variant variantOf(const Value& value) {
  Variant variant;
  std::visit(Fill{*variant.receive()}, value.data());
  return variant;
}

namespace {

/// An array that was made by hand need not know its type; its features tell what it holds.
VARTYPE elementTypeOf(SAFEARRAY* array) {
  VARTYPE type = VT_EMPTY;
  const HRESULT known = SafeArrayGetVartype(array, &type);
  if (SUCCEEDED(known)) return type;
  constexpr std::pair<USHORT, VARTYPE> Features[] = {{FADF_BSTR, VT_BSTR},
                                                     {FADF_VARIANT, VT_VARIANT},
                                                     {FADF_DISPATCH, VT_DISPATCH},
                                                     {FADF_UNKNOWN, VT_UNKNOWN}};
  for (const auto& [feature, held] : Features)
    if ((array->fFeatures & feature) != 0) return held;
  check(known);
  return type;
}

}  // namespace

Array elementsOf(SAFEARRAY* array) {
  if (!array) return {};
  const VARTYPE type = elementTypeOf(array);
  if (SafeArrayGetDim(array) != 1) throw automation::Error(ErrorNumber::TypeMismatch);
  LONG first = 0;
  LONG last = 0;
  check(SafeArrayGetLBound(array, 1, &first));
  check(SafeArrayGetUBound(array, 1, &last));
  void* data = nullptr;
  check(SafeArrayAccessData(array, &data));
  struct Unaccess {
    SAFEARRAY* array;
    ~Unaccess() { SafeArrayUnaccessData(array); }
  } unaccess{array};
  const auto* element = static_cast<const std::byte*>(data);
  Array elements;
  for (LONG index = first; index <= last; ++index, element += SafeArrayGetElemsize(array)) {
    elements.push_back(valueAt(type, element));
  }
  return elements;
}

Object objectOf(IDispatch* dispatch) {
  if (!dispatch) return {};
  if (ownObjects.find) {
    if (auto own = ownObjects.find(dispatch)) return own;
  }
  return Object(std::make_shared<ComObject>(ComPtr(dispatch)));
}

ComPtr<IDispatch> dispatchOf(const Object& object) {
  if (!object) return {};
  if (const auto* foreign = dynamic_cast<const ComObject*>(object.dispatch().get())) {
    return foreign->dispatch();
  }
  if (!ownObjects.offer) throw automation::Error(ErrorNumber::TypeMismatch);
  return ownObjects.offer(object);
}

void setOwnObjects(const OwnObjects& own) noexcept {
  ownObjects = own;
}

void writeBack(const VARIANT& argument, const Value& value) noexcept {
  const auto* flag = std::get_if<bool>(&value.data());
  if (!flag || (argument.vt & VT_BYREF) == 0 || !argument.byref) return;
  const VARIANT_BOOL result = *flag ? VARIANT_TRUE : VARIANT_FALSE;
  if (argument.vt == (VT_BOOL | VT_BYREF)) {
    *argument.pboolVal = result;
  } else if (argument.vt == (VT_VARIANT | VT_BYREF)) {
    if (argument.pvarVal->vt == VT_BOOL) {
      argument.pvarVal->boolVal = result;
    } else {
      writeBack(*argument.pvarVal, value);
    }
  }
}

}  // namespace windows
