#include "plugins/PlotixPlugIn/reading/overview/Overview.h"

#include "plotkit/layout/GraphGeometry.h"
#include "plotkit/widget/CPTGraphHostingView.h"
#include "plotkit/widget/PlotSpaceMoves.h"

#include <QtCore/QCoreApplication>
#include <QtGui/QMouseEvent>
#include <QtGui/QWheelEvent>

#include <cmath>

namespace plotix {

namespace {

constexpr auto kShown = "shown";  // stored: never changes
constexpr double kLeastDrag = 3;  // points: less is a click

}  // namespace

Overview::Overview(ReadTrend& trend) : ReadingPart(trend)
{
    m_action = new QAction(localizedText(QT_TRANSLATE_NOOP("Plotix", "&Overview of Everything Fetched")), this);
    m_action->setCheckable(true);
    m_action->setShortcut(QKeySequence(Qt::CTRL | Qt::SHIFT | Qt::Key_V));
    setMenuOf(*m_action, localizedText(QT_TRANSLATE_NOOP("Plotix", "&Move")));
    connect(m_action, &QAction::triggered, this, &Overview::setShown);
}

Overview::~Overview()
{
    detach();
}

QVariantMap Overview::chosen() const
{
    return m_shown ? QVariantMap{{QLatin1String(kShown), true}} : QVariantMap();
}

void Overview::choose(const QVariantMap& choices)
{
    setShown(choices.value(QLatin1String(kShown)).toBool());
}

void Overview::setShown(bool shown)
{
    m_shown = shown;
    m_action->setChecked(shown);
    if (shown)
        attach();
    else
        detach();
    emit chosenChanged();
}

void Overview::attach()
{
    const CPTXYGraphPtr graph = trend().graph();
    if (m_shown && graph && m_layer.put(graph, PartLayer<OverviewLayer>::Place::Above, [this] {
            return std::make_shared<OverviewLayer>(trend());
        }))
        takeLines();
}

void Overview::detach()
{
    const CPTXYGraphPtr graph = m_layer.graph();
    m_layer.remove();
    m_drag.reset();
    if (graph)
        graph->setNeedsDisplay();  // its room is free again
}

void Overview::takeLines()
{
    const CPTXYGraphPtr graph = m_layer.graph();
    if (!graph)
        return;
    m_layer->take(*graph);
    graph->setNeedsDisplay();
}

void Overview::rangeSet(CPTCoordinate coordinate)
{
    if (m_layer && coordinate == CPTCoordinate::X)
        m_layer->setNeedsDisplay();
}

void Overview::clockSet()
{
    if (!m_layer)
        return;
    m_layer->setClock(trend().clock());
    m_layer->setNeedsDisplay();
}

std::optional<OverviewWindow> Overview::window() const
{
    const auto where = m_layer ? shownGeometry(trend()) : std::nullopt;
    return where ? m_layer->windowIn(*where) : std::nullopt;
}

std::optional<OverviewWindow> Overview::windowAt(const QPointF& point) const
{
    const std::optional<OverviewWindow> found = window();
    return found && found->strip.adjusted(-2, -2, 2, 2).contains(point) ? found : std::nullopt;
}

bool Overview::pointerActed(QEvent& event)
{
    if (!m_layer)
        return false;
    switch (event.type()) {
    case QEvent::MouseButtonPress: return press(static_cast<const QMouseEvent&>(event));
    case QEvent::MouseMove: return moveTo(static_cast<const QMouseEvent&>(event).position());
    case QEvent::MouseButtonRelease: return release();
    case QEvent::MouseButtonDblClick: {
        const auto found = windowAt(static_cast<const QMouseEvent&>(event).position());
        if (found)
            trend().showTimes(found->whole);
        return found.has_value();
    }
    case QEvent::Wheel: return wheel(static_cast<const QWheelEvent&>(event));
    default: return false;
    }
}

bool Overview::press(const QMouseEvent& event)
{
    const auto found = event.button() == Qt::LeftButton ? windowAt(event.position()) : std::nullopt;
    if (!found)
        return false;
    m_drag = Drag{*found, found->gripAt(event.position().x()), event.position().x()};
    return true;
}

bool Overview::moveTo(const QPointF& point)
{
    if (!m_drag) {
        hover(point);
        return false;
    }
    m_drag->hasMoved |= std::abs(point.x() - m_drag->fromX) >= kLeastDrag;
    if (m_drag->hasMoved)
        trend().showTimes(m_drag->window.dragged(m_drag->grip, m_drag->fromX, point.x()));
    return true;
}

bool Overview::release()
{
    if (!m_drag)
        return false;
    if (!m_drag->hasMoved && m_drag->grip == OverviewWindow::Grip::Elsewhere)
        trend().showTimes(m_drag->window.centredAt(m_drag->fromX));
    m_drag.reset();
    return true;
}

bool Overview::wheel(const QWheelEvent& event)
{
    const auto found = windowAt(event.position());
    if (!found || event.angleDelta().y() == 0)
        return found.has_value();
    const double factor = plotkit::zoomFactorForWheel(event.angleDelta().y());
    const double about = found->timeAt(event.position().x());
    const double fixed =
        about < found->shown.from || about > found->shown.to ? (found->shown.from + found->shown.to) / 2 : about;
    trend().showTimes({fixed - (fixed - found->shown.from) / factor, fixed + (found->shown.to - fixed) / factor});
    return true;
}

void Overview::hover(const QPointF& point)
{
    using Grip = OverviewWindow::Grip;
    const auto found = windowAt(point);
    if (!found) {
        if (m_hasCursor)
            trend().graphView()->unsetCursor();
        m_hasCursor = false;
        return;
    }
    const Grip grip = found->gripAt(point.x());
    trend().graphView()->setCursor(grip == Grip::Inside      ? Qt::OpenHandCursor
                                   : grip == Grip::Elsewhere ? Qt::CrossCursor
                                                             : Qt::SizeHorCursor);
    m_hasCursor = true;
}

}  // namespace plotix
