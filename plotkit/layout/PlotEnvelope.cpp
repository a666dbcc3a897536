#include "plotkit/layout/PlotEnvelope.h"

#include "base/CoresAllowed.h"
#include "base/HelpingThreads.h"
#include "plotkit/layout/AxisMapping.h"
#include "plotkit/layout/BinKernels.h"
#include "plotkit/layout/ColumnEnds.h"
#include "plotkit/layout/FrameParts.h"
#include "plotkit/model/CPTSeriesIndex.h"

#include <algorithm>
#include <atomic>
#include <cmath>
#include <limits>
#include <optional>

namespace plotkit {

namespace {

constexpr double kMostColumns = 1 << 20;
constexpr std::size_t kMostKeptEdges = 16;
constexpr float kInfinity = std::numeric_limits<float>::infinity();
/// Starting a thread takes as long as summing up some hundred bins.
constexpr std::size_t kBinsWorthAThread = 16384;

/// A point of the line, in columns from the picture's left, and its y coordinate.
struct LinePoint {
    double at;
    double y;
};

/// Where the line between two points crosses an edge: reckoned from the nearer end, as a far-away one would cost
/// digits.
double yAtEdge(const LinePoint& from, const LinePoint& to, double edge)
{
    if (!(edge > from.at))
        return from.y;
    const double slope = to.at > from.at ? (to.y - from.y) / (to.at - from.at) : 0;
    return edge - from.at < to.at - edge ? from.y + (edge - from.at) * slope : to.y - (to.at - edge) * slope;
}

}  // namespace

/// Where a line comes from between two points: straight, or level from that of the two, as they stand in the picture,
/// which is the earlier one.
enum class LineCourse { Straight, HoldsLeft, HoldsRight };

/// Turns summaries into an envelope: all columns as if none were empty, then those where the line crosses empty ones.
class EnvelopeBuilder {
public:
    EnvelopeBuilder(PlotEnvelope& envelope, const BinRows& bins, std::size_t columns, const ValueScale& scale,
                    const ColumnEnds& ends, LineCourse course)
        : m_envelope(envelope), m_bins(bins), m_columns(columns), m_scale(scale), m_ends(ends), m_course(course)
    {
        envelope.partEnds.clear();
        const std::size_t room = columns + 1 + SlidingRow<float>::kPadding;
        for (std::vector<float>* row : {&envelope.m_joins, &envelope.m_low, &envelope.m_high})
            if (row->size() < room)
                row->resize(room);
    }

    /// `incoming` and `outgoing` are the points before the first column and after the last, where there are.
    void build(const std::optional<LinePoint>& incoming, const std::optional<LinePoint>& outgoing)
    {
        float* low = m_envelope.m_low.data();
        float* high = m_envelope.m_high.data();
        const bool hasGaps = BinKernels::best().map(m_bins, m_columns, m_scale, joins(), low, high);
        if (m_course != LineCourse::Straight)
            holdValues();
        if (hasGaps)
            bridgeGaps();
        const std::size_t first = firstFilled();
        const std::size_t last = lastFilled();
        begin(incoming, outgoing, first);
        if (first < m_columns)
            end(outgoing, last);
        BinKernels::best().takeJoins(joins(), m_columns, low, high);
        if (!incoming || (first == m_columns && !outgoing))
            leaveOut(0, first);
        if (!outgoing && first < m_columns)
            leaveOut(last + 1, m_columns);
        for (const auto& [from, to] : m_gaps)
            breakBetween(from, to);
        m_envelope.partEnds.push_back(m_columns);
        m_envelope.atLeft = {joins(), m_columns};
        m_envelope.atRight = {joins() + 1, m_columns};
        m_envelope.low = {low, m_columns};
        m_envelope.high = {high, m_columns};
    }

private:
    float* joins() { return m_envelope.m_joins.data(); }
    bool isEmpty(std::size_t column) const { return !(m_bins.min[column] <= m_bins.max[column]); }
    LinePoint firstOf(std::size_t column) const
    {
        return {static_cast<double>(column) + static_cast<double>(m_bins.enter[column]), m_scale(m_bins.first[column])};
    }
    LinePoint lastOf(std::size_t column) const
    {
        return {static_cast<double>(column) + static_cast<double>(m_bins.leave[column]), m_scale(m_bins.last[column])};
    }

