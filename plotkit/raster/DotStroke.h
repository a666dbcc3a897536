#pragma once

#include "plotkit/raster/LineInput.h"
#include "plotkit/raster/RasterKernels.h"

#include <QtCore/QRect>

#include <cstdint>
#include <vector>

/// Marks any number of places with dots: each pixel gets the coverage of the dot that is nearest to it, as if every dot
/// joined a mask by maximum; then one blend.
///
/// How far each pixel's middle is from the nearest cell is found along columns first, then across them, so the cost is
/// that of the pixels and the dot's width, however many dots there are. The rasteriser *owns* one; one thread at a
/// time.
namespace plotkit {

class DotStroke {
public:
    explicit DotStroke(const RasterKernels& kernels) : m_kernels(kernels) {}

    /// Requires: clip inside the buffer and not empty; radius positive and finite; `color` premultiplied. Dots wider
    /// than kWidest are drawn that wide.
    void stroke(const PixelBuffer& buffer, const DotColumns& cells, double radius, quint32 color, const QRect& clip);

    static constexpr double kWidest = 20;  ///< pixels

private:
    QRect reachedRows(const DotColumns& cells) const;
    void strokeTile(const PixelBuffer& buffer, const DotColumns& cells, quint32 color);
    void gather(const DotColumns& cells);
    void measureColumns();
    void strokeRow(const PixelBuffer& buffer, int row, quint32 color);
    void prepareTaps(const DotColumns& cells);
    std::uint8_t* plane(std::vector<std::uint8_t>& planes, int phase, int row);

    const RasterKernels& m_kernels;
    QRect m_clip;  // the tile
    double m_radius = 0;
    int m_reach = 0;              // pixels a dot reaches from its middle
    int m_width = 0;              // pixels of a row of cells, the reach on both sides included
    int m_rows = 0;               // rows of cells, the reach included
    std::ptrdiff_t m_column = 0;  // the number of the cell column that row 0's first pixel begins with
    std::vector<std::uint8_t> m_cells, m_distance;  // by phase, row, pixel
    std::vector<std::uint8_t> m_isHeld;             // rows that hold a cell
    std::vector<std::uint16_t> m_squares, m_nearest;
    std::vector<std::uint16_t> m_taps;  // squares of the distance along x, by phase and pixel
    std::vector<std::uint8_t> m_coverage, m_mask, m_carried;
    double m_coverageRadius = 0;  // of the dots that m_coverage is for
};

}  // namespace plotkit
