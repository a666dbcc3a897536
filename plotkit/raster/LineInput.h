#pragma once

#include <QtCore/QPointF>
#include <QtCore/QtGlobal>

#include <cstddef>
#include <cstdint>
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

/// An area as what it covers of columns as wide as those of lines: from `top` down to `bottom`, nothing where top ≥
/// bottom. Borrows the memory; everything is finite.
struct AreaColumns {
    double left = 0;
    std::span<const float> top, bottom;
};

/// Places to mark with dots, as the cells of a grid that hold any: columns of a quarter of a pixel, eight rows a pixel,
/// which are the bits of a byte, the lowest on top. Borrows the memory.
struct DotColumns {
    static constexpr int kPerPixel = 4;
    static constexpr int kRowsPerPixel = 8;
    double left = 0;                      ///< the left edge of column 0
    int top = 0;                          ///< the row of pixels that the first byte of a column is in
    std::size_t columns = 0, bytes = 0;   ///< bytes a column
    const std::uint8_t* first = nullptr;  ///< column 0
    std::ptrdiff_t stride = 0;            ///< bytes from one column to the next, maybe negative
};

}  // namespace plotkit
