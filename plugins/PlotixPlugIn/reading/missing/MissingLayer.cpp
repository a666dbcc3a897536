#include "plugins/PlotixPlugIn/reading/missing/MissingLayer.h"

#include "plotkit/layout/GraphGeometry.h"
#include "plotkit/render/ClippedPaths.h"
#include "plotkit/render/GraphCanvas.h"
#include "plotkit/render/GraphText.h"
#include "plugins/PlotixPlugIn/reading/missing/AmendedLook.h"
#include "plugins/PlotixPlugIn/reading/trend/OverlayLook.h"
#include "plugins/PlotixPlugIn/reading/trend/ReadingPart.h"

#include <QtCore/QDateTime>
#include <QtGui/QFontMetricsF>
#include <QtGui/QPaintEngine>
#include <QtGui/QPainter>

#include <algorithm>
#include <cmath>

namespace plotix {

namespace {

constexpr double kLeastFound = 2;    // points: narrower ones cannot be seen
constexpr double kLeastHatched = 3;  // points
constexpr double kHatch = 7;         // points between two lines
constexpr double kHatchNotValid = 4;
constexpr double kRow = 3, kMostRows = 18;  // points: of a line in the strip, and of all lines together
constexpr double kAboveRows = 3;            // points of ground above the strip's rows
constexpr double kTextSize = 10;

struct MissingLook {
    QColor ground, hatch, text;
};

MissingLook lookFor(const CPTXYGraph& graph, Missing kind)
{
    const bool dark = isDark(graph);
    if (kind == Missing::NotValid)
        return dark ? MissingLook{QColor(255, 170, 60, 28), QColor(255, 170, 60, 120), QColor(255, 196, 120)}
                    : MissingLook{QColor(200, 110, 0, 22), QColor(200, 110, 0, 130), QColor(150, 80, 0)};
    return dark ? MissingLook{QColor(0, 0, 0, 46), QColor(255, 255, 255, 34), QColor(205, 205, 205)}
                : MissingLook{QColor(0, 0, 0, 10), QColor(0, 0, 0, 44), QColor(90, 90, 90)};
}

/// Slanting lines that stand still while the graph is moved by whole hatches: they begin at the corner of the area.
void hatch(QPainter& painter, const QRectF& place, const QRectF& area, const MissingLook& look, double distance)
{
    plotkit::GraphCanvas(painter).fillRect(place, CPTFill::withColor(look.ground));
    painter.save();
    painter.setClipRect(place, Qt::IntersectClip);
    painter.setPen(QPen(look.hatch, 1));
    const double first = area.left() + std::floor((place.left() - area.left()) / distance) * distance;
    const bool heedsClip = painter.paintEngine()->type() != QPaintEngine::SVG;
    for (double x = first; x < place.right() + area.height(); x += distance) {
        const QLineF line(x, area.top(), x - area.height(), area.bottom());
        QPainterPath path(line.p1());
        path.lineTo(line.p2());
        if (heedsClip)
            painter.drawLine(line);
        else
            painter.drawPath(plotkit::linesWithin(path, place));
    }
    painter.restore();
}

QString textFor(Missing kind)
{
    return kind == Missing::NotValid ? localizedText(QT_TRANSLATE_NOOP("Plotix", "recorded, not valid"))
                                     : localizedText(QT_TRANSLATE_NOOP("Plotix", "nothing recorded"));
}

QRectF placeOf(const MissingStretch& stretch, const plotkit::AxisMapping& times, const QRectF& area)
{
    const double left = std::max(area.left(), plotkit::coordinateForValue(times, stretch.from));
    const double right = std::min(area.right(), plotkit::coordinateForValue(times, stretch.to));
    return {left, area.top(), std::max(0.0, right - left), area.height()};
}

AmendedLines amendedOf(const std::vector<std::size_t>& ofLane, const std::vector<TrendLine>& lines)
{
    AmendedLines amended;
    for (const std::size_t line : ofLane)
        amended.push_back(&lines[line].amendments);
    return amended;
}

}  // namespace

void MissingLayer::show(const Shown& shown, const std::optional<TimeSpan>& read)
{
    m_shown = shown;
    m_read = read;
    setNeedsDisplay();
}

std::vector<MissingLayer::LaneLines> MissingLayer::lanesOf(const CPTXYGraph& graph, const std::vector<TrendLine>& lines)
{
    std::vector<LaneLines> lanes;
    for (const CPTXYPlotSpacePtr& space : graph.allPlotSpaces()) {
        LaneLines lane{space.get(), {}};
        for (std::size_t line = 0; line < lines.size(); ++line)
            if (!lines[line].line.isCompared() && &graph.plotSpaceOf(*lines[line].plot) == space.get())
                lane.lines.push_back(line);
        if (!lane.lines.empty())
            lanes.push_back(std::move(lane));
    }
    return lanes;
}

void MissingLayer::find(const plotkit::GraphGeometry& geometry, const std::vector<TrendLine>& lines)
{
    const CPTPlotRange& times = geometry.graph.plotSpace().xRange();
    // Nothing can have been recorded of the future yet.
    const double now = static_cast<double>(QDateTime::currentMSecsSinceEpoch()) / 1'000;
    TimeSpan all{-HUGE_VAL, now};
    if (times.maxLimit() > now)
        all.to = std::floor(now);  // else every frame would be another one
    if (m_read)
        all = {m_read->from, std::min(all.to, m_read->to)};
    m_known = {std::max(times.minLimit(), all.from), std::min(times.maxLimit(), all.to)};
    std::vector<const LineRecords*> records;
    for (const TrendLine& each : lines)
        records.push_back(&each.records);
    m_stretches =
        &m_kept.within(m_known, all, kLeastFound * times.length / std::max(1.0, geometry.plotArea.width()), records);
}

void MissingLayer::drawInGraph(QPainter& painter, const plotkit::GraphGeometry& geometry)
{
    if (!m_lines || geometry.plotArea.isEmpty() || !(geometry.graph.plotSpace().xRange().length > 0))
        return;
    const std::vector<TrendLine>& lines = m_lines->shown();
    find(geometry, lines);
    painter.setRenderHint(QPainter::Antialiasing);
    for (const LaneLines& lane : lanesOf(geometry.graph, lines)) {
        if (m_shown.stretches)
            drawStretches(painter, geometry, lane);
        if (m_shown.amended)
            drawAmended(painter, geometry, geometry.areaOf(*lane.space), amendedOf(lane.lines, lines));
        if (m_shown.strip)
            drawStrip(painter, geometry, lane, lines);
    }
}

void MissingLayer::drawStretches(QPainter& painter, const plotkit::GraphGeometry& geometry, const LaneLines& lane) const
{
    std::vector<std::vector<MissingStretch>> ofLines;
    for (const std::size_t line : lane.lines)
        ofLines.push_back((*m_stretches)[line]);
    const QRectF area = geometry.areaOf(*lane.space);
    const plotkit::AxisMapping times = geometry.xMappingOf(geometry.graph.plotSpace());
    const CPTTextStyle style{.fontName = QStringLiteral("Helvetica"), .fontSize = kTextSize, .color = CPTColor()};
    for (const MissingStretch& stretch : missingInAll(ofLines)) {
        const QRectF place = placeOf(stretch, times, area);
        if (place.width() < kLeastHatched)
            continue;
        const MissingLook look = lookFor(geometry.graph, stretch.kind);
        hatch(painter, place, area, look, stretch.kind == Missing::NotValid ? kHatchNotValid : kHatch);
        const QString text = textFor(stretch.kind);
        const QSizeF size = plotkit::sizeOfText(text, style);
        if (size.width() + 8 > place.width() || size.height() + 4 > place.height())
            continue;
        painter.setFont(plotkit::fontForStyle(style));
        painter.setPen(look.text);
        painter.drawText(place, Qt::AlignCenter | Qt::TextSingleLine, text);
    }
}

/// A row for each line: its colour where there are valid records, nothing where none are, a warning where some came and
/// are not valid; dashes over what came late, a thread through what was corrected. They stand on a ground of
/// their own, as wide as the lane: else the row of one line looks like a line.
void MissingLayer::drawStrip(QPainter& painter, const plotkit::GraphGeometry& geometry, const LaneLines& lane,
                             const std::vector<TrendLine>& lines) const
{
    const QRectF area = geometry.areaOf(*lane.space);
    const plotkit::AxisMapping times = geometry.xMappingOf(geometry.graph.plotSpace());
    const double row = std::min(kRow, kMostRows / static_cast<double>(lane.lines.size()));
    const double height = row * static_cast<double>(lane.lines.size());
    double top = area.bottom() - height;
    const bool dark = isDark(geometry.graph);
    const QRectF ground(area.left(), top - kAboveRows, area.width(), height + kAboveRows);
    painter.fillRect(ground, dark ? QColor(104, 107, 114) : QColor(198, 202, 209));
    const QRectF known = placeOf({m_known.from, m_known.to}, times, area);
    for (const std::size_t line : lane.lines) {
        const QRectF whole(known.left(), top, known.width(), row - 0.5);
        painter.fillRect(whole, dark ? QColor(20, 20, 20) : QColor(245, 245, 245));
        double recordedFrom = whole.left();
        const auto fillTo = [&](double x) {
            if (x > recordedFrom)
                painter.fillRect(QRectF(recordedFrom, whole.top(), x - recordedFrom, whole.height()),
                                 lines[line].line.color);
        };
        for (const MissingStretch& stretch : (*m_stretches)[line]) {
            const QRectF place = placeOf(stretch, times, whole);
            fillTo(place.left());
            recordedFrom = place.right();
            if (stretch.kind == Missing::NotValid)
                painter.fillRect(place, dark ? QColor(255, 140, 0) : QColor(210, 105, 0));
        }
        fillTo(whole.right());
        drawAmendedInStrip(painter, geometry, whole, lines[line].amendments);
        top += row;
    }
}

}  // namespace plotix
