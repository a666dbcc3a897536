#include "plotkit/raster/PolylineRasteriser.h"

#include "plotkit/raster/AreaOutline.h"
#include "plotkit/raster/DotStroke.h"
#include "plotkit/raster/EnvelopeStroke.h"
#include "plotkit/raster/MaskStroke.h"
#include "plotkit/raster/PartGroups.h"
#include "plotkit/raster/StrokeOutline.h"

#include <algorithm>
#include <cmath>
#include <limits>
#include <numeric>
#include <utility>
#include <vector>

namespace plotkit {

namespace {

bool isFinite(const QPointF& point)
{
    return std::isfinite(point.x()) && std::isfinite(point.y());
}

bool neverTurnsBack(std::span<const QPointF> points)
{
    const auto backward = [](const QPointF& a, const QPointF& b) { return b.x() < a.x(); };
    const auto forward = [](const QPointF& a, const QPointF& b) { return b.x() > a.x(); };
    return std::adjacent_find(points.begin(), points.end(), backward) == points.end() ||
           std::adjacent_find(points.begin(), points.end(), forward) == points.end();
}

constexpr double kClear = 2;  // pixels between pens that meet in no pixel
constexpr std::size_t kMostGroups = 64;
constexpr std::size_t kColumnPadding = 16;  // columns that may be read beyond the last
constexpr float kInfinity = std::numeric_limits<float>::infinity();

/// Requires: points that never turn back.
PartExtent extentOf(std::span<const QPointF> points)
{
    const auto [from, to] = std::minmax({points.front().x(), points.back().x()});
    return {from, to};
}

/// The columns of a part that hold the line, in pixels; it may begin with some that do not.
PartExtent extentOf(const LineColumns& columns, std::size_t first, std::size_t end)
{
    while (first < end && !(columns.low[first] <= columns.high[first]))
        ++first;
    return {static_cast<double>(first) / LineColumns::kPerPixel, static_cast<double>(end) / LineColumns::kPerPixel};
}

std::size_t groupCount(const std::vector<std::size_t>& groups)
{
    return groups.empty() ? 0 : *std::max_element(groups.begin(), groups.end()) + 1;
}

}  // namespace

struct PolylineRasteriser::Workspace {
    explicit Workspace(const RasterKernels& kernels) : envelope(kernels), painter(kernels), mask(kernels), dots(kernels)
    {
    }

    EnvelopeStroke envelope;
    OutlinePainter painter;
    MaskStroke mask;
    DotStroke dots;
    PixelBuffer buffer;
    StrokeArea area;
    std::vector<StrokeOutline> outlines;  // kept for their memory; the first `waiting` are to be painted
    std::size_t waiting = 0;
    std::vector<QPointF> points;
    std::vector<std::size_t> partEnds;
    std::vector<std::span<const QPointF>> parts, together;
    std::vector<PartExtent> extents;
    std::vector<float> low, high;

    /// The same lines without the points that are not finite.
    PolylineSet cleaned(const PolylineSet& lines)
    {
        points.clear();
        partEnds.clear();
        std::size_t index = 0;
        for (const std::size_t partEnd : lines.partEnds) {
            for (; index < std::min(partEnd, lines.points.size()); ++index)
                if (isFinite(lines.points[index]))
                    points.push_back(lines.points[index]);
            partEnds.push_back(points.size());
        }
        return {points, partEnds};
    }

    bool canDraw(double width, const QColor& color) const
    {
        return std::isfinite(width) && width > 0 && color.isValid() && color.alpha() > 0 && !area.clip.isEmpty() &&
               buffer.pixels != nullptr;
    }

    StrokeOutline& nextOutline(quint32 ink)
    {
        if (waiting == outlines.size())
            outlines.emplace_back();
        StrokeOutline& outline = outlines[waiting++];
        outline.color = ink;
        return outline;
    }
    template <class Line>
    void addOutline(const Line& line, double width, quint32 ink)
    {
        envelope.outline(nextOutline(ink), line, width / 2, area);
    }

    /// False where the parts cannot be told apart along x.
    bool addParts(const PolylineSet& lines, double width, quint32 ink)
    {
        parts.clear();
        extents.clear();
        std::size_t first = 0;
        for (const std::size_t partEnd : lines.partEnds) {
            const std::size_t end = std::min(partEnd, lines.points.size());
            const std::span<const QPointF> part = lines.points.subspan(first, end - first);
            first = end;
            if (part.empty())
                continue;
            if (!neverTurnsBack(part))
                return false;
            parts.push_back(part);
            extents.push_back(extentOf(part));
        }
        const std::vector<std::size_t> groups = groupsOfParts(extents, width + kClear, kMostGroups);
        for (std::size_t group = 0; group < groupCount(groups); ++group) {
            together.clear();
            for (std::size_t part = 0; part < parts.size(); ++part)
                if (groups[part] == group)
                    together.push_back(parts[part]);
            addOutline(std::span<const std::span<const QPointF>>(together), width, ink);
        }
        return !groups.empty();
    }

