#pragma once

#include "plotkit/model/CPTXYGraph.h"

#include <QtGui/QImage>
#include <QtWidgets/QWidget>

#include <memory>

class QGestureEvent;
class QNativeGestureEvent;

namespace plotkit {
class GraphPainter;
class PlotSpaceDrag;
}  // namespace plotkit

/// Shows a graph and turns mouse, wheel, touch and keys into proposed ranges.
///
/// *Shares* the hosted graph. Drag pans both axes, wheel and pinch zoom about the pointer, horizontal scroll pans x;
/// arrow keys pan by a tenth, plus, equals and minus zoom, Home fits. Every step proposes x first, then y, and whatever
/// the plot-space delegate answers is what is shown. Without a graph, or where its plot space allows no interaction,
/// events go on to the parent.
///
/// Every paint ends with the plots' finished-drawing reports, sent when the painter has ended: a delegate may change
/// other widgets and the graph, but not delete the view. A graph is shown by one view at a time: the last one that
/// hosts it. Main thread only.
class CPTGraphHostingView : public QWidget {
    Q_OBJECT
public:
    explicit CPTGraphHostingView(QWidget* parent = nullptr);
    ~CPTGraphHostingView() override;

    const CPTXYGraphPtr& hostedGraph() const { return m_hostedGraph; }

    /// The graph's bounds follow the view from here on. Null: an empty frame is shown.
    void setHostedGraph(CPTXYGraphPtr graph);

    /// The graph as it stands in this view, at the view's size; `density` pixels a point. Reports finished drawing.
    /// Without a graph, or of size zero: a null image, no data.
    QImage imageOfLayer(double density = 1.0);
    QByteArray dataForPDFRepresentationOfLayer();

    virtual bool acceptsFirstResponder() const { return true; }

protected:
    void paintEvent(QPaintEvent* event) override;
    void keyPressEvent(QKeyEvent* event) override;
    void mousePressEvent(QMouseEvent* event) override;
    void mouseMoveEvent(QMouseEvent* event) override;
    void mouseReleaseEvent(QMouseEvent* event) override;
    void wheelEvent(QWheelEvent* event) override;
    bool event(QEvent* event) override;
    void resizeEvent(QResizeEvent* event) override;

private:
    CPTXYPlotSpace* interactiveSpace() const;  ///< null when there is nothing to interact with
    void zoomBy(double factor, QPointF aboutPlace);
    bool handlePinch(QGestureEvent* event);
    bool handleNativeGesture(QNativeGestureEvent* event);
    void cancelDrag();
    void drawFocusHint(QPainter& painter) const;

    CPTXYGraphPtr m_hostedGraph;
    std::unique_ptr<plotkit::GraphPainter> m_painter;  ///< owns
    std::shared_ptr<plotkit::PlotSpaceDrag> m_drag;    ///< the drag under way, if any
};
