#pragma once

#include "plotkit/layout/AxisLayout.h"
#include "plotkit/layout/AxisMapping.h"
#include "plotkit/layout/LegendLayout.h"
#include "plotkit/layout/StripArea.h"
#include "plotkit/model/CPTXYGraph.h"

#include <QtCore/QPointF>
#include <QtCore/QRectF>

/// Where the parts of a graph stand in a picture, and which point shows which value: what anything drawn above the
/// plots needs, and what pointer events are read by.
///
/// Coordinates are points, y downward, in the picture's own coordinates. Cheap to make: texts are measured only of a
/// legend, and of a few labels where the graph makes room for them. *Borrows* the graph. Main thread only.
namespace plotkit {

struct GraphGeometry {
    const CPTXYGraph& graph;
    QRectF rectangle;  ///< the whole picture
    QRectF frame;      ///< the plot area frame: the rectangle less the graph's padding
    QRectF inside;     ///< the frame less legend and rooms of the layers; all of it where they need none
    QRectF plotArea;   ///< the inside less the frame's padding, or the room its labels need; holds the strips that the
                       ///< ranges are spread over. Never of negative size
    LegendLayout legend{};  ///< along an edge of the frame, outside the layers' rooms
    QRectF titleRoom{};  ///< of a title above the layers' rooms; empty where it needs none beside the frame's padding
    bool mayBeRough = false;  ///< a layer may draw what takes long roughly, as it is asked again when the view rests

    /// The room of a layer of this graph beside the plots; empty for one that needs none, or is not in the graph.
    QRectF roomOf(const CPTGraphLayer& layer) const;

    /// The part of the plot area that a space is spread over.
    QRectF areaOf(const CPTXYPlotSpace& space) const { return stripArea(plotArea, space.strip()); }

    AxisMapping xMappingOf(const CPTXYPlotSpace& space) const { return xMapping(space.xRange(), plotArea); }
    AxisMapping yMappingOf(const CPTXYPlotSpace& space) const { return yMapping(space.yRange(), areaOf(space)); }

    /// The point at which a space shows (x value, y value), and back; see AxisMapping for ranges without length.
    QPointF pointForValue(const CPTXYPlotSpace& space, const QPointF& value) const
    {
        return plotkit::pointForValue(xMappingOf(space), yMappingOf(space), value);
    }
    QPointF valueForPoint(const CPTXYPlotSpace& space, const QPointF& point) const
    {
        return plotkit::valueForPoint(xMappingOf(space), yMappingOf(space), point);
    }
};

/// Paddings that leave nothing, or are not numbers, give an empty frame or plot area.
GraphGeometry geometryOfGraph(const CPTXYGraph& graph, const QRectF& rectangle, const TextMeasure& measureText);

}  // namespace plotkit
