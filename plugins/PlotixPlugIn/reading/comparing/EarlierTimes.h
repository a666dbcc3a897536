#pragma once

#include "base/TimeDistance.h"
#include "plugins/PlotixPlugIn/reading/trend/TimeSpan.h"

#include <QtCore/QTimeZone>

#include <vector>

/// Which earlier time stands beside which present one, by the wall clock of a zone. Pure; any thread.
///
/// A time and the earlier one beside it show the same time of day; the distance's seconds are then counted on as they
/// pass. Where the two days' clocks differ:
///   an hour that the earlier day has and the present one has not is left out;
///   an hour that the present day has and the earlier one has not has nothing beside it;
///   an hour that the present day has twice has the earlier one beside it both times;
///   of an hour that the earlier day has twice the first pass counts; if both have it twice, first stands beside
///   first, and second beside second.
/// Days that the earlier month has not (a 30th of February) have nothing beside them, and days that it has more are
/// left out.
namespace plotix {

/// Earlier times that stand beside present ones, all by one shift.
struct EarlierStretch {
    TimeSpan earlier;  ///< from ≤ time < to; of the last stretch of all also its end
    double shift = 0;  ///< seconds from an earlier time to the present one beside it

    friend bool operator==(const EarlierStretch&, const EarlierStretch&) = default;
};

/// In the order of the present times they stand beside, which do not overlap and need not touch; those of the earlier
/// times may come again. One stretch where one shift serves throughout. Empty for a span that runs backwards or is not
/// finite, and by the calendar for one without length.
std::vector<EarlierStretch> earlierStretches(const TimeSpan& present, const TimeDistance& distance,
                                             const QTimeZone& zone);

/// The earlier time that stands beside a present one; the present one itself where none does.
double earlierTime(const std::vector<EarlierStretch>& stretches, double present);

/// The times from the first to the last of them; nothing is lost by reading all of it. Requires: not empty.
TimeSpan hullOf(const std::vector<EarlierStretch>& stretches);

}  // namespace plotix
