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
constexpr double kOneWithin = 0.5;                      // points
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

/// What all rows of a kind share: texts are measured once for a frame.
struct RowLook {
    RowLook(const CPTXYGraph& graph, Kind ofKind)
        : kind(ofKind),
          ink(inkFor(graph)),
          word(wordFor(ofKind)),
          font(textFont(graph, TextWeight::Regular, kWordSize)),
          width(QFontMetricsF(font).horizontalAdvance(word) + kSign)
    {
    }
    Kind kind;
    QColor ink;
    QString word;
    QFont font;
    double width;  ///< of the word with what is beside it
};

void drawRow(QPainter& painter, const RowLook& look, const QRectF& row)
{
    painter.setPen(QPen(look.ink, 1));
    painter.setBrush(look.kind == Kind::Late ? QBrush(look.ink) : QBrush(Qt::NoBrush));
    double left = row.left();
    if (look.width + 2 * kSign < row.width()) {
        painter.setFont(look.font);
        const QRectF place(left + 2, row.top(), look.width, row.height());
        painter.drawText(place, Qt::AlignLeft | Qt::AlignVCenter, look.word);
        left += look.width;
    }
    const int signs = std::max(1, static_cast<int>((row.right() - left) / kSign));
    const double first = signs > 1 ? left + kSign / 2 : (left + row.right()) / 2;
    for (int sign = 0; sign < signs; ++sign)
        drawSign(painter, look.kind, {first + sign * kSign, row.center().y()});
}

}  // namespace

std::vector<std::pair<double, double>>
amendedPlaces(const AmendedLines& lines, Kind kind, const plotkit::AxisMapping& times, const QRectF& area, double least)
{
    const TimeSpan shown{plotkit::valueForCoordinate(times, area.left()),
                         plotkit::valueForCoordinate(times, area.right())};
    const double apart = kOneWithin * plotkit::valuePerUnit(times);
    std::vector<std::pair<double, double>> places;
    if (!(shown.from < shown.to) || !(apart > 0))
        return places;
    for (const AmendedRecords* line : lines)
        for (const TimeSpan& span : line->spans(kind, shown, apart)) {
            const double left = plotkit::coordinateForValue(times, span.from);
            const double right = plotkit::coordinateForValue(times, span.to);
            const double missing = std::max(0.0, least - (right - left)) / 2;
            places.emplace_back(std::max(area.left(), left - missing), std::min(area.right(), right + missing));
        }
    std::sort(places.begin(), places.end());
    std::vector<std::pair<double, double>> apartFromEachOther;
    for (const auto& place : places)
        if (!apartFromEachOther.empty() && place.first <= apartFromEachOther.back().second)
            apartFromEachOther.back().second = std::max(apartFromEachOther.back().second, place.second);
        else
            apartFromEachOther.push_back(place);
    return apartFromEachOther;
}

void drawAmended(QPainter& painter, const plotkit::GraphGeometry& geometry, const QRectF& area,
                 const AmendedLines& lines)
{
    const plotkit::AxisMapping times = geometry.xMappingOf(geometry.graph.plotSpace());
    const double height = std::min(kBand * textScale(geometry.graph), area.height() / 4);
    painter.save();
    painter.setClipRect(area, Qt::IntersectClip);
    for (const Kind kind : {Kind::Late, Kind::Corrected}) {
        const RowLook look(geometry.graph, kind);
        const double top = area.top() + 2 + (kind == Kind::Late ? 0 : height);
        for (const auto& [left, right] : amendedPlaces(lines, kind, times, area, kLeastWidth)) {
            QColor ground = look.ink;
            ground.setAlpha(17);
            painter.setRenderHint(QPainter::Antialiasing, false);  // faint, and a few times slower with it
            painter.fillRect(QRectF(left, area.top(), right - left, area.height()), ground);
            painter.setRenderHint(QPainter::Antialiasing);
            drawRow(painter, look, QRectF(left, top, right - left, height));
        }
    }
    painter.restore();
}

void drawAmendedInStrip(QPainter& painter, const plotkit::GraphGeometry& geometry, const QRectF& row,
                        const AmendedRecords& line)
{
    const plotkit::AxisMapping times = geometry.xMappingOf(geometry.graph.plotSpace());
    const QColor ink = isDark(geometry.graph) ? Qt::white : Qt::black;
    for (const auto& [left, right] : amendedPlaces({&line}, Kind::Late, times, row, kLeastInStrip))
        for (double x = left; x < right; x += 2 * kDash)
            painter.fillRect(QRectF(x, row.top(), std::min(kDash, right - x), row.height()), ink);
    for (const auto& [left, right] : amendedPlaces({&line}, Kind::Corrected, times, row, kLeastInStrip))
        painter.fillRect(QRectF(left, row.center().y() - row.height() / 4, right - left, row.height() / 2), ink);
}

}  // namespace plotix
