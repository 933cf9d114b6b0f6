#include "platform/automation.h"

#include <gtest/gtest.h>

#include <array>
#include <functional>
#include <limits>
#include <optional>

#include "platform/conversions.h"

namespace automation {
namespace {

/// The number of the error that a conversion raises; 0 for none.
int errorOf(const std::function<void()>& conversion) {
  try {
    conversion();
    return 0;
  } catch (const Error& error) {
    return error.number();
  }
}

TEST(Conversions, NumbersInTextAreReadAsAWhole) {
  const struct {
    const char* why;
    std::u16string_view text;
    std::optional<double> number;
  } cases[] = {
      {"plain", u"42", 42},
      {"blanks around it", u"  7 ", 7},
      {"signs", u"+12", 12},
      {"negative fraction", u"-0.5", -0.5},
      {"exponent", u"1E3", 1000},
      {"the version of Outlook 2000, cut to two characters", u"9.", 9},
      {"two signs", u"+-1", std::nullopt},
      {"empty", u"", std::nullopt},
      {"blanks only", u"   ", std::nullopt},
      {"a word after it", u"45 Help", std::nullopt},
      {"no infinity", u"inf", std::nullopt},
      {"no hexadecimal", u"0x10", std::nullopt},
      {"an embedded NUL", std::u16string_view(u"1\0002", 3), std::nullopt},
  };
  for (const auto& c : cases) {
    SCOPED_TRACE(c.why);
    EXPECT_EQ(parseNumber(c.text), c.number);
  }
}

TEST(Conversions, NumbersBecomeTextWithTheirSignificantDigits) {
  const struct {
    float number;
    const char16_t* text;
  } singles[] = {
      {0.f, u"0"},
      {50613.859375f, u"50613.86"},
      {1516.f, u"1516"},
      {-0.5f, u"-0.5"},
      {0.005f, u"0.005"},
      {86399.99f, u"86399.99"},
      {1e10f, u"1E+10"},
      {0.04244094f, u"4.244094E-02"},
      {-2147484000.f, u"-2.147484E+09"},
      {1234567.f, u"1234567"},
  };
  for (const auto& c : singles) EXPECT_EQ(singleText(c.number), c.text);
  EXPECT_EQ(doubleText(0.1), u"0.1");
  EXPECT_EQ(doubleText(1.0 / 3), u"0.333333333333333");
  EXPECT_EQ(doubleText(1e15), u"1E+15");
}

TEST(Value, ConvertsAsAutomationDoes) {
  EXPECT_EQ(Value(2.5).toInt32(), 2) << "halves go to the even neighbour";
  EXPECT_EQ(Value(3.5).toInt32(), 4);
  EXPECT_EQ(Value(-2.5).toInt32(), -2);
  EXPECT_EQ(Value(u"17").toInt32(), 17);
  EXPECT_EQ(Value(true).toInt32(), -1);
  EXPECT_EQ(Value().toInt32(), 0);
  EXPECT_EQ(Value().toText(), u"");
  EXPECT_EQ(Value(false).toText(), u"False");
  EXPECT_EQ(Value(-5).toText(), u"-5");
  EXPECT_TRUE(Value(u"TRUE").toBoolean());
  EXPECT_TRUE(Value(u"-1").toBoolean());
  EXPECT_FALSE(Value(u"0.0").toBoolean());
}

TEST(Value, RaisesTheCustomaryErrors) {
  const int mismatch = 13;
  const int overflow = 6;
  EXPECT_EQ(errorOf([] { Value(u"Meier").toInt32(); }), mismatch);
  EXPECT_EQ(errorOf([] { Value(u"").toBoolean(); }), mismatch);
  EXPECT_EQ(errorOf([] { Value(Object()).toText(); }), mismatch);
  EXPECT_EQ(errorOf([] { Value(1).toObject(); }), mismatch);
  EXPECT_EQ(errorOf([] { Value(u"1").toArray(); }), mismatch);
  EXPECT_EQ(errorOf([] { Value(Missing{}).toText(); }), mismatch);
  EXPECT_EQ(errorOf([] { Value(2147483648.0).toInt32(); }), overflow);
  EXPECT_EQ(errorOf([] { roundToInt16(32768); }), overflow);
  EXPECT_EQ(errorOf([] { doubleText(std::numeric_limits<double>::infinity()); }), overflow);
}

TEST(Object, NothingRaisesAndEqualsNothingOnly) {
  const Object nothing;
  EXPECT_EQ(errorOf([&] { nothing.get(u"Name"); }), 91);
  EXPECT_EQ(errorOf([&] { nothing.put(u"Name", u"x"); }), 91);
  EXPECT_EQ(errorOf([&] { nothing.connect({u"", {}}, nullptr).close(); }), 91);
  EXPECT_EQ(nothing.typeName(), u"Nothing");
  EXPECT_EQ(nothing, Object());
}

/// An object whose every call lets its last handle go.
class Leaving : public Dispatch, public std::enable_shared_from_this<Leaving> {
 public:
  explicit Leaving(Object& last) : last_(last) {}
  Value invoke(Access, const Member&, std::span<const Value>) override { return leave(); }
  std::u16string typeName() override { return leave() ? u"alive" : u"gone"; }
  const void* identity() const override { return this; }
  Connection connect(const EventInterface&, std::shared_ptr<EventSink>) override {
    if (!leave()) throw Error(ErrorNumber::ObjectNotSet);
    return {};
  }

 private:
  bool leave() {
    const std::weak_ptr<Leaving> self = weak_from_this();
    last_ = {};
    return !self.expired();
  }
  Object& last_;
};

TEST(Object, OutlivesACallThatDropsItsLastHandle) {
  Object last;
  const auto fill = [&] { last = Object(std::make_shared<Leaving>(last)); };
  fill();
  EXPECT_TRUE(last.call(u"Leave").toBoolean());
  fill();
  EXPECT_EQ(last.typeName(), u"alive");
  fill();
  EXPECT_EQ(errorOf([&] { last.connect({u"", {}}, nullptr).close(); }), 0);
}

TEST(Connection, IsReplacedBeforeTheOldOneEnds) {
  int ended = 0;
  Connection connection;
  // Its end subscribes anew, as whoever a source calls back may.
  connection = Connection([&] { connection = Connection([&] { ended += 10; }); });
  connection = Connection([&] { ended += 1; });
  EXPECT_EQ(ended, 1) << "the one that the end found in place";
  connection.close();
  EXPECT_EQ(ended, 11);
}

TEST(Error, CarriesItsCustomaryDescription) {
  EXPECT_EQ(Error(ErrorNumber::ObjectNotSet).description(),
            u"Object variable or With block variable not set");
  EXPECT_EQ(Error(-2147417848, u"Verbindung getrennt").number(), -2147417848);
  EXPECT_EQ(customaryDescription(-1), u"Automation error");
}

}  // namespace
}  // namespace automation
