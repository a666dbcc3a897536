#pragma once

#include "hostapp/exchange/TextCursor.h"
#include "hostapp/exchange/TimeText.h"

/// The time of day and the zone of a text that has a date too; for `splitDateAndTime`. Each takes what it reads from
/// the front of the cursor; false for what is none. Pure; any thread.
namespace plotix {

/// False for a time that no clock shows; 24:00 and leap seconds are times.
bool setTimeOfDay(DateAndTime& result, int hour, int minute, int second);

/// 14:19, 14.19, 14h19, each perhaps with seconds; 2 pm.
bool readTimeOfDay(TextCursor& cursor, DateAndTime& result);

/// hhmm or hhmmss behind a compact date.
bool readCompactTime(TextCursor& cursor, DateAndTime& result);

/// What stands behind a time up to the end of the text: nothing, a zone, the end of a span of time.
bool readZone(TextCursor& cursor, DateAndTime& result);

/// The end of "14:00 - 14:15", or of "… to …": what is measured is named by its beginning.
bool isEndOfSpan(std::string_view rest);

}  // namespace plotix
