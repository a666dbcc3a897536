#include "plotkit/widget/CPTGraphHostingView.h"

#include "plotkit/render/GraphCanvas.h"
#include "plotkit/render/GraphFrames.h"
#include "plotkit/render/GraphRendering.h"
#include "plotkit/render/GraphText.h"
#include "plotkit/widget/PlotSpaceMoves.h"

#include <QtCore/QPointer>
#include <QtGui/QBackingStore>
#include <QtGui/QKeyEvent>
#include <QtGui/QMouseEvent>
#include <QtGui/QNativeGestureEvent>
#include <QtGui/QPaintEngine>
#include <QtGui/QPainter>
#include <QtGui/QWheelEvent>
#include <QtWidgets/QGestureEvent>
#include <QtWidgets/QPinchGesture>

#include <cmath>
#include <utility>

namespace {

/// How strongly the line round a focused view shows, 0 to 1.
constexpr float kFocusHintOpacity = 0.45F;
constexpr int kRest = 60;                 // milliseconds without a paint: then there is time for what is rough
constexpr QSizeF kOnItsWay(26, 12);       // points: the mark of a frame that is not exact yet
constexpr double kOnItsWayInset = 6;      // points from the plot area's edges
constexpr float kOnItsWayOpacity = 0.8F;  // of its ground, 0 to 1
constexpr double kFocusHintRadius = 5.5;  // points, to the middle of the line: its arcs end on whole ones

/// What stands where a graph will be: the theme's frame without anything in it.
const CPTXYGraph& emptyGraph()
{
    static const std::unique_ptr<const CPTXYGraph> graph = [] {
        auto themed = std::make_unique<CPTXYGraph>();
        themed->applyTheme(CPTTheme::themeNamed(kCPTDarkGradientTheme));
        themed->setFill(CPTFill::none());
        for (const CPTXYAxisPtr& axis : themed->axisSet()->axes()) {
            axis->setAxisLineStyle(std::nullopt);
            axis->setMajorTickLineStyle(std::nullopt);
            axis->setMinorTickLineStyle(std::nullopt);
            axis->setLabelFormatter(nullptr);
        }
        return themed;
    }();
    return *graph;
}

/// Whether the window's own picture is painted, and not one for somebody who asked for it.
bool isForTheScreen(const QWidget& view, const QPainter& painter)
{
    QBackingStore* store = view.window()->backingStore();
    return store && painter.paintEngine() && painter.paintEngine()->paintDevice() == store->paintDevice();
}

/// With Alt held the platform has swapped the wheel's axes; Alt chooses the axis here, so they go back.
QPointF wheelDelta(const QPoint& delta, const QWheelEvent& event)
{
    return event.modifiers().testFlag(Qt::AltModifier) ? QPointF(delta.transposed()) : QPointF(delta);
}

}  // namespace

plotkit::GraphGeometry CPTGraphHostingView::geometryShown(const CPTXYGraph& graph) const
{
    return plotkit::geometryOfGraph(graph, rect(), plotkit::sizeOfText);
}

CPTGraphHostingView::CPTGraphHostingView(QWidget* parent)
    : QWidget(parent), m_frames(std::make_unique<plotkit::GraphFrames>([this] {
          // Posted: goes with the view, whose end waits for the thread that calls this.
          QMetaObject::invokeMethod(
              this, [this] { changed(plotkit::GraphChange::Anything); }, Qt::QueuedConnection);
      }))
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
        // Never reset, as another view may have set its own since; calls of a graph that is hosted no longer are
        // ignored.
        const auto handlerFor = [this](plotkit::GraphChange change) {
            return [view = QPointer<CPTGraphHostingView>(this), shown = m_hostedGraph.get(), change] {
                if (view && view->m_hostedGraph.get() == shown)
                    view->changed(change);
            };
        };
        m_hostedGraph->setNeedsDisplayHandler(handlerFor(plotkit::GraphChange::Anything));
        m_hostedGraph->setLayersNeedDisplayHandler(handlerFor(plotkit::GraphChange::LayersOnly));
        m_hostedGraph->setBounds(rect());
    }
    changed(plotkit::GraphChange::Anything);
}

void CPTGraphHostingView::changed(plotkit::GraphChange change)
{
    if (m_awaitingRepaint != plotkit::GraphChange::Anything)
        m_awaitingRepaint = change;
    update();
}

