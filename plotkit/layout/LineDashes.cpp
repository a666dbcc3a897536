#include "plotkit/layout/LineDashes.h"

#include <algorithm>
#include <cmath>
#include <limits>
#include <utility>

namespace plotkit {

namespace {

constexpr double kEdge = 1e-6;
/// A line of more dashes than this is not dashed any more: they could not be told apart.
constexpr double kMostDashes = 1 << 17;
constexpr float kInfinity = std::numeric_limits<float>::infinity();

/// Walks along a pattern.
class DashWalk {
public:
    explicit DashWalk(const DashPattern& pattern) : m_pattern(pattern) { begin(0); }

    void begin(double at)
    {
        double rest = std::fmod(at, m_pattern.period);
        if (rest < 0)
            rest += m_pattern.period;
        m_index = 0;
        while (m_index + 1 < m_pattern.lengths.size() && rest >= m_pattern.lengths[m_index])
            rest -= m_pattern.lengths[m_index++];
        m_left = std::max(0.0, m_pattern.lengths[m_index] - rest);
    }
    bool isDrawn() const { return m_index % 2 == 0; }
    double left() const { return m_left; }  ///< until drawn and left out change
    /// Requires: no farther than left().
    void go(double distance) { m_left -= distance; }
    void turn()
    {
        m_index = (m_index + 1) % m_pattern.lengths.size();
        m_left = m_pattern.lengths[m_index];
    }
    /// Any distance. Answers whether any of it is drawn, were it a dot.
    bool advance(double distance)
    {
        bool wasDrawn = isDrawn();
        distance = std::fmod(distance, m_pattern.period);
        for (std::size_t turns = 0; distance >= m_left && turns <= m_pattern.lengths.size(); ++turns) {
            distance -= m_left;
            turn();
            wasDrawn |= isDrawn();
        }
        m_left = std::max(0.0, m_left - distance);
        return wasDrawn;
    }

private:
    const DashPattern& m_pattern;
    std::size_t m_index = 0;
    double m_left = 0;
};

double lengthOf(const QPointF& along)
{
    return std::hypot(along.x(), along.y());
}

double lengthOf(const ReducedPlot& plot)
{
    double length = 0;
    std::size_t first = 0;
    for (const std::size_t end : plot.partEnds) {
        for (std::size_t index = first + 1; index < end; ++index)
            length += lengthOf(plot.points[index] - plot.points[index - 1]);
        first = end;
    }
    return length;
}

/// Builds the dashed line.
class DashWriter {
public:
    DashWriter(ReducedPlot& dashed, const DashPattern& pattern) : m_dashed(dashed), m_walk(pattern) {}

    void begin(const QPointF& point, double at)
    {
        m_walk.begin(at);
        if (m_walk.isDrawn())
            add(point);
    }
    void lineTo(const QPointF& from, const QPointF& to)
    {
        const double length = lengthOf(to - from);
        double done = 0;
        while (length - done > m_walk.left()) {
            done += m_walk.left();
            const bool wasDrawn = m_walk.isDrawn();
            add(from + (to - from) * (done / length));
            if (wasDrawn)
                endPart();
            m_walk.turn();
        }
        m_walk.go(length - done);
        if (m_walk.isDrawn())
            add(to);
    }
    void endPart()
    {
        if (m_dashed.points.size() > m_partStart)
            m_dashed.partEnds.push_back(m_dashed.points.size());
        m_partStart = m_dashed.points.size();
    }

private:
    void add(const QPointF& point)
    {
        const bool repeats = m_dashed.points.size() > m_partStart && m_dashed.points.back() == point;
        if (!repeats)
            m_dashed.points.push_back(point);
    }

    ReducedPlot& m_dashed;
    DashWalk m_walk;
    std::size_t m_partStart = 0;
};

}  // namespace

std::optional<DashPattern> DashPattern::of(const CPTLineStyle& style, double scale)
{
    const std::vector<double>& wanted = style.dashPattern;
    const auto isLength = [](double length) { return std::isfinite(length) && length >= 0; };
    if (wanted.empty() || wanted.size() % 2 != 0 || !std::all_of(wanted.begin(), wanted.end(), isLength))
        return std::nullopt;
    DashPattern pattern;
    pattern.shortestGap = std::numeric_limits<double>::infinity();
    for (std::size_t index = 0; index < wanted.size(); index += 2) {
        const double drawn = std::max(0.0, wanted[index] - style.width);
        const double gap = wanted[index] + wanted[index + 1] - drawn;
        pattern.lengths.insert(pattern.lengths.end(), {drawn * scale, gap * scale});
        pattern.period += (drawn + gap) * scale;
        pattern.shortestGap = std::min(pattern.shortestGap, wanted[index + 1] * scale);
    }
    if (!(pattern.period > 0) || !(pattern.shortestGap > 0) || !std::isfinite(pattern.period))
        return std::nullopt;
    return pattern;
}

void dashPoints(ReducedPlot& dashed, const ReducedPlot& plot, const DashPattern& pattern, const DashOrigin& origin)
{
    dashed.clear();
    if (lengthOf(plot) > kMostDashes * pattern.period) {
        dashed = plot;
        return;
    }
    DashWriter writer(dashed, pattern);
    std::size_t first = 0;
    for (const std::size_t end : plot.partEnds) {
        const QPointF& start = plot.points[first];
        writer.begin(start, start.x() > origin.left + kEdge ? 0 : start.x() - origin.zero);
        for (std::size_t index = first + 1; index < end; ++index)
            writer.lineTo(plot.points[index - 1], plot.points[index]);
        writer.endPart();
        first = end;
    }
}

/// Works on the envelope's own memory.
class ColumnDashing {
public:
    ColumnDashing(PlotEnvelope& envelope, const DashPattern& pattern, const DashOrigin& origin)
        : m_envelope(envelope), m_pattern(pattern), m_origin(origin), m_walk(pattern)
    {
        // Whether a pixel's worth of columns is dashed must not change while the picture is panned.
        const double number = std::round((envelope.left - origin.zero) * PlotEnvelope::kColumnsPerPixel);
        const double rest = std::fmod(number, kCell);
        m_shift = static_cast<std::size_t>(rest < 0 ? rest + kCell : rest);
    }

