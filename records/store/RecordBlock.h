#pragma once

#include "base/SharedArray.h"

#include <QtCore/QtGlobal>

#include <cstddef>
#include <functional>
#include <optional>
#include <vector>

/// Timed records as values: what is stored and read, and what a store tells of them without reading.
namespace plotix {

/// An agent or a property, as the site document numbers it.
using RowId = qint64;

/// The property number under which a chunk's times stand.
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

struct ArchiveSummary {
    std::size_t records = 0;
    std::optional<double> first, last;  ///< times
};

struct ColumnStatistics {
    std::size_t valid = 0;
    double minimum = 0, maximum = 0, average = 0;  ///< in the archived unit; 0 when valid is 0
};

/// What the archive knows of its records without reading them: runs of them that follow each other in time.
struct RecordOverview {
    struct Run {
        double t0 = 0, t1 = 0;  ///< times of its first and last record
        std::size_t records = 0;
    };
    /// Over the valid elements of a run that are no NaN.
    struct Summary {
        std::size_t valid = 0;
        double minimum = 0, maximum = 0;  ///< in the archived unit; 0 when valid is 0
        double sum = 0;                   ///< NaN where infinities of both signs met
    };
    struct Column {
        RowId property = 0;
        std::vector<Summary> summaries;  ///< index for index with `runs`
    };
    std::vector<Run> runs;
    std::vector<Column> columns;
};

/// Where statistics come from. Both answer the same but for rounding of the average.
enum class StatisticsFrom {
    Summaries,  ///< what is stored per chunk; only chunks the range cuts are decoded
    Values,     ///< every value in the range, decoded
};

/// Answers false to stop.
using ArchiveProgress = std::function<bool(double fraction)>;

}  // namespace plotix