QImage CPTGraphHostingView::imageOfLayer(double density)
{
    const CPTXYGraphPtr graph = m_hostedGraph;  // a delegate may host another one
    return plotkit::imageOfGraph(graph ? *graph : emptyGraph(), size(), density, plotkit::DrawingReport::TellDelegates);
}

QByteArray CPTGraphHostingView::dataForPDFRepresentationOfLayer()
{
    const CPTXYGraphPtr graph = m_hostedGraph;
    return plotkit::pdfOfGraph(graph ? *graph : emptyGraph(), size(), plotkit::DrawingReport::TellDelegates);
}

void CPTGraphHostingView::paintEvent(QPaintEvent*)
{
    const CPTXYGraphPtr graph = m_hostedGraph;
    // A repaint that nobody here asked for may be for anything.
    const plotkit::GraphChange change =
        std::exchange(m_awaitingRepaint, std::nullopt).value_or(plotkit::GraphChange::Anything);
    bool isGraphPainted = false;
    {
        QPainter painter(this);
        const auto truth =
            isForTheScreen(*this, painter) ? plotkit::FrameTruth::MayBeProvisional : plotkit::FrameTruth::Exact;
        isGraphPainted = m_frames->paint(painter, graph ? *graph : emptyGraph(), rect(), change, truth);
        if (truth == plotkit::FrameTruth::MayBeProvisional && m_frames->areLayersRough())
            m_rest.start(kRest, this);
        else if (truth == plotkit::FrameTruth::MayBeProvisional)
            m_rest.stop();
        if (graph && truth == plotkit::FrameTruth::MayBeProvisional && m_frames->isProvisional())
            drawOnItsWay(painter);
        drawFocusHint(painter);
    }
    if (graph && isGraphPainted)
        plotkit::reportFinishedDrawing(*graph);
}

void CPTGraphHostingView::drawFocusHint(QPainter& painter) const
{
    if (!hasFocus())
        return;
    QColor color = palette().color(QPalette::Highlight);
    color.setAlphaF(kFocusHintOpacity);
    const QRectF line = QRectF(rect()).adjusted(0.5, 0.5, -0.5, -0.5);
    const QSizeF arc(2 * kFocusHintRadius, 2 * kFocusHintRadius);
    if (line.width() < arc.width() || line.height() < arc.height())
        return;
    // Piece by piece: as one figure it has as many rows as the view, and the painter would wake threads for it.
    painter.setRenderHint(QPainter::Antialiasing);
    painter.setBrush(Qt::NoBrush);
    painter.setPen(QPen(color, 1.0, Qt::SolidLine, Qt::FlatCap));
    const QPointF far = line.bottomRight() - QPointF(arc.width(), arc.height());
    constexpr int kQuarter = 90 * 16;  // sixteenths of a degree, from three o'clock against the clock
    painter.drawArc(QRectF(QPointF(far.x(), line.top()), arc), 0, kQuarter);
    painter.drawArc(QRectF(line.topLeft(), arc), kQuarter, kQuarter);
    painter.drawArc(QRectF(QPointF(line.left(), far.y()), arc), 2 * kQuarter, kQuarter);
    painter.drawArc(QRectF(far, arc), 3 * kQuarter, kQuarter);
    plotkit::GraphCanvas canvas(painter);
    const CPTLineStyle style{.width = 1, .color = color};
    const QRectF straight = line.adjusted(kFocusHintRadius, kFocusHintRadius, -kFocusHintRadius, -kFocusHintRadius);
    for (const double y : {line.top(), line.bottom()})
        canvas.drawLine({straight.left(), y, straight.right(), y}, style);
    for (const double x : {line.left(), line.right()})
        canvas.drawLine({x, straight.top(), x, straight.bottom()}, style);
}

bool CPTGraphHostingView::isProvisional() const
{
    return m_frames->isProvisional() || m_frames->areLayersRough();
}

/// Nothing was painted for a while.
void CPTGraphHostingView::timerEvent(QTimerEvent* event)
{
    if (event->timerId() != m_rest.timerId()) {
        QWidget::timerEvent(event);
        return;
    }
    m_rest.stop();
    m_frames->settleLayers();
    changed(plotkit::GraphChange::LayersOnly);
}

