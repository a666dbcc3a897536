#include "plugins/PlotixPlugIn/reading/figures/LimitSummary.h"

#include "plugins/PlotixPlugIn/reading/figures/FigureKernels.h"

#include <algorithm>
#include <array>

namespace plotix {

namespace {

void add(LimitFigures& figures, const LimitFigures& more)
{
    figures.heldAbove += more.heldAbove;
    figures.heldBelow += more.heldBelow;
    figures.straightAbove += more.straightAbove;
    figures.straightBelow += more.straightBelow;
    figures.crossings += more.crossings;
}

LimitFigures figuresFrom(const FigureKernels::Sides& sides)
{
    return {sides.heldAbove, sides.heldBelow, sides.straightAbove, sides.straightBelow, sides.crossings};
}

}  // namespace

std::shared_ptr<const LimitSummary> LimitSummary::make(std::shared_ptr<const LineSummary> line, double limit,
                                                       const Work& work)
{
    const std::shared_ptr<LimitSummary> summary(new LimitSummary);
    summary->m_line = std::move(line);
    summary->m_limit = limit;
    const std::size_t size = summary->m_line->records().size();
    const auto buffer = std::make_unique<FigureRecords::Buffer>();
    for (std::size_t first = 0; first < size; first += FigureRecords::kBlock) {
        if (work.isStopped())
            return nullptr;
        const std::size_t last = std::min(size, first + FigureRecords::kBlock);
        const PointSums& sums = summary->m_line->block(first / FigureRecords::kBlock);
        LimitFigures figures;
        if (sums.count > 0 && sums.minimum > limit)
            figures = {sums.covered, 0, sums.covered, 0, 0};
        else if (sums.count > 0 && sums.maximum < limit)
            figures = {0, sums.covered, 0, sums.covered, 0};
        else if (sums.count > 0)
            figures = summary->sidesOf(summary->m_line->records().points(first, last, *buffer));
        summary->m_blocks.push_back(figures);
        work.tell(last - first);
    }
    return summary;
}

LimitFigures LimitSummary::sidesOf(const FigureRecords::Points& points) const
{
    return figuresFrom(FigureKernels::best().sides(points.times.data(), points.values.data(), points.values.size(),
                                                   m_line->longestJoin(), m_limit));
}

/// The part of the way between two points that lies in the span.
void LimitSummary::addWay(LimitFigures& figures, const LineSummary::Point& one, const LineSummary::Point& other,
                          double from, double to) const
{
    const double apart = other.time - one.time;
    if (!(apart <= m_line->longestJoin()) || !(to > from))
        return;
    const auto onLine = [&](double time) {  // exactly the points themselves at both ends
        return time == other.time ? other.value : one.value + (other.value - one.value) * ((time - one.time) / apart);
    };
    const std::array<double, 2> times{from, to};
    const std::array<double, 2> straight{onLine(from), onLine(to)};
    const std::array<double, 2> held{one.value, to < other.time ? one.value : other.value};
    const FigureKernels& kernels = FigureKernels::best();
    const auto sides = [&](const std::array<double, 2>& values) {
        return kernels.sides(times.data(), values.data(), times.size(), apart, m_limit);
    };
    const FigureKernels::Sides heldSides = sides(held);
    const FigureKernels::Sides straightSides = sides(straight);
    add(figures, {heldSides.heldAbove, heldSides.heldBelow, straightSides.straightAbove, straightSides.straightBelow,
                  straightSides.crossings});
}

LimitFigures LimitSummary::figures(double from, double to) const
{
    LimitFigures figures;
    if (!(from < to))
        return figures;
    const LineSummary::Elements elements = m_line->elements(from, to);
    const auto buffer = std::make_unique<FigureRecords::Buffer>();
    std::optional<LineSummary::Point> previous = m_line->pointBefore(elements.first);
    const auto goTo = [&](const LineSummary::Point& next) {
        if (previous)
            addWay(figures, *previous, next, std::max(from, previous->time), std::min(to, next.time));
    };
    for (const LineSummary::Piece& piece : m_line->pieces(elements)) {
        const PointSums& sums = m_line->block(piece.block);
        if (piece.isWhole) {
            goTo({sums.firstTime, sums.firstValue});
            add(figures, m_blocks[piece.block]);
            previous = {sums.lastTime, sums.lastValue};
            continue;
        }
        const FigureRecords::Points points = m_line->records().points(piece.first, piece.last, *buffer);
        if (points.times.empty())
            continue;
        goTo({points.times.front(), points.values.front()});
        add(figures, sidesOf(points));
        previous = {points.times.back(), points.values.back()};
    }
    if (const auto after = m_line->pointFrom(elements.last))
        goTo(*after);
    return figures;
}

}  // namespace plotix
