#include "plotkit/widget/CPTGraphHostingView.h"

#include "plotkit/layout/GraphGeometry.h"
#include "plotkit/render/GraphPainter.h"
#include "plotkit/render/GraphRendering.h"
#include "plotkit/widget/PlotSpaceMoves.h"

#include <QtCore/QPointer>
#include <QtGui/QKeyEvent>
#include <QtGui/QMouseEvent>
#include <QtGui/QNativeGestureEvent>
#include <QtGui/QPainter>
#include <QtGui/QWheelEvent>
#include <QtWidgets/QGestureEvent>
#include <QtWidgets/QPinchGesture>

#include <cmath>
#include <utility>

namespace {

/// How strongly the line round a focused view shows, 0 to 1.
constexpr float kFocusHintOpacity = 0.45F;
constexpr double kFocusHintRadius = 6.0;  // points

/// What stands where a graph will be: the theme's frame without anything in it.
const CPTXYGraph& emptyGraph()
{
    static const std::unique_ptr<const CPTXYGraph> graph = [] {
        auto themed = std::make_unique<CPTXYGraph>();
        themed->applyTheme(CPTTheme::themeNamed(kCPTDarkGradientTheme));
        themed->setFill(CPTFill::none());
        for (CPTXYAxis* axis : {themed->axisSet()->xAxis(), themed->axisSet()->yAxis()}) {
            axis->setAxisLineStyle(std::nullopt);
            axis->setMajorTickLineStyle(std::nullopt);
            axis->setMinorTickLineStyle(std::nullopt);
            axis->setLabelFormatter(nullptr);
        }
        return themed;
    }();
    return *graph;
}

/// With Alt held the platform has swapped the wheel's axes; Alt chooses the axis here, so they go back.
QPointF wheelDelta(const QPoint& delta, const QWheelEvent& event)
{
    return event.modifiers().testFlag(Qt::AltModifier) ? QPointF(delta.transposed()) : QPointF(delta);
}

}  // namespace

CPTGraphHostingView::CPTGraphHostingView(QWidget* parent)
    : QWidget(parent), m_painter(std::make_unique<plotkit::GraphPainter>())
{
    setFocusPolicy(Qt::StrongFocus);
    setAccessibleName(tr("Graph"));
    setAccessibleDescription(tr("Arrow keys pan, plus and minus zoom, Home shows everything."));
    grabGesture(Qt::PinchGesture);
}

CPTGraphHostingView::~CPTGraphHostingView() = default;

void CPTGraphHostingView::setHostedGraph(CPTXYGraphPtr graph)
{
    if (graph == m_hostedGraph)
        return;
    cancelDrag();
    m_hostedGraph = std::move(graph);
    if (m_hostedGraph) {
        // Never taken back, as another view may have set its own since; a graph that is hosted no longer is passed
        // over.
        m_hostedGraph->setNeedsDisplayHandler(
            [view = QPointer<CPTGraphHostingView>(this), shown = m_hostedGraph.get()] {
                if (view && view->m_hostedGraph.get() == shown)
                    view->update();
            });
        m_hostedGraph->setBounds(rect());
    }
    update();
}

QImage CPTGraphHostingView::imageOfLayer(double density)
{
    const CPTXYGraphPtr graph = m_hostedGraph;  // a delegate may host another one
    return graph ? plotkit::imageOfGraph(*graph, size(), density, plotkit::DrawingReport::TellDelegates) : QImage();
}

QByteArray CPTGraphHostingView::dataForPDFRepresentationOfLayer()
{
    const CPTXYGraphPtr graph = m_hostedGraph;
    return graph ? plotkit::pdfOfGraph(*graph, size(), plotkit::DrawingReport::TellDelegates) : QByteArray();
}

void CPTGraphHostingView::paintEvent(QPaintEvent*)
{
    const CPTXYGraphPtr graph = m_hostedGraph;
    {
        QPainter painter(this);
        m_painter->paint(painter, graph ? *graph : emptyGraph(), rect());
        drawFocusHint(painter);
    }
    if (graph)
        plotkit::reportFinishedDrawing(*graph);
}

void CPTGraphHostingView::drawFocusHint(QPainter& painter) const
{
    if (!hasFocus())
        return;
    QColor color = palette().color(QPalette::Highlight);
    color.setAlphaF(kFocusHintOpacity);
    painter.setRenderHint(QPainter::Antialiasing);
    painter.setBrush(Qt::NoBrush);
    painter.setPen(QPen(color, 1.0));
    painter.drawRoundedRect(QRectF(rect()).adjusted(0.5, 0.5, -0.5, -0.5), kFocusHintRadius, kFocusHintRadius);
}

void CPTGraphHostingView::resizeEvent(QResizeEvent* event)
{
    QWidget::resizeEvent(event);
    cancelDrag();  // its places are those of the old size
    if (m_hostedGraph)
        m_hostedGraph->setBounds(rect());
}

CPTXYPlotSpace* CPTGraphHostingView::interactiveSpace() const
{
    CPTXYPlotSpace* space = m_hostedGraph ? m_hostedGraph->defaultPlotSpace() : nullptr;
    return space && space->allowsUserInteraction() ? space : nullptr;
}

void CPTGraphHostingView::zoomBy(double factor, QPointF aboutPlace)
{
    const CPTXYGraphPtr graph = m_hostedGraph;
    if (CPTXYPlotSpace* space = interactiveSpace())
        plotkit::zoomAboutPlace(*space, plotkit::geometryOfGraph(*graph, rect()).plotArea, factor, aboutPlace);
}

