#include "plugins/PlotixPlugIn/reading/overview/OverviewLayer.h"

#include "plotkit/layout/GraphGeometry.h"
#include "plotkit/render/GraphCanvas.h"
#include "plotkit/render/GraphText.h"
#include "plugins/PlotixPlugIn/reading/trend/OverlayLook.h"

#include <QtGui/QPainter>

#include <algorithm>

namespace plotix {

namespace {

constexpr double kStripHeight = 32;  // points
constexpr double kAbove = 6, kBelow = 4;
constexpr double kTimesSize = 0.9;   // of the labels of time
constexpr double kLeastFrame = 260;  // points of height: a lower graph needs them for its lines
constexpr double kHandle = 12;       // points: the height of the grips at the window's edges

struct OverviewLook {
    QColor ground, border, window, inside, veil;
};

OverviewLook lookFor(const CPTXYGraph& graph)
{
    if (isDark(graph))
        return {QColor(0, 0, 0, 70), QColor(255, 255, 255, 40), QColor(138, 184, 255), QColor(138, 184, 255, 26),
                QColor(38, 38, 40, 165)};
    return {QColor(0, 0, 0, 10), QColor(0, 0, 0, 50), QColor(30, 90, 190), QColor(30, 90, 190, 20),
            QColor(255, 255, 255, 165)};
}

CPTTextStyle timesStyle(const CPTXYGraph& graph)
{
    CPTTextStyle style = graph.axes().axes().front()->labelTextStyle();
    style.fontSize *= kTimesSize;
    return style;
}

}  // namespace

void OverviewLayer::take(const CPTXYGraph& graph)
{
    if (!m_trend)
        return;
    QStringList keys;
    for (const ReadLine& line : m_trend->lines())
        if (!line.isCompared())  // what was earlier is read for the times shown alone
            keys << line.key;
    m_picture.take(graph, keys, m_trend->readSpan());
}

std::optional<CPTLayerRoom> OverviewLayer::room(const QSizeF& frame) const
{
    if (!m_picture.whole() || frame.height() < kLeastFrame)
        return std::nullopt;
    const double text = plotkit::sizeOfText(QStringLiteral("0"), {.fontSize = 12}).height();
    return CPTLayerRoom{CPTLayerRoom::Edge::Bottom, kAbove + kStripHeight + text + kBelow};
}

std::optional<OverviewWindow> OverviewLayer::windowIn(const plotkit::GraphGeometry& geometry) const
{
    const QRectF room = geometry.roomOf(*this);
    if (room.isEmpty() || !m_picture.whole() || !(geometry.plotArea.width() > 0))
        return std::nullopt;
    const CPTPlotRange& times = geometry.graph.plotSpace().xRange();
    return OverviewWindow{
        QRectF(geometry.plotArea.left(), room.top() + kAbove, geometry.plotArea.width(), kStripHeight),
        *m_picture.whole(),
        {times.minLimit(), times.maxLimit()}};
}

void OverviewLayer::drawInGraph(QPainter& painter, const plotkit::GraphGeometry& geometry)
{
    take(geometry.graph);  // what was asked for is known only once the records are shown
    const std::optional<OverviewWindow> found = windowIn(geometry);
    if (!found)
        return;
    const OverviewLook look = lookFor(geometry.graph);
    const QRectF window = found->window();
    painter.fillRect(found->strip, look.ground);
    painter.fillRect(window, look.inside);
    m_picture.draw(painter, found->strip, geometry.mayBeRough);
    // A veil rather than a clip, which not every kind of picture heeds.
    const QRectF& strip = found->strip;
    painter.fillRect(QRectF(strip.left(), strip.top(), window.left() - strip.left(), strip.height()), look.veil);
    painter.fillRect(QRectF(window.right(), strip.top(), strip.right() - window.right(), strip.height()), look.veil);

    {
        plotkit::GraphCanvas canvas(painter);
        canvas.drawRoundedFrame(found->strip, CPTFill::none(), CPTLineStyle{.width = 1, .color = look.border}, 0);
        canvas.drawRoundedFrame(window, CPTFill::none(), CPTLineStyle{.width = 1.5, .color = look.window}, 0);
    }
    painter.setRenderHint(QPainter::Antialiasing);
    painter.setPen(QPen(look.window, 4, Qt::SolidLine, Qt::RoundCap));
    if (isOnScreen(painter))
        for (const double x : {window.left(), window.right()})
            painter.drawLine(QPointF(x, window.center().y() - kHandle / 2),
                             QPointF(x, window.center().y() + kHandle / 2));
    drawTimes(painter, *found, geometry.roomOf(*this), timesStyle(geometry.graph));
}

/// The first and the last time, at their ends.
void OverviewLayer::drawTimes(QPainter& painter, const OverviewWindow& window, const QRectF& room,
                              const CPTTextStyle& style) const
{
    const double aPixel = (window.whole.to - window.whole.from) / window.strip.width();
    const auto draw = [&](double time, bool atEnd) {
        plotkit::PlacedText text;
        text.text = m_texts.moment(time, aPixel);
        const QSizeF size = plotkit::sizeOfText(text.text, style);
        text.box = QRectF(
            QPointF(atEnd ? window.strip.right() - size.width() : window.strip.left(), window.strip.bottom() + 1),
            QSizeF(size.width(), std::min(size.height(), room.bottom() - window.strip.bottom())));
        if (2 * size.width() < window.strip.width())
            plotkit::drawPlacedText(painter, text, style, {.box = text.box});
    };
    draw(window.whole.from, false);
    draw(window.whole.to, true);
}

}  // namespace plotix
