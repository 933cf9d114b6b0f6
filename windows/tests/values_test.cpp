#include "windows/com/values.h"

#include <gtest/gtest.h>

#include "windows/com/Bstr.h"
#include "windows/com/SafeArray.h"
#include "windows/com/errors.h"
#include "windows/tests/printing.h"

namespace windows {
namespace {

using namespace std::string_literals;
using automation::Array;
using automation::printed;
using automation::Value;

TEST(Values, SurviveTheWayThroughAVariant) {
  const Value values[] = {
      {},
      automation::Missing{},
      true,
      false,
      -2147483647 - 1,
      2147483647,
      0.1,
      -1e300,
      u"",
      u"Müller \U0001F4DE\0behind the NUL"s,
      automation::Object(),
      Array{},
      Array{1, u"two", Array{true, {}}, automation::Missing{}},
  };
  for (const Value& value : values) {
    const Variant variant = variantOf(value);
    EXPECT_EQ(printed(valueOf(variant.get())), printed(value));
  }
}

/// A VARIANT with one field set.
template <class Set>
VARIANT variantWith(VARTYPE type, Set set) {
  VARIANT variant;
  VariantInit(&variant);
  variant.vt = type;
  set(variant);
  return variant;
}

TEST(Values, ReadWhatOtherServersSend) {
  struct Row {
    const char* why;
    VARIANT variant;
    const char* expected;
  };
  const Row rows[] = {
      {"null is nothing", variantWith(VT_NULL, [](auto&) {}), "empty"},
      {"true is any bit", variantWith(VT_BOOL, [](auto& v) { v.boolVal = 1; }), "true"},
      {"byte", variantWith(VT_UI1, [](auto& v) { v.bVal = 200; }), "int 200"},
      {"signed byte", variantWith(VT_I1, [](auto& v) { v.cVal = -5; }), "int -5"},
      {"short", variantWith(VT_I2, [](auto& v) { v.iVal = -3; }), "int -3"},
      {"unsigned that fits", variantWith(VT_UI4, [](auto& v) { v.ulVal = 7; }), "int 7"},
      {"unsigned that does not", variantWith(VT_UI4, [](auto& v) { v.ulVal = 4294967295u; }),
       "double 4294967295.000000"},
      {"64 bits", variantWith(VT_I8, [](auto& v) { v.llVal = -5000000000; }),
       "double -5000000000.000000"},
      {"single keeps its decimals", variantWith(VT_R4, [](auto& v) { v.fltVal = 0.1F; }),
       "double 0.100000"},
      {"date", variantWith(VT_DATE, [](auto& v) { v.date = 39500.25; }), "double 39500.250000"},
      {"currency", variantWith(VT_CY, [](auto& v) { v.cyVal.int64 = -12345; }), "double -1.234500"},
  };
  for (const Row& row : rows) {
    SCOPED_TRACE(row.why);
    EXPECT_EQ(printed(valueOf(row.variant)), row.expected);
    // The same by reference to a VARIANT.
    VARIANT inner = row.variant;
    EXPECT_EQ(
        printed(valueOf(variantWith(VT_VARIANT | VT_BYREF, [&](auto& v) { v.pvarVal = &inner; }))),
        row.expected);
  }
  // A single is the number that a person reads, to the last digit.
  EXPECT_EQ(valueOf(rows[8].variant).toDouble(), 0.1);
}

TEST(Values, ReadReferences) {
  BSTR text = SysAllocString(L"by reference");
  LONG number = 42;
  IDispatch* nobody = nullptr;
  DECIMAL decimal{};
  decimal.Lo64 = 125;
  decimal.scale = 2;
  EXPECT_EQ(printed(valueOf(variantWith(VT_BSTR | VT_BYREF, [&](auto& v) { v.pbstrVal = &text; }))),
            "\"by reference\"");
  EXPECT_EQ(printed(valueOf(variantWith(VT_I4 | VT_BYREF, [&](auto& v) { v.plVal = &number; }))),
            "int 42");
  EXPECT_EQ(printed(valueOf(
                variantWith(VT_DISPATCH | VT_BYREF, [&](auto& v) { v.ppdispVal = &nobody; }))),
            "nothing");
  EXPECT_EQ(
      printed(valueOf(variantWith(VT_DECIMAL | VT_BYREF, [&](auto& v) { v.pdecVal = &decimal; }))),
      "double 1.250000");
  VARIANT whole;
  whole.decVal = decimal;
  whole.vt = VT_DECIMAL;
  EXPECT_EQ(printed(valueOf(whole)), "double 1.250000");
  SysFreeString(text);
}

TEST(Values, ReadArraysOfAnyTypeAndBound) {
  SAFEARRAYBOUND bound{2, 5};
  auto texts = SafeArray::attach(SafeArrayCreate(VT_BSTR, 1, &bound));
  for (LONG index = 5; index < 7; ++index) {
    const Bstr text(index == 5 ? u"five" : u"six");
    ASSERT_EQ(SafeArrayPutElement(texts.get(), &index, text.get()), S_OK);
  }
  EXPECT_EQ(printed(Value(elementsOf(texts.get()))), "[\"five\", \"six\"]");
  SAFEARRAY* pointer = texts.get();
  EXPECT_EQ(printed(valueOf(variantWith(VT_ARRAY | VT_BSTR | VT_BYREF,
                                        [&](auto& v) { v.pparray = &pointer; }))),
            "[\"five\", \"six\"]");

  auto numbers = SafeArray::attach(SafeArrayCreateVector(VT_I2, 0, 3));
  EXPECT_EQ(printed(Value(elementsOf(numbers.get()))), "[int 0, int 0, int 0]");
  EXPECT_TRUE(elementsOf(nullptr).empty());

  // Made by hand, as by a library of the old days: it does not know its type.
  SAFEARRAY* made = nullptr;
  ASSERT_EQ(SafeArrayAllocDescriptor(1, &made), S_OK);
  made->fFeatures = FADF_BSTR;
  made->cbElements = sizeof(BSTR);
  made->rgsabound[0] = {1, 0};
  ASSERT_EQ(SafeArrayAllocData(made), S_OK);
  auto byHand = SafeArray::attach(made);
  LONG first = 0;
  ASSERT_EQ(SafeArrayPutElement(made, &first, Bstr(u"seven").get()), S_OK);
  EXPECT_EQ(printed(Value(elementsOf(made))), "[\"seven\"]");

  SAFEARRAYBOUND table[] = {{2, 0}, {2, 0}};
  auto square = SafeArray::attach(SafeArrayCreate(VT_I4, 2, table));
  EXPECT_THROW(elementsOf(square.get()), automation::Error);
}

TEST(Values, RefuseWhatHasNoCounterpart) {
  const VARIANT error = variantWith(VT_ERROR, [](auto& v) { v.scode = E_FAIL; });
  const VARIANT unknownType = variantWith(VT_RECORD, [](auto&) {});
  for (const VARIANT& variant : {error, unknownType}) {
    try {
      valueOf(variant);
      ADD_FAILURE() << "no error for type " << variant.vt;
    } catch (const automation::Error& raised) {
      EXPECT_EQ(raised.number(), 13);
    }
  }
}

TEST(Values, FlagsGoBackToTheirPlace) {
  VARIANT_BOOL flag = VARIANT_FALSE;
  writeBack(variantWith(VT_BOOL | VT_BYREF, [&](auto& v) { v.pboolVal = &flag; }), true);
  EXPECT_EQ(flag, VARIANT_TRUE);
  // Office has been seen to wrap the flag once more.
  VARIANT inner = variantWith(VT_BOOL, [](auto& v) { v.boolVal = VARIANT_TRUE; });
  writeBack(variantWith(VT_BYREF | VT_VARIANT, [&](auto& v) { v.pvarVal = &inner; }), false);
  EXPECT_EQ(inner.boolVal, VARIANT_FALSE);
  // Only flags do.
  LONG number = 1;
  writeBack(variantWith(VT_I4 | VT_BYREF, [&](auto& v) { v.plVal = &number; }), false);
  EXPECT_EQ(number, 1);
}

}  // namespace
}  // namespace windows
