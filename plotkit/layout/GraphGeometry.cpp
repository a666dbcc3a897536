#include "plotkit/layout/GraphGeometry.h"

#include "plotkit/layout/LabelRoom.h"
#include "plotkit/layout/PaddedRect.h"

namespace plotkit {

GraphGeometry geometryOfGraph(const CPTXYGraph& graph, const QRectF& rectangle, const TextMeasure& measureText)
{
    const QRectF frame = insideOf(rectangle, graph.padding());
    LegendLayout legend = layOutLegend(graph, frame, measureText);
    const QRectF ground = besideLegend(graph, frame, legend);
    return {graph,  rectangle,        frame, insideOf(ground, paddingForLabels(graph, ground, measureText)),
            ground, std::move(legend)};
}

}  // namespace plotkit
