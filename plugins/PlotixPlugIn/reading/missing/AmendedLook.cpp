#include "plugins/PlotixPlugIn/reading/missing/AmendedLook.h"

#include "plugins/PlotixPlugIn/reading/trend/OverlayLook.h"
#include "plugins/PlotixPlugIn/reading/trend/ReadingPart.h"

#include <QtGui/QFontMetricsF>

#include <algorithm>
#include <cmath>

namespace plotix {

namespace {

using Kind = KTVAmendment::Kind;

constexpr double kLeastWidth = 3, kLeastInStrip = 1.5;  // points: one record can be seen
constexpr double kBand = 11;                            // points: height of a row
constexpr double kSign = 7;                             // points from one dot or cross to the next
constexpr double kWordSize = 10;
constexpr double kDash = 3;  // points

QColor inkFor(const CPTXYGraph& graph)
{
    return isDark(graph) ? QColor(150, 205, 255) : QColor(0, 70, 140);
}

QString wordFor(Kind kind)
{
    return kind == Kind::Late ? localizedText(QT_TRANSLATE_NOOP("Plotix", "arrived late"))
                              : localizedText(QT_TRANSLATE_NOOP("Plotix", "corrected"));
}

void drawSign(QPainter& painter, Kind kind, const QPointF& center)
{
    if (kind == Kind::Late) {
        painter.drawEllipse(center, 1.4, 1.4);
        return;
    }
    painter.drawLine(center + QPointF(-2, -2), center + QPointF(2, 2));
    painter.drawLine(center + QPointF(-2, 2), center + QPointF(2, -2));
}

void drawRow(QPainter& painter, const CPTXYGraph& graph, Kind kind, const QRectF& row)
{
    const QColor ink = inkFor(graph);
    painter.setPen(QPen(ink, 1));
    painter.setBrush(kind == Kind::Late ? QBrush(ink) : QBrush(Qt::NoBrush));
    const QString text = wordFor(kind);
    const QFont font = textFont(graph, TextWeight::Regular, kWordSize);
    const double width = QFontMetricsF(font).horizontalAdvance(text) + kSign;
    double left = row.left();
    if (width + 2 * kSign < row.width()) {
        painter.setFont(font);
        painter.drawText(QRectF(left + 2, row.top(), width, row.height()), Qt::AlignLeft | Qt::AlignVCenter, text);
        left += width;
    }
    const int signs = std::max(1, static_cast<int>((row.right() - left) / kSign));
    const double first = signs > 1 ? left + kSign / 2 : (left + row.right()) / 2;
    for (int sign = 0; sign < signs; ++sign)
        drawSign(painter, kind, {first + sign * kSign, row.center().y()});
}

}  // namespace

std::vector<std::pair<double, double>> amendedPlaces(const std::vector<KTVAmendment>& amendments, Kind kind,
                                                     const plotkit::AxisMapping& times, const QRectF& area,
                                                     double least)
{
    std::vector<std::pair<double, double>> places;
    for (const KTVAmendment& each : amendments) {
        if (each.kind != kind)
            continue;
        double left = plotkit::coordinateForValue(times, each.from);
        double right = plotkit::coordinateForValue(times, each.to);
        if (right < area.left() || left > area.right())
            continue;
        const double missing = std::max(0.0, least - (right - left)) / 2;
        left = std::max(area.left(), left - missing);
        right = std::min(area.right(), right + missing);
        if (!places.empty() && left <= places.back().second && left >= places.back().first)
            places.back().second = std::max(places.back().second, right);
        else
            places.emplace_back(left, right);
    }
    std::sort(places.begin(), places.end());
    std::vector<std::pair<double, double>> apart;
    for (const auto& place : places)
        if (!apart.empty() && place.first <= apart.back().second)
            apart.back().second = std::max(apart.back().second, place.second);
        else
            apart.push_back(place);
    return apart;
}

void drawAmended(QPainter& painter, const plotkit::GraphGeometry& geometry, const QRectF& area,
                 const std::vector<KTVAmendment>& amendments)
{
    const plotkit::AxisMapping times = geometry.xMappingOf(geometry.graph.plotSpace());
    const double height = std::min(kBand * textScale(geometry.graph), area.height() / 4);
    painter.save();
    painter.setClipRect(area, Qt::IntersectClip);
    for (const Kind kind : {Kind::Late, Kind::Corrected}) {
        const double top = area.top() + 2 + (kind == Kind::Late ? 0 : height);
        for (const auto& [left, right] : amendedPlaces(amendments, kind, times, area, kLeastWidth)) {
            QColor ground = inkFor(geometry.graph);
            ground.setAlpha(17);
            painter.fillRect(QRectF(left, area.top(), right - left, area.height()), ground);
            drawRow(painter, geometry.graph, kind, QRectF(left, top, right - left, height));
        }
    }
    painter.restore();
}

void drawAmendedInStrip(QPainter& painter, const plotkit::GraphGeometry& geometry, const QRectF& row,
                        const std::vector<KTVAmendment>& amendments)
{
    const plotkit::AxisMapping times = geometry.xMappingOf(geometry.graph.plotSpace());
    const QColor ink = isDark(geometry.graph) ? Qt::white : Qt::black;
    for (const auto& [left, right] : amendedPlaces(amendments, Kind::Late, times, row, kLeastInStrip))
        for (double x = left; x < right; x += 2 * kDash)
            painter.fillRect(QRectF(x, row.top(), std::min(kDash, right - x), row.height()), ink);
    for (const auto& [left, right] : amendedPlaces(amendments, Kind::Corrected, times, row, kLeastInStrip))
        painter.fillRect(QRectF(left, row.center().y() - row.height() / 4, right - left, row.height() / 2), ink);
}

}  // namespace plotix
