#include "plotkit/raster/EnvelopeStroke.h"

#include "plotkit/raster/RasterKernels.h"

#include <algorithm>
#include <array>
#include <bit>
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
constexpr int kEdgeBits = 8;
constexpr int kEdgeSteps = 1 << kEdgeBits;  // steps per pixel in which an edge's height is told apart

}  // namespace

void EnvelopeStroke::prepare(double radius, const QRect& clip)
{
    m_radius = std::min(radius, kWidestRadius);
    m_perPixel = kFinest;
    while (m_perPixel > 1 && m_radius * m_perPixel > kMostTaps)
        m_perPixel /= 2;
    m_taps = std::max(1, static_cast<int>(std::lround(m_radius * m_perPixel)));
    setChords(0.5, 0);  // of the thinnest pens one column is left
    const int reach = static_cast<int>(std::ceil(m_radius)) + 1;
    m_origin = clip.left() - reach;
    m_sources = (clip.width() + 2 * reach) * m_perPixel + 1;
    m_firstTouched = m_sources;
    m_lastTouched = -1;
    const auto padded = static_cast<std::size_t>(m_sources + 2 * (kPadding + m_taps));
    m_low.assign(padded, kInfinity);
    m_high.assign(padded, -kInfinity);
}

/// Half heights of the disc for targets `phase` of a column right of their left source, and `beyond` its reach. On
/// lines up to the gentle slope the stroke's edge lies within the taps' reach.
void EnvelopeStroke::setChords(double phase, float beyond)
{
    const auto chord = [this, beyond](double columns) {
        const double distance = columns / m_perPixel;
        return distance > m_radius
                   ? beyond
                   : static_cast<float>(std::sqrt(std::max(0.0, m_radius * m_radius - distance * distance)));
    };
    m_left.resize(static_cast<std::size_t>(m_taps));
    m_right.resize(static_cast<std::size_t>(m_taps));
    for (int tap = 0; tap < m_taps; ++tap) {
        m_left[static_cast<std::size_t>(tap)] = chord(tap + phase);
        m_right[static_cast<std::size_t>(tap)] = chord(tap + 1 - phase);
    }
    m_outermost = std::floor(m_radius * m_perPixel + 0.5) / m_perPixel - 0.5 / m_perPixel;
    m_outermost = std::max(m_outermost, 0.5 / m_perPixel);
    m_outermostChord = std::sqrt(std::max(0.0, m_radius * m_radius - m_outermost * m_outermost));
    m_gentleSlope = m_outermost / std::max(3e-5, m_outermostChord);
}

void EnvelopeStroke::take(int source, float low, float high)
{
    const auto index = static_cast<std::size_t>(source + kPadding + m_taps);
    m_low[index] = std::min(m_low[index], low);
    m_high[index] = std::max(m_high[index], high);
    m_firstTouched = std::min(m_firstTouched, source);
    m_lastTouched = std::max(m_lastTouched, source);
}

void EnvelopeStroke::addVertex(const QPointF& point)
{
    const double source = (point.x() - m_origin) * m_perPixel + 0.5;
    if (source >= 0 && source < m_sources)
        take(static_cast<int>(source), static_cast<float>(point.y()), static_cast<float>(point.y()));
}

/// How much of a source column's own width its extent takes in. Where the stroke's edge is found inside the disc's
/// reach, the line at the column's centre is exact and the answer is 0. On lines too steep for that the outermost tap,
/// half a column short of the radius, decides, and the answer makes up for it.
double EnvelopeStroke::spreadForSlope(double slope) const
{
    const double steepness = std::abs(slope);
    if (steepness <= m_gentleSlope)
        return 0;
    const double exact = m_radius * std::sqrt(1 + steepness * steepness);
    const double reached = steepness * m_outermost + m_outermostChord;
    return std::clamp((exact - reached) * 2 * m_perPixel / steepness, 0.0, 1.0);
}

