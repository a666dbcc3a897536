#include "plugins/PlotixPlugIn/reading/overview/OverviewPicture.h"

#include "plotkit/model/CPTSeriesRuns.h"
#include "plugins/PlotixPlugIn/reading/trend/OverlayLook.h"

#include <QtGui/QPainter>

#include <algorithm>
#include <cmath>

namespace plotix {

namespace {

constexpr double kLineWidth = 1;
constexpr double kMargin = 0.06;  // of the values' range, above and below
constexpr double kNearlyAsWide = 0.1;
/// So many of all lines together take some milliseconds.
constexpr std::size_t kManyRuns = 1 << 15;

void join(std::optional<TimeSpan>& all, const TimeSpan& span)
{
    all = all ? TimeSpan{std::min(all->from, span.from), std::max(all->to, span.to)} : span;
}

CPTScatterPlotPtr smallPlot(const CPTScatterPlot& plot, const CPTXYPlotSpacePtr& space)
{
    auto small = std::make_shared<CPTScatterPlot>();
    small->setPlotSpace(space);
    small->bind(CPTScatterPlotBindingXValues, plot.boundController(), QStringLiteral("arrangedObjects.x"));
    small->bind(CPTScatterPlotBindingYValues, plot.boundController(), QStringLiteral("arrangedObjects.y"));
    small->setDataLineStyle({.width = kLineWidth, .color = plot.dataLineStyle().color});
    small->setGapThreshold(plot.gapThreshold());
    if (plot.interpolation() != CPTScatterPlotInterpolation::PointsOnly)
        small->setInterpolation(plot.interpolation());
    return small;
}

bool isWanted(const CPTScatterPlot& plot, const QStringList& keys)
{
    return !plot.isHidden() && keys.contains(plot.identifier());
}

/// The strip is for finding a time: each lane's lines have all of its height.
void spreadValues(const CPTXYGraph& graph)
{
    for (const CPTXYPlotSpacePtr& space : graph.allPlotSpaces()) {
        std::optional<std::pair<double, double>> reach;
        for (const CPTScatterPlotPtr& plot : graph.plotsIn(*space))
            if (const auto extent = plot->series() ? plot->series()->extent() : std::nullopt)
                reach = {std::min(reach ? reach->first : HUGE_VAL, static_cast<double>(extent->minY)),
                         std::max(reach ? reach->second : -HUGE_VAL, static_cast<double>(extent->maxY))};
        if (!reach)
            continue;
        const double length = reach->second - reach->first;
        const double beside = length > 0 ? length * kMargin : std::max(std::abs(reach->first), 1.0);
        space->setYRange({reach->first - beside, length + 2 * beside});
    }
}

}  // namespace

std::vector<OverviewPicture::Line> OverviewPicture::linesOf(const CPTXYGraph& graph, const QStringList& keys)
{
    std::vector<Line> lines;
    const std::vector<CPTXYPlotSpacePtr>& spaces = graph.allPlotSpaces();
    for (const CPTScatterPlotPtr& plot : graph.allPlots()) {
        const CPTPointSeriesPtr series = isWanted(*plot, keys) ? plot->series() : nullptr;
        if (!series)
            continue;
        const auto space = std::find_if(spaces.begin(), spaces.end(), [&](const CPTXYPlotSpacePtr& each) {
            return each.get() == &graph.plotSpaceOf(*plot);
        });
        lines.push_back({series->serial(), plot->dataLineStyle(), plot->interpolation(), plot->gapThreshold(),
                         static_cast<std::size_t>(space - spaces.begin())});
    }
    return lines;
}

void OverviewPicture::take(const CPTXYGraph& graph, const QStringList& keys, const std::optional<TimeSpan>& asked)
{
    std::vector<Line> lines = linesOf(graph, keys);
    if (m_graph && lines == m_lines && asked == m_asked)
        return;
    m_lines = std::move(lines);
    m_asked = asked;
    rebuild(graph, keys);
}

CPTXYPlotSpacePtr OverviewPicture::addSpace()
{
    auto space = std::make_shared<CPTXYPlotSpace>();
    space->followXOf(m_graph->allPlotSpaces().front());
    m_graph->addPlotSpace(space);
    return space;
}

void OverviewPicture::rebuild(const CPTXYGraph& graph, const QStringList& keys)
{
    m_graph = std::make_shared<CPTXYGraph>();
    m_isOutdated = true;
    m_graph->setPadding({});
    for (const CPTXYAxisPtr& axis : m_graph->axes().axes())
        axis->setHidden(true);
    m_whole.reset();
    for (const CPTXYPlotSpacePtr& space : graph.allPlotSpaces()) {
        CPTXYPlotSpacePtr own;
        for (const CPTScatterPlotPtr& plot : graph.plotsIn(*space)) {
            const auto extent = isWanted(*plot, keys) && plot->series() ? plot->series()->extent() : std::nullopt;
            if (!extent)
                continue;
            if (!own)
                own = addSpace();
            m_graph->addPlot(smallPlot(*plot, own));
            join(m_whole, {extent->minX, extent->maxX});
        }
    }
    if (m_whole && m_asked)
        m_whole = m_asked;  // all records lie there; a line without any has a point that is none of them
    if (m_whole && !(m_whole->to > m_whole->from))
        m_whole.reset();  // a single record needs no overview
    if (!m_whole) {
        m_image = {};
        return;
    }
    m_graph->defaultPlotSpace()->setXRange({m_whole->from, m_whole->to - m_whole->from});
    spreadValues(*m_graph);
}

bool OverviewPicture::areLinesLong() const
{
    std::size_t runs = 0;
    for (const CPTScatterPlotPtr& plot : m_graph->allPlots())
        if (plot->series() && plot->series()->runs())
            runs += plot->series()->runs()->count();
    return runs >= kManyRuns;
}

void OverviewPicture::draw(QPainter& painter, const QRectF& place, bool mayBeRough)
{
    m_isRough = false;
    if (!m_whole || place.isEmpty())
        return;
    if (!drawsPixels(painter)) {
        painter.save();
        painter.translate(place.topLeft());
        m_painter.paint(painter, *m_graph, QRectF(QPointF(), place.size()));
        painter.restore();
        return;
    }
    const double density = painter.worldTransform().m11() * painter.device()->devicePixelRatioF();
    const Kept wanted{place.size(), density};
    const bool isNear = !m_image.isNull() && m_kept.density == density && m_kept.size.height() == place.height() &&
                        std::abs(m_kept.size.width() - place.width()) <= kNearlyAsWide * place.width();
    const bool isAsWanted = !m_image.isNull() && !m_isOutdated && m_kept == wanted;
    const bool willDo = m_isOutdated ? (m_image.isNull() || isNear) && areLinesLong() : isNear;
    m_isRough = mayBeRough && !isAsWanted && willDo;
    if (!m_isRough && !isAsWanted) {
        m_kept = wanted;
        m_isOutdated = false;
        m_image = QImage((place.size() * density).toSize().expandedTo({1, 1}), QImage::Format_ARGB32_Premultiplied);
        m_image.fill(Qt::transparent);
        QPainter own(&m_image);
        own.scale(density, density);
        m_painter.paint(own, *m_graph, QRectF(QPointF(), place.size()));
    }
    painter.drawImage(place, m_image);
}

}  // namespace plotix