/// Three dots on a plate, where the plots end at the top right: more is to come.
void CPTGraphHostingView::drawOnItsWay(QPainter& painter) const
{
    const QRectF area = geometryShown(*m_hostedGraph).plotArea;
    if (area.width() < 2 * kOnItsWay.width() || area.height() < 2 * kOnItsWay.height())
        return;
    const QRectF plate(area.topRight() + QPointF(-kOnItsWay.width() - kOnItsWayInset, kOnItsWayInset), kOnItsWay);
    QColor ground = palette().color(QPalette::Base);
    ground.setAlphaF(kOnItsWayOpacity);
    painter.save();
    painter.setRenderHint(QPainter::Antialiasing);
    painter.setPen(Qt::NoPen);
    painter.setBrush(ground);
    painter.drawRoundedRect(plate, plate.height() / 2, plate.height() / 2);
    painter.setBrush(palette().color(QPalette::Text));
    for (const double at : {0.28, 0.5, 0.72})
        painter.drawEllipse(QPointF(plate.left() + at * plate.width(), plate.center().y()), 1.5, 1.5);
    painter.restore();
}

void CPTGraphHostingView::resizeEvent(QResizeEvent* event)
{
    QWidget::resizeEvent(event);
    cancelDrag();  // its points are those of the old size
    if (m_hostedGraph)
        m_hostedGraph->setBounds(rect());
}

std::vector<CPTXYPlotSpacePtr> CPTGraphHostingView::interactiveSpaces() const
{
    std::vector<CPTXYPlotSpacePtr> spaces;
    if (m_hostedGraph)
        spaces = m_hostedGraph->allPlotSpaces();
    std::erase_if(spaces, [](const CPTXYPlotSpacePtr& space) { return !space->allowsUserInteraction(); });
    return spaces;
}

void CPTGraphHostingView::zoomBy(double factor, QPointF aboutPoint)
{
    const CPTXYGraphPtr graph = m_hostedGraph;
    for (const CPTXYPlotSpacePtr& space : interactiveSpaces()) {
        const plotkit::GraphGeometry geometry = geometryShown(*graph);
        if (isMeant(*space, geometry, aboutPoint))
            plotkit::zoomAboutPoint(*space, geometry.areaOf(*space), factor, aboutPoint);
    }
}

/// In lanes the one at the point moves, with the time of all of them.
bool CPTGraphHostingView::isMeant(const CPTXYPlotSpace& space, const plotkit::GraphGeometry& geometry, QPointF point)
{
    return space.strip().isWhole() || plotkit::wholeStrip(geometry.plotArea, space.strip()).contains(point);
}

void CPTGraphHostingView::mousePressEvent(QMouseEvent* event)
{
    const std::vector<CPTXYPlotSpacePtr> spaces = interactiveSpaces();
    if (spaces.empty() || event->button() != Qt::LeftButton ||
        !geometryShown(*m_hostedGraph).plotArea.contains(event->position())) {
        event->ignore();
        return;
    }
    const plotkit::GraphGeometry geometry = geometryShown(*m_hostedGraph);
    m_drag = std::make_shared<Drag>();
    for (const CPTXYPlotSpacePtr& space : spaces)
        if (isMeant(*space, geometry, event->position()))
            m_drag->emplace_back(space, geometry.areaOf(*space), event->position());
    setCursor(Qt::ClosedHandCursor);
}

void CPTGraphHostingView::mouseMoveEvent(QMouseEvent* event)
{
    if (!m_drag || interactiveSpaces().empty()) {
        event->ignore();
        return;
    }
    const CPTXYGraphPtr graph = m_hostedGraph;  // stays while a delegate decides, who may host another one
    const std::shared_ptr<Drag> drag = m_drag;  // and by that ends the drag
    for (plotkit::PlotSpaceDrag& each : *drag)
        if (m_drag == drag && each.space().allowsUserInteraction())
            each.moveTo(event->position());
}

void CPTGraphHostingView::mouseReleaseEvent(QMouseEvent* event)
{
    if (!m_drag || event->button() != Qt::LeftButton) {
        event->ignore();
        return;
    }
    const std::shared_ptr<Drag> drag = std::exchange(m_drag, nullptr);
    unsetCursor();
    const CPTXYGraphPtr graph = m_hostedGraph;
    for (const plotkit::PlotSpaceDrag& each : *drag)
        if (CPTPlotSpaceDelegate* delegate = each.space().delegate())
            delegate->plotSpaceShouldHandlePointingDeviceUpEvent(&each.space(), event->position());
}

void CPTGraphHostingView::cancelDrag()
{
    if (!m_drag)
        return;
    const std::shared_ptr<Drag> drag = std::exchange(m_drag, nullptr);
    unsetCursor();
    const CPTXYGraphPtr graph = m_hostedGraph;
    for (const plotkit::PlotSpaceDrag& each : *drag)
        if (CPTPlotSpaceDelegate* delegate = each.space().delegate())
            delegate->plotSpaceShouldHandlePointingDeviceCancelledEvent(&each.space());
}

