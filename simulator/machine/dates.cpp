#include "simulator/machine/dates.h"

#include <array>
#include <chrono>
#include <span>

namespace simulator {
namespace {

enum class Order { DayFirst, MonthFirst };

struct Format {
  std::int32_t langId;
  Order order;
  char16_t separator;
  std::size_t digits;  // least digits of day and month
};

constexpr Format English{1033, Order::MonthFirst, u'/', 1};

constexpr Format Formats[] = {
    English,
    {1031, Order::DayFirst, u'.', 2},
    {1034, Order::DayFirst, u'/', 2},
    {1036, Order::DayFirst, u'/', 2},
    {1040, Order::DayFirst, u'/', 2},
    {1046, Order::DayFirst, u'/', 1},
};

const Format& formatOf(std::int32_t langId) {
  for (const Format& format : Formats) {
    if (format.langId == langId) return format;
  }
  return English;
}

std::u16string padded(int number, std::size_t digits) {
  std::u16string text;
  for (; number > 0 || text.size() < digits; number /= 10) {
    text.insert(text.begin(), static_cast<char16_t>(u'0' + number % 10));
  }
  return text;
}

std::u16string_view trimmed(std::u16string_view text) {
  const std::size_t first = text.find_first_not_of(u' ');
  if (first == std::u16string_view::npos) return {};
  return text.substr(first, text.find_last_not_of(u' ') - first + 1);
}

/// A number of `least` to `most` digits at the start of the text, which it is cut off from.
std::optional<int> takeNumber(std::u16string_view& text, std::size_t least, std::size_t most) {
  int number = 0;
  std::size_t count = 0;
  for (; count < text.size() && text[count] >= u'0' && text[count] <= u'9'; ++count) {
    if (count == most) return std::nullopt;
    number = number * 10 + (text[count] - u'0');
  }
  if (count < least) return std::nullopt;
  text.remove_prefix(count);
  return number;
}

bool takeSeparator(std::u16string_view& text, char16_t separator) {
  if (!text.starts_with(separator)) return false;
  text.remove_prefix(1);
  return true;
}

}  // namespace

std::u16string shortDate(std::int32_t langId, const platform::LocalTime& date) {
  const Format& format = formatOf(langId);
  const std::u16string day = padded(date.day, format.digits);
  const std::u16string month = padded(date.month, format.digits);
  const bool dayFirst = format.order == Order::DayFirst;
  std::u16string text = dayFirst ? day : month;
  text += format.separator;
  text += dayFirst ? month : day;
  text += format.separator;
  return text + padded(date.year, 4);
}

std::optional<platform::LocalTime> parseShortDate(std::int32_t langId, std::u16string_view text) {
  const Format& format = formatOf(langId);
  std::u16string_view rest = trimmed(text);
  const auto first = takeNumber(rest, 1, 2);
  if (!first || !takeSeparator(rest, format.separator)) return std::nullopt;
  const auto second = takeNumber(rest, 1, 2);
  if (!second || !takeSeparator(rest, format.separator)) return std::nullopt;
  const auto year = takeNumber(rest, 4, 4);
  if (!year || !rest.empty()) return std::nullopt;

  platform::LocalTime date;
  date.year = *year;
  date.month = format.order == Order::DayFirst ? *second : *first;
  date.day = format.order == Order::DayFirst ? *first : *second;
  const std::chrono::year_month_day checked{std::chrono::year(date.year),
                                            std::chrono::month(static_cast<unsigned>(date.month)),
                                            std::chrono::day(static_cast<unsigned>(date.day))};
  if (!checked.ok()) return std::nullopt;
  return date;
}

std::int64_t calendarMilliseconds(const platform::LocalTime& time) {
  using namespace std::chrono;
  const sys_days day = year(time.year) / static_cast<int>(time.month) / static_cast<int>(time.day);
  const auto moment = day + hours(time.hour) + minutes(time.minute) + seconds(time.second) +
                      milliseconds(time.millisecond);
  return duration_cast<milliseconds>(moment.time_since_epoch()).count();
}

platform::LocalTime fromCalendarMilliseconds(std::int64_t count) {
  using namespace std::chrono;
  const sys_time<milliseconds> moment{milliseconds(count)};
  const sys_days day = floor<days>(moment);
  const year_month_day date{day};
  const hh_mm_ss time{moment - day};
  platform::LocalTime result;
  result.year = static_cast<int>(date.year());
  result.month = static_cast<int>(static_cast<unsigned>(date.month()));
  result.day = static_cast<int>(static_cast<unsigned>(date.day()));
  result.hour = static_cast<int>(time.hours().count());
  result.minute = static_cast<int>(time.minutes().count());
  result.second = static_cast<int>(time.seconds().count());
  result.millisecond = static_cast<int>(time.subseconds().count());
  return result;
}

}  // namespace simulator
