#include "plugins/PlotixPlugIn/reading/lanes/OffScaleMarks.h"

#include "base/PagedReading.h"
#include "plotkit/layout/GraphGeometry.h"
#include "plotkit/model/CPTTickFormatters.h"
#include "plugins/PlotixPlugIn/reading/trend/ReadingPart.h"
#include "plugins/PlotixPlugIn/reading/values/SeriesWalk.h"

#include <QtCore/QCoreApplication>
#include <QtGui/QPainter>
#include <QtGui/QPainterPath>

#include <algorithm>
#include <cmath>

namespace plotix {

namespace {

constexpr double kCaret = 5;       // points: half the width of a caret
constexpr double kOneMark = 14;    // points within which values share a caret
constexpr double kTextSize = 11;   // points
constexpr double kTextGap = 4;     // points between a caret and its text, and between texts
constexpr double kTextRoom = 260;  // points; fewer are not enough for a text

class Runs {
public:
    explicit Runs(std::size_t apart) : m_apart(apart) {}
    void add(std::size_t element, float value)
    {
        if (runs.empty() || element - runs.back().last > m_apart)
            runs.push_back({element, element, 0, value});
        OffScaleRun& run = runs.back();
        run.last = element;
        ++run.count;
        if (std::abs(value) > std::abs(run.farthest))
            run.farthest = value;
    }
    std::vector<OffScaleRun> runs;

private:
    std::size_t m_apart;
};

QString offScaleNumber(double number)
{
    return CPTTickNumberFormatter().stringForNumber(number);
}

QString caretText(std::size_t count, const QString& value, bool isShort)
{
    if (isShort)
        return count == 1 ? value : QStringLiteral("%1: %2").arg(count).arg(value);
    if (count == 1)
        return localizedText(QT_TRANSLATE_NOOP("Plotix", "1 value off the scale: %1")).arg(value);
    return localizedText(QT_TRANSLATE_NOOP("Plotix", "%1 values off the scale, up to %2")).arg(count).arg(value);
}

void drawCaret(QPainter& painter, double x, double edge, bool isAbove, const QColor& color)
{
    const double tip = isAbove ? edge + 1 : edge - 1;
    const double base = isAbove ? tip + 2 * kCaret - 2 : tip - 2 * kCaret + 2;
    QPainterPath path(QPointF(x, tip));
    path.lineTo(x - kCaret, base);
    path.lineTo(x + kCaret, base);
    path.closeSubpath();
    painter.fillPath(path, color);
}

}  // namespace

OffScaleRuns offScaleRuns(const CPTPointSeries& series, std::size_t first, std::size_t last, float lowest,
                          float highest, std::size_t apart)
{
    Runs below(apart), above(apart);
    walkForward(
        series, first, last,
        [&](float least, float greatest, auto...) { return least >= lowest && greatest <= highest; },
        [&](std::size_t element, float value) {
            if (value < lowest)
                below.add(element, value);
            else if (value > highest)
                above.add(element, value);
            return false;
        });
    return {std::move(below.runs), std::move(above.runs)};
}

void OffScaleMarks::show(const std::vector<std::unique_ptr<Lane>>& lanes)
{
    m_lanes = &lanes;
    m_found.clear();
    setNeedsDisplay();
}

std::vector<OffScaleMarks::Caret> OffScaleMarks::caretsOf(const Lane& lane, const plotkit::GraphGeometry& geometry)
{
    std::vector<Caret> carets;
    const CPTXYPlotSpace& space = *lane.space();
    const auto lowest = static_cast<float>(space.yRange().minLimit());
    const auto highest = static_cast<float>(space.yRange().maxLimit());
    for (const CPTScatterPlotPtr& plot : lane.plots()) {
        const CPTPointSeriesPtr series = plot->isHidden() ? nullptr : plot->series();
        if (!series || !series->extent() || !series->isXSorted() ||
            (series->extent()->minY >= lowest && series->extent()->maxY <= highest))
            continue;
        const std::size_t first = series->elementFrom(space.xRange().minLimit());
        const std::size_t last = std::max(first, series->elementAfter(space.xRange().maxLimit()));
        const PagedReader<double> times(series->x());
        const double perPoint = static_cast<double>(last - first) / std::max(1.0, geometry.plotArea.width());
        const OffScaleRuns runs =
            offScaleRuns(*series, first, last, lowest, highest, static_cast<std::size_t>(perPoint * kOneMark));
        for (const bool isAbove : {true, false})
            for (const OffScaleRun& run : isAbove ? runs.above : runs.below) {
                const double middle = (times[run.first] + times[run.last]) / 2;
                const double x = geometry.pointForValue(space, {middle, 0}).x();
                const bool isNear = !carets.empty() && carets.back().isAbove == isAbove &&
                                    x - carets.back().x < kOneMark && x >= carets.back().x &&
                                    carets.back().color == plot->dataLineStyle().color;
                if (!isNear) {
                    carets.push_back({x, isAbove, run.count, run.farthest, plot->dataLineStyle().color});
                    continue;
                }
                carets.back().count += run.count;
                if (std::abs(run.farthest) > std::abs(carets.back().farthest))
                    carets.back().farthest = run.farthest;
            }
    }
    return carets;
}

const std::vector<OffScaleMarks::Caret>& OffScaleMarks::carets(std::size_t index,
                                                               const plotkit::GraphGeometry& geometry)
{
    const Lane& lane = *(*m_lanes)[index];
    Found now{lane.space()->xRange(), lane.space()->yRange(), geometry.areaOf(*lane.space()), {}, {}};
    for (const CPTScatterPlotPtr& plot : lane.plots())
        now.serials.push_back(plot->isHidden() || !plot->series() ? 0 : plot->series()->serial());
    m_found.resize(m_lanes->size());
    Found& kept = m_found[index];
    if (!(kept.x == now.x && kept.y == now.y && kept.area == now.area && kept.serials == now.serials)) {
        now.carets = caretsOf(lane, geometry);
        kept = std::move(now);
    }
    return kept.carets;
}

void OffScaleMarks::drawInGraph(QPainter& painter, const plotkit::GraphGeometry& geometry)
{
    if (!m_lanes)
        return;
    painter.setRenderHint(QPainter::Antialiasing);
    QFont font(QStringLiteral("Helvetica"));
    font.setPixelSize(int(kTextSize));
    painter.setFont(font);
    for (std::size_t index = 0; index < m_lanes->size(); ++index) {
        const Lane& lane = *(*m_lanes)[index];
        const LaneFit fit = lane.settings().fit;
        if (fit == LaneFit::Robust || fit == LaneFit::Fixed)
            drawLane(painter, lane, geometry.areaOf(*lane.space()), carets(index, geometry));
    }
}

/// The text of a caret stands before it where there is room, else after it; texts that would overlap are left out.
void OffScaleMarks::drawLane(QPainter& painter, const Lane& lane, const QRectF& area,
                             const std::vector<Caret>& carets) const
{
    std::vector<QRectF> taken;
    for (const Caret& caret : carets) {
        const double edge = caret.isAbove ? area.top() : area.bottom();
        drawCaret(painter, caret.x, edge, caret.isAbove, caret.color);
        const QString value = lane.valueText(static_cast<double>(caret.farthest), offScaleNumber);
        const QString text = caretText(caret.count, value, area.width() < kTextRoom || carets.size() > 3);
        QRectF box(QPointF(), painter.boundingRect(QRectF(), Qt::AlignLeft, text).size());
        box.moveTop(caret.isAbove ? edge + 1 : edge - box.height() - 1);
        box.moveRight(caret.x - kCaret - kTextGap);
        if (box.left() < area.left())
            box.moveLeft(caret.x + kCaret + kTextGap);
        const QRectF around = box.adjusted(-kTextGap, 0, kTextGap, 0);
        if (std::any_of(taken.begin(), taken.end(), [&](const QRectF& other) { return other.intersects(around); }))
            continue;
        taken.push_back(around);
        painter.setPen(caret.color);
        painter.drawText(box, Qt::AlignCenter | Qt::TextDontClip, text);
    }
}

}  // namespace plotix