    void run()
    {
        const std::vector<std::size_t> parts = std::exchange(m_envelope.partEnds, {});
        std::size_t first = 0;
        for (const std::size_t end : parts)
            dashPart(std::exchange(first, end), end);
        m_envelope.partEnds.push_back(m_envelope.low.size());
    }

private:
    static constexpr int kCell = PlotEnvelope::kColumnsPerPixel;

    bool isEmpty(std::size_t column) const { return !(m_envelope.low[column] <= m_envelope.high[column]); }

    void dashPart(std::size_t first, std::size_t end)
    {
        while (first < end && isEmpty(first))
            ++first;
        const double x = m_envelope.left + static_cast<double>(first) / PlotEnvelope::kColumnsPerPixel;
        m_walk.begin(first > 0 ? 0 : x - m_origin.zero);
        std::size_t cell = first;
        while (cell < end) {
            const std::size_t cellEnd = std::min(cell + kCell - (cell + m_shift) % kCell, end);
            dashCell(cell, cellEnd, cell == first);
            cell = cellEnd;
        }
        if (first < end && end < m_envelope.low.size())
            m_envelope.partEnds.push_back(end);
    }

    /// From where to where the line reaches in some columns.
    struct Reach {
        double low, high;
        double middle() const { return (low + high) / 2; }
    };
    Reach reachIn(std::size_t first, std::size_t end) const
    {
        const auto at = [](std::size_t column) { return static_cast<std::ptrdiff_t>(column); };
        const PlotEnvelope& line = m_envelope;
        return {static_cast<double>(*std::min_element(line.low.begin() + at(first), line.low.begin() + at(end))),
                static_cast<double>(*std::max_element(line.high.begin() + at(first), line.high.begin() + at(end)))};
    }

    /// Dashes a pixel's worth of columns. Swings within a pixel are no way along the line: its middle is followed.
    void dashCell(std::size_t first, std::size_t end, bool isPartsFirst)
    {
        const Reach reach = reachIn(first, end);
        const double before = std::exchange(m_lastMiddle, reach.middle());
        const auto share = static_cast<double>(end - first) / kCell;
        const double rise = isPartsFirst ? static_cast<double>(m_envelope.atRight[end - 1] - m_envelope.atLeft[first])
                                         : (reach.middle() - before) * share;
        if (reach.high - reach.low > m_pattern.shortestGap) {
            m_walk.begin(0);
            return;
        }
        const double length = std::hypot(share, rise) / static_cast<double>(end - first);
        for (std::size_t column = first; column < end; ++column)
            if (!m_walk.advance(length) && !isEmpty(column))
                leaveOut(column);
    }

    /// A run of columns left out ends a part.
    void leaveOut(std::size_t column)
    {
        const bool wasDrawn = column > 0 && !isEmpty(column - 1);
        m_envelope.m_low[column] = kInfinity;
        m_envelope.m_high[column] = -kInfinity;
        if (wasDrawn)
            m_envelope.partEnds.push_back(column);
    }

    PlotEnvelope& m_envelope;
    const DashPattern& m_pattern;
    const DashOrigin& m_origin;
    DashWalk m_walk;
    double m_lastMiddle = 0;  // of the pixel's worth of columns before
    std::size_t m_shift = 0;
};

void dashColumns(PlotEnvelope& envelope, const DashPattern& pattern, const DashOrigin& origin)
{
    ColumnDashing(envelope, pattern, origin).run();
}

void pointsOfColumns(ReducedPlot& plot, const PlotEnvelope& envelope, double scale)
{
    plot.clear();
    const std::size_t count = envelope.low.size();
    for (std::size_t column = 0; column < count; ++column) {
        const float low = envelope.low[column];
        const float high = envelope.high[column];
        if (!(low <= high))
            continue;
        const double x = envelope.left + static_cast<double>(column) / PlotEnvelope::kColumnsPerPixel;
        const double middle = x + 0.5 / PlotEnvelope::kColumnsPerPixel;
        const float from = envelope.atLeft[column];
        const float to = envelope.atRight[column];
        const auto add = [&](double at, float y) {
            plot.points.push_back(QPointF(at, static_cast<double>(y)) * scale);
        };
        add(x, from);
        if (low < std::min(from, to))
            add(middle, low);
        if (high > std::max(from, to))
            add(middle, high);
        const bool isLast = column + 1 == count || !(envelope.low[column + 1] <= envelope.high[column + 1]);
        if (!isLast)
            continue;
        add(x + 1.0 / PlotEnvelope::kColumnsPerPixel, to);
        plot.partEnds.push_back(plot.points.size());
    }
}

}  // namespace plotkit