    /// The parts of a broken line by columns, the columns of all other groups left empty.
    void addParts(const LineColumns& columns, double width, quint32 ink)
    {
        extents.clear();
        std::size_t first = 0;
        for (const std::size_t end : columns.partEnds)
            extents.push_back(extentOf(columns, std::exchange(first, end), end));
        const std::vector<std::size_t> groups =
            groupsOfParts(extents, width + kClear, std::numeric_limits<std::size_t>::max());
        for (std::size_t group = 0; group < groupCount(groups); ++group) {
            low.assign(columns.low.size() + kColumnPadding, kInfinity);
            high.assign(columns.high.size() + kColumnPadding, -kInfinity);
            first = 0;
            for (std::size_t part = 0; part < groups.size(); ++part) {
                const std::size_t from = std::exchange(first, columns.partEnds[part]);
                if (groups[part] != group)
                    continue;
                const auto copy = [&](std::span<const float> all, std::vector<float>& own) {
                    const std::span<const float> some = all.subspan(from, columns.partEnds[part] - from);
                    std::copy(some.begin(), some.end(), own.begin() + static_cast<std::ptrdiff_t>(from));
                };
                copy(columns.low, low);
                copy(columns.high, high);
            }
            const std::size_t count = columns.low.size();
            addOutline(
                LineColumns{columns.left, columns.atLeft, columns.atRight, {low.data(), count}, {high.data(), count}},
                width, ink);
        }
    }

    void paintWaiting()
    {
        if (waiting > 0)
            painter.paint(buffer, std::span(outlines).first(waiting), area);
        waiting = 0;
    }
};

PolylineRasteriser::PolylineRasteriser() : PolylineRasteriser(RasterKernels::best()) {}

PolylineRasteriser::PolylineRasteriser(const RasterKernels& kernels) : m_workspace(std::make_unique<Workspace>(kernels))
{
}

PolylineRasteriser::~PolylineRasteriser() = default;

void PolylineRasteriser::begin(const PixelBuffer& buffer, const QRect& clip)
{
    m_workspace->buffer = buffer;
    m_workspace->area = StrokeArea::of(buffer, clip.intersected(QRect(0, 0, buffer.width, buffer.height)));
    m_workspace->waiting = 0;
}

void PolylineRasteriser::add(const PolylineSet& lines, double width, const QColor& color)
{
    Workspace& work = *m_workspace;
    if (!work.canDraw(width, color) || lines.points.empty())
        return;
    const bool finite = std::all_of(lines.points.begin(), lines.points.end(), isFinite);
    const PolylineSet clean = finite ? lines : work.cleaned(lines);
    const quint32 ink = qPremultiply(color.rgba());
    const bool onePart = clean.partEnds.size() == 1 && clean.partEnds.front() > 0;
    const std::span<const QPointF> only =
        onePart ? clean.points.first(std::min(clean.partEnds.front(), clean.points.size()))
                : std::span<const QPointF>();
    if (!only.empty() && neverTurnsBack(only)) {
        work.addOutline(only, width, ink);
    } else if (qAlpha(ink) == 255 && clean.partEnds.size() > 1 && work.addParts(clean, width, ink)) {
        // Strokes of an opaque colour may overlap; any other must be one stroke.
    } else {
        work.paintWaiting();
        work.mask.stroke(work.buffer, clean, width / 2, ink, work.area.clip);
    }
}

void PolylineRasteriser::add(const LineColumns& columns, double width, const QColor& color)
{
    if (canStrokeColumns(width) && m_workspace->canDraw(width, color) && !columns.low.empty())
        columns.partEnds.size() > 1 ? m_workspace->addParts(columns, width, qPremultiply(color.rgba()))
                                    : m_workspace->addOutline(columns, width, qPremultiply(color.rgba()));
}

void PolylineRasteriser::add(const AreaColumns& area, const QColor& color)
{
    if (m_workspace->canDraw(1, color) && !area.top.empty())
        outlineArea(m_workspace->nextOutline(qPremultiply(color.rgba())), area, m_workspace->area);
}

void PolylineRasteriser::addDots(std::span<const QPointF> places, double diameter, const QColor& color)
{
    Workspace& work = *m_workspace;
    if (!work.canDraw(diameter, color) || places.empty())
        return;
    work.points.assign(places.begin(), places.end());
    std::erase_if(work.points, [](const QPointF& place) { return !isFinite(place); });
    work.partEnds.resize(work.points.size());
    std::iota(work.partEnds.begin(), work.partEnds.end(), std::size_t{1});
    work.paintWaiting();
    work.mask.stroke(work.buffer, {work.points, work.partEnds}, diameter / 2, qPremultiply(color.rgba()),
                     work.area.clip);
}

void PolylineRasteriser::addDots(const DotColumns& cells, double diameter, const QColor& color)
{
    Workspace& work = *m_workspace;
    if (!work.canDraw(diameter, color) || cells.columns == 0)
        return;
    work.paintWaiting();
    work.dots.stroke(work.buffer, cells, diameter / 2, qPremultiply(color.rgba()), work.area.clip);
}

void PolylineRasteriser::finish()
{
    m_workspace->paintWaiting();
    m_workspace->buffer = {};
}

void PolylineRasteriser::stroke(const PixelBuffer& buffer, const PolylineSet& lines, double width, const QColor& color,
                                const QRect& clip)
{
    begin(buffer, clip);
    add(lines, width, color);
    finish();
}

void PolylineRasteriser::stroke(const PixelBuffer& buffer, const LineColumns& columns, double width,
                                const QColor& color, const QRect& clip)
{
    begin(buffer, clip);
    add(columns, width, color);
    finish();
}

bool PolylineRasteriser::canStrokeColumns(double width)
{
    return width >= 1 && width <= 60;
}

}  // namespace plotkit
