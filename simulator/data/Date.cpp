#include "simulator/data/Date.h"

#include <chrono>

namespace simulator {
namespace {

/// Whether the text has this form; '0' stands for any digit.
bool hasForm(std::u16string_view text, std::u16string_view form) {
  if (text.size() != form.size()) return false;
  for (std::size_t i = 0; i < text.size(); ++i) {
    const bool digit = text[i] >= u'0' && text[i] <= u'9';
    if (form[i] == u'0' ? !digit : text[i] != form[i]) return false;
  }
  return true;
}

unsigned number(std::u16string_view digits) {
  unsigned value = 0;
  for (const char16_t digit : digits) value = value * 10 + static_cast<unsigned>(digit - u'0');
  return value;
}

bool existingDate(std::u16string_view date) {
  using namespace std::chrono;
  return year_month_day{year{static_cast<int>(number(date.substr(0, 4)))},
                        month{number(date.substr(5, 2))}, day{number(date.substr(8, 2))}}
      .ok();
}

bool existingTime(std::u16string_view time) {
  return number(time.substr(0, 2)) < 24 && number(time.substr(3, 2)) < 60 &&
         number(time.substr(6, 2)) < 60;
}

}  // namespace

std::optional<std::u16string> normalizedDate(std::u16string_view text) {
  constexpr std::size_t DateLength = 10;
  std::u16string full(text);
  if (full.size() == DateLength) full += u"T00:00";
  if (full.size() > DateLength && full[DateLength] == u' ') full[DateLength] = u'T';
  if (hasForm(full, u"0000-00-00T00:00")) full += u":00";
  if (!hasForm(full, u"0000-00-00T00:00:00")) return std::nullopt;
  const std::u16string_view parts = full;
  if (!existingDate(parts.substr(0, DateLength)) || !existingTime(parts.substr(DateLength + 1)))
    return std::nullopt;
  return full;
}

}  // namespace simulator
