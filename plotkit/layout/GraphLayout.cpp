#include "plotkit/layout/GraphLayout.h"

#include "plotkit/layout/AxisMapping.h"
#include "plotkit/layout/AxisPlacement.h"
#include "plotkit/layout/GraphGeometry.h"
#include "plotkit/layout/LabelRoom.h"
#include "plotkit/layout/PaddedRect.h"
#include "plotkit/layout/StripHeads.h"

#include <algorithm>

namespace plotkit {

namespace {

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

/// Where axes cross inside the picture their labels may overlap: the axes before keep theirs, time before values.
void leaveOutLabelsThatOverlap(std::vector<AxisLayout>& axes)
{
    const auto overlaps = [](const AxisLayout& axis, const AxisLabel& label) {
        return std::any_of(axis.labels.begin(), axis.labels.end(),
                           [&label](const AxisLabel& other) { return other.box.intersects(label.box); });
    };
    for (std::size_t axis = 1; axis < axes.size(); ++axis)
        for (std::size_t before = 0; before < axis; ++before)
            std::erase_if(axes[axis].labels, [&](const AxisLabel& label) { return overlaps(axes[before], label); });
}

/// A line across the plot area becomes one across each strip: heads are kept free.
std::vector<QLineF> brokenByStrips(const std::vector<QLineF>& lines, const std::vector<QRectF>& strips)
{
    std::vector<QLineF> broken;
    broken.reserve(lines.size() * strips.size());
    for (const QLineF& line : lines)
        for (const QRectF& strip : strips)
            broken.emplace_back(line.x1(), strip.top(), line.x2(), strip.bottom());
    return broken;
}

void spreadOverStrips(AxisLayout& axis, const GraphGeometry& geometry)
{
    std::vector<QRectF> strips;
    for (const CPTXYPlotSpacePtr& space : geometry.graph.allPlotSpaces())
        if (!space->strip().isWhole())
            strips.push_back(geometry.areaOf(*space));
    if (strips.empty())
        return;
    axis.majorGridLines = brokenByStrips(axis.majorGridLines, strips);
    axis.minorGridLines = brokenByStrips(axis.minorGridLines, strips);
}

AxisLayout placedAxis(const CPTXYAxis& axis, const GraphGeometry& geometry, const QRectF& frameInside,
                      const TextMeasure& measureText)
{
    if (axis.isHidden())
        return {};
    const CPTXYPlotSpace& space = geometry.graph.plotSpaceOf(axis);
    const AxisMapping x = geometry.xMappingOf(space);
    const AxisMapping y = geometry.yMappingOf(space);
    const bool isX = axis.coordinate() == CPTCoordinate::X;
    const bool grows = geometry.graph.labelRoom() == CPTLabelRoom::Grows;
    const QRectF area = isX ? geometry.plotArea : geometry.areaOf(space);
    if (area.isEmpty())
        return {};
    AxisLayout layout =
        placeAxis(axis, {grows || !geometry.legend.area.isEmpty() ? frameInside : geometry.rectangle, frameInside, area,
                         isX ? x : y, isX ? y : x, measureText, grows ? TextOverPlots::Never : TextOverPlots::Allowed});
    if (isX)
        spreadOverStrips(layout, geometry);
    return layout;
}

}  // namespace

GraphLayout layOutGraph(const CPTXYGraph& graph, const QRectF& rectangle, const TextMeasure& measureText)
{
    const GraphGeometry geometry = geometryOfGraph(graph, rectangle, measureText);
    GraphLayout layout;
    layout.frame = geometry.frame;
    layout.plotArea = geometry.plotArea;
    layout.legend = geometry.legend;
    layout.axes.resize(graph.axes().axes().size());
    const double border = borderWidth(graph.plotAreaFrame());
    const QRectF frameInside = insideOf(geometry.inside, {border, border, border, border});
    const QRectF titled =
        geometry.titleRoom.isEmpty() ? frameInside : insideOf(geometry.titleRoom, {border, border, 0, border});
    if (!layout.frame.isEmpty())
        layout.title = placedTitle(graph, rectangle, titled, measureText);
    if (layout.plotArea.isEmpty())
        return layout;

    std::transform(graph.axes().axes().begin(), graph.axes().axes().end(), layout.axes.begin(),
                   [&](const CPTXYAxisPtr& axis) { return placedAxis(*axis, geometry, frameInside, measureText); });
    leaveOutLabelsThatOverlap(layout.axes);
    layout.strips = placedStrips(geometry, measureText);
    for (AxisLayout& axis : layout.axes)
        if (layout.title && axis.title && layout.title->box.intersects(axis.title->box))
            axis.title.reset();
    return layout;
}

}  // namespace plotkit