/// The columns between two vertices. Requires: from.x() ≤ to.x().
void EnvelopeStroke::addSegment(const QPointF& from, const QPointF& to)
{
    const double fromSource = (from.x() - m_origin) * m_perPixel;
    const double toSource = (to.x() - m_origin) * m_perPixel;
    if (!(toSource > 0 && fromSource < m_sources - 1))
        return;  // out of sight
    const int first = static_cast<int>(std::max(fromSource, 0.0) + 0.5);
    const int last = static_cast<int>(std::min(toSource + 0.5, m_sources - 1.0));
    if (first >= last)
        return;  // within one column the vertices say it all
    const double slope = (to.y() - from.y()) / (to.x() - from.x());
    const double spread = spreadForSlope(slope) / 2;
    for (int source = first; source <= last; ++source) {
        const double enter = std::max(source - spread, fromSource);
        const double leave = std::min(source + spread, toSource);
        if (enter > leave)
            continue;
        // From the nearer end, lest a far-away one swallow the digits.
        const double yEnter = from.y() + slope * ((enter - fromSource) / m_perPixel);
        const double yLeave = to.y() - slope * ((toSource - leave) / m_perPixel);
        take(source, static_cast<float>(std::min(yEnter, yLeave)), static_cast<float>(std::max(yEnter, yLeave)));
    }
}

/// Whole numbers, so that coverage adds up to exactly all or nothing wherever a picture is cut into pieces.
void EnvelopeStroke::addEdge(int lane, float y, int sign)
{
    const int place = static_cast<int>(y * kEdgeSteps + 0.5F);
    const int below = place % kEdgeSteps;
    qint32* change = m_changes.data() + (place / kEdgeSteps - m_clipTop) * kLanes + lane;
    change[0] += sign * (kEdgeSteps - below);
    change[kLanes] += sign * below;
}

/// Blends the pixel columns from `firstColumn`: edges are noted as changes of coverage, then summed downward.
void EnvelopeStroke::blendBlock(const PixelBuffer& buffer, int firstColumn, quint32 color, const QRect& clip)
{
    const int lanes = std::min(kLanes, clip.left() + clip.width() - firstColumn);
    const auto top = static_cast<float>(clip.top());
    const auto bottom = static_cast<float>(clip.top() + clip.height());
    const int fullBits = kEdgeBits + std::countr_zero(static_cast<unsigned>(m_perPixel));
    float highest = bottom, lowestTop = top, highestBottom = bottom, lowest = top;
    bool everywhere = lanes == kLanes;
    std::size_t target = static_cast<std::size_t>(firstColumn - clip.left()) * static_cast<std::size_t>(m_perPixel);
    for (int lane = 0; lane < lanes; ++lane) {
        for (int step = 0; step < m_perPixel; ++step, ++target) {
            const float from = std::clamp(m_top[target], top, bottom);
            const float to = std::clamp(m_bottom[target], top, bottom);
            if (!(from < to)) {
                everywhere = false;
                continue;
            }
            addEdge(lane, from, 1);
            addEdge(lane, to, -1);
            highest = std::min(highest, from);
            lowest = std::max(lowest, to);
            lowestTop = std::max(lowestTop, from);
            highestBottom = std::min(highestBottom, to);
        }
    }
    if (!(highest < lowest))
        return;

    std::array<qint32, kLanes> coverage{};
    std::array<quint32, kLanes> narrow{};
    const auto blend = [&](int first, int last) {
        qint32* changes = m_changes.data() + static_cast<std::ptrdiff_t>(first - clip.top()) * kLanes;
        quint32* pixels = buffer.pixels + first * buffer.stride + firstColumn;
        if (lanes == kLanes) {
            m_kernels.blendRows(pixels, buffer.stride, last - first, changes, coverage.data(), fullBits, color);
            return;
        }
        for (int row = first; row < last; ++row, changes += kLanes, pixels += buffer.stride) {
            std::copy_n(pixels, lanes, narrow.begin());
            m_kernels.blendRows(narrow.data(), 0, 1, changes, coverage.data(), fullBits, color);
            std::copy_n(narrow.begin(), lanes, pixels);
        }
    };
    const int firstRow = static_cast<int>(std::floor(highest));
    const int lastRow = std::min(static_cast<int>(std::floor(lowest)) + 2, clip.top() + clip.height());
    const int firstFull = static_cast<int>(std::floor(lowestTop)) + 2;  // an edge's change reaches into a second row
    const int lastFull = static_cast<int>(std::floor(highestBottom));
    if (everywhere && firstFull < lastFull) {
        blend(firstRow, firstFull);
        m_kernels.fillRows(buffer.pixels + firstFull * buffer.stride + firstColumn, buffer.stride, lastFull - firstFull,
                           color);
        blend(lastFull, lastRow);
    } else {
        blend(firstRow, lastRow);
    }
    // What an edge on the last row's lower border left behind.
    qint32* rest = m_changes.data() + static_cast<std::ptrdiff_t>(lastRow - clip.top()) * kLanes;
    std::fill_n(rest, 2 * kLanes, 0);
}

