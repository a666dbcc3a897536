#include "plotkit/raster/PolylineRasteriser.h"

#include "plotkit/raster/EnvelopeStroke.h"
#include "plotkit/raster/MaskStroke.h"
#include "plotkit/raster/StrokeOutline.h"

#include <algorithm>
#include <cmath>
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

}  // namespace

struct PolylineRasteriser::Workspace {
    explicit Workspace(const RasterKernels& kernels) : envelope(kernels), painter(kernels), mask(kernels) {}

    EnvelopeStroke envelope;
    OutlinePainter painter;
    MaskStroke mask;
    PixelBuffer buffer;
    StrokeArea area;
    std::vector<StrokeOutline> outlines;  // kept for their memory; the first `waiting` are to be painted
    std::size_t waiting = 0;
    std::vector<QPointF> points;
    std::vector<std::size_t> partEnds;

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

    template <class Line>
    void addOutline(const Line& line, double width, quint32 ink)
    {
        if (waiting == outlines.size())
            outlines.emplace_back();
        StrokeOutline& outline = outlines[waiting++];
        outline.color = ink;
        envelope.outline(outline, line, width / 2, area);
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
    } else {
        work.paintWaiting();
        work.mask.stroke(work.buffer, clean, width / 2, ink, work.area.clip);
    }
}

void PolylineRasteriser::add(const LineColumns& columns, double width, const QColor& color)
{
    if (canStrokeColumns(width) && m_workspace->canDraw(width, color) && !columns.low.empty())
        m_workspace->addOutline(columns, width, qPremultiply(color.rgba()));
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
