#include "windows/com/errors.h"

#include "windows/com/Bstr.h"

namespace windows {
namespace {

using automation::Error;
using automation::ErrorNumber;

struct Row {
  HRESULT result;
  std::int32_t number;
  /// Where there is no customary one.
  std::u16string_view description = {};
};

constexpr auto NoComponent = static_cast<std::int32_t>(ErrorNumber::CannotCreateObject);
constexpr std::u16string_view NoAutomation = u"Class doesn't support Automation";
constexpr std::u16string_view NoFileOrClass =
    u"File name or class name not found during Automation operation";

constexpr Row Rows[] = {
    {E_INVALIDARG, 5},
    {DISP_E_OVERFLOW, 6},
    {E_OUTOFMEMORY, 7},
    {DISP_E_BADINDEX, 9},
    {TYPE_E_OUTOFBOUNDS, 9},
    {DISP_E_TYPEMISMATCH, 13},
    {E_ACCESSDENIED, 70},
    {REGDB_E_CLASSNOTREG, NoComponent},
    {CO_E_CLASSSTRING, NoComponent},
    {CO_E_APPNOTFOUND, NoComponent},
    {CO_E_APPDIDNTREG, NoComponent},
    {CO_E_SERVER_EXEC_FAILURE, NoComponent},
    {MK_E_UNAVAILABLE, NoComponent},
    {E_NOINTERFACE, 430, NoAutomation},
    {STG_E_FILENOTFOUND, 432, NoFileOrClass},
    {MK_E_CANTOPENFILE, 432, NoFileOrClass},
    {DISP_E_UNKNOWNNAME, 438},
    {DISP_E_MEMBERNOTFOUND, 438},
    {DISP_E_UNKNOWNINTERFACE, 438},
    {E_NOTIMPL, 445, u"Object doesn't support this action"},
    {DISP_E_NONAMEDARGS, 446, u"Object doesn't support named arguments"},
    {DISP_E_UNKNOWNLCID, 447, u"Object doesn't support current locale setting"},
    {DISP_E_PARAMNOTFOUND, 448, u"Named argument not found"},
    {DISP_E_PARAMNOTOPTIONAL, 449, u"Argument not optional"},
    {DISP_E_BADPARAMCOUNT, 450},
    {DISP_E_NOTACOLLECTION, 451, u"Object not a collection"},
    {static_cast<HRESULT>(0x800706BA), 462},
};

/// Results that carry a customary number in their low half.
constexpr std::uint32_t ControlFacility = 0x800A0000;

/// Outlook up to 2003 leaves stray bits in the results of its object model.
constexpr std::uint32_t WithoutStrayBits = 0x800FFFFF;

Error numbered(std::int32_t number) {
  return Error(number, std::u16string(automation::customaryDescription(number)));
}

}  // namespace

Error errorFrom(HRESULT result) {
  const auto bits = static_cast<std::uint32_t>(result) & WithoutStrayBits;
  for (const Row& row : Rows) {
    if (static_cast<std::uint32_t>(row.result) != bits) continue;
    return row.description.empty() ? numbered(row.number)
                                   : Error(row.number, std::u16string(row.description));
  }
  if ((bits & 0xFFFF0000) == ControlFacility && (bits & 0xFFFF) != 0) {
    return numbered(static_cast<std::int32_t>(bits & 0xFFFF));
  }
  return numbered(result);
}

Error errorFrom(HRESULT result, EXCEPINFO& exception) {
  if (result != DISP_E_EXCEPTION) return errorFrom(result);
  if (exception.pfnDeferredFillIn) exception.pfnDeferredFillIn(&exception);
  const Bstr source = Bstr::attach(exception.bstrSource);
  const Bstr help = Bstr::attach(exception.bstrHelpFile);
  const Bstr description = Bstr::attach(exception.bstrDescription);
  const Error error = exception.wCode != 0      ? numbered(exception.wCode)
                      : FAILED(exception.scode) ? errorFrom(exception.scode)
                                                : Error(ErrorNumber::AutomationFailed);
  if (description.view().empty()) return error;
  return Error(error.number(), description.text());
}

HRESULT resultOf(const Error& error) noexcept {
  const std::int32_t number = error.number();
  if (number < 0) return number;
  if (number == static_cast<std::int32_t>(ErrorNumber::MemberNotFound)) {
    return DISP_E_MEMBERNOTFOUND;
  }
  if (number == static_cast<std::int32_t>(ErrorNumber::PermissionDenied)) return E_ACCESSDENIED;
  if (number == 0 || number > 0xFFFF) return E_FAIL;
  return static_cast<HRESULT>(ControlFacility | static_cast<std::uint32_t>(number));
}

}  // namespace windows
