#include "plotkit/layout/PlotEnvelope.h"

#include "plotkit/layout/AxisMapping.h"
#include "plotkit/model/CPTSeriesIndex.h"

#include <algorithm>
#include <cmath>
#include <limits>

namespace plotkit {

namespace {

constexpr double kMostColumns = 1 << 20;
constexpr std::size_t kMostKeptEdges = 16;
constexpr float kInfinity = std::numeric_limits<float>::infinity();

float cut(double place)
{
    return static_cast<float>(std::clamp(place, -PlotEnvelope::kFarthestPlace, PlotEnvelope::kFarthestPlace));
}

/// Walks the bins once, from the left edge of the picture to the right.
class EnvelopeBuilder {
public:
    EnvelopeBuilder(PlotEnvelope& envelope, std::size_t columns, const AxisMapping& y)
        : m_envelope(envelope),
          m_columns(columns),
          m_scale(y.places / y.range.length),
          m_location(y.range.location),
          m_firstPlace(y.firstPlace)
    {
        envelope.enter.resize(columns);
        envelope.leave.resize(columns);
        envelope.low.assign(columns, kInfinity);
        envelope.high.assign(columns, -kInfinity);
    }

    double placeOf(float y) const { return m_firstPlace + (static_cast<double>(y) - m_location) * m_scale; }

    /// A line from the last point to (`at` columns, y), without the column that `at` lies in.
    void lineTo(double at, double y, std::size_t column)
    {
        if (m_hasLast) {
            const double slope = at > m_at ? (y - m_y) / (at - m_at) : 0;
            // From the nearer end, lest a far-away one swallow the digits.
            const auto placeAt = [&](double edge) {
                return edge - m_at < at - edge ? m_y + (edge - m_at) * slope : y - (at - edge) * slope;
            };
            for (std::size_t between = m_next; between <= column && between < m_columns; ++between) {
                const double edge = static_cast<double>(between);
                const float place = cut(edge > m_at ? placeAt(edge) : m_y);
                if (between > 0 && (m_begun || between > m_next))
                    leaveColumn(between - 1, place);
                enterColumn(between, place);
            }
        } else if (column < m_columns) {
            enterColumn(column, cut(y));
        }
        m_begun = true;
        m_next = column + 1;
    }

    void lastPoint(double at, double y)
    {
        m_at = at;
        m_y = y;
        m_hasLast = true;
    }

    void addBin(std::size_t column, const BinSummary& bin, bool mirrored)
    {
        const float first = mirrored ? bin.last : bin.first;
        const float last = mirrored ? bin.first : bin.last;
        const double enter = static_cast<double>(column) + static_cast<double>(mirrored ? 1 - bin.leave : bin.enter);
        const double leave = static_cast<double>(column) + static_cast<double>(mirrored ? 1 - bin.enter : bin.leave);
        lineTo(enter, placeOf(first), column);
        const float a = cut(placeOf(bin.min));
        const float b = cut(placeOf(bin.max));
        m_envelope.low[column] = std::min({m_envelope.low[column], a, b});
        m_envelope.high[column] = std::max({m_envelope.high[column], a, b});
        m_envelope.leave[column] = cut(placeOf(last));
        lastPoint(leave, placeOf(last));
    }

private:
    void enterColumn(std::size_t column, float place)
    {
        m_envelope.enter[column] = place;
        m_envelope.leave[column] = place;
        m_envelope.low[column] = place;
        m_envelope.high[column] = place;
    }
    void leaveColumn(std::size_t column, float place)
    {
        m_envelope.leave[column] = place;
        m_envelope.low[column] = std::min(m_envelope.low[column], place);
        m_envelope.high[column] = std::max(m_envelope.high[column], place);
    }

