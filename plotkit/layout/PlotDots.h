#pragma once

#include "plotkit/layout/PlotView.h"
#include "plotkit/layout/SeriesBins.h"
#include "plotkit/layout/SlidingRow.h"

#include <QtCore/QPointF>

#include <cstdint>
#include <memory>
#include <vector>

/// The places of a series' points, where each is to be marked by itself: themselves where they are few, else the cells
/// of a fine grid that hold any.
///
/// In a cell one point looks like many, so the cells make the picture that all points would. Blocks of the series'
/// index whose cells are known to hold points already are not looked into. Kept from frame to frame: a pan only looks
/// at what came into view. Main thread or any other, one at a time.
namespace plotkit {

/// The cells of a picture, a bit each. Borrows the memory.
struct DotCells {
    static constexpr int kRowsPerByte = 8;
    static constexpr int kColumnsPerUnit = 4;

    double left = 0;                      ///< the left edge of column 0
    int top = 0;                          ///< where row 0 begins, in units; a byte of rows is one unit high
    std::size_t columns = 0, bytes = 0;   ///< bytes a column
    const std::uint8_t* first = nullptr;  ///< column 0; the lowest bit of its first byte is the topmost cell
    std::ptrdiff_t stride = 0;            ///< bytes from one column to the next

    const std::uint8_t* column(std::size_t number) const
    {
        return first + static_cast<std::ptrdiff_t>(number) * stride;
    }
};

class PlotDots {
public:
    /// The places of all points in view, the margin included; false where they are too many for that.
    static bool placesInto(std::vector<QPointF>& places, const CPTPointSeries& series, const PlotView& view);

    /// The cells of the `slot`-th plot of a picture that hold points, up to the next call for it. None where the view
    /// is degenerate.
    DotCells cells(const CPTPointSeries& series, const PlotView& view, std::size_t slot);

private:
    struct Kept;
    std::vector<std::unique_ptr<Kept>> m_kept;

public:
    PlotDots();
    ~PlotDots();
    PlotDots(const PlotDots&) = delete;
    PlotDots& operator=(const PlotDots&) = delete;
};

}  // namespace plotkit
