#pragma once

#include "plotkit/layout/GraphGeometry.h"
#include "plotkit/model/CPTXYGraph.h"

#include <QtCore/QBasicTimer>
#include <QtGui/QImage>
#include <QtWidgets/QWidget>

#include <memory>
#include <optional>
#include <vector>

class QGestureEvent;
class QNativeGestureEvent;

namespace plotkit {
class GraphFrames;
class PlotSpaceDrag;
enum class GraphChange;
}  // namespace plotkit

/// Shows a graph and turns mouse, wheel, touch and keys into proposed ranges.
///
/// *Shares* the hosted graph. Drag pans both axes, wheel and pinch zoom about the pointer, horizontal scroll pans x;
/// arrow keys pan by a tenth, plus, equals and minus zoom, Home fits. Every step is proposed to each plot space that
/// allows interaction, the default one first, in that space's own values: x first, then y. What its delegate answers is
/// shown. Without a graph, or where no plot space allows interaction, events go on to the parent.
///
/// On the screen a graph of paged series is shown at once: where pages that it needs would take longer than a frame
/// has, plots are drawn from what their runs tell, beneath a small mark, and exactly as soon as the pages are there.
/// Layers that drew roughly are drawn exactly when the view rests. Pictures that anybody takes of the view are exact.
///
/// Where only the graph's layers changed, the graph beneath them is not painted again. Every other paint ends with the
/// plots' finished-drawing reports, sent when the painter has ended: a delegate may change other widgets and the graph,
/// but not delete the view. A graph is shown by one view at a time: the last one that hosts it. Main thread only.
class CPTGraphHostingView : public QWidget {
    Q_OBJECT
    Q_PROPERTY(bool provisional READ isProvisional)
public:
    explicit CPTGraphHostingView(QWidget* parent = nullptr);
    ~CPTGraphHostingView() override;

    const CPTXYGraphPtr& hostedGraph() const { return m_hostedGraph; }

    /// The graph's bounds follow the view from here on. Null: an empty frame is shown.
    void setHostedGraph(CPTXYGraphPtr graph);

    /// The graph as it stands in this view, at the view's size; `density` pixels a point. Reports finished drawing.
    /// Without a graph: the empty frame that is shown. Of size zero: a null image, no data.
    QImage imageOfLayer(double density = 1.0);
    QByteArray dataForPDFRepresentationOfLayer();

    /// Whether what the screen shows is to become more exact, without anybody's doing.
    bool isProvisional() const;

    virtual bool acceptsFirstResponder() const { return true; }

    /// Where the parts of a graph stand when this view shows it.
    plotkit::GraphGeometry geometryShown(const CPTXYGraph& graph) const;

protected:
    void paintEvent(QPaintEvent* event) override;
    void keyPressEvent(QKeyEvent* event) override;
    void mousePressEvent(QMouseEvent* event) override;
    void mouseMoveEvent(QMouseEvent* event) override;
    void mouseReleaseEvent(QMouseEvent* event) override;
    void wheelEvent(QWheelEvent* event) override;
    void timerEvent(QTimerEvent* event) override;
    bool event(QEvent* event) override;
    void resizeEvent(QResizeEvent* event) override;

private:
    using Drag = std::vector<plotkit::PlotSpaceDrag>;  ///< one for each plot space that moves

    void changed(plotkit::GraphChange change);
    std::vector<CPTXYPlotSpacePtr> interactiveSpaces() const;
    void zoomBy(double factor, QPointF aboutPoint);
    static bool isMeant(const CPTXYPlotSpace& space, const plotkit::GraphGeometry& geometry, QPointF point);
    bool handlePinch(QGestureEvent* event);
    bool handleNativeGesture(QNativeGestureEvent* event);
    void cancelDrag();
    void drawFocusHint(QPainter& painter) const;
    void drawOnItsWay(QPainter& painter) const;

    CPTXYGraphPtr m_hostedGraph;
    std::unique_ptr<plotkit::GraphFrames> m_frames;         ///< owns
    std::optional<plotkit::GraphChange> m_awaitingRepaint;  ///< what a repaint was asked for
    QBasicTimer m_rest;                                     ///< runs while layers are rough
    std::shared_ptr<Drag> m_drag;                           ///< the drag under way, if any
};
