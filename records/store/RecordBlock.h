#pragma once

#include "base/SharedArray.h"
#include "base/ValidityBitmap.h"

#include <QtCore/QtGlobal>

#include <cstddef>
#include <functional>
#include <optional>
#include <vector>

/// Timed records as values: what is stored and read, and what a store knows of them without reading them. Any thread.
namespace plotix {

/// An agent or a property, as the site document numbers it.
using RowId = qint64;

/// Numbers of properties are above 0 and below this, in every store. Stored: never change.
inline constexpr RowId kPropertyLimit = RowId{1} << 20;

/// The property number that a chunk's times are stored under.
inline constexpr RowId kTimes = 0;

/// Records to store, or records read: columns of equal length.
struct RecordBlock {
    struct Column {
        RowId property = 0;
        SharedArray<double> values;  ///< in the property's archived unit
        ValidityBitmap validity;
    };
    SharedArray<double> times;  ///< seconds since 1970-01-01 UTC
    std::vector<Column> columns;
};

/// The span of time that records cover: times of the first and the last one, equal where there is one alone.
struct RecordExtent {
    double first = 0, last = 0;  ///< seconds since 1970-01-01 UTC; first ≤ last

    friend bool operator==(const RecordExtent&, const RecordExtent&) = default;
};

/// The span that covers both; nothing when neither covers anything.
std::optional<RecordExtent> united(const std::optional<RecordExtent>& one, const std::optional<RecordExtent>& other);

/// What is read of one agent's records: of these properties, in this span; absent bounds are open.
struct RecordPart {
    RowId agent = 0;
    std::vector<RowId> properties;
    std::optional<double> from, to;
};

struct ColumnStatistics {
    std::size_t valid = 0;
    double minimum = 0, maximum = 0, average = 0;  ///< in the archived unit; 0 when valid is 0
};

/// What a store knows of its records without reading them: the runs they lie in, one after the other in time. Here a
/// run is as many successive records as the store keeps together: a chunk, in the site file.
struct RecordOverview {
    struct Run {
        double t0 = 0, t1 = 0;  ///< times of its first and last record
        std::size_t records = 0;
    };
    /// Over the valid elements of a run that are not NaN.
    struct Summary {
        std::size_t valid = 0;
        double minimum = 0, maximum = 0;  ///< in the archived unit; 0 when valid is 0
        double sum = 0;                   ///< NaN when it has infinities of both signs
    };
    struct Column {
        RowId property = 0;
        std::vector<Summary> summaries;  ///< index for index with `runs`
    };
    std::vector<Run> runs;
    std::vector<Column> columns;

    std::size_t records() const;  ///< of all runs
};

/// Where statistics come from. Both give the same, apart from the rounding of the average.
enum class StatisticsFrom {
    Summaries,  ///< of whole runs; values are read only in runs that the range cuts
    Values,     ///< every value in the range
};

/// Answers false to stop.
using ArchiveProgress = std::function<bool(double fraction)>;

}  // namespace plotix
