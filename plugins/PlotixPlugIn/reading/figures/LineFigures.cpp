#include "plugins/PlotixPlugIn/reading/figures/LineFigures.h"

#include <algorithm>

namespace plotix {

void addStretch(PointSums& sums, const Stretch& stretch, double longestJoin)
{
    const double apart = stretch.lastTime - stretch.firstTime;
    const double length = stretch.to - stretch.from;
    if (!(length > 0))
        return;
    if (!(apart <= longestJoin)) {
        ++sums.gaps;
        return;
    }
    const double slope = (stretch.lastValue - stretch.firstValue) / apart;
    const double middle = stretch.firstValue + slope * ((stretch.from - stretch.firstTime) + length / 2);
    sums.covered += length;
    sums.held += stretch.firstValue * length;
    sums.straight += middle * length;
}

void append(PointSums& sums, const PointSums& later, double longestJoin)
{
    if (later.count == 0)
        return;
    if (sums.count == 0) {
        sums = later;
        return;
    }
    const double distance = later.sum / static_cast<double>(later.count) - sums.sum / static_cast<double>(sums.count);
    const double weight = static_cast<double>(sums.count) * static_cast<double>(later.count) /
                          static_cast<double>(sums.count + later.count);
    sums.squares += later.squares + distance * distance * weight;
    sums.minimum = std::min(sums.minimum, later.minimum);
    sums.maximum = std::max(sums.maximum, later.maximum);
    sums.sum += later.sum;
    sums.count += later.count;
    addStretch(sums, {sums.lastTime, sums.lastValue, later.firstTime, later.firstValue, sums.lastTime, later.firstTime},
               longestJoin);
    sums.covered += later.covered;
    sums.held += later.held;
    sums.straight += later.straight;
    sums.gaps += later.gaps;
    sums.lastTime = later.lastTime;
    sums.lastValue = later.lastValue;
}

}  // namespace plotix
