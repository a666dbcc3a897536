#include "plugins/PlotixPlugIn/reading/limits/LimitsLayer.h"

#include "plotkit/layout/GraphGeometry.h"
#include "plugins/PlotixPlugIn/reading/trend/OverlayLook.h"
#include "plugins/PlotixPlugIn/reading/values/LimitLook.h"

#include <QtGui/QFontMetricsF>
#include <QtGui/QPainter>

#include <algorithm>
#include <cmath>

namespace plotix {

namespace {

constexpr double kTextSize = 10.5;
constexpr double kLineWidth = 1.2;
constexpr double kDash = 5, kGap = 4;  // widths of the line
constexpr double kFromEdge = 5;        // points between a label and the right edge
constexpr double kFromLine = 2;
constexpr double kPlate = 3;         // points of its plate beside a text
constexpr double kLeastHeight = 40;  // points; lower lanes have room for no labels
constexpr int kBandOpacity = 24;
constexpr int kPlateOpacity = 165;

QColor withAlpha(QColor color, int alpha)
{
    color.setAlpha(alpha);
    return color;
}

bool isSame(const PlacedLimit& one, const PlacedLimit& other)
{
    return one.area == other.area && one.limit.name == other.limit.name && one.limit.side == other.limit.side &&
           one.limit.value == other.limit.value;
}

/// Above the line or beneath it, else farther left, wherever no other label is; one off the scale at its edge.
QRectF labelPlace(const PlacedLimit& placed, const QSizeF& size, const std::vector<QRectF>& taken)
{
    const QRectF& area = placed.area;
    const double lowest = area.bottom() - size.height() - 1;
    const double line = std::clamp(placed.y, area.top(), area.bottom());
    const double towardsInside = placed.y < area.top() ? size.height() : placed.y > area.bottom() ? -size.height() : 0;
    constexpr int kTries = 6;
    QRectF place;
    for (int column = 0; column < kTries; ++column)
        for (const double top : {line - size.height() - kFromLine + towardsInside, line + kFromLine + towardsInside}) {
            const double left = area.right() - kFromEdge - size.width() * (column + 1) - 2 * kPlate * column;
            place = QRectF(QPointF(left, std::clamp(top, area.top() + 1, std::max(area.top() + 1, lowest))), size);
            const bool isFree = std::none_of(taken.begin(), taken.end(), [&](const QRectF& other) {
                return other.intersects(place.adjusted(-kPlate, 0, kPlate, 0));
            });
            if (isFree && left >= area.left())
                return place;
        }
    return {};
}

/// In the font of the painter.
void drawLabel(QPainter& painter, const PlacedLimit& placed, bool onDark, std::vector<QRectF>& taken)
{
    const QString arrow = placed.y < placed.area.top()      ? QStringLiteral("▲ ")
                          : placed.y > placed.area.bottom() ? QStringLiteral("▼ ")
                                                            : QString();
    const QFontMetricsF metrics(painter.font());
    const QString text = metrics.elidedText(arrow + placed.text, Qt::ElideMiddle, placed.area.width() / 2);
    const QRectF place = labelPlace(placed, {metrics.horizontalAdvance(text), metrics.height()}, taken);
    if (place.isEmpty())
        return;
    taken.push_back(place);
    painter.setPen(Qt::NoPen);
    painter.setBrush(withAlpha(onDark ? QColor(28, 29, 32) : QColor(255, 255, 255), kPlateOpacity));
    painter.drawRoundedRect(place.adjusted(-kPlate, 0, kPlate, 0), 2, 2);
    painter.setPen(limitColor(placed.limit.severity, onDark));
    painter.drawText(place, Qt::AlignCenter | Qt::TextSingleLine, text);
}

}  // namespace

QRectF bandOf(const PlacedLimit& placed, const std::vector<PlacedLimit>& all)
{
    const bool isAbove = placed.limit.side == KTVLimit::Side::Above;
    const auto within = [&](double y) { return std::clamp(y, placed.area.top(), placed.area.bottom()); };
    double end = isAbove ? placed.area.top() : placed.area.bottom();
    for (const PlacedLimit& other : all)
        if (other.area == placed.area && other.limit.side == placed.limit.side && other.hasBand() &&
            placed.limit.isBeyond(other.limit.value))
            end = isAbove ? std::max(end, within(other.y)) : std::min(end, within(other.y));
    QRectF band = placed.area;
    band.setTop(isAbove ? end : within(placed.y));
    band.setBottom(isAbove ? within(placed.y) : end);
    return band;
}

std::vector<PlacedLimit> placedLimits(const std::vector<TrendLine>& lines, const plotkit::GraphGeometry& geometry,
                                      const ValueTexts& texts)
{
    std::vector<PlacedLimit> placed;
    for (const TrendLine& each : lines) {
        const CPTXYPlotSpace& space = geometry.graph.plotSpaceOf(*each.plot);
        const auto inSpace = std::count_if(lines.begin(), lines.end(), [&](const TrendLine& other) {
            return &geometry.graph.plotSpaceOf(*other.plot) == &space;
        });
        for (const KTVLimit& limit : each.limits) {
            const double drawn = space.yOfValue(limit.value);
            if (!std::isfinite(drawn))
                continue;
            PlacedLimit one{limit,
                            limitText(limit, texts, each.line.unitSymbol),
                            geometry.areaOf(space),
                            geometry.pointForValue(space, {0, drawn}).y(),
                            1,
                            inSpace};
            if (inSpace > 1)
                one.text = each.line.name + QStringLiteral(": ") + one.text;
            const auto same = std::find_if(placed.begin(), placed.end(),
                                           [&one](const PlacedLimit& other) { return isSame(one, other); });
            if (same == placed.end()) {
                placed.push_back(std::move(one));
                continue;
            }
            same->text = limitText(limit, texts, each.line.unitSymbol);
            ++same->sharedBy;
        }
    }
    return placed;
}

void LimitsLayer::drawInGraph(QPainter& painter, const plotkit::GraphGeometry& geometry)
{
    if (!m_lines || geometry.plotArea.isEmpty())
        return;
    const bool onDark = isDark(geometry.graph);
    const std::vector<PlacedLimit> limits = placedLimits(m_lines(), geometry, m_texts);
    for (const PlacedLimit& placed : limits)
        if (placed.hasBand())
            painter.fillRect(bandOf(placed, limits),
                             withAlpha(limitColor(placed.limit.severity, onDark), kBandOpacity));
    painter.setRenderHint(QPainter::Antialiasing);
    std::vector<QRectF> taken;
    for (const PlacedLimit& placed : limits) {
        if (!placed.isInside())
            continue;
        QPen pen(limitColor(placed.limit.severity, onDark), kLineWidth);
        pen.setCapStyle(Qt::FlatCap);
        pen.setDashPattern({kDash, kGap});
        painter.setPen(pen);
        painter.drawLine(QPointF(placed.area.left(), placed.y), QPointF(placed.area.right(), placed.y));
    }
    painter.setFont(textFont(geometry.graph, TextWeight::Regular, kTextSize));
    for (const PlacedLimit& placed : limits)
        if (placed.area.height() >= kLeastHeight)
            drawLabel(painter, placed, onDark, taken);
}

}  // namespace plotix