void CPTGraphHostingView::mousePressEvent(QMouseEvent* event)
{
    CPTXYPlotSpace* space = interactiveSpace();
    const QRectF area = space ? plotkit::geometryOfGraph(*m_hostedGraph, rect()).plotArea : QRectF();
    if (!space || event->button() != Qt::LeftButton || !area.contains(event->position())) {
        event->ignore();
        return;
    }
    m_drag = std::make_shared<plotkit::PlotSpaceDrag>(*space, area, event->position());
    setCursor(Qt::ClosedHandCursor);
}

void CPTGraphHostingView::mouseMoveEvent(QMouseEvent* event)
{
    if (!m_drag || !interactiveSpace()) {
        event->ignore();
        return;
    }
    const CPTXYGraphPtr graph = m_hostedGraph;                    // keeps the plot space while the delegate decides
    const std::shared_ptr<plotkit::PlotSpaceDrag> drag = m_drag;  // the delegate may end it, by hosting another graph
    drag->moveTo(event->position());
}

void CPTGraphHostingView::mouseReleaseEvent(QMouseEvent* event)
{
    if (!m_drag || event->button() != Qt::LeftButton) {
        event->ignore();
        return;
    }
    m_drag.reset();
    unsetCursor();
    const CPTXYGraphPtr graph = m_hostedGraph;
    CPTXYPlotSpace* space = graph->defaultPlotSpace();
    if (space->delegate())
        space->delegate()->plotSpaceShouldHandlePointingDeviceUpEvent(space, event->position());
}

void CPTGraphHostingView::cancelDrag()
{
    if (!m_drag)
        return;
    m_drag.reset();
    unsetCursor();
    const CPTXYGraphPtr graph = m_hostedGraph;
    CPTXYPlotSpace* space = graph->defaultPlotSpace();
    if (space->delegate())
        space->delegate()->plotSpaceShouldHandlePointingDeviceCancelledEvent(space);
}

void CPTGraphHostingView::wheelEvent(QWheelEvent* event)
{
    const CPTXYGraphPtr graph = m_hostedGraph;
    CPTXYPlotSpace* space = interactiveSpace();
    if (!space) {
        event->ignore();
        return;
    }
    const QPointF turned = wheelDelta(event->angleDelta(), *event);
    if (std::abs(turned.x()) <= std::abs(turned.y())) {
        if (turned.y() != 0)
            zoomBy(plotkit::zoomFactorForWheel(turned.y()), event->position());
        return;
    }
    const QRectF area = plotkit::geometryOfGraph(*graph, rect()).plotArea;
    const QPointF scrolled = wheelDelta(event->pixelDelta(), *event);
    const bool isTouchpad = event->phase() != Qt::NoScrollPhase && scrolled.x() != 0;
    plotkit::panXByPlaces(*space, area,
                          isTouchpad ? scrolled.x() : turned.x() / 120.0 * plotkit::kPanStep * area.width());
}

void CPTGraphHostingView::keyPressEvent(QKeyEvent* event)
{
    const CPTXYGraphPtr graph = m_hostedGraph;
    CPTXYPlotSpace* space = interactiveSpace();
    if (!space || (event->modifiers() & (Qt::ControlModifier | Qt::MetaModifier))) {
        event->ignore();
        return;
    }
    const QPointF centre = plotkit::geometryOfGraph(*graph, rect()).plotArea.center();
    switch (event->key()) {
    case Qt::Key_Left: plotkit::panByShare(*space, CPTCoordinate::X, -plotkit::kPanStep); break;
    case Qt::Key_Right: plotkit::panByShare(*space, CPTCoordinate::X, plotkit::kPanStep); break;
    case Qt::Key_Down: plotkit::panByShare(*space, CPTCoordinate::Y, -plotkit::kPanStep); break;
    case Qt::Key_Up: plotkit::panByShare(*space, CPTCoordinate::Y, plotkit::kPanStep); break;
    case Qt::Key_Plus:
    case Qt::Key_Equal: zoomBy(plotkit::kZoomStep, centre); break;
    case Qt::Key_Minus: zoomBy(1 / plotkit::kZoomStep, centre); break;
    case Qt::Key_Home: space->scaleToFitPlots(graph->allPlots()); break;
    default: event->ignore();
    }
}

bool CPTGraphHostingView::event(QEvent* event)
{
    switch (event->type()) {
    case QEvent::Gesture: return handlePinch(static_cast<QGestureEvent*>(event));
    case QEvent::NativeGesture: return handleNativeGesture(static_cast<QNativeGestureEvent*>(event));
    case QEvent::TouchCancel:
    case QEvent::Hide:
    case QEvent::EnabledChange: cancelDrag(); break;
    default: break;
    }
    return QWidget::event(event);
}

bool CPTGraphHostingView::handlePinch(QGestureEvent* event)
{
    auto* pinch = static_cast<QPinchGesture*>(event->gesture(Qt::PinchGesture));
    if (!pinch || !interactiveSpace())
        return false;
    event->accept(pinch);
    cancelDrag();  // the first finger's synthetic mouse drag ends where the second one begins a pinch
    if (pinch->changeFlags().testFlag(QPinchGesture::ScaleFactorChanged))
        zoomBy(pinch->scaleFactor(), mapFromGlobal(pinch->centerPoint()));
    return true;
}

bool CPTGraphHostingView::handleNativeGesture(QNativeGestureEvent* event)
{
    if (event->gestureType() != Qt::ZoomNativeGesture || !interactiveSpace()) {
        event->ignore();
        return false;
    }
    zoomBy(1 + event->value(), event->position());
    return true;
}
