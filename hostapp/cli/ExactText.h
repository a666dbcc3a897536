#pragma once

#include <QtCore/QString>

#include <string>

/// Numbers and times as text that reads back to the same bits. Pure; any thread.
namespace plotix {

/// The shortest text of a double; "inf", "-inf", "nan".
std::string exactNumber(double value);

/// As exactNumber, for JSON, which has no word for infinities and NaN: ±1e999, which readers take for an infinity, and
/// null.
std::string jsonNumber(double value);

/// In quotation marks, escaped; UTF-8.
std::string jsonText(const QString& text);

/// ISO 8601 in UTC with as many decimals as the double has: "2015-02-02T14:19:00.25Z".
/// Requires: hasCalendarText(seconds).
std::string exactTime(double seconds);

/// Whether the time lies in the years 0000 … 9999 and is not -0.0, so that its calendar text can bring it back.
bool hasCalendarText(double seconds);

}  // namespace plotix
