#pragma once

#include "plotkit/raster/LineInput.h"
#include "plotkit/raster/RasterKernels.h"

#include <QtCore/QPoint>
#include <QtCore/QRect>

#include <vector>

/// Strokes any lines: each segment's coverage, from the distance to it, joins a mask by maximum; then one blend.
///
/// The cost grows with the segments and their length. The rasteriser *owns* one; one thread at a time.
namespace plotkit {

class MaskStroke {
public:
    explicit MaskStroke(const RasterKernels& kernels) : m_kernels(kernels) {}

    /// Requires: finite points; clip inside the buffer and not empty; radius positive and finite; `color`
    /// premultiplied.
    void stroke(const PixelBuffer& buffer, const PolylineSet& lines, double radius, quint32 color, const QRect& clip);

private:
    void addSegment(const QPointF& from, const QPointF& to);
    void addRow(const QPointF& from, const QPointF& to, int row);

    const RasterKernels& m_kernels;
    double m_radius = 0;
    QRect m_clip;
    std::vector<quint8> m_mask;     // the clip's pixels; all zero between strokes
    std::vector<QPoint> m_touched;  // per row of the clip: first touched column and one past the last
};

}  // namespace plotkit
