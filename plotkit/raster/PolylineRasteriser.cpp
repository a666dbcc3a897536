#include "plotkit/raster/PolylineRasteriser.h"

#include "plotkit/raster/EnvelopeStroke.h"
#include "plotkit/raster/MaskStroke.h"

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
    explicit Workspace(const RasterKernels& kernels) : envelope(kernels), mask(kernels) {}

    EnvelopeStroke envelope;
    MaskStroke mask;
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
};

PolylineRasteriser::PolylineRasteriser() : PolylineRasteriser(RasterKernels::best()) {}

PolylineRasteriser::PolylineRasteriser(const RasterKernels& kernels) : m_workspace(std::make_unique<Workspace>(kernels))
{
}

PolylineRasteriser::~PolylineRasteriser() = default;

void PolylineRasteriser::stroke(const PixelBuffer& buffer, const PolylineSet& lines, double width, const QColor& color,
                                const QRect& clip)
{
    const QRect visible = clip.intersected(QRect(0, 0, buffer.width, buffer.height));
    const bool drawable = std::isfinite(width) && width > 0 && color.isValid() && color.alpha() > 0;
    if (!drawable || visible.isEmpty() || buffer.pixels == nullptr || lines.points.empty())
        return;
    const bool finite = std::all_of(lines.points.begin(), lines.points.end(), isFinite);
    const PolylineSet clean = finite ? lines : m_workspace->cleaned(lines);
    const quint32 ink = qPremultiply(color.rgba());
    const bool onePart = clean.partEnds.size() == 1 && clean.partEnds.front() > 0;
    const std::span<const QPointF> only =
        onePart ? clean.points.first(std::min(clean.partEnds.front(), clean.points.size()))
                : std::span<const QPointF>();
    if (!only.empty() && neverTurnsBack(only))
        m_workspace->envelope.stroke(buffer, only, width / 2, ink, visible);
    else
        m_workspace->mask.stroke(buffer, clean, width / 2, ink, visible);
}

bool PolylineRasteriser::canStrokeColumns(double width)
{
    return width >= 1 && width <= 60;
}

void PolylineRasteriser::stroke(const PixelBuffer& buffer, const LineColumns& columns, double width,
                                const QColor& color, const QRect& clip)
{
    const QRect visible = clip.intersected(QRect(0, 0, buffer.width, buffer.height));
    const bool drawable = canStrokeColumns(width) && color.isValid() && color.alpha() > 0;
    if (drawable && !visible.isEmpty() && buffer.pixels != nullptr && !columns.low.empty())
        m_workspace->envelope.stroke(buffer, columns, width / 2, qPremultiply(color.rgba()), visible);
}

}  // namespace plotkit