    std::size_t firstFilled() const
    {
        std::size_t column = 0;
        while (column < m_columns && isEmpty(column))
            ++column;
        return column;
    }
    std::size_t lastFilled() const
    {
        std::size_t column = m_columns;
        while (column > 0 && isEmpty(column - 1))
            --column;
        return column - 1;  // past the last where none is filled
    }

    /// Edges [first, last] are crossed by the line between two points.
    void cross(const LinePoint& from, const LinePoint& to, std::size_t first, std::size_t last)
    {
        if (m_course != LineCourse::Straight) {
            const float held = m_scale.cut(m_course == LineCourse::HoldsLeft ? from.y : to.y);
            std::fill(joins() + first, joins() + last + 1, held);
            return;
        }
        for (std::size_t edge = first; edge <= last; ++edge)
            joins()[edge] = m_scale.cut(yAtEdge(from, to, static_cast<double>(edge)));
    }

    /// Each edge between columns is crossed at the value that was there before; those beside empty ones follow later.
    void holdValues()
    {
        const float* held = m_course == LineCourse::HoldsLeft ? m_bins.last : m_bins.first + 1;
        for (std::size_t edge = 1; edge < m_columns; ++edge)
            joins()[edge] = m_scale.cut(m_scale(held[edge - 1]));
    }

    void bridgeGaps()
    {
        std::size_t before = firstFilled();
        for (std::size_t column = before + 1; column < m_columns; ++column) {
            if (isEmpty(column))
                continue;
            if (before + 1 < column)
                bridge(before, column);
            before = column;
        }
    }

    void bridge(std::size_t before, std::size_t column)
    {
        if (m_ends.hasGaps() && m_ends.isGapBetween(before, column)) {
            joins()[before + 1] = m_scale.cut(m_scale(m_ends.yBefore(before, m_bins.last[before])));
            joins()[column] = m_scale.cut(m_scale(m_ends.yAfter(column, m_bins.first[column])));
            m_gaps.emplace_back(before + 1, column);
            return;
        }
        cross(lastOf(before), firstOf(column), before + 1, column);
    }

    /// Columns [from, to) stay without the line; what stands at their outer edges belongs to their neighbours.
    void breakBetween(std::size_t from, std::size_t to)
    {
        std::fill(m_envelope.m_low.data() + from, m_envelope.m_low.data() + to, kInfinity);
        std::fill(m_envelope.m_high.data() + from, m_envelope.m_high.data() + to, -kInfinity);
        std::fill(joins() + from + 1, joins() + to, 0.0F);
        m_envelope.partEnds.push_back(from);
    }

    void begin(const std::optional<LinePoint>& incoming, const std::optional<LinePoint>& outgoing, std::size_t first)
    {
        if (first == m_columns) {
            if (incoming && outgoing)
                cross(*incoming, *outgoing, 0, m_columns);
        } else if (incoming) {
            cross(*incoming, firstOf(first), 0, first);
        } else {
            joins()[first] = m_scale.cut(m_scale(m_bins.first[first]));
        }
    }
    void end(const std::optional<LinePoint>& outgoing, std::size_t last)
    {
        if (outgoing)
            cross(lastOf(last), *outgoing, last + 1, m_columns);
        else
            joins()[last + 1] = m_scale.cut(m_scale(m_bins.last[last]));
    }

