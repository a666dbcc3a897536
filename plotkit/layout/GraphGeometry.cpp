#include "plotkit/layout/GraphGeometry.h"

#include "plotkit/layout/LabelRoom.h"
#include "plotkit/layout/PaddedRect.h"

namespace plotkit {

GraphGeometry geometryOfGraph(const CPTXYGraph& graph, const QRectF& rectangle, const TextMeasure& measureText)
{
    const QRectF frame = insideOf(rectangle, graph.padding());
    return {graph, rectangle, frame, insideOf(frame, paddingForLabels(graph, frame, measureText))};
}

}  // namespace plotkit
