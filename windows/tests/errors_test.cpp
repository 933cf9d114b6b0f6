#include "windows/com/errors.h"

#include <gtest/gtest.h>

#include "standin/com/errors.h"
#include "windows/com/Bstr.h"

namespace windows {
namespace {

HRESULT hr(std::uint32_t bits) {
  return static_cast<HRESULT>(bits);
}

TEST(Errors, ResultsBecomeTheCustomaryNumbers) {
  struct Row {
    const char* why;
    std::uint32_t result;
    std::int32_t number;
    std::u16string_view description;
  };
  const Row rows[] = {
      {"no such member", 0x80020003, 438, u"Object doesn't support this property or method"},
      {"no such name", 0x80020006, 438, u"Object doesn't support this property or method"},
      {"invalid argument", 0x80070057, 5, u"Invalid procedure call or argument"},
      {"not registered", 0x80040154, 429, u"ActiveX component can't create object"},
      {"not running", 0x800401E3, 429, u"ActiveX component can't create object"},
      {"server gone", 0x800706BA, 462,
       u"The remote server machine does not exist or is unavailable"},
      {"no automation", 0x80004002, 430, u"Class doesn't support Automation"},
      {"carries its number", 0x800A01A8, 424, u"Object required"},
      {"stray bits of old Outlooks", 0x9F270057, 5, u"Invalid procedure call or argument"},
      {"no number: the result itself", 0x8004010F, hr(0x8004010F), u"Automation error"},
      {"the same with stray bits", 0x9F24010F, hr(0x9F24010F), u"Automation error"},
  };
  for (const Row& row : rows) {
    SCOPED_TRACE(row.why);
    const auto error = errorFrom(hr(row.result));
    EXPECT_EQ(error.number(), row.number);
    EXPECT_EQ(error.description(), row.description);
  }
}

HRESULT WINAPI fillIn(EXCEPINFO* exception) {
  exception->wCode = 1004;
  exception->bstrDescription = SysAllocString(L"told late");
  return S_OK;
}

TEST(Errors, ExceptionsTellNumberAndDescription) {
  EXCEPINFO byCode{};
  byCode.wCode = 91;
  EXPECT_EQ(errorFrom(DISP_E_EXCEPTION, byCode).description(),
            u"Object variable or With block variable not set");

  EXCEPINFO byResult{};
  byResult.scode = hr(0x80070005);
  byResult.bstrDescription = SysAllocString(L"The guard says no");
  const auto denied = errorFrom(DISP_E_EXCEPTION, byResult);
  EXPECT_EQ(denied.number(), 70);
  EXPECT_EQ(denied.description(), u"The guard says no");

  EXCEPINFO deferred{};
  deferred.pfnDeferredFillIn = &fillIn;
  const auto late = errorFrom(DISP_E_EXCEPTION, deferred);
  EXPECT_EQ(late.number(), 1004);
  EXPECT_EQ(late.description(), u"told late");

  EXCEPINFO silent{};
  EXPECT_EQ(errorFrom(DISP_E_EXCEPTION, silent).number(), 440);

  EXCEPINFO unused{};
  unused.wCode = 7;
  EXPECT_EQ(errorFrom(hr(0x80020005), unused).number(), 13) << "it is filled for exceptions only";
}

TEST(Errors, GoOutAsTheyCameIn) {
  const automation::Error errors[] = {
      automation::Error(automation::ErrorNumber::SubscriptOutOfRange),
      automation::Error(hr(0x8004010F), u"not found"),
      automation::Error(35601, u"Element not found"),
      automation::Error(automation::ErrorNumber::MemberNotFound),
      automation::Error(automation::ErrorNumber::PermissionDenied),
  };
  for (const auto& error : errors) {
    EXCEPINFO exception{};
    const auto back = errorFrom(standin::resultOf(error, &exception), exception);
    EXPECT_EQ(back.number(), error.number());
    EXPECT_EQ(back.description(), error.description());
  }
}

TEST(Errors, NothingEscapesTheGuard) {
  EXPECT_EQ(guarded([]() -> HRESULT { return S_FALSE; }), S_FALSE);
  EXPECT_EQ(guarded([]() -> HRESULT { throw std::bad_alloc(); }), E_OUTOFMEMORY);
  EXPECT_EQ(guarded([]() -> HRESULT { throw 1; }), E_UNEXPECTED);
  EXPECT_EQ(guarded([]() -> HRESULT { throw errorFrom(E_ABORT); }), E_ABORT);
  EXPECT_EQ(guarded([]() -> HRESULT { throw errorFrom(E_ACCESSDENIED); }), E_ACCESSDENIED);
}

}  // namespace
}  // namespace windows
