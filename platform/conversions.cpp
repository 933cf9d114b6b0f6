#include "platform/conversions.h"

#include <charconv>
#include <cmath>
#include <cstdio>
#include <cstdlib>

#include "platform/automation.h"

namespace automation {
namespace {

bool isBlank(char16_t c) {
  return c == u' ' || c == u'\t';
}

/// Plain notation needs its leading digit and no more than `digits` after the point; everything
/// smaller or larger is written with an exponent of at least two digits.
std::u16string numberText(double value, int digits) {
  if (!std::isfinite(value)) throw Error(ErrorNumber::Overflow);
  if (value == 0) return u"0";
  char scientific[64];
  std::snprintf(scientific, sizeof scientific, "%.*e", digits - 1, value);
  std::string text(scientific);
  const auto mark = text.find('e');
  const int exponent = std::atoi(text.c_str() + mark + 1);
  std::string mantissa = text.substr(0, mark);
  const bool negative = mantissa.front() == '-';
  if (negative) mantissa.erase(0, 1);
  std::erase(mantissa, '.');
  mantissa.erase(mantissa.find_last_not_of('0') + 1);
  const int significant = static_cast<int>(mantissa.size());

  std::string result;
  if (exponent >= digits || significant - 1 - exponent > digits) {
    result = mantissa.substr(0, 1);
    if (significant > 1) result += "." + mantissa.substr(1);
    char tail[16];
    std::snprintf(tail, sizeof tail, "E%c%02d", exponent < 0 ? '-' : '+', std::abs(exponent));
    result += tail;
  } else if (exponent < 0) {
    result = "0." + std::string(static_cast<std::size_t>(-exponent - 1), '0') + mantissa;
  } else {
    const auto whole = static_cast<std::size_t>(exponent) + 1;
    if (mantissa.size() <= whole) {
      result = mantissa + std::string(whole - mantissa.size(), '0');
    } else {
      result = mantissa.substr(0, whole) + "." + mantissa.substr(whole);
    }
  }
  return widen((negative ? "-" : "") + result);
}

template <class Integer>
Integer roundTo(double value) {
  const double rounded = std::nearbyint(value);
  if (!(rounded >= static_cast<double>(std::numeric_limits<Integer>::min()) &&
        rounded <= static_cast<double>(std::numeric_limits<Integer>::max()))) {
    throw Error(ErrorNumber::Overflow);
  }
  return static_cast<Integer>(rounded);
}

char16_t lower(char16_t c) {
  return c >= u'A' && c <= u'Z' ? static_cast<char16_t>(c - u'A' + u'a') : c;
}

}  // namespace

std::optional<double> parseNumber(std::u16string_view text) {
  while (!text.empty() && isBlank(text.front())) text.remove_prefix(1);
  while (!text.empty() && isBlank(text.back())) text.remove_suffix(1);
  std::string ascii;
  ascii.reserve(text.size());
  for (char16_t c : text) {
    // from_chars also reads "inf" and "nan", which are no numbers here.
    const bool allowed =
        (c >= u'0' && c <= u'9') || c == u'.' || c == u'+' || c == u'-' || c == u'e' || c == u'E';
    if (!allowed) return std::nullopt;
    ascii.push_back(static_cast<char>(c));
  }
  if (ascii.starts_with('+') && !ascii.starts_with("+-")) ascii.erase(0, 1);
  double value = 0;
  const auto [end, error] = std::from_chars(ascii.data(), ascii.data() + ascii.size(), value);
  if (error != std::errc{} || end != ascii.data() + ascii.size()) return std::nullopt;
  return value;
}

std::int32_t roundToInt32(double value) {
  return roundTo<std::int32_t>(value);
}

std::int16_t roundToInt16(double value) {
  return roundTo<std::int16_t>(value);
}

std::u16string singleText(float value) {
  return numberText(static_cast<double>(value), 7);
}

std::u16string doubleText(double value) {
  return numberText(value, 15);
}

std::u16string int32Text(std::int32_t value) {
  return widen(std::to_string(value));
}

std::u16string widen(std::string_view ascii) {
  std::u16string text;
  text.reserve(ascii.size());
  for (char c : ascii) text.push_back(static_cast<char16_t>(static_cast<unsigned char>(c)));
  return text;
}

bool equalsIgnoringCase(std::u16string_view a, std::u16string_view b) {
  if (a.size() != b.size()) return false;
  for (std::size_t i = 0; i < a.size(); ++i) {
    if (lower(a[i]) != lower(b[i])) return false;
  }
  return true;
}

}  // namespace automation
