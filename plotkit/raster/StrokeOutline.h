#pragma once

#include "plotkit/raster/LineInput.h"
#include "plotkit/raster/RasterKernels.h"

#include <QtCore/QRect>

#include <span>
#include <vector>

/// The stroke of a line whose x never turns back, as the two curves it lies between, and how that becomes pixels.
///
/// The rasteriser *owns* both; one thread at a time.
namespace plotkit {

/// Where outlines are painted. Blocks of RasterKernels::kLanes pixel columns stand `lead` pixels left of the clip, so
/// that a block's rows lie in one cache line each.
struct StrokeArea {
    QRect clip;    ///< inside the buffer and not empty
    int lead = 0;  ///< 0 … kLanes − 1

    int width() const { return lead + clip.width(); }

    /// For a clip inside the buffer.
    static StrokeArea of(const PixelBuffer& buffer, const QRect& clip);
};

/// Heights are in steps of 1 / RasterKernels::kRowSteps row below the clip's top and cut to the clip; a column in which
/// top ≥ bottom is empty. Columns begin `lead` pixels left of the clip and fill whole blocks.
struct StrokeOutline {
    int perPixel = 1;   ///< columns a pixel, a divisor of 96
    double phase = 0;   ///< how far the first column begins before the first pixel, 0…1 column
    quint32 color = 0;  ///< premultiplied
    std::vector<qint32> top, bottom;
};

class OutlinePainter {
public:
    explicit OutlinePainter(const RasterKernels& kernels) : m_kernels(kernels) {}

    /// Blends the strokes, first to last, all of them in one stripe before the next, so that a stripe's pixels stay in
    /// a near cache.
    /// Requires: outlines made for the area; its clip inside the buffer.
    void paint(const PixelBuffer& buffer, std::span<const StrokeOutline> outlines, const StrokeArea& area);

private:
    struct Rows {
        int first, end;
    };
    Rows noteEdges(const StrokeOutline& outline, std::size_t firstTarget);
    void paintBlock(const PixelBuffer& buffer, const StrokeOutline& outline, int firstColumn, const StrokeArea& area);

    const RasterKernels& m_kernels;
    std::vector<qint16> m_changes;  // of coverage, rows of kLanes; all zero between blocks
    std::vector<quint32> m_narrow;  // rows of kLanes where the clip has fewer
};

}  // namespace plotkit