    PlotEnvelope& m_envelope;
    std::size_t m_columns;
    double m_scale, m_location, m_firstPlace;
    bool m_hasLast = false;
    bool m_begun = false;    // some column has been entered
    std::size_t m_next = 0;  // the first column not yet entered
    double m_at = 0;         // of the last point, in columns
    double m_y = 0;
};

bool isDrawable(const QRectF& area)
{
    return std::isfinite(area.x()) && std::isfinite(area.y()) && std::isfinite(area.width()) &&
           std::isfinite(area.height()) && area.width() > 0 && area.height() > 0;
}

}  // namespace

BinEdges& PlotEnveloping::edgesOf(const CPTPointSeries& series)
{
    for (const std::unique_ptr<BinEdges>& edges : m_edges)
        if (edges->isOf(series.x(), series.elementCount()))
            return *edges;
    if (m_edges.size() < kMostKeptEdges)
        return *m_edges.emplace_back(std::make_unique<BinEdges>());
    m_nextEdges = (m_nextEdges + 1) % m_edges.size();
    return *m_edges[m_nextEdges];
}

bool PlotEnveloping::envelopeInto(PlotEnvelope& envelope, const CPTPointSeries& series, const PlotView& view,
                                  std::size_t slot)
{
    if (!isDrawable(view.area) || !series.isXSorted() || series.elementCount() == 0)
        return false;
    const AxisMapping x = xMapping(view.xRange, view.area);
    const AxisMapping y = yMapping(view.yRange, view.area);
    const double margin = std::isfinite(view.margin) ? std::max(1.0, view.margin) : 1.0;
    const double perPlace = valuePerPlace(x);
    const double width = perPlace / PlotEnvelope::kColumnsPerPixel;
    const double low = view.xRange.minLimit() - margin * perPlace;
    const double high = view.xRange.maxLimit() + margin * perPlace;
    const double columns = (view.area.width() + 2 * margin) * PlotEnvelope::kColumnsPerPixel;
    if (!x.isProper() || !y.isProper() || !(width > 0) || !std::isfinite(low) || !std::isfinite(high) ||
        !std::isfinite((high - low) / width) || columns > kMostColumns)
        return false;

    const std::span<const double> times = series.x().span().first(series.elementCount());
    const std::ptrdiff_t within =
        std::upper_bound(times.begin(), times.end(), high) - std::lower_bound(times.begin(), times.end(), low);
    if (static_cast<double>(within) <= 2 * columns)
        return false;
    const BinGrid grid = BinGrid::covering(low, high, width);
    if (static_cast<double>(grid.count) > columns + 16)
        return false;  // bins too narrow to be told apart

    const std::span<const std::size_t> edges = edgesOf(series).edges(series, grid);
    if (m_bins.size() <= slot)
        m_bins.resize(slot + 1);
    const std::span<const BinSummary> bins = m_bins[slot].summaries(series, grid, edges);

    const bool mirrored = view.xRange.length < 0;
    const auto columnOf = [&](double value) {  // in columns from the picture's left
        const double from = (value - grid.edge(grid.first)) / grid.width;
        return mirrored ? static_cast<double>(grid.count) - from : from;
    };
    const std::int64_t leftmost = mirrored ? grid.first + static_cast<std::int64_t>(grid.count) : grid.first;
    envelope.left = placeForValue(x, grid.edge(leftmost));
    EnvelopeBuilder builder(envelope, grid.count, y);
    const std::size_t before = series.index().lastPointBefore(edges.front());
    const std::size_t after = series.index().firstPointFrom(edges.back());
    const std::size_t incoming = mirrored ? after : before;
    const std::size_t outgoing = mirrored ? before : after;
    if (incoming < series.elementCount())
        builder.lastPoint(columnOf(times[incoming]), builder.placeOf(series.y()[incoming]));
    for (std::size_t column = 0; column < grid.count; ++column) {
        const BinSummary& bin = bins[mirrored ? grid.count - 1 - column : column];
        if (!bin.isEmpty())
            builder.addBin(column, bin, mirrored);
    }
    if (outgoing < series.elementCount())
        builder.lineTo(columnOf(times[outgoing]), builder.placeOf(series.y()[outgoing]), grid.count);
    return true;
}

}  // namespace plotkit
