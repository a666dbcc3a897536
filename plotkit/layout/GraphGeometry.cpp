#include "plotkit/layout/GraphGeometry.h"

#include "plotkit/layout/PaddedRect.h"

namespace plotkit {

GraphGeometry geometryOfGraph(const CPTXYGraph& graph, const QRectF& rectangle)
{
    const QRectF frame = insideOf(rectangle, graph.padding());
    return {graph, rectangle, frame, insideOf(frame, graph.plotAreaFrame().padding)};
}

}  // namespace plotkit
