#pragma once

#include <QtCore/QString>

#include <string>

/// Numbers and times as text that `NumberText.h` and `TimeColumnReader.h` read back to the same bits. Pure; any thread.
namespace plotix {

/// The shortest text of a double; "inf", "-inf", "nan".
std::string exactNumber(double value);

/// ISO 8601 in UTC with as many decimals as the double has: "2015-02-02T14:19:00.25Z".
/// Requires: hasCalendarText(seconds).
std::string exactTime(double seconds);

/// Whether the time lies in the years 0000 … 9999 and is not -0.0, so that its calendar text can bring it back.
bool hasCalendarText(double seconds);

/// For people, to the second: "2015-02-02 14:19:00 UTC". Times outside the calendar as their number.
QString readableTime(double seconds);

}  // namespace plotix
