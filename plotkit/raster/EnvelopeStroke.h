#pragma once

#include "plotkit/raster/LineInput.h"
#include "plotkit/raster/RasterKernels.h"
#include "plotkit/raster/StrokeOutline.h"

#include <QtCore/QPointF>

#include <span>
#include <vector>

/// Strokes a line whose x never turns back.
///
/// Over any x the stroke of such a line is one unbroken stretch from a top to a bottom: discs along the line, whose
/// chords at that x overlap from one to the next. So the stroke is two curves, found by widening the line's own extents
/// by the pen's disc in columns a small fraction of a pixel wide, and coverage is the area between them. The cost is
/// that of the pixels, however many points a column holds. The rasteriser *owns* one; one thread at a time.
namespace plotkit {

class EnvelopeStroke {
public:
    explicit EnvelopeStroke(const RasterKernels& kernels) : m_kernels(kernels) {}

    /// The outline of the line's stroke within the area; its colour is the caller's.
    /// Requires: finite points, x never increasing or never decreasing, at least one; radius positive and finite.
    void outline(StrokeOutline& outline, std::span<const QPointF> points, double radius, const StrokeArea& area);

    /// The same for several lines at once, none of which comes nearer to another than two discs reach along x.
    void outline(StrokeOutline& outline, std::span<const std::span<const QPointF>> lines, double radius,
                 const StrokeArea& area);

    /// The same for a line given by columns.
    /// Requires: all of equal length; the radius at least half a pixel, and a width for which canStrokeColumns() is
    /// true.
    void outline(StrokeOutline& outline, const LineColumns& columns, double radius, const StrokeArea& area);

    static constexpr int kMostReach = 256;  ///< source columns a disc reaches to each side

private:
    void widen(StrokeOutline& outline, const StrokeArea& area);
    void setChords();
    void prepare(double radius, const StrokeArea& area);
    void addVertex(double source, double y);
    void addLine(std::span<const QPointF> points);
    void addSegment(const QPointF& from, double fromSource, const QPointF& to, double toSource);
    double spreadForSlope(double slope) const;
    void take(int source, float low, float high);

    const RasterKernels& m_kernels;
    int m_perPixel = 16;     // source columns per pixel
    double m_radius = 0;     // pixels
    int m_reach = 0;         // source columns the disc reaches to each side
    double m_outermost = 0;  // where the disc's last column is centred, pixels from its middle
    double m_outermostChord = 0;
    double m_gentleSlope = 0;  // up to here the stroke's edge lies within the columns' reach
    double m_steepSpread = 0;  // fraction of a column that makes up for the rest on the steepest lines
    double m_origin = 0;       // x of source column 0
    int m_sources = 0;
    std::vector<float> m_low, m_high;  // the line's extent in each source column, padded on both sides
    std::vector<float> m_chords;       // half heights of the disc at the sources beside a target
    std::size_t m_firstSource = 0;     // the source just left of target 0, as an index
};

}  // namespace plotkit
