#include "plugins/PlotixPlugIn/reading/clock/ClockChangesLayer.h"

#include "plotkit/layout/GraphGeometry.h"
#include "plugins/PlotixPlugIn/reading/trend/OverlayLook.h"
#include "plugins/PlotixPlugIn/reading/trend/ReadingPart.h"
#include "plugins/PlotixPlugIn/reading/values/ValueTexts.h"

#include <QtGui/QFontMetricsF>
#include <QtGui/QPainter>

namespace plotix {

namespace {

constexpr double kTextSize = 10.5;
constexpr double kLineWidth = 1;
constexpr double kDash = 2, kGap = 3;  // widths of the line
constexpr double kFromLine = 4;        // points
constexpr double kPlate = 3;           // points of its plate beside a text
constexpr int kPlateOpacity = 165;

QColor withAlpha(QColor color, int alpha)
{
    color.setAlpha(alpha);
    return color;
}

/// Below what stands above the uppermost plots, such as the title of a lane.
double topOfPlots(const plotkit::GraphGeometry& geometry)
{
    double top = geometry.plotArea.bottom();
    for (const auto& plot : geometry.graph.allPlots())
        top = std::min(top, geometry.areaOf(geometry.graph.plotSpaceOf(*plot)).top());
    return top;
}

/// Behind its line, or before it where the plots end; empty where neither has room.
QRectF labelPlace(double x, const QSizeF& size, const QRectF& area, double takenTo)
{
    const double top = area.bottom() - size.height() - kFromLine;
    for (const double left : {x + kFromLine + kPlate, x - kFromLine - kPlate - size.width()})
        if (left - kPlate >= std::max(area.left(), takenTo) && left + size.width() + kPlate <= area.right())
            return {QPointF(left, top), size};
    return {};
}

}  // namespace

QString changeText(const ClockChange& change)
{
    //: Where the clocks are changed to summer time or back: "clocks +1 h".
    return localizedText(QT_TRANSLATE_NOOP("Plotix", "clocks %1"))
        .arg((change.seconds < 0 ? QChar(0x2212) : QLatin1Char('+')) + durationText(change.seconds));
}

void ClockChangesLayer::show(std::vector<ClockChange> changes)
{
    if (m_changes == changes)
        return;
    m_changes = std::move(changes);
    setNeedsDisplay();
}

void ClockChangesLayer::drawInGraph(QPainter& painter, const plotkit::GraphGeometry& geometry)
{
    const QRectF& area = geometry.plotArea;
    if (area.isEmpty())
        return;
    const CPTTextStyle& style = geometry.graph.axes().xAxis().labelTextStyle();
    const bool onDark = isDark(geometry.graph);
    const QFont font = textFont(geometry.graph, TextWeight::Regular, kTextSize);
    const QFontMetricsF metrics(font);
    QPen pen(style.color, kLineWidth);
    pen.setCapStyle(Qt::FlatCap);
    pen.setDashPattern({kDash, kGap});
    const double top = topOfPlots(geometry);
    double takenTo = area.left();
    for (const ClockChange& change : m_changes) {
        const double x = plotkit::coordinateForValue(geometry.xMappingOf(geometry.graph.plotSpace()), change.time);
        if (x < area.left() || x > area.right())
            continue;
        painter.setPen(pen);
        painter.drawLine(QPointF(x, top), QPointF(x, area.bottom()));
        const QString text = changeText(change);
        const QRectF place = labelPlace(x, {metrics.horizontalAdvance(text), metrics.height()}, area, takenTo);
        if (place.isEmpty())
            continue;
        takenTo = place.right() + kPlate;
        painter.setPen(Qt::NoPen);
        painter.setBrush(withAlpha(onDark ? QColor(28, 29, 32) : QColor(255, 255, 255), kPlateOpacity));
        painter.drawRoundedRect(place.adjusted(-kPlate, 0, kPlate, 0), 2, 2);
        painter.setPen(style.color);
        painter.setFont(font);
        painter.drawText(place, Qt::AlignCenter | Qt::TextSingleLine, text);
    }
}

}  // namespace plotix
