#pragma once

#include "plotkit/layout/ReducedPlot.h"

#include <QtCore/QPointF>
#include <QtCore/QRectF>

#include <cstddef>

/// Collects a line's points, cut at a rectangle, into the parts of a reduced plot.
///
/// *Borrows* the plot; one thread at a time. A line whose x never turns back stays one part: between leaving the
/// rectangle and coming back it runs along the edge, out of sight. Any other line is broken there.
namespace plotkit {

enum class OutsidePieces { Bridge, Break };

class LineCutter {
public:
    LineCutter(ReducedPlot& plot, const QRectF& rectangle, OutsidePieces outside);

    /// The line's next point. Infinite coordinates count as far away. Requires: no NaN.
    void add(const QPointF& point)
    {
        if (!m_previousInside || !contains(point))
            return addAtEdge(point);
        m_previous = point;
        append(point);
    }

    /// The next point begins a part of its own.
    void breakLine() { finish(); }

    /// Ends the line. A line of one point inside the rectangle becomes a dot.
    void finish();

private:
    bool contains(const QPointF& point) const
    {
        return point.x() >= m_left && point.x() <= m_right && point.y() >= m_top && point.y() <= m_bottom;
    }
    void append(const QPointF& point)
    {
        const bool repeats = m_plot.points.size() > m_partStart && m_plot.points.back().x() == point.x() &&
                             m_plot.points.back().y() == point.y();
        if (!repeats)
            m_plot.points.push_back(point);
    }
    /// A point that is not inside, or follows none that is.
    void addAtEdge(QPointF point);
    void endPart();

    ReducedPlot& m_plot;
    double m_left, m_top, m_right, m_bottom;
    OutsidePieces m_outside;
    bool m_hasPrevious = false;
    bool m_previousInside = false;  // there is one, and it is inside
    QPointF m_previous;
    std::size_t m_partStart = 0;
};

}  // namespace plotkit
