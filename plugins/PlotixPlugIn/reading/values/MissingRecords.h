#pragma once

#include "plugins/PlotixPlugIn/reading/trend/TimeSpan.h"
#include "plugins/PlotixPlugIn/reading/values/LineRecords.h"

#include <vector>

/// Where a line has no valid records. Free functions over records; main thread only.
namespace plotix {

enum class Missing {
    NotRecorded,  ///< nothing was, for longer than the line joins
    NotValid      ///< something was, and is no valid value
};

struct MissingStretch {
    double from = 0, to = 0;
    Missing kind = Missing::NotRecorded;

    friend bool operator==(const MissingStretch&, const MissingStretch&) = default;
};

/// The stretches between valid records that lie in `within`, in order, cut to it; shorter ones than `least` (seconds,
/// such as what a pixel shows) are left out. A stretch that holds records that are not valid is of that kind as a
/// whole, also where the line joins what lies beside it. Looks at a record for each `least` at most, whatever their
/// number. Times that run backwards: nothing.
std::vector<MissingStretch> missingStretches(const LineRecords& line, const TimeSpan& within, double least);

/// Whether the last that was recorded at or before a time is no valid value.
bool isNotValidAt(const LineRecords& line, double time);

}  // namespace plotix
