#pragma once

#include "plotkit/model/CPTPointSeries.h"

#include <cstddef>
#include <optional>

/// The records of a series at an x: for crosshairs, legends and tables of values. Pure; any thread. O(log n).
namespace plotkit {

/// One record of a series, as seen from the x that was asked for.
struct SeriesRecord {
    std::size_t element;  ///< counted over all elements, dropped ones included
    double x;
    float y;          ///< NaN in a gap
    bool isPoint;     ///< false is a gap: the record was dropped, or its value is not finite
    double distance;  ///< from the x asked for, never negative; infinite where that x is
};

/// The records on both sides of an x. A gap is reported as a gap: no value from farther away is given for it.
struct RecordsAtX {
    std::optional<SeriesRecord> atOrBefore;  ///< the last one not after x; absent where x lies before the first
    std::optional<SeriesRecord> after;       ///< the first one after x; absent where x is not before the last

    /// The nearer of the two, the earlier if both are equally near; absent if there is neither.
    std::optional<SeriesRecord> nearest() const;
};

/// Of several records at the same x, `atOrBefore` is the last. There are no records for an x that is not a number, in
/// an empty series, and in one whose x is not sorted or not finite.
RecordsAtX recordsAtX(const CPTPointSeries& series, double x);

}  // namespace plotkit
