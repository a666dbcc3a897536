#include "plotkit/layout/LabelRoom.h"

#include "plotkit/layout/AxisMapping.h"
#include "plotkit/layout/AxisPlacement.h"
#include "plotkit/layout/AxisTicks.h"
#include "plotkit/layout/PaddedRect.h"
#include "plotkit/layout/StripArea.h"

#include <algorithm>
#include <cmath>

namespace plotkit {

namespace {

constexpr double kEdgeGap = 2;      // points between the outermost text and the border
constexpr double kReserve = 6;      // points; room grows in steps of this
constexpr double kMostShare = 0.4;  // of the frame: beyond, labels are left out rather than the plots

class LabelRoom {
public:
    LabelRoom(const CPTXYGraph& graph, const QRectF& frame, const TextMeasure& measureText)
        : m_graph(graph), m_frame(frame), m_measureText(measureText), m_padding(graph.plotAreaFrame().padding)
    {
    }

    /// Below and above first: how many ticks a y axis has depends on its height.
    CPTPadding padding()
    {
        for (const CPTCoordinate coordinate : {CPTCoordinate::X, CPTCoordinate::Y})
            for (const CPTXYAxisPtr& axis : m_graph.axes().axes())
                if (axis->coordinate() == coordinate && axis->axisConstraints() && !axis->isHidden())
                    makeRoomFor(*axis);
        return m_padding;
    }

private:
    void makeRoomFor(const CPTXYAxis& axis)
    {
        const bool isX = axis.coordinate() == CPTCoordinate::X;
        const CPTConstraints& held = *axis.axisConstraints();
        const bool isHigh = held.upperOffset.has_value();
        const QSizeF label = largestLabel(axis);
        const double titleDepth =
            wholeTitle(axis).isEmpty() ? 0 : m_measureText(wholeTitle(axis), axis.titleTextStyle()).height();
        const double depth = depthBesideAxis(axis, isX ? label.height() : label.width(), titleDepth) -
                             (isHigh ? *held.upperOffset : held.lowerOffset);
        const double along = (isX ? label.width() : label.height()) / 2;
        grow(isX ? (isHigh ? m_padding.top : m_padding.bottom) : (isHigh ? m_padding.right : m_padding.left), depth,
             isX ? m_frame.height() : m_frame.width());
        // Half of an outermost label reaches beyond the end of the axis.
        grow(isX ? m_padding.left : m_padding.top, along, isX ? m_frame.width() : m_frame.height());
        grow(isX ? m_padding.right : m_padding.bottom, along, isX ? m_frame.width() : m_frame.height());
    }

    void grow(double& side, double textReach, double frameLength) const
    {
        const double needed = borderWidth(m_graph.plotAreaFrame()) + textReach + kEdgeGap;
        const double stepped = std::ceil(needed / kReserve) * kReserve;
        side = std::max(side, std::min(stepped, kMostShare * frameLength));
    }

    /// Of the outermost ticks, between which the others' labels are no longer, but for single digits.
    QSizeF largestLabel(const CPTXYAxis& axis) const
    {
        const QRectF area = insideOf(m_frame, m_padding);
        const CPTXYPlotSpace& space = m_graph.plotSpaceOf(axis);
        const AxisMapping mapping = axis.coordinate() == CPTCoordinate::X
                                        ? xMapping(space.xRange(), area)
                                        : yMapping(space.yRange(), stripArea(area, space.strip()));
        const TickPlan plan = planTicks(axis, mapping);
        const std::vector<MajorTick> ticks = majorTicks(plan, mapping);
        QSizeF largest;
        if (ticks.empty())
            return largest;
        for (const double value : {ticks.front().value, ticks.back().value})
            largest = largest.expandedTo(m_measureText(tickText(axis, value, plan.step), axis.labelTextStyle()));
        return largest;
    }

    const CPTXYGraph& m_graph;
    const QRectF& m_frame;
    const TextMeasure& m_measureText;
    CPTPadding m_padding;
};

}  // namespace

double borderWidth(const CPTPlotAreaFrame& frame)
{
    const double width = frame.borderLineStyle ? frame.borderLineStyle->width : 0;
    return width > 0 ? width : 0;
}

CPTPadding paddingForLabels(const CPTXYGraph& graph, const QRectF& frame, const TextMeasure& measureText)
{
    if (graph.labelRoom() == CPTLabelRoom::Fixed)
        return graph.plotAreaFrame().padding;
    return LabelRoom(graph, frame, measureText).padding();
}

}  // namespace plotkit
