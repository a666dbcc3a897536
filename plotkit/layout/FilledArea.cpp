#include "plotkit/layout/FilledArea.h"

#include <algorithm>
#include <cmath>

namespace plotkit {

namespace {

struct Stretch {
    float low, high;
    bool isEmpty() const { return !(low <= high); }
};

/// What counts of a line in a column: a line that does not turn there stands at its middle.
Stretch stretchIn(const PlotEnvelope& line, std::size_t column)
{
    const float low = line.low[column];
    const float high = line.high[column];
    const float from = line.atLeft[column];
    const float to = line.atRight[column];
    const bool passes = (from == low && to == high) || (from == high && to == low);
    const float middle = low + (high - low) / 2;
    return passes ? Stretch{middle, middle} : Stretch{low, high};
}

/// The columns whose middles lie inside the area; all others stay empty.
struct Inside {
    std::size_t first, end;
};

Inside beginArea(FilledArea& filled, const PlotEnvelope& line, const QRectF& area)
{
    const std::size_t count = line.low.size();
    filled.left = line.left;
    filled.top.assign(count, 0);
    filled.bottom.assign(count, 0);
    const auto columnAt = [&](double x) {
        const double column = std::ceil((x - line.left) * PlotEnvelope::kColumnsPerPixel - 0.5);
        return static_cast<std::size_t>(std::clamp(column, 0.0, static_cast<double>(count)));
    };
    return {columnAt(area.left()), columnAt(area.right())};
}

/// `otherIn` answers the stretch of the other edge in a column.
template <class OtherEdge>
void fill(FilledArea& filled, const PlotEnvelope& line, const QRectF& area, const OtherEdge& otherIn)
{
    const Inside inside = beginArea(filled, line, area);
    const auto top = static_cast<float>(area.top());
    const auto bottom = static_cast<float>(area.bottom());
    for (std::size_t column = inside.first; column < inside.end; ++column) {
        const Stretch one = stretchIn(line, column);
        const Stretch other = otherIn(column);
        if (one.isEmpty() || other.isEmpty())
            continue;
        filled.top[column] = std::clamp(std::min(one.low, other.low), top, bottom);
        filled.bottom[column] = std::clamp(std::max(one.high, other.high), top, bottom);
    }
}

}  // namespace

void fillToLevel(FilledArea& filled, const PlotEnvelope& line, double level, const QRectF& area)
{
    const auto at = static_cast<float>(std::clamp(level, -PlotEnvelope::kFarthest, PlotEnvelope::kFarthest));
    fill(filled, line, area, [at](std::size_t) { return Stretch{at, at}; });
}

void fillBetween(FilledArea& filled, const PlotEnvelope& line, const PlotEnvelope& other, const QRectF& area)
{
    const bool isAligned = line.left == other.left && line.low.size() == other.low.size();
    fill(filled, line, isAligned ? area : QRectF(), [&other](std::size_t column) { return stretchIn(other, column); });
}

}  // namespace plotkit
