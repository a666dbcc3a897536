#pragma once

#include "plotkit/raster/LineInput.h"

#include <QtCore/QRect>
#include <QtGui/QColor>

#include <memory>

/// Strokes polylines into pixels: antialiased, round joins and caps, any width.
///
/// Every pixel is blended at most once a call, so that a translucent line crossing itself stays even. Knows nothing of
/// plots. Any thread, one rasteriser per thread.
namespace plotkit {

struct RasterKernels;

/// Keeps its working memory from call to call; make one and use it for every plot of every frame.
class PolylineRasteriser {
public:
    PolylineRasteriser();
    /// With inner loops of the caller's choice. Borrows them.
    explicit PolylineRasteriser(const RasterKernels& kernels);
    ~PolylineRasteriser();
    PolylineRasteriser(const PolylineRasteriser&) = delete;
    PolylineRasteriser& operator=(const PolylineRasteriser&) = delete;

    /// Blends (source over) the stroke of all parts into the buffer, inside `clip` and the buffer. A width that is not
    /// positive and finite, an invalid or fully transparent colour, an empty clip: nothing happens. Points that are not
    /// finite are skipped. A single part whose x never turns back is stroked faster, by EnvelopeStroke.
    void stroke(const PixelBuffer& buffer, const PolylineSet& lines, double width, const QColor& color,
                const QRect& clip);

    /// The same for one line given by columns; its cost is that of the pixels.
    /// Requires: canStrokeColumns(width).
    void stroke(const PixelBuffer& buffer, const LineColumns& columns, double width, const QColor& color,
                const QRect& clip);

    /// Many strokes over one another: the picture is that of stroke() called for each in turn, but pixels are blended
    /// at the latest in finish(), all strokes together, which costs less. Borrows the buffer until then, and lines only
    /// for the call.
    /// Requires: begin() before the first add(), finish() after the last.
    void begin(const PixelBuffer& buffer, const QRect& clip);
    void add(const PolylineSet& lines, double width, const QColor& color);
    void add(const LineColumns& columns, double width, const QColor& color);
    void add(const AreaColumns& area, const QColor& color);
    /// Dots of one diameter, which may overlap: the few that are given one by one, or cells.
    void addDots(std::span<const QPointF> places, double diameter, const QColor& color);
    void addDots(const DotColumns& cells, double diameter, const QColor& color);
    void finish();

    /// False for pens narrower than a pixel or wider than 60 pixels: stroke their lines by points.
    static bool canStrokeColumns(double width);

private:
    struct Workspace;
    std::unique_ptr<Workspace> m_workspace;
};

}  // namespace plotkit
