#pragma once

#include <QtCore/QPointF>
#include <QtCore/QtGlobal>

#include <cstddef>
#include <span>

/// What the rasteriser works on: the lines that come in and the pixels they go to. Values that borrow; any thread.
namespace plotkit {

/// Premultiplied ARGB, 32 bits a pixel, row by row. Borrows the memory.
struct PixelBuffer {
    quint32* pixels = nullptr;
    int width = 0;              ///< pixels
    int height = 0;             ///< pixels
    std::ptrdiff_t stride = 0;  ///< pixels from one row to the next, at least `width`
};

/// Polylines in device pixels (the top-left pixel's centre is 0.5, 0.5), one after the other. Borrows the memory.
/// `partEnds` holds, ascending, one past each part's last point. A part of one point is a dot as wide as the pen.
struct PolylineSet {
    std::span<const QPointF> points;
    std::span<const std::size_t> partEnds;
};

/// A line whose x never turns back, given by what it fills in narrow columns (device pixels, y downward): where it
/// comes in and goes out at the column's edges, and from where to where it reaches between. In a column without the
/// line, low is +infinity and high −infinity. Borrows the memory; the spans of columns are of equal length, everything
/// else is finite. `partEnds`, ascending, is one past each part's last column; the last is one past all columns, and
/// none at all means one part. Between the parts the line is broken.
struct LineColumns {
    static constexpr int kPerPixel = 12;
    double left = 0;  ///< the left edge of column 0
    std::span<const float> atLeft, atRight, low, high;
    std::span<const std::size_t> partEnds = {};
};

}  // namespace plotkit
