#pragma once

#include <QtCore/QPointF>
#include <QtCore/QRect>
#include <QtCore/QtGlobal>
#include <QtGui/QColor>

#include <cstddef>
#include <memory>
#include <span>

/// Strokes polylines into pixels: antialiased, round joins and caps, any width.
///
/// Every pixel is blended at most once a call, so that a translucent line crossing itself stays even. Knows nothing of
/// plots. Any thread, one rasteriser per thread.
namespace plotkit {

/// Premultiplied ARGB, 32 bits a pixel, row by row. Borrows the memory.
struct PixelBuffer {
    quint32* pixels = nullptr;
    int width = 0;              ///< pixels
    int height = 0;             ///< pixels
    std::ptrdiff_t stride = 0;  ///< pixels from one row to the next, at least `width`
};

/// Polylines in device pixels (the top-left pixel's centre is 0.5, 0.5), one after the other. Borrows the memory.
/// `partEnds` holds one past each part's last point, ascending. A part of one point is a dot as wide as the pen.
struct PolylineSet {
    std::span<const QPointF> points;
    std::span<const std::size_t> partEnds;
};

/// A line whose x never turns back, given by what it fills in narrow columns (device pixels, y downward): where it
/// comes in and goes out at the column's edges, and from where to where it reaches between. Where the line is not, low
/// is +infinity and high −infinity. Borrows the memory; the spans are of equal length, everything else is finite.
struct LineColumns {
    static constexpr int kPerPixel = 12;
    double left = 0;  ///< the left edge of column 0
    std::span<const float> enter, leave, low, high;
};

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
    /// finite are passed over. A single part whose x never turns back takes a faster way.
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
    void finish();

    /// Pens narrower than a pixel or wider than 60 take points.
    static bool canStrokeColumns(double width);

private:
    struct Workspace;
    std::unique_ptr<Workspace> m_workspace;
};

}  // namespace plotkit
