// Plays the MAPI helper library, without one of its functions.

#include <initializer_list>

#include "windows/com/api.h"

namespace {

/// Lists may start anywhere.
SAFEARRAY* list(std::initializer_list<const wchar_t*> texts) {
  SAFEARRAYBOUND bound{static_cast<ULONG>(texts.size()), 1};
  SAFEARRAY* array = SafeArrayCreate(VT_BSTR, 1, &bound);
  LONG index = 1;
  for (const wchar_t* text : texts) {
    BSTR copy = SysAllocString(text);
    SafeArrayPutElement(array, &index, copy);
    SysFreeString(copy);
    ++index;
  }
  return array;
}

BSTR nameOf(IDispatch* item) {
  wchar_t name[] = L"Value";
  LPOLESTR pointer = name;
  DISPID id = 0;
  VARIANT value;
  VariantInit(&value);
  DISPPARAMS none{};
  item->GetIDsOfNames(IID_NULL, &pointer, 1, LOCALE_USER_DEFAULT, &id);
  item->Invoke(id, IID_NULL, LOCALE_USER_DEFAULT, DISPATCH_PROPERTYGET, &none, &value, nullptr,
               nullptr);
  return value.vt == VT_BSTR ? value.bstrVal : nullptr;
}

}  // namespace

extern "C" {

LONG WINAPI MapiInit() {
  return 17;
}

void WINAPI MapiGetSender(IDispatch*, BSTR* first, BSTR*) {
  *first = SysAllocString(L"a@b.example");
}

LONG WINAPI MapiGetName(IDispatch* item, BSTR* text) {
  *text = nameOf(item);
  return *text ? 1 : 0;
}

LONG WINAPI MapiGetRecipients(IDispatch*, SAFEARRAY** to, SAFEARRAY** copy, SAFEARRAY**,
                              SAFEARRAY** others) {
  *to = list({L"one", L"two"});
  *copy = list({});
  *others = list({L"Jürgen"});
  return 0;
}

void WINAPI MapiGetEMailTelNoInfo(IDispatch*, SAFEARRAY** names, SAFEARRAY** numbers) {
  *names = list({L"Meier", L""});
  *numbers = list({L"0711 1", L"0711 2"});
}

void WINAPI MapiGetCurrentUser(LONG zero, BSTR* text) {
  if (zero == 0) *text = SysAllocString(L"Anna Berger");
}
}
