#include "plugins/PlotixPlugIn/reading/figures/LineSummary.h"

#include "plugins/PlotixPlugIn/reading/figures/FigureKernels.h"

#include <algorithm>
#include <cmath>

namespace plotix {

namespace {

constexpr std::size_t kBlocksBetweenTellings = 64;

PointSums sumsOf(const FigureRecords::Points& points, double longestJoin)
{
    PointSums sums;
    const std::size_t count = points.values.size();
    if (count == 0)
        return sums;
    const FigureKernels& kernels = FigureKernels::best();
    const FigureKernels::Values values = kernels.values(points.values.data(), count);
    const FigureKernels::Pairs pairs = kernels.pairs(points.times.data(), points.values.data(), count, longestJoin);
    sums.count = static_cast<std::int64_t>(count);
    sums.minimum = values.minimum;
    sums.maximum = values.maximum;
    sums.sum = values.sum;
    sums.squares = kernels.squares(points.values.data(), count, values.sum / static_cast<double>(count));
    sums.firstTime = points.times.front();
    sums.firstValue = points.values.front();
    sums.lastTime = points.times.back();
    sums.lastValue = points.values.back();
    sums.covered = pairs.covered;
    sums.held = pairs.held;
    sums.straight = pairs.straight;
    sums.gaps = pairs.gaps;
    return sums;
}

}  // namespace

std::shared_ptr<const LineSummary> LineSummary::make(FigureRecords records, double longestJoin, const Work& work)
{
    const std::shared_ptr<LineSummary> summary(new LineSummary);
    summary->m_longestJoin = longestJoin;
    const std::size_t size = records.size();
    summary->m_blocks.reserve((size + FigureRecords::kBlock - 1) / FigureRecords::kBlock);
    const auto buffer = std::make_unique<FigureRecords::Buffer>();
    std::size_t told = 0;
    for (std::size_t first = 0; first < size; first += FigureRecords::kBlock) {
        const std::size_t last = std::min(size, first + FigureRecords::kBlock);
        summary->m_blocks.push_back(sumsOf(records.points(first, last, *buffer), longestJoin));
        if (summary->m_blocks.size() % kBlocksBetweenTellings != 0 && last < size)
            continue;
        if (work.isStopped())
            return nullptr;
        work.tell(last - told);
        told = last;
    }
    summary->m_records = std::move(records);
    return summary;
}

std::shared_ptr<const LineSummary> LineSummary::makePart(FigureRecords records, double longestJoin,
                                                         const Elements& elements, const LineSummary* known)
{
    const std::shared_ptr<LineSummary> summary(new LineSummary);
    const std::size_t blocks = (records.size() + FigureRecords::kBlock - 1) / FigureRecords::kBlock;
    summary->m_longestJoin = longestJoin;
    summary->m_blocks = known ? known->m_blocks : std::vector<PointSums>(blocks);
    summary->m_isRead = known ? known->m_isRead : std::vector<bool>(blocks, false);
    const auto buffer = std::make_unique<FigureRecords::Buffer>();
    for (std::size_t block = elements.first / FigureRecords::kBlock; block * FigureRecords::kBlock < elements.last;
         ++block) {
        const std::size_t first = block * FigureRecords::kBlock;
        if (summary->m_isRead.empty() || summary->m_isRead[block])
            continue;
        const std::size_t last = std::min(records.size(), first + FigureRecords::kBlock);
        summary->m_blocks[block] = sumsOf(records.points(first, last, *buffer), longestJoin);
        summary->m_isRead[block] = true;
    }
    summary->m_records = std::move(records);
    return summary;
}

bool LineSummary::hasRead(const Elements& elements) const
{
    for (std::size_t block = elements.first / FigureRecords::kBlock;
         !m_isRead.empty() && block * FigureRecords::kBlock < elements.last; ++block)
        if (!m_isRead[block])
            return false;
    return true;
}

LineSummary::Elements LineSummary::elements(double from, double to) const
{
    const RecordTimes& times = m_records.times();
    const std::size_t first = times.firstNotEarlier(from, m_records.size());
    return {first, std::max(first, times.firstLater(to, m_records.size()))};
}

std::vector<LineSummary::Piece> LineSummary::pieces(const Elements& elements) const
{
    std::vector<Piece> pieces;
    for (std::size_t first = elements.first; first < elements.last;) {
        const std::size_t block = first / FigureRecords::kBlock;
        const std::size_t begin = block * FigureRecords::kBlock;
        const std::size_t end = std::min(m_records.size(), begin + FigureRecords::kBlock);
        const std::size_t last = std::min(elements.last, end);
        if (m_blocks[block].count > 0)
            pieces.push_back({block, first, last, first == begin && last == end});
        first = last;
    }
    return pieces;
}

PointSums LineSummary::sums(const std::vector<Piece>& pieces) const
{
    PointSums sums;
    const auto buffer = std::make_unique<FigureRecords::Buffer>();
    for (const Piece& piece : pieces)
        append(sums,
               piece.isWhole ? m_blocks[piece.block]
                             : sumsOf(m_records.points(piece.first, piece.last, *buffer), m_longestJoin),
               m_longestJoin);
    return sums;
}

std::optional<LineSummary::Point> LineSummary::pointBefore(std::size_t element) const
{
    const auto buffer = std::make_unique<FigureRecords::Buffer>();
    for (std::size_t last = std::min(element, m_records.size()); last > 0;) {
        const std::size_t block = (last - 1) / FigureRecords::kBlock;
        const std::size_t first = block * FigureRecords::kBlock;
        if (m_blocks[block].count > 0)
            if (const auto points = m_records.points(first, last, *buffer); !points.times.empty())
                return Point{points.times.back(), points.values.back()};
        last = first;
    }
    return std::nullopt;
}

std::optional<LineSummary::Point> LineSummary::pointFrom(std::size_t element) const
{
    const auto buffer = std::make_unique<FigureRecords::Buffer>();
    for (std::size_t first = element; first < m_records.size();) {
        const std::size_t block = first / FigureRecords::kBlock;
        const std::size_t last = std::min(m_records.size(), (block + 1) * FigureRecords::kBlock);
        if (m_blocks[block].count > 0)
            if (const auto points = m_records.points(first, last, *buffer); !points.times.empty())
                return Point{points.times.front(), points.values.front()};
        first = last;
    }
    return std::nullopt;
}

double LineSummary::timeOf(double value, const std::vector<Piece>& pieces, double PointSums::*extreme) const
{
    const auto buffer = std::make_unique<FigureRecords::Buffer>();
    for (const Piece& piece : pieces) {
        if (piece.isWhole && m_blocks[piece.block].*extreme != value)
            continue;
        const FigureRecords::Points points = m_records.points(piece.first, piece.last, *buffer);
        const auto found = std::find(points.values.begin(), points.values.end(), value);
        if (found != points.values.end())
            return points.times[static_cast<std::size_t>(found - points.values.begin())];
    }
    return LineFigures::kNone;
}

// The line enters the span between the record before it and its first one, and leaves it likewise; a span between two
// records has one way alone.
double LineSummary::addEnds(PointSums& sums, const Elements& elements, double from, double to) const
{
    const std::optional<Point> before = pointBefore(elements.first);
    const std::optional<Point> after = pointFrom(elements.last);
    const bool isEmpty = sums.count == 0;
    const Point first{isEmpty ? to : sums.firstTime, sums.firstValue};
    const Point last{isEmpty ? from : sums.lastTime, sums.lastValue};
    if (isEmpty && before && after) {
        addStretch(sums, {before->time, before->value, after->time, after->value, from, to}, m_longestJoin);
        return 0;
    }
    if (isEmpty) {
        sums.gaps += to > from ? 1 : 0;
        return 0;
    }
    // Where the records themselves begin or end, less than what is joined is missing from nothing: a span asked for in
    // full hours need not end on a record.
    double missing = 0;
    const auto endsWithin = [&](double length) {
        if (length > m_longestJoin)
            ++sums.gaps;
        else
            missing += length;
    };
    if (before)
        addStretch(sums, {before->time, before->value, first.time, first.value, from, first.time}, m_longestJoin);
    else
        endsWithin(first.time - from);
    if (after)
        addStretch(sums, {last.time, last.value, after->time, after->value, last.time, to}, m_longestJoin);
    else
        endsWithin(to - last.time);
    return missing;
}

LineFigures LineSummary::figures(double from, double to) const
{
    LineFigures figures;
    if (!(from <= to))
        return figures;
    const Elements elements = this->elements(from, to);
    const std::vector<Piece> pieces = this->pieces(elements);
    PointSums sums = this->sums(pieces);
    figures.covered = addEnds(sums, elements, from, to);
    figures.covered += sums.covered;
    figures.points = sums.count;
    figures.gaps = sums.gaps;
    figures.coverage = to > from ? std::min(1.0, figures.covered / (to - from)) : LineFigures::kNone;
    if (sums.covered > 0) {
        figures.heldIntegral = sums.held;
        figures.straightIntegral = sums.straight;
        figures.heldMean = sums.held / sums.covered;
        figures.straightMean = sums.straight / sums.covered;
    }
    if (sums.count == 0)
        return figures;
    const auto count = static_cast<double>(sums.count);
    figures.minimum = sums.minimum;
    figures.maximum = sums.maximum;
    figures.minimumTime = timeOf(sums.minimum, pieces, &PointSums::minimum);
    figures.maximumTime = timeOf(sums.maximum, pieces, &PointSums::maximum);
    figures.first = sums.firstValue;
    figures.firstTime = sums.firstTime;
    figures.last = sums.lastValue;
    figures.lastTime = sums.lastTime;
    figures.sum = sums.sum;
    figures.mean = sums.sum / count;
    figures.deviation = sums.count > 1 ? std::sqrt(sums.squares / (count - 1)) : LineFigures::kNone;
    return figures;
}

}  // namespace plotix
