#pragma once

#include "hostapp/exchange/TimeText.h"

#include <optional>
#include <span>
#include <string_view>

/// The time of a row that says it in several columns. Pure; any thread. Nothing where the texts are no time.
namespace plotix {

/// A date beside a time of day: a clock, a number as its column has them, or a moment of a spreadsheet's first day.
std::optional<DateAndTime> joinedTime(std::string_view date, std::string_view clock, TimeLayout layout,
                                      ClockDigits digits);

/// Year, month and day, then perhaps hour, minute and second. Years of two digits are those from 1970 to 2069.
std::optional<DateAndTime> joinedTime(std::span<const std::string_view> parts);

}  // namespace plotix
