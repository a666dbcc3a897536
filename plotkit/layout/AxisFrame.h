#pragma once

#include "plotkit/model/CPTPlotRange.h"

#include <QtCore/QLineF>
#include <QtCore/QPointF>
#include <QtCore/QRectF>
#include <QtCore/QSizeF>

/// The picture as one axis sees it. Internal to placing axes; a value, any thread.
namespace plotkit {

enum class AxisEdge { Low, High };  ///< left and bottom, or right and top

/// `along` is the picture's own coordinate in the direction of the axis; `outward` counts points from the axis line
/// away from the plot area: downward and to the left at a low edge, upward and to the right at a high one. Callers give
/// distances outward and get coordinates of the picture.
class AxisFrame {
public:
    /// `line` is the coordinate of the axis line: y of an x axis, x of a y axis.
    AxisFrame(CPTCoordinate coordinate, double line, AxisEdge edge)
        : m_isX(coordinate == CPTCoordinate::X), m_line(line), m_growsOutward(m_isX == (edge == AxisEdge::Low))
    {
    }

    bool isX() const { return m_isX; }
    double line() const { return m_line; }

    /// The axis line from one coordinate along it to another.
    QLineF lineAlong(double from, double to) const
    {
        return m_isX ? QLineF(from, m_line, to, m_line) : QLineF(m_line, from, m_line, to);
    }

    /// A line across the axis, from the lower picture coordinate to the higher.
    QLineF lineAcross(double along, double inward, double outward) const
    {
        const double low = m_line - (m_growsOutward ? inward : outward);
        const double high = m_line + (m_growsOutward ? outward : inward);
        return m_isX ? QLineF(along, low, along, high) : QLineF(low, along, high, along);
    }

    /// A box centred at `along`, whose side nearer to the plot area stands `near` points outward.
    QRectF boxFrom(double along, double near, const QSizeF& size) const
    {
        const double low = m_growsOutward ? m_line + near : m_line - near - depthOf(size);
        return boxAt(along, low, size);
    }

    /// The lower coordinate across the axis of a box, `depth` deep, whose outer side stands `far` points outward.
    double lowSideEndingAt(double far, double depth) const
    {
        return m_growsOutward ? m_line + far - depth : m_line - far;
    }

    /// How far outward a rectangle reaches.
    double reachOf(const QRectF& rect) const
    {
        if (m_growsOutward)
            return (m_isX ? rect.bottom() : rect.right()) - m_line;
        return m_line - (m_isX ? rect.top() : rect.left());
    }

    /// The length of a rectangle along the axis.
    double extentAlong(const QRectF& rect) const { return m_isX ? rect.width() : rect.height(); }

    /// Lines of labels end at the axis.
    Qt::Alignment labelAlignment() const
    {
        if (m_isX)
            return Qt::AlignCenter;
        return (m_growsOutward ? Qt::AlignLeft : Qt::AlignRight) | Qt::AlignVCenter;
    }
    /// Lines of a text that stands above the end of the axis begin at the axis.
    Qt::Alignment alignmentAboveEnd() const
    {
        return (m_growsOutward ? Qt::AlignRight : Qt::AlignLeft) | Qt::AlignVCenter;
    }

    /// Whether growing picture coordinates lead outward.
    bool growsOutward() const { return m_growsOutward; }

private:
    double depthOf(const QSizeF& size) const { return m_isX ? size.height() : size.width(); }
    QRectF boxAt(double along, double low, const QSizeF& size) const
    {
        return m_isX ? QRectF(QPointF(along - size.width() / 2, low), size)
                     : QRectF(QPointF(low, along - size.height() / 2), size);
    }

    bool m_isX;
    double m_line;
    bool m_growsOutward;
};

}  // namespace plotkit
