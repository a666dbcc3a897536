#include "plotkit/layout/LonePoints.h"

#include <algorithm>
#include <limits>
#include <optional>

namespace plotkit {

namespace {

/// Nothing for a part that reaches farther than a pixel, and for one without a line.
std::optional<QPointF> loneIn(const PlotEnvelope& envelope, std::size_t first, std::size_t end)
{
    constexpr std::size_t kPixel = PlotEnvelope::kColumnsPerPixel;
    std::size_t from = end, to = first;  // the columns that hold something
    float lowest = std::numeric_limits<float>::infinity();
    float highest = -lowest;
    for (std::size_t column = first; column < end; ++column) {
        if (!(envelope.low[column] <= envelope.high[column]))
            continue;
        from = std::min(from, column);
        to = column;
        if (to - from >= kPixel)
            return std::nullopt;
        lowest = std::min(lowest, envelope.low[column]);
        highest = std::max(highest, envelope.high[column]);
    }
    if (from == end || highest - lowest > 1)
        return std::nullopt;
    const double middle = (static_cast<double>(from + to) + 1) / 2;
    return QPointF(envelope.left + middle / PlotEnvelope::kColumnsPerPixel,
                   (static_cast<double>(lowest) + static_cast<double>(highest)) / 2);
}

}  // namespace

void lonePointsInto(std::vector<QPointF>& places, const ReducedPlot& plot)
{
    places.clear();
    std::size_t first = 0;
    for (const std::size_t end : plot.partEnds) {
        if (end == first + 1)
            places.push_back(plot.points[first]);
        first = end;
    }
}

void lonePointsInto(std::vector<QPointF>& places, const PlotEnvelope& envelope)
{
    places.clear();
    if (envelope.partEnds.size() < 2)  // the one part of a line that nowhere breaks
        return;
    std::size_t first = 0;
    for (const std::size_t end : envelope.partEnds) {
        if (const auto lone = loneIn(envelope, first, end))
            places.push_back(*lone);
        first = end;
    }
}

}  // namespace plotkit