void EnvelopeStroke::stroke(const PixelBuffer& buffer, std::span<const QPointF> points, double radius, quint32 color,
                            const QRect& clip)
{
    prepare(radius, clip);
    m_clipTop = clip.top();
    addVertex(points.front());
    for (std::size_t index = 1; index < points.size(); ++index) {
        const QPointF& from = points[index - 1];
        const QPointF& to = points[index];
        addVertex(to);
        if (from.x() <= to.x())
            addSegment(from, to);
        else
            addSegment(to, from);
    }
    if (m_lastTouched < 0)
        return;
    const int reach = static_cast<int>(clip.left() - m_origin) * m_perPixel;
    m_firstSource = static_cast<std::size_t>(reach + kPadding + m_taps);
    widenAndBlend(buffer, color, clip);
}

/// Of a line that just passes through its column the middle is exact, unless it is too steep; of one that turns there,
/// the turning point. Between the two the extent shrinks as far as it is the slope's doing.
void EnvelopeStroke::takeColumn(const LineColumns& columns, std::size_t column, std::size_t source)
{
    float low = columns.low[column];
    float high = columns.high[column];
    const float top = std::min(columns.enter[column], columns.leave[column]);
    const float bottom = std::max(columns.enter[column], columns.leave[column]);
    const float above = top - low;
    const float below = high - bottom;
    const float rise = bottom - top;
    if (rise > 0 && (2 * above < rise || 2 * below < rise)) {
        const double spread = spreadForSlope(static_cast<double>(rise) * m_perPixel);
        const float shift = rise / 2 * static_cast<float>(1 - spread);
        low = std::max(low, top + shift - 2 * std::max(above, 0.0F));
        high = std::min(high, bottom - shift + 2 * std::max(below, 0.0F));
        if (low > high)
            low = high = (low + high) / 2;
    }
    m_low[source] = low;
    m_high[source] = high;
}

void EnvelopeStroke::stroke(const PixelBuffer& buffer, const LineColumns& columns, double radius, quint32 color,
                            const QRect& clip)
{
    m_radius = radius;
    m_perPixel = LineColumns::kPerPixel;
    m_taps = static_cast<int>(std::ceil(radius * m_perPixel)) + 1;
    m_clipTop = clip.top();
    const double offset = (clip.left() - columns.left) * m_perPixel;  // column left of target 0, and how far
    const double whole = std::floor(offset);
    setChords(offset - whole, -kInfinity);

    // Source `pad + s` is column whole + s.
    const int pad = kPadding + m_taps;
    const int targets = clip.width() * m_perPixel;
    const auto padded = static_cast<std::size_t>(targets + 2 * pad);
    m_low.assign(padded, kInfinity);
    m_high.assign(padded, -kInfinity);
    m_firstSource = static_cast<std::size_t>(pad);
    const double count = static_cast<double>(columns.low.size());
    const double first = std::max(0.0, whole - m_taps);
    const double last = std::min(count, whole + targets + m_taps + 1);
    if (!(first < last))
        return;
    const auto firstColumn = static_cast<std::size_t>(first);
    auto source = static_cast<std::size_t>(first - whole + pad);
    for (std::size_t column = firstColumn; column < static_cast<std::size_t>(last); ++column, ++source)
        takeColumn(columns, column, source);
    widenAndBlend(buffer, color, clip);
}

void EnvelopeStroke::widenAndBlend(const PixelBuffer& buffer, quint32 color, const QRect& clip)
{
    const int targets = clip.width() * m_perPixel;
    const int padded = (targets + kLanes - 1) / kLanes * kLanes;
    m_top.resize(static_cast<std::size_t>(padded));
    m_bottom.resize(static_cast<std::size_t>(padded));
    m_kernels.dilate(m_low.data() + m_firstSource, m_high.data() + m_firstSource, m_top.data(), m_bottom.data(), padded,
                     m_left.data(), m_right.data(), m_taps);
    m_changes.resize(static_cast<std::size_t>(clip.height() + 3) * kLanes, 0);
    for (int column = clip.left(); column < clip.left() + clip.width(); column += kLanes)
        blendBlock(buffer, column, color, clip);
}

}  // namespace plotkit
