#pragma once

#include "plugins/PlotixPlugIn/reading/values/LineRecords.h"

#include <optional>

/// Where a line breaks, and where it crosses a value. Free functions over records; main thread only.
namespace plotix {

/// From the last record before a gap to the first one after it; both are records.
struct LineGap {
    double from = 0, to = 0;

    friend bool operator==(const LineGap&, const LineGap&) = default;
};

/// The first gap that begins later than `time`, or the last one that begins earlier. Reads the times between here and
/// there, at the speed of memory. Where everything is joined there is none.
std::optional<LineGap> gapAfter(const LineRecords& line, double time);
std::optional<LineGap> gapBefore(const LineRecords& line, double time);

/// The first record later than `time` that stands on the other side of `limit` than the one before it; a record on the
/// limit stands below. Looks into no block of the series' index that lies on one side.
OptionalLineRecord crossingAfter(const LineRecords& line, double time, double limit);
/// The last such record earlier than `time`.
OptionalLineRecord crossingBefore(const LineRecords& line, double time, double limit);

}  // namespace plotix
