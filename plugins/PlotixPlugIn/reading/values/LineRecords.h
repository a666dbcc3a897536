#pragma once

#include "plotkit/model/CPTPointSeries.h"
#include "plugins/PlotixPlugIn/host/KTVRecordColumn.h"

#include <cstddef>
#include <limits>
#include <memory>
#include <optional>

/// What a line's records say at a time, in double precision and in the unit shown.
///
/// A *record* is an element that the line is drawn through; what was dropped, or has no finite value, is none. Times
/// are seconds since 1970-01-01 UTC. Times that run backwards have no records to look up. Values and free functions;
/// the functions take O(log n). Main thread only, as columns are.
namespace plotix {

/// A line as its records: the series tells where they are, the column what they are worth. *Shares* both.
struct LineRecords {
    CPTPointSeriesPtr series;
    std::shared_ptr<const KTVRecordColumn> column;  ///< index for index; null: the series' own values serve
    /// The longest distance between records that the line still joins, seconds; beyond it lies a gap.
    double longestJoin = std::numeric_limits<double>::infinity();
    double usualDistance = 0;  ///< between one record and the next, seconds; see plotkit/model/UsualDistance.h

    double valueAt(std::size_t element) const;  ///< Requires: element is a record
};

/// How long after the last record nothing is missing yet, seconds: the next one may still come.
double lastCountsFor(const LineRecords& line);

/// Works out the usual distance. A join that is not positive counts as infinite.
LineRecords lineRecords(CPTPointSeriesPtr series, std::shared_ptr<const KTVRecordColumn> column, double longestJoin);

struct LineRecord {
    std::size_t element = 0;
    double time = 0;
    double value = 0;

    friend bool operator==(const LineRecord&, const LineRecord&) = default;
};

using OptionalLineRecord = std::optional<LineRecord>;

OptionalLineRecord recordOf(const LineRecords& line, std::size_t element);  ///< past the end: nothing
OptionalLineRecord recordAtOrBefore(const LineRecords& line, double time);  ///< of several at a time, the last
OptionalLineRecord recordBefore(const LineRecords& line, double time);
OptionalLineRecord recordAfter(const LineRecords& line, double time);  ///< of several at a time, the first
/// The earlier one if both are equally near.
OptionalLineRecord nearestRecord(const LineRecords& line, double time);

/// What a reader is told of a line at a time.
struct LineReading {
    OptionalLineRecord record;  ///< the one at or before the time; absent: nothing was recorded there
    double distance = 0;        ///< from the record to the time, seconds; negative where the record is later
};

/// Nothing was recorded before the first record, within a gap, and after the last one by more than the line would join,
/// or by more than a few usual distances where it joins everything. A record within `reach` (seconds, such as what a
/// pixel shows) counts as being there all the same, the nearest one first: else a lonely record could not be pointed
/// at.
LineReading readingAt(const LineRecords& line, double time, double reach = 0);

}  // namespace plotix
