#include "plotkit/layout/GraphLayout.h"

#include "plotkit/layout/AxisMapping.h"
#include "plotkit/layout/AxisPlacement.h"

#include <algorithm>

namespace plotkit {

namespace {

/// What padding leaves; nothing rather than a negative size, also for a padding that is not a number.
QRectF insideOf(const QRectF& rectangle, const CPTPadding& padding)
{
    const double width = rectangle.width() - padding.left - padding.right;
    const double height = rectangle.height() - padding.top - padding.bottom;
    const QPointF corner(rectangle.left() + padding.left, rectangle.top() + padding.top);
    return {corner, QSizeF(width > 0 ? width : 0, height > 0 ? height : 0)};
}

double borderWidth(const CPTPlotAreaFrame& frame)
{
    const double width = frame.borderLineStyle ? frame.borderLineStyle->width : 0;
    return width > 0 ? width : 0;
}

/// Centred on the upper or lower edge of the frame's inside, then displaced.
std::optional<PlacedText> placedTitle(const CPTXYGraph& graph, const QRectF& rectangle, const QRectF& frame,
                                      const TextMeasure& measureText)
{
    if (graph.title().isEmpty())
        return std::nullopt;
    const QSizeF size = measureText(graph.title(), graph.titleTextStyle()).boundedTo(rectangle.size());
    const QPointF displacement = graph.titleDisplacement();  // y upward
    const bool atTop = graph.titlePlotAreaFrameAnchor() == CPTRectAnchor::Top;
    const double left = frame.center().x() - size.width() / 2 + displacement.x();
    const double top = (atTop ? frame.top() : frame.bottom() - size.height()) - displacement.y();
    PlacedText title;
    title.text = graph.title();
    const QRectF room(rectangle.topLeft(), rectangle.size() - size);
    title.box = QRectF(QPointF(std::max(room.left(), std::min(left, room.right())),
                               std::max(room.top(), std::min(top, room.bottom()))),
                       size);
    return title;
}

}  // namespace

QRectF plotAreaOfGraph(const CPTXYGraph& graph, const QRectF& rectangle)
{
    return insideOf(insideOf(rectangle, graph.padding()), graph.plotAreaFrame().padding);
}

GraphLayout layOutGraph(const CPTXYGraph& graph, const QRectF& rectangle, const TextMeasure& measureText)
{
    GraphLayout layout;
    layout.frame = insideOf(rectangle, graph.padding());
    layout.plotArea = plotAreaOfGraph(graph, rectangle);
    const double border = borderWidth(graph.plotAreaFrame());
    const QRectF frameInside = insideOf(layout.frame, {border, border, border, border});
    if (!layout.frame.isEmpty())
        layout.title = placedTitle(graph, rectangle, frameInside, measureText);
    if (layout.plotArea.isEmpty())
        return layout;

    const AxisMapping x = xMapping(graph.plotSpace().xRange(), layout.plotArea);
    const AxisMapping y = yMapping(graph.plotSpace().yRange(), layout.plotArea);
    layout.xAxis = placeAxis(graph.axes().xAxis(), {rectangle, frameInside, layout.plotArea, x, y, measureText});
    layout.yAxis = placeAxis(graph.axes().yAxis(), {rectangle, frameInside, layout.plotArea, y, x, measureText});
    // Where the axes cross inside the picture their labels may meet: time goes first.
    std::erase_if(layout.yAxis.labels, [&layout](const AxisLabel& label) {
        return std::any_of(layout.xAxis.labels.begin(), layout.xAxis.labels.end(),
                           [&label](const AxisLabel& other) { return other.box.intersects(label.box); });
    });
    for (AxisLayout* axis : {&layout.xAxis, &layout.yAxis})
        if (layout.title && axis->title && layout.title->box.intersects(axis->title->box))
            axis->title.reset();
    return layout;
}

}  // namespace plotkit
