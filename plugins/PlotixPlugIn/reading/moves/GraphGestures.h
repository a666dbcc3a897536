#pragma once

#include "plotkit/model/CPTXYGraph.h"
#include "plugins/PlotixPlugIn/reading/moves/ZoomBox.h"
#include "plugins/PlotixPlugIn/reading/trend/ReadTrend.h"

#include <QtCore/QObject>

#include <memory>
#include <optional>

class CPTGraphHostingView;
class QMouseEvent;
class QWheelEvent;
namespace plotkit {
struct GraphGeometry;
}

/// What pointer and wheel do in a graph beside panning and zooming about the pointer: a drag with Control held, or the
/// next one after `zoomByNextDrag`, draws a box and zooms to it; a drag along an axis zooms that axis alone, and so
/// does the wheel over it; a double click fits everything, on an axis that axis. Everything else is the view's.
///
/// Its owner *owns* it; it *borrows* the trend. Main thread only.
namespace plotix {

class GraphGestures : public QObject {
    Q_OBJECT
public:
    explicit GraphGestures(ReadTrend& trend);

    void setOn(bool on);
    bool isOn() const { return m_isOn; }
    void zoomByNextDrag();

    bool pointerActed(QEvent& event);  ///< answers whether it was meant for this

signals:
    void moved();  ///< something of this has moved the graph

private:
    /// An axis under the pointer: the times, or the values of a space.
    struct Axis {
        CPTCoordinate coordinate = CPTCoordinate::X;
        CPTXYPlotSpacePtr space;
    };
    struct AxisDrag {
        Axis axis;
        QPointF start;
        CPTPlotRange range;
        double fixedValue = 0;
    };

    CPTGraphHostingView& view() const { return *m_trend.graphView(); }
    plotkit::GraphGeometry geometry() const;
    std::optional<Axis> axisAt(const QPointF& point) const;
    CPTXYPlotSpacePtr spaceAt(const QPointF& point) const;  ///< whose values a box there zooms
    bool press(const QMouseEvent& event);
    bool move(const QMouseEvent& event);
    bool release(const QMouseEvent& event);
    bool doubleClick(const QMouseEvent& event);
    bool wheel(const QWheelEvent& event);
    void zoomAxis(const Axis& axis, const CPTPlotRange& from, double fixedValue, double factor);
    void zoomTo(const QRectF& box);
    void showCursorFor(const QPointF& point);
    QRectF boxTo(const QPointF& point) const;

    ReadTrend& m_trend;
    std::shared_ptr<ZoomBox> m_box = std::make_shared<ZoomBox>();  // in the graph while one is drawn
    bool m_isOn = false;
    bool m_isNextDragABox = false;
    std::optional<QPointF> m_boxStart;
    std::optional<AxisDrag> m_axisDrag;
    bool m_hasCursor = false;
};

}  // namespace plotix
