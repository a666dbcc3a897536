#include "plotkit/render/PlotPaths.h"

#include <cmath>

namespace plotkit {

namespace {

constexpr double kDotLength = 0.01;  // a stroke without length leaves no dot

QPointF step(const QPointF& point)
{
    return {std::round(point.x()), std::round(point.y())};
}

bool isFilled(const FilledArea& area, std::size_t column)
{
    return area.top[column] < area.bottom[column];
}

/// One run of columns: along its upper edge and back along the lower one, through the middles of the columns.
void addRun(QPainterPath& path, const FilledArea& area, std::size_t first, std::size_t end, double steps)
{
    const auto placeOf = [&](double column, float y) {
        return step(QPointF(area.left + column / PlotEnvelope::kColumnsPerPixel, static_cast<double>(y)) * steps);
    };
    const auto lineTo = [&path](const QPointF& place) {
        if (place != path.currentPosition())
            path.lineTo(place);
    };
    const auto from = static_cast<double>(first);
    const auto to = static_cast<double>(end);
    path.moveTo(placeOf(from, area.top[first]));
    for (std::size_t column = first; column < end; ++column)
        lineTo(placeOf(static_cast<double>(column) + 0.5, area.top[column]));
    lineTo(placeOf(to, area.top[end - 1]));
    lineTo(placeOf(to, area.bottom[end - 1]));
    for (std::size_t column = end; column > first; --column)
        lineTo(placeOf(static_cast<double>(column) - 0.5, area.bottom[column - 1]));
    lineTo(placeOf(from, area.bottom[first]));
    path.closeSubpath();
}

}  // namespace

QPainterPath pathOf(const ReducedPlot& reduced)
{
    QPainterPath path;
    path.reserve(int(reduced.points.size() + reduced.partEnds.size()));
    std::size_t first = 0;
    for (const std::size_t end : reduced.partEnds) {
        QPointF last = step(reduced.points[first]);
        path.moveTo(last);
        for (std::size_t index = first + 1; index < end; ++index) {
            const QPointF point = step(reduced.points[index]);
            if (point != last)
                path.lineTo(point);
            last = point;
        }
        if (path.currentPosition() == last && end == first + 1)
            path.lineTo(last + QPointF(kDotLength, 0));
        first = end;
    }
    return path;
}

QPainterPath pathOfDots(const std::vector<QPointF>& places)
{
    QPainterPath path;
    for (const QPointF& place : places) {
        path.moveTo(step(place));
        path.lineTo(step(place) + QPointF(kDotLength, 0));
    }
    return path;
}

QPainterPath pathOfDots(const DotCells& cells, double steps)
{
    QPainterPath path;
    const auto isHeld = [&](const std::uint8_t* column, std::size_t row) {
        return (column[row / DotCells::kRowsPerByte] >> (row % DotCells::kRowsPerByte) & 1U) != 0;
    };
    const std::size_t rows = cells.bytes * DotCells::kRowsPerByte;
    const auto placeOf = [&](std::size_t column, std::size_t row) {
        return step(QPointF(cells.left + (static_cast<double>(column) + 0.5) / DotCells::kColumnsPerUnit,
                            cells.top + (static_cast<double>(row) + 0.5) / DotCells::kRowsPerByte) *
                    steps);
    };
    for (std::size_t column = 0; column < cells.columns; ++column) {
        const std::uint8_t* held = cells.column(column);
        for (std::size_t row = 0; row < rows; ++row) {
            if (held[row / DotCells::kRowsPerByte] == 0) {
                row |= DotCells::kRowsPerByte - 1;
                continue;
            }
            if (!isHeld(held, row))
                continue;
            const std::size_t first = row;
            while (row + 1 < rows && isHeld(held, row + 1))
                ++row;
            path.moveTo(placeOf(column, first));
            path.lineTo(placeOf(column, row) + QPointF(kDotLength, 0));
        }
    }
    return path;
}

QPainterPath pathOf(const FilledArea& area, double steps)
{
    QPainterPath path;
    path.setFillRule(Qt::WindingFill);
    const std::size_t count = area.top.size();
    for (std::size_t first = 0; first < count; ++first) {
        if (!isFilled(area, first))
            continue;
        std::size_t end = first + 1;
        while (end < count && isFilled(area, end))
            ++end;
        addRun(path, area, first, end, steps);
        first = end;
    }
    return path;
}

}  // namespace plotkit
