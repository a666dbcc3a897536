#include "plotkit/layout/GraphGeometry.h"

#include "plotkit/layout/LabelRoom.h"
#include "plotkit/layout/PaddedRect.h"

#include <algorithm>

namespace plotkit {

namespace {

/// Takes the layer's room off `inside` and answers it.
QRectF takeRoom(QRectF& inside, const CPTGraphLayer& layer)
{
    using Edge = CPTLayerRoom::Edge;
    const std::optional<CPTLayerRoom> room = layer.room(inside.size());
    if (!room || !(room->depth > 0))
        return {};
    QRectF taken = inside;
    const double high = std::min(room->depth, inside.height());
    const double wide = std::min(room->depth, inside.width());
    switch (room->edge) {
    case Edge::Top:
        taken.setHeight(high);
        inside.setTop(taken.bottom());
        break;
    case Edge::Bottom:
        taken.setTop(inside.bottom() - high);
        inside.setBottom(taken.top());
        break;
    case Edge::Left:
        taken.setWidth(wide);
        inside.setLeft(taken.right());
        break;
    case Edge::Right:
        taken.setLeft(inside.right() - wide);
        inside.setRight(taken.left());
        break;
    }
    return taken;
}

QRectF takeRooms(QRectF inside, const CPTXYGraph& graph)
{
    for (const CPTGraphLayerPtr& layer : graph.layers())
        takeRoom(inside, *layer);
    return inside;
}

/// A title is the uppermost of all: rooms at the top begin beneath it. Without such rooms it stands in the padding.
QRectF roomOfTitle(const CPTXYGraph& graph, const QRectF& left, const TextMeasure& measureText)
{
    const bool isAtTop = !graph.title().isEmpty() && graph.titlePlotAreaFrameAnchor() == CPTRectAnchor::Top;
    if (!isAtTop || takeRooms(left, graph).top() <= left.top())
        return {};
    const double border = borderWidth(graph.plotAreaFrame());
    const double text = measureText(graph.title(), graph.titleTextStyle()).height();
    QRectF room = left;
    room.setHeight(std::clamp(border + text - graph.titleDisplacement().y(), 0.0, left.height()));
    return room;
}

}  // namespace

QRectF GraphGeometry::roomOf(const CPTGraphLayer& layer) const
{
    QRectF left = besideLegend(graph, frame, legend);
    if (!titleRoom.isEmpty())
        left.setTop(titleRoom.bottom());
    for (const CPTGraphLayerPtr& each : graph.layers()) {
        const QRectF room = takeRoom(left, *each);
        if (each.get() == &layer)
            return room;
    }
    return {};
}

GraphGeometry geometryOfGraph(const CPTXYGraph& graph, const QRectF& rectangle, const TextMeasure& measureText)
{
    const QRectF frame = insideOf(rectangle, graph.padding());
    LegendLayout legend = layOutLegend(graph, frame, measureText);
    QRectF inside = besideLegend(graph, frame, legend);
    const QRectF titleRoom = roomOfTitle(graph, inside, measureText);
    if (!titleRoom.isEmpty())
        inside.setTop(titleRoom.bottom());
    inside = takeRooms(inside, graph);
    return {graph,
            rectangle,
            frame,
            inside,
            insideOf(inside, paddingForLabels(graph, inside, measureText)),
            std::move(legend),
            titleRoom};
}

}  // namespace plotkit
