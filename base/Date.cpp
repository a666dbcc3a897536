#include "base/Date.h"

#include <chrono>

namespace plotix {

Date currentDate()
{
    const auto sinceEpoch = std::chrono::system_clock::now().time_since_epoch();
    return Date{std::chrono::duration<double>(sinceEpoch).count()};
}

bool isEarlierThanDate(const OptionalDate& date, const OptionalDate& other)
{
    return date && other && date->seconds < other->seconds;
}

}  // namespace plotix