    /// Columns without the line. What stands at their edges does not matter, but must be finite.
    void leaveOut(std::size_t from, std::size_t to)
    {
        std::fill(m_envelope.m_low.data() + from, m_envelope.m_low.data() + to, kInfinity);
        std::fill(m_envelope.m_high.data() + from, m_envelope.m_high.data() + to, -kInfinity);
        if (from == 0)
            std::fill(joins(), joins() + to, 0.0F);
        else if (from < to)
            std::fill(joins() + from + 1, joins() + to + 1, 0.0F);
    }

    PlotEnvelope& m_envelope;
    BinRows m_bins;
    std::size_t m_columns;
    ValueScale m_scale;
    const ColumnEnds& m_ends;
    LineCourse m_course;
    std::vector<std::pair<std::size_t, std::size_t>> m_gaps;  // columns [first, second)
};

namespace {

bool isDrawable(const QRectF& area)
{
    return std::isfinite(area.x()) && std::isfinite(area.y()) && std::isfinite(area.width()) &&
           std::isfinite(area.height()) && area.width() > 0 && area.height() > 0;
}

/// The points before the first bin and after the last that the line is joined to; the number of elements for none.
/// Where the outermost bins are summed up from runs and hold points, the line beyond them is out of sight: nothing is
/// looked at.
std::pair<std::size_t, std::size_t> neighboursOf(const CPTPointSeries& series, const BinEdges& edges,
                                                 const BinRows& rows, std::size_t bins, const ColumnEnds& ends)
{
    const CPTSeriesIndex& index = series.index();
    const std::size_t none = series.elementCount();
    if (edges.areRunsAlone())
        return {none, none};
    const auto isOutOfSight = [&](std::size_t bin) { return edges.isByRuns(bin) && !rows.at(bin).isEmpty(); };
    const std::size_t before = isOutOfSight(0) ? none : index.lastPointBefore(edges.edges()[0]);
    const std::size_t after = isOutOfSight(bins - 1) ? none : index.firstPointFrom(edges.edges()[bins]);
    if (!ends.hasGaps())
        return {before, after};
    const auto isApart = [&](std::size_t one, std::size_t other) {
        return one < none && other < none && ends.isGap(one, other);
    };
    const bool isApartLeft = before < none && isApart(before, index.firstPointFrom(edges.edges()[0]));
    const bool isApartRight = after < none && isApart(index.lastPointBefore(edges.edges()[bins]), after);
    return {isApartLeft ? none : before, isApartRight ? none : after};
}

double marginOf(const PlotView& view)
{
    return std::isfinite(view.margin) ? std::max(1.0, view.margin) : 1.0;
}

double columnsOf(const PlotView& view)
{
    return (view.area.width() + 2 * marginOf(view)) * PlotEnvelope::kColumnsPerPixel;
}

/// The times of a view, the margin included. Requires: its x range is proper.
std::pair<double, double> timesOf(const PlotView& view)
{
    const double margin = marginOf(view) * valuePerUnit(xMapping(view.xRange, view.area));
    return {view.xRange.minLimit() - margin, view.xRange.maxLimit() + margin};
}

/// Nothing where a series makes no envelope: x is not sorted, the view is degenerate, or its columns are too narrow to
/// be told apart.
std::optional<BinGrid> gridOf(const CPTPointSeries& series, const PlotView& view)
{
    if (!isDrawable(view.area) || !series.isXSorted() || series.elementCount() == 0)
        return std::nullopt;
    const AxisMapping x = xMapping(view.xRange, view.area);
    const AxisMapping y = yMapping(view.yRange, view.area);
    if (!x.isProper() || !y.isProper())
        return std::nullopt;
    const double width = valuePerUnit(x) / PlotEnvelope::kColumnsPerPixel;
    const double columns = columnsOf(view);
    const auto [low, high] = timesOf(view);
    if (!(width > 0) || !std::isfinite(low) || !std::isfinite(high) || !std::isfinite((high - low) / width) ||
        columns > kMostColumns)
        return std::nullopt;
    const BinGrid grid = BinGrid::covering(low, high, width, PlotEnvelope::kColumnsPerPixel);
    return static_cast<double>(grid.count) > columns + 16 ? std::nullopt : std::optional(grid);
}

/// Whether more than so many elements lie in the view; told by the runs where they can.
bool areMoreThan(double limit, const CPTPointSeries& series, const PlotView& view)
{
    const auto [low, high] = timesOf(view);
    if (const CPTSeriesRuns* runs = series.runs().get()) {
        const std::size_t first = runs->runFromTime(low);
        const std::size_t end = runs->runFromTime(high);
        if (end > first && static_cast<double>(runs->begin(end - 1) - runs->begin(first)) > limit)
            return true;
    }
    return static_cast<double>(series.elementAfter(high)) - static_cast<double>(series.elementFrom(low)) > limit;
}

}  // namespace

BinEdges& PlotEnveloping::edgesOf(const CPTPointSeries& series)
{
    for (const std::unique_ptr<BinEdges>& edges : m_edges)
        if (edges->isOf(series))
            return *edges;
    if (m_edges.size() < kMostKeptEdges)
        return *m_edges.emplace_back(std::make_unique<BinEdges>(m_reading));
    m_nextEdges = (m_nextEdges + 1) % m_edges.size();
    return *m_edges[m_nextEdges];
}

SeriesBins& PlotEnveloping::binsOf(std::size_t slot)
{
    if (m_bins.size() <= slot)
        m_bins.resize(slot + 1);
    return m_bins[slot];
}

struct PlotEnveloping::Summing {
    const CPTPointSeries* series;
    BinGrid grid;
    const BinEdges* edges;
    SeriesBins* bins;
};

/// Where there is no memory for one of them, it is left to whoever draws it.
void PlotEnveloping::sumUp(std::span<const Summing> side)
{
    std::atomic<std::size_t> next = 0;
    const auto work = [&]() noexcept {
        for (std::size_t plot = next++; plot < side.size(); plot = next++) {
            try {
                side[plot].bins->summaries(*side[plot].series, side[plot].grid, *side[plot].edges);
            } catch (...) {
                *side[plot].bins = {};
            }
        }
    };
    const plotix::HelpingThreads helpers(std::min(side.size(), plotix::coresAllowed()) - 1, work);
    work();
}

void PlotEnveloping::prepare(std::span<const Plot> plots)
{
    if (plots.size() < 2 || plotix::coresAllowed() < 2)
        return;
    binsOf(std::ranges::max(plots, {}, &Plot::slot).slot);  // so that none of them moves
    std::vector<Summing> side;
    std::size_t fresh = 0;
    const auto finish = [&] {
        if (side.size() > 1 && fresh >= kBinsWorthAThread)
            sumUp(side);
        side.clear();
        fresh = 0;
    };
    for (const Plot& plot : plots) {
        const std::optional<BinGrid> grid = gridOf(*plot.series, plot.view);
        if (!grid || (m_reading == PlotReading::Exact &&
                      !areMoreThan(kFewPoints * columnsOf(plot.view), *plot.series, plot.view)))
            continue;
        SeriesBins& bins = binsOf(plot.slot);
        const KeptBins kept = bins.keptFor(*plot.series, *grid);
        const std::size_t known = kept.keptLast - kept.keptFirst;
        if (known + kBinsWorthAThread / plots.size() > grid->count)
            continue;
        if (!side.empty() && !(side.front().grid == *grid && side.front().edges->isOf(*plot.series)))
            finish();  // before their edges become others
        BinEdges& edges = edgesOf(*plot.series);
        edges.cover(*plot.series, *grid);
        side.push_back({plot.series, *grid, &edges, &bins});
        fresh += grid->count - known;
    }
    finish();
}

bool PlotEnveloping::addPartsHeld(SeriesParts& parts, const CPTPointSeriesPtr& series, const PlotView& view,
                                  std::size_t slot) const
{
    const std::optional<BinGrid> grid = series->runs() ? gridOf(*series, view) : std::nullopt;
    if (!grid)
        return false;
    const KeptBins none = KeptBins::of({}, *grid, false);
    KeptBins kept = slot < m_bins.size() ? m_bins[slot].keptFor(*series, *grid) : none;
    const auto edges = std::find_if(m_edges.begin(), m_edges.end(),
                                    [&](const std::unique_ptr<BinEdges>& each) { return each->isOf(*series); });
    const KeptBins keptEdges = edges != m_edges.end() ? (*edges)->keptFor(*series, *grid) : none;
    kept.keptFirst = std::max(kept.keptFirst, keptEdges.keptFirst);
    kept.keptLast = std::min(kept.keptLast, keptEdges.keptLast);
    plotkit::addPartsHeld(parts, series, *grid, kept.keptFirst < kept.keptLast ? kept : none);
    return true;
}

bool PlotEnveloping::envelopeInto(PlotEnvelope& envelope, const CPTPointSeries& series, const PlotView& view,
                                  std::size_t slot, double few)
{
    const std::optional<BinGrid> cut = gridOf(series, view);
    const bool areCounted = m_reading == PlotReading::Exact || !series.runs();
    if (!cut || (areCounted && !areMoreThan(few * columnsOf(view), series, view)))
        return false;
    const BinGrid& grid = *cut;
    const AxisMapping x = xMapping(view.xRange, view.area);
    const AxisMapping y = yMapping(view.yRange, view.area);
    BinEdges& edges = edgesOf(series);
    edges.cover(series, grid);
    const bool mirrored = view.xRange.length < 0;
    BinRows bins = binsOf(slot).summaries(series, grid, edges);
    const BinRows inOrder = bins;
    if (mirrored)
        bins = m_mirrored.mirrored(bins, grid.count);

    const ValueScale scale{y.range.location, y.extent / y.range.length, y.start, PlotEnvelope::kFarthest};
    const auto pointOf = [&](std::size_t element) -> std::optional<LinePoint> {
        if (element >= series.elementCount())
            return std::nullopt;
        const double from = (series.x().valueAt(element) - grid.edge(grid.first)) / grid.width;
        return LinePoint{mirrored ? static_cast<double>(grid.count) - from : from, scale(series.y().valueAt(element))};
    };
    const ColumnEnds ends(series, edges, grid.count, mirrored, view.gap);
    const auto [beforeElement, afterElement] = neighboursOf(series, edges, inOrder, grid.count, ends);
    const std::optional<LinePoint> before = pointOf(beforeElement);
    const std::optional<LinePoint> after = pointOf(afterElement);
    const std::int64_t leftmost = mirrored ? grid.first + static_cast<std::int64_t>(grid.count) : grid.first;
    envelope.left = coordinateForValue(x, grid.edge(leftmost));
    const LineCourse course = !view.holdsValues ? LineCourse::Straight
                              : mirrored        ? LineCourse::HoldsRight
                                                : LineCourse::HoldsLeft;
    EnvelopeBuilder(envelope, bins, grid.count, scale, ends, course)
        .build(mirrored ? after : before, mirrored ? before : after);
    return true;
}

BinRows MirroredBins::mirrored(const BinRows& rows, std::size_t count)
{
    for (std::vector<float>& row : m_rows)
        row.resize(std::max(row.size(), count + SlidingRow<float>::kPadding));
    const BinRows turned{m_rows[0].data(), m_rows[1].data(), m_rows[2].data(),
                         m_rows[3].data(), m_rows[4].data(), m_rows[5].data()};
    for (std::size_t bin = 0; bin < count; ++bin) {
        const BinSummary from = rows.at(count - 1 - bin);
        turned.set(bin, {from.last, from.min, from.max, from.first, 1 - from.leave, 1 - from.enter});
    }
    return turned;
}

}  // namespace plotkit
