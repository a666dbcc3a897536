#include "plugins/PlotixPlugIn/logic/RangePolicy.h"

#include <cmath>

namespace plotix {
namespace {

bool isFrozen(CPTCoordinate coordinate, ModifierKeys modifiers)
{
    // Option is asked first: with both keys down x still moves.
    if (modifiers.option)
        return coordinate == CPTCoordinate::Y;
    return modifiers.shift && coordinate == CPTCoordinate::X;
}

}  // namespace

RangeVerdict judgeRange(const CPTPlotRange& proposed, const CPTPlotRange& current, CPTCoordinate coordinate,
                        ModifierKeys modifiers)
{
    if (coordinate != CPTCoordinate::X && coordinate != CPTCoordinate::Y)
        return {proposed, false};
    if (isFrozen(coordinate, modifiers) || !std::isfinite(proposed.location) || std::isnan(proposed.length))
        return {current, false};
    const double longest = coordinate == CPTCoordinate::X ? kLongestTimeSpan : kLongestValueSpan;
    if (proposed.length > longest)
        return {{proposed.location, longest}, false};
    if (proposed.length < kShortestSpan)
        return {{proposed.location, kShortestSpan}, false};
    return {proposed, true};
}

}  // namespace plotix
