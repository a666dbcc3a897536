#include "plotkit/layout/PlotMovement.h"

#include <cmath>

namespace plotkit {

namespace {

/// A range that is moved keeps its length but for rounding.
constexpr double kSameLength = 1e-6;

}  // namespace

std::optional<CPTPlotRange> PlotMovement::next(std::size_t slot, const CPTPlotRange& shown)
{
    if (m_courses.size() <= slot)
        m_courses.resize(slot + 1);
    Course& course = m_courses[slot];
    const double moved = shown.location - course.shown.location;
    if (!(std::abs(shown.length - course.shown.length) <= kSameLength * std::abs(shown.length)))
        course.direction = 0;
    else if (moved != 0)
        course.direction = moved > 0 ? 1 : -1;
    course.shown = shown;
    if (course.direction == 0)
        return std::nullopt;
    return CPTPlotRange{shown.location + course.direction * std::abs(shown.length), shown.length};
}

CPTPlotRange PlotMovement::nearest(const CPTPlotRange& next, const CPTPlotRange& shown, double share)
{
    const double least = next.minLimit(), length = std::abs(next.length) * share;
    return {least > shown.minLimit() ? least : next.maxLimit() - length, length};
}

}  // namespace plotkit
