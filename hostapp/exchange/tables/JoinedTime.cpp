#include "hostapp/exchange/tables/JoinedTime.h"

#include <algorithm>
#include <array>
#include <charconv>

namespace plotix {

namespace {

int partOf(std::string_view text)
{
    int value = -1;
    const std::size_t point = std::min(text.find('.'), text.size());
    const auto [stopped, error] = std::from_chars(text.data(), text.data() + point, value);
    const bool isWhole = error == std::errc() && stopped == text.data() + point &&
                         text.find_first_not_of("0", std::min(point + 1, text.size())) == std::string_view::npos;
    return isWhole ? value : -1;
}

}  // namespace

std::optional<DateAndTime> joinedTime(std::string_view date, std::string_view clock, TimeLayout layout,
                                      ClockDigits digits)
{
    std::optional<DateAndTime> time =
        layout == TimeLayout::CompactDigits ? splitCompactDigits(date) : splitDateAndTime(date);
    if (!time)
        return {};
    std::optional<DateAndTime> ofDay = splitClock(clock);
    if (!ofDay)
        ofDay = splitClockDigits(clock, digits);
    if (!ofDay)  // spreadsheets write a time of day as a moment of their first day
        ofDay = splitDateAndTime(clock);
    if (!ofDay)
        return {};
    time->secondOfDay = ofDay->secondOfDay;
    time->fraction = ofDay->fraction;
    time->hasClock = true;
    if (ofDay->offset)
        time->offset = ofDay->offset;
    return time;
}

std::optional<DateAndTime> joinedTime(std::span<const std::string_view> parts)
{
    std::array<int, 6> numbers{};
    for (std::size_t index = 0; index < std::min(parts.size(), numbers.size()); ++index)
        numbers[index] = partOf(parts[index]);
    const auto [year, month, day, hour, minute, second] = numbers;
    const bool isClock = hour >= 0 && hour <= 24 && minute >= 0 && minute < 60 && second >= 0 && second <= 60;
    if (year < 0 || !isClock)
        return {};
    DateAndTime time;
    time.yearFirst = true;
    time.date = {year < 100 ? year + (year < 70 ? 2000 : 1900) : year, month, day};
    time.secondOfDay = hour * 3600 + minute * 60 + second;
    time.hasClock = parts.size() > 3;
    return time;
}

}  // namespace plotix
