#include "plotkit/raster/EnvelopeStroke.h"

#include "plotkit/raster/RasterKernels.h"

#include <algorithm>
#include <cmath>
#include <limits>

// Source column s is centred on x = origin + s / perPixel and reaches half a column to each side; target column t is
// centred halfway between sources t and t + 1. With the two grids so set off, a pen of any multiple of an eighth of a
// pixel comes out exactly as wide as it is.

namespace plotkit {

namespace {

constexpr float kInfinity = std::numeric_limits<float>::infinity();
constexpr int kLanes = RasterKernels::kLanes;
constexpr int kPadding = 64;             // sources beside the outermost, so that whole vectors can be read
constexpr double kWidestRadius = 16384;  // pixels; no picture is larger than a stroke of this
constexpr int kFinest = 16;

}  // namespace

void EnvelopeStroke::prepare(double radius, const StrokeArea& area)
{
    m_radius = std::min(radius, kWidestRadius);
    m_perPixel = kFinest;
    while (m_perPixel > 1 && m_radius * m_perPixel > kMostReach)
        m_perPixel /= 2;
    setChords();
    // From a lead's width left of the clip, whatever the lead: the same line falls into the same columns in any buffer.
    const int reach = static_cast<int>(std::ceil(m_radius)) + 1;
    m_origin = area.clip.left() - kLanes - reach;
    m_sources = (kLanes + area.clip.width() + 2 * reach) * m_perPixel + 1;
    const auto padded = static_cast<std::size_t>(m_sources + 2 * (kPadding + m_reach));
    m_low.assign(padded, kInfinity);
    m_high.assign(padded, -kInfinity);
}

/// Half heights of the disc at the sources beside a target. On lines up to the gentle slope the stroke's edge lies
/// within the columns' reach.
void EnvelopeStroke::setChords()
{
    m_reach = std::max(1, static_cast<int>(std::lround(m_radius * m_perPixel)));
    m_chords.resize(static_cast<std::size_t>(m_reach));
    const auto chord = [this](double distance) {
        return std::sqrt(std::max(0.0, m_radius * m_radius - distance * distance));
    };
    for (int column = 0; column < m_reach; ++column)
        m_chords[static_cast<std::size_t>(column)] = static_cast<float>(chord((column + 0.5) / m_perPixel));
    m_outermost = (m_reach - 0.5) / m_perPixel;
    m_outermostChord = chord(m_outermost);
    m_gentleSlope = m_outermost / std::max(3e-5, m_outermostChord);
    m_steepSpread = std::clamp((m_radius - m_outermost) * 2 * m_perPixel, 0.0, 1.0);
}

inline void EnvelopeStroke::take(int source, float low, float high)
{
    const auto index = static_cast<std::size_t>(source + kPadding + m_reach);
    m_low[index] = std::min(m_low[index], low);
    m_high[index] = std::max(m_high[index], high);
}

inline void EnvelopeStroke::addVertex(double source, double y)
{
    const double column = source + 0.5;
    if (column >= 0 && column < m_sources)
        take(static_cast<int>(column), static_cast<float>(y), static_cast<float>(y));
}

/// How much of a source column's own width its extent takes in. Where the stroke's edge is found inside the disc's
/// reach, the line at the column's centre is exact and the answer is 0. On lines too steep for that the outermost
/// column, half a column short of the radius, decides, and the answer makes up for it: the exact stroke's excess over
/// what the column reaches, r √(1 + s²) − s o − c with r² = o² + c², and as 1 / s is small, nearly a square.
inline double EnvelopeStroke::spreadForSlope(double slope) const
{
    const double steepness = std::abs(slope);
    if (steepness <= m_gentleSlope)
        return 0;
    const double beyond = 1 - m_gentleSlope / steepness;
    return m_steepSpread * (beyond * beyond);
}

/// The columns between two vertices.
/// Requires: from.x() ≤ to.x(), and the sources they lie in.
inline void EnvelopeStroke::addSegment(const QPointF& from, double fromSource, const QPointF& to, double toSource)
{
    if (!(toSource > 0 && fromSource < m_sources - 1))
        return;  // out of sight
    const int first = static_cast<int>(std::max(fromSource, 0.0) + 0.5);
    const int last = static_cast<int>(std::min(toSource + 0.5, m_sources - 1.0));
    if (first >= last)
        return;  // within one column the vertices say it all
    const double slope = (to.y() - from.y()) / (toSource - fromSource);
    const double spread = spreadForSlope(slope * m_perPixel) / 2;
    for (int source = first; source <= last; ++source) {
        const double enter = std::max(source - spread, fromSource);
        const double leave = std::min(source + spread, toSource);
        if (enter > leave)
            continue;
        // Reckoned from the nearer end, as a far-away one would cost digits.
        const double yEnter = from.y() + slope * (enter - fromSource);
        const double yLeave = to.y() - slope * (toSource - leave);
        take(source, static_cast<float>(std::min(yEnter, yLeave)), static_cast<float>(std::max(yEnter, yLeave)));
    }
}

void EnvelopeStroke::addLine(std::span<const QPointF> points)
{
    const auto sourceOf = [this](const QPointF& point) { return (point.x() - m_origin) * m_perPixel; };
    double fromSource = sourceOf(points.front());
    addVertex(fromSource, points.front().y());
    for (std::size_t index = 1; index < points.size(); ++index) {
        const QPointF& from = points[index - 1];
        const QPointF& to = points[index];
        const double toSource = sourceOf(to);
        addVertex(toSource, to.y());
        if (from.x() <= to.x())
            addSegment(from, fromSource, to, toSource);
        else
            addSegment(to, toSource, from, fromSource);
        fromSource = toSource;
    }
}

void EnvelopeStroke::outline(StrokeOutline& outline, std::span<const QPointF> points, double radius,
                             const StrokeArea& area)
{
    this->outline(outline, std::span(&points, 1), radius, area);
}

void EnvelopeStroke::outline(StrokeOutline& outline, std::span<const std::span<const QPointF>> lines, double radius,
                             const StrokeArea& area)
{
    prepare(radius, area);
    outline.phase = 0;
    for (const std::span<const QPointF> points : lines)
        addLine(points);
    const int reach = static_cast<int>(area.clip.left() - area.lead - m_origin) * m_perPixel;
    m_firstSource = static_cast<std::size_t>(reach + kPadding + m_reach);
    widen(outline, area);
}

void EnvelopeStroke::outline(StrokeOutline& outline, const LineColumns& columns, double radius, const StrokeArea& area)
{
    m_radius = radius;
    m_perPixel = LineColumns::kPerPixel;
    setChords();
    // Target 0 reaches from the middle of column `whole` to that of the next.
    const double offset = (area.clip.left() - columns.left) * m_perPixel - 0.5;
    const double left = std::floor(offset);
    const double whole = left - area.lead * m_perPixel;
    outline.phase = offset - left;

    // Source `pad + s` is column whole + s.
    const int pad = kPadding + m_reach;
    const int targets = area.width() * m_perPixel + 1;
    const int sources = targets + 2 * pad;
    const double count = static_cast<double>(columns.low.size());
    const double first = std::clamp(whole - pad, 0.0, count);
    const double end = std::clamp(whole - pad + sources, first, count);
    const auto column = static_cast<std::size_t>(first);
    const auto used = static_cast<std::ptrdiff_t>(end - first);
    const auto source = used > 0 ? static_cast<std::ptrdiff_t>(first - whole) + pad : 0;
    m_low.resize(static_cast<std::size_t>(sources));
    m_high.resize(static_cast<std::size_t>(sources));
    m_kernels.shrink(columns.atLeft.data() + column, columns.atRight.data() + column, columns.low.data() + column,
                     columns.high.data() + column, m_low.data() + source, m_high.data() + source, used,
                     {static_cast<float>(m_gentleSlope / m_perPixel), static_cast<float>(m_steepSpread)});
    const auto empty = [&](std::vector<float>& extents, float nothing) {
        std::fill(extents.begin(), extents.begin() + source, nothing);
        std::fill(extents.begin() + source + used, extents.end(), nothing);
    };
    empty(m_low, kInfinity);
    empty(m_high, -kInfinity);
    m_firstSource = static_cast<std::size_t>(pad);
    widen(outline, area);
}

/// Sources become targets; what is left of the last block stays empty.
void EnvelopeStroke::widen(StrokeOutline& outline, const StrokeArea& area)
{
    const auto targets = static_cast<std::size_t>(area.width() * m_perPixel + 1);
    const auto block = static_cast<std::size_t>(kLanes * m_perPixel);
    const std::size_t whole = (targets + block - 1) / block * block + kLanes;
    const std::size_t widened = (targets + kLanes - 1) / kLanes * kLanes;
    outline.perPixel = m_perPixel;
    outline.top.resize(whole);
    outline.bottom.resize(whole);
    m_kernels.dilate(m_low.data() + m_firstSource, m_high.data() + m_firstSource, outline.top.data(),
                     outline.bottom.data(), static_cast<int>(widened), {m_chords.data(), m_reach}, area.clip.top(),
                     area.clip.top() + area.clip.height());
    const auto rest = static_cast<std::ptrdiff_t>(targets);
    std::fill(outline.top.begin() + rest, outline.top.end(), 0);
    std::fill(outline.bottom.begin() + rest, outline.bottom.end(), 0);
}

}  // namespace plotkit
