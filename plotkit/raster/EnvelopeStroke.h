#pragma once

#include "plotkit/raster/PolylineRasteriser.h"
#include "plotkit/raster/RasterKernels.h"

#include <vector>

/// Strokes a line whose x never turns back.
///
/// Over any x the stroke of such a line is one unbroken stretch from a top to a bottom: discs along the line, whose
/// chords at that x overlap from one to the next. So the stroke is two curves, found by widening the line's own extents
/// by the pen's disc in columns a sixteenth of a pixel wide, and coverage is the area between them. The cost is that of
/// the pixels, however many points a column holds. Internal to the rasteriser; one thread at a time.
namespace plotkit {

class EnvelopeStroke {
public:
    explicit EnvelopeStroke(const RasterKernels& kernels) : m_kernels(kernels) {}

    /// Requires: finite points, x never increasing or never decreasing, at least one; clip inside the buffer and not
    /// empty; radius positive and finite; `color` premultiplied.
    void stroke(const PixelBuffer& buffer, std::span<const QPointF> points, double radius, quint32 color,
                const QRect& clip);

    /// The same for a line given by columns. Requires: all of equal length; the radius at least half a pixel, and no
    /// more than a disc of kMostTaps columns needs.
    void stroke(const PixelBuffer& buffer, const LineColumns& columns, double radius, quint32 color, const QRect& clip);

    static constexpr int kMostTaps = 256;  ///< source columns a disc reaches to each side

private:
    void widenAndBlend(const PixelBuffer& buffer, quint32 color, const QRect& clip);
    void setChords(double phase, float beyond);
    void takeColumn(const LineColumns& columns, std::size_t column, std::size_t source);
    void prepare(double radius, const QRect& clip);
    void addVertex(const QPointF& point);
    void addSegment(const QPointF& from, const QPointF& to);
    double spreadForSlope(double slope) const;
    void take(int source, float low, float high);
    void blendBlock(const PixelBuffer& buffer, int firstColumn, quint32 color, const QRect& clip);
    void addEdge(int lane, float y, int sign);

    const RasterKernels& m_kernels;
    int m_perPixel = 16;     // source columns per pixel, a power of two
    double m_radius = 0;     // pixels
    int m_taps = 0;          // source columns the disc reaches to each side
    double m_outermost = 0;  // where the disc's last column is centred, pixels from its middle
    double m_outermostChord = 0;
    double m_gentleSlope = 0;  // up to here the stroke's edge lies within the taps' reach
    double m_origin = 0;       // x of source column 0
    int m_sources = 0;
    int m_firstTouched = 0;  // source columns the line passes through
    int m_lastTouched = -1;
    std::vector<float> m_low, m_high;    // the line's extent in each source column, padded on both sides
    std::vector<float> m_top, m_bottom;  // the stroke's, in each target column
    std::vector<float> m_left, m_right;  // half heights of the disc at the sources beside a target
    std::size_t m_firstSource = 0;       // the source just left of target 0, as an index
    std::vector<qint32> m_changes;       // of coverage, rows of kLanes; all zero between blocks
    int m_clipTop = 0;
};

}  // namespace plotkit
