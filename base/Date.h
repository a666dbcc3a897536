#pragma once

#include <optional>

#include <compare>  // in a block of its own: Qt's moc cannot read it as the first standard header

/// A moment in time: seconds since 1970-01-01 00:00:00 UTC, a double, kept without loss.
///
/// A value; any thread. An absent date is an empty `OptionalDate`.
namespace plotix {

struct Date {
    double seconds = 0;  ///< seconds since 1970-01-01 00:00:00 UTC

    friend auto operator<=>(const Date&, const Date&) = default;
};

using OptionalDate = std::optional<Date>;

/// The present moment, with the precision of the system clock.
Date currentDate();

/// True when `date` lies strictly before `other`. An absent date, or a NaN, is never earlier.
bool isEarlierThanDate(const OptionalDate& date, const OptionalDate& other);

}  // namespace plotix