void CPTGraphHostingView::wheelEvent(QWheelEvent* event)
{
    const CPTXYGraphPtr graph = m_hostedGraph;
    const std::vector<CPTXYPlotSpacePtr> spaces = interactiveSpaces();
    if (spaces.empty()) {
        event->ignore();
        return;
    }
    const QPointF turned = wheelDelta(event->angleDelta(), *event);
    if (std::abs(turned.x()) <= std::abs(turned.y())) {
        if (turned.y() != 0)
            zoomBy(plotkit::zoomFactorForWheel(turned.y()), event->position());
        return;
    }
    const QRectF area = geometryShown(*graph).plotArea;
    const QPointF scrolled = wheelDelta(event->pixelDelta(), *event);
    const bool isTouchpad = event->phase() != Qt::NoScrollPhase && scrolled.x() != 0;
    const double points = isTouchpad ? scrolled.x() : turned.x() / 120.0 * plotkit::kPanStep * area.width();
    for (const CPTXYPlotSpacePtr& space : spaces)
        plotkit::panXBy(*space, area, points);
}

void CPTGraphHostingView::keyPressEvent(QKeyEvent* event)
{
    const CPTXYGraphPtr graph = m_hostedGraph;
    const std::vector<CPTXYPlotSpacePtr> spaces = interactiveSpaces();
    if (spaces.empty() || (event->modifiers() & (Qt::ControlModifier | Qt::MetaModifier))) {
        event->ignore();
        return;
    }
    const auto pan = [&spaces](CPTCoordinate coordinate, double fraction) {
        for (const CPTXYPlotSpacePtr& space : spaces)
            plotkit::panByFraction(*space, coordinate, fraction);
    };
    const QPointF centre = geometryShown(*graph).plotArea.center();
    switch (event->key()) {
    case Qt::Key_Left: pan(CPTCoordinate::X, -plotkit::kPanStep); break;
    case Qt::Key_Right: pan(CPTCoordinate::X, plotkit::kPanStep); break;
    case Qt::Key_Down: pan(CPTCoordinate::Y, -plotkit::kPanStep); break;
    case Qt::Key_Up: pan(CPTCoordinate::Y, plotkit::kPanStep); break;
    case Qt::Key_Plus:
    case Qt::Key_Equal: zoomBy(plotkit::kZoomStep, centre); break;
    case Qt::Key_Minus: zoomBy(1 / plotkit::kZoomStep, centre); break;
    case Qt::Key_Home:
        for (const CPTXYPlotSpacePtr& space : spaces)
            space->scaleToFitPlots(graph->plotsToFit(*space));
        break;
    default: event->ignore();
    }
}

bool CPTGraphHostingView::event(QEvent* event)
{
    switch (event->type()) {
    case QEvent::Gesture: return handlePinch(static_cast<QGestureEvent*>(event));
    case QEvent::NativeGesture: return handleNativeGesture(static_cast<QNativeGestureEvent*>(event));
    case QEvent::Hide:
        m_awaitingRepaint = plotkit::GraphChange::Anything;  // shown again, it reports its plots as ever
        m_frames->rest();
        [[fallthrough]];
    case QEvent::TouchCancel:
    case QEvent::EnabledChange: cancelDrag(); break;
    case QEvent::Show:  // what was on its way when it was hidden was given up
        if (m_frames->isProvisional())
            update();
        break;
    default: break;
    }
    return QWidget::event(event);
}

bool CPTGraphHostingView::handlePinch(QGestureEvent* event)
{
    auto* pinch = static_cast<QPinchGesture*>(event->gesture(Qt::PinchGesture));
    if (!pinch || interactiveSpaces().empty())
        return false;
    event->accept(pinch);
    cancelDrag();  // the first finger's synthetic mouse drag ends where the second one begins a pinch
    if (pinch->changeFlags().testFlag(QPinchGesture::ScaleFactorChanged))
        zoomBy(pinch->scaleFactor(), mapFromGlobal(pinch->centerPoint()));
    return true;
}

bool CPTGraphHostingView::handleNativeGesture(QNativeGestureEvent* event)
{
    if (event->gestureType() != Qt::ZoomNativeGesture || interactiveSpaces().empty()) {
        event->ignore();
        return false;
    }
    zoomBy(1 + event->value(), event->position());
    return true;
}
