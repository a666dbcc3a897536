#pragma once

#include "hostapp/exchange/TimeText.h"
#include "hostapp/exchange/tables/TableShape.h"

/// Times that are numbers. Pure but for the clock of now; any thread.
namespace plotix {

/// Whoever measures with a program that counts from 1970 did so since then, in seconds, and not far ahead of the clock.
/// Other numbers count from elsewhere. Only "time (s)", which we write where times lie outside the calendar, has any.
inline constexpr double kEarliestNumber = 631'152'000;  ///< 1990
double latestNumber();                                  ///< ten years from now

/// "s", "ms", "us", "ns", "digits" or "days" for layouts that are numbers; else null. So findings name them.
const char* numberForm(TimeLayout layout);

/// Throws ImportFailure where most numbers of the sample's column, read in a layout since 1970, are outside of that:
/// they count from another moment. A stray one is no time when its row comes.
void requireTimes(TimeLayout layout, const TableSample& sample, const TableShape& shape, std::size_t field);

}  // namespace plotix
