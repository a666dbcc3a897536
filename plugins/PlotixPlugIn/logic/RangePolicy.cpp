#include "plugins/PlotixPlugIn/logic/RangePolicy.h"

#include <algorithm>
#include <cmath>
#include <limits>

namespace plotix {
namespace {

bool isFrozen(CPTCoordinate coordinate, ModifierKeys modifiers)
{
    // Option is asked first: with both keys down x still moves.
    if (modifiers.option)
        return coordinate == CPTCoordinate::Y;
    return modifiers.shift && coordinate == CPTCoordinate::X;
}

/// Shorter ranges about a value have no ticks, as doubles cannot tell them apart.
double shortestTold(double location)
{
    constexpr double kRelative = 1e-12;
    return std::max(kRelative, std::abs(location) * kRelative);
}

}  // namespace

RangeVerdict judgeRange(const CPTPlotRange& proposed, const CPTPlotRange& current, CPTCoordinate coordinate,
                        ModifierKeys modifiers, ValueLimits limits)
{
    if (coordinate != CPTCoordinate::X && coordinate != CPTCoordinate::Y)
        return {proposed, false};
    if (isFrozen(coordinate, modifiers) || !std::isfinite(proposed.location) || std::isnan(proposed.length))
        return {current, false};
    const bool isLifted = coordinate == CPTCoordinate::Y && limits == ValueLimits::Lifted;
    const double longest = isLifted                         ? std::numeric_limits<float>::max()
                           : coordinate == CPTCoordinate::X ? kLongestTimeSpan
                                                            : kLongestValueSpan;
    if (proposed.length > longest)
        return {{proposed.location, longest}, false};
    if (proposed.length < (isLifted ? shortestTold(proposed.location) : kShortestSpan))
        return {{proposed.location, kShortestSpan}, false};
    return {proposed, true};
}

}  // namespace plotix
