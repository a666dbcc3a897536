#pragma once

#include <QtCore/QPointF>

#include <cstddef>
#include <vector>

/// A series' line, reduced to what can be seen of it. A value; any thread.
namespace plotkit {

/// Polylines in device pixels, one after the other.
///
/// Within a part consecutive points are joined; a part of one point is a dot. The line leaves and enters the picture at
/// the right slope: segments to points outside are cut at the area grown by the margin. Every coordinate is finite.
struct ReducedPlot {
    std::vector<QPointF> points;
    std::vector<std::size_t> partEnds;  ///< one past each part's last point, ascending

    bool isEmpty() const { return points.empty(); }
    void clear();
};

}  // namespace plotkit
