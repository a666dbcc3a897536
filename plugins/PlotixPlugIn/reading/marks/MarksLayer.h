#pragma once

#include "plotkit/model/CPTGraphLayer.h"
#include "plugins/PlotixPlugIn/reading/marks/MarkFigures.h"

#include <functional>
#include <optional>

/// The marks A and B over a graph: dashed verticals with flags above the plots, the stretch between them shaded, and in
/// one line what differs between them.
///
/// The graph and the marks' part *share* it. Main thread only.
namespace plotix {

enum class Mark { A, B };

class MarksLayer : public CPTGraphLayer {
public:
    using Heading = std::function<QStringList(const MarkTimes& marks)>;

    /// `heading` is called whenever both marks are drawn, until `stop`.
    explicit MarksLayer(Heading heading) : m_heading(std::move(heading)) {}

    /// `current` is the mark that keys move; its flag stands out.
    void show(const MarkTimes& marks, Mark current);
    void stop() { m_heading = nullptr; }

    void drawInGraph(QPainter& painter, const plotkit::GraphGeometry& geometry) override;

private:
    MarkTimes m_marks;
    Mark m_current = Mark::A;
    Heading m_heading;
};

/// How far flags reach above the plot area, in points.
double heightOfFlags(const CPTXYGraph& graph);

/// Where a mark's flag stands: above the plot area at the time, or at its edge where the time is not shown.
QRectF flagPlace(const plotkit::GraphGeometry& geometry, double time);

/// The flag at a point, the current one first.
std::optional<Mark> flagAt(const plotkit::GraphGeometry& geometry, const MarkTimes& marks, Mark current,
                           const QPointF& point);

/// The items that fit into a width, joined by blanks; those that do not are left out from the end, which an ellipsis
/// says. Nothing at all where not even the first fits.
QString fittingHeading(const QStringList& items, double width, const std::function<double(const QString&)>& widthOf);

}  // namespace plotix
