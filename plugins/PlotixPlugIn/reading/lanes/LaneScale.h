#pragma once

#include "plotkit/model/CPTPlotRange.h"
#include "plotkit/model/CPTPointSeries.h"

#include <QtCore/QString>

#include <optional>
#include <vector>

/// Which values a lane shows. Values and free functions; any thread.
namespace plotix {

/// How a lane's range of values is chosen whenever it is fitted.
enum class LaneFit {
    AllValues,  ///< all of them
    Robust,     ///< all but values far off from the others
    GrowOnly,   ///< all of them, and what was shown before
    Fixed       ///< as typed
};

struct LaneSettings {
    LaneFit fit = LaneFit::AllValues;
    bool isLogarithmic = false;
    double lowest = 0, highest = 1;  ///< typed, for a fixed range; in the lane's unit
    double height = 1;               ///< in proportion to the other lanes'

    friend bool operator==(const LaneSettings&, const LaneSettings&) = default;
};

/// "all", "robust", "grow", "fixed". Stored: never change.
QString textOf(LaneFit fit);
std::optional<LaneFit> laneFitNamed(const QString& text);

/// The range a fit gives, with a margin of a twentieth at either end but for a fixed one; nothing when there are no
/// values. `shown` is the range before, counted only by GrowOnly. Of one value alone: a range around it. The series of
/// a logarithmic lane hold powers of ten, and so do the ranges.
std::optional<CPTPlotRange> fittedLaneRange(const std::vector<CPTPointSeriesPtr>& series, const LaneSettings& settings,
                                            const CPTPlotRange& shown);

/// The span of the values that are not far off: from the lower quartile less three times the distance of the quartiles
/// to the upper one more three times, as far as there are values. Quartiles of a hundred thousand values at most,
/// evenly taken. Nothing without values.
struct ValueSpan {
    float lowest, highest;
};
std::optional<ValueSpan> usualValues(const CPTPointSeries& series);

/// The powers of ten of a series' values: a point of no positive value is dropped. Shares the times.
CPTPointSeriesPtr logarithmicSeries(const CPTPointSeries& series);

}  // namespace plotix
