#include "plotkit/raster/StrokeOutline.h"

#include <algorithm>
#include <bit>
#include <cmath>
#include <cstdint>
#include <limits>

namespace plotkit {

namespace {

constexpr int kLanes = RasterKernels::kLanes;
constexpr int kRowSteps = RasterKernels::kRowSteps;
constexpr int kRowBits = std::countr_zero(static_cast<unsigned>(kRowSteps));
constexpr int kStripe = 4 * kLanes;  // pixel columns; at a thousand rows a quarter of a megabyte

/// Adds `weight` times what an edge covers of its own row and of the row below, which it covers wholly. Whole numbers,
/// so that coverage adds up to exactly all or nothing wherever a picture is cut into pieces.
inline void noteEdge(qint16* lane, int height, int weight)
{
    const int below = (height & (kRowSteps - 1)) * weight;
    qint16* change = lane + static_cast<std::ptrdiff_t>(height >> kRowBits) * kLanes;
    change[0] = static_cast<qint16>(change[0] + kRowSteps * weight - below);
    change[kLanes] = static_cast<qint16>(change[kLanes] + below);
}

}  // namespace

/// The rows that edges were noted in.
OutlinePainter::Rows OutlinePainter::noteEdges(const StrokeOutline& outline, std::size_t firstTarget)
{
    const int perPixel = outline.perPixel;
    const int weight = RasterKernels::kWhole / kRowSteps / perPixel;
    const int before = static_cast<int>(std::lround(outline.phase * weight));
    const qint32* top = outline.top.data() + firstTarget;
    const qint32* bottom = outline.bottom.data() + firstTarget;
    qint32 highest = std::numeric_limits<qint32>::max();
    qint32 lowest = -1;
    for (int lane = 0; lane < kLanes; ++lane, top += perPixel, bottom += perPixel) {
        qint16* changes = m_changes.data() + lane;
        const auto note = [&](int step, int part) {
            if (top[step] >= bottom[step])
                return;
            noteEdge(changes, top[step], part);
            noteEdge(changes, bottom[step], -part);
            highest = std::min(highest, top[step]);
            lowest = std::max(lowest, bottom[step]);
        };
        note(0, weight - before);
        for (int step = 1; step < perPixel; ++step)
            note(step, weight);
        if (before > 0)
            note(perPixel, before);  // the column that reaches into the next pixel
    }
    return lowest < 0 ? Rows{0, 0} : Rows{highest >> kRowBits, (lowest >> kRowBits) + 2};
}

/// Blends the block `firstColumn` pixels from the first: edges are noted as changes of coverage, then summed downward.
void OutlinePainter::paintBlock(const PixelBuffer& buffer, const StrokeOutline& outline, int firstColumn,
                                const StrokeArea& area)
{
    const QRect& clip = area.clip;
    const Rows noted =
        noteEdges(outline, static_cast<std::size_t>(firstColumn) * static_cast<std::size_t>(outline.perPixel));
    const int end = std::min(noted.end, clip.height());
    const int rows = end - noted.first;
    qint16* changes = m_changes.data() + static_cast<std::ptrdiff_t>(noted.first) * kLanes;
    const int skipped = std::max(0, area.lead - firstColumn);  // lanes left of the clip, and of the buffer maybe
    const int lanes = std::min(kLanes, area.width() - firstColumn) - skipped;
    quint32* pixels =
        buffer.pixels + (clip.top() + noted.first) * buffer.stride + clip.left() - area.lead + firstColumn + skipped;
    if (lanes == kLanes) {
        m_kernels.blendRows(pixels, buffer.stride, rows, changes, outline.color);
    } else {
        m_narrow.resize(static_cast<std::size_t>(clip.height()) * kLanes);
        quint32* narrow = m_narrow.data() + skipped;
        for (int row = 0; row < rows; ++row)
            std::copy_n(pixels + row * buffer.stride, lanes, narrow + row * kLanes);
        m_kernels.blendRows(m_narrow.data(), kLanes, rows, changes, outline.color);
        for (int row = 0; row < rows; ++row)
            std::copy_n(narrow + row * kLanes, lanes, pixels + row * buffer.stride);
    }
    // What edges on the clip's lower border left behind.
    qint16* rest = m_changes.data() + static_cast<std::ptrdiff_t>(end) * kLanes;
    std::fill_n(rest, 2 * kLanes, qint16{0});
}

StrokeArea StrokeArea::of(const PixelBuffer& buffer, const QRect& clip)
{
    const std::uintptr_t first =
        reinterpret_cast<std::uintptr_t>(buffer.pixels) / sizeof(quint32) + static_cast<std::uintptr_t>(clip.left());
    return {clip, static_cast<int>(first % kLanes)};
}

void OutlinePainter::paint(const PixelBuffer& buffer, std::span<const StrokeOutline> outlines, const StrokeArea& area)
{
    m_changes.resize(static_cast<std::size_t>(area.clip.height() + 3) * kLanes, 0);
    for (int stripe = 0; stripe < area.width(); stripe += kStripe) {
        const int end = std::min(stripe + kStripe, area.width());
        for (const StrokeOutline& outline : outlines)
            for (int column = stripe; column < end; column += kLanes)
                paintBlock(buffer, outline, column, area);
    }
}

}  // namespace plotkit
