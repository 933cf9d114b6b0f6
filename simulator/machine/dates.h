#pragma once

#include <cstdint>
#include <optional>
#include <string>
#include <string_view>

#include "platform/clock.h"

namespace simulator {

/// A date without its time, as the regional settings of this language have it by default. Languages
/// that the machine does not know write dates as American English does.
std::u16string shortDate(std::int32_t langId, const platform::LocalTime& date);

/// The date that the whole text, blanks around it aside, is in that format: day and month with one
/// or two digits, the year with four. Nothing for any other text and for a day that is in no
/// calendar.
std::optional<platform::LocalTime> parseShortDate(std::int32_t langId, std::u16string_view text);

/// Milliseconds from the start of the machine's calendar to this moment, and back.
std::int64_t calendarMilliseconds(const platform::LocalTime& time);
platform::LocalTime fromCalendarMilliseconds(std::int64_t milliseconds);

}  // namespace simulator
