#pragma once

#include <QtCore/QtGlobal>

#include <cstddef>

/// The inner loops of the rasteriser: plain arithmetic over rows of numbers, without any notion of a line.
///
/// Compiled for several processors, chosen at run time (see base/vectors); all give identical pixels. Pure; any thread.
namespace plotkit {

/// What fraction of its column's width counts for a line that passes steeply through it: nothing up to slope `gentle`,
/// then `most` × (1 − gentle / slope)². Slopes are in pixels a column.
struct SlopeSpread {
    float gentle = 0;  ///< positive
    float most = 0;    ///< 0…1
};

/// Half heights of the pen's disc at the sources beside a target, in pixels: `heights[k]` is that at the k-th source on
/// either side.
struct DiscChords {
    const float* heights = nullptr;
    int taps = 0;
};

struct RasterKernels {
    static constexpr int kLanes = 16;      ///< pixel columns handled side by side
    static constexpr int kRowSteps = 256;  ///< a row is divided into this many steps of height
    static constexpr int kWhole = 24576;   ///< coverage of a pixel that is covered wholly

    /// The extents a disc is to widen. `enter` and `leave` are where the line comes in and goes out. If it just passes
    /// through the column, the extent shrinks to the line's middle, or less far where the line is too steep. If it
    /// turns in the column, the turning point stays. Between the two, it shrinks by what is due to the slope alone. An
    /// empty extent (+infinity, −infinity) stays empty. Any `count`.
    void (*shrink)(const float* enter, const float* leave, const float* low, const float* high, float* shrunkLow,
                   float* shrunkHigh, std::ptrdiff_t count, SlopeSpread spread);

    /// Widens the extent in every source column by a disc. Target t lies between sources t and t + 1. The result is cut
    /// to rows `firstRow` … `lastRow` and given in steps below the first; it is empty where top ≥ bottom.
    /// Requires: `count` a multiple of kLanes; sources readable from −(taps − 1) to count + taps − 1.
    void (*dilate)(const float* low, const float* high, qint32* top, qint32* bottom, int count,
                   const DiscChords& chords, int firstRow, int lastRow);

    /// Blends `rows` rows of kLanes pixels. `changes` holds, row by row, how much each lane's coverage differs from the
    /// row above, at first from 0, and is zero afterwards. `color` is premultiplied.
    void (*blendRows)(quint32* pixels, std::ptrdiff_t stride, int rows, qint16* changes, quint32 color);

    /// Blends one row of `count` pixels by coverages of 0…255.
    void (*blendMask)(quint32* pixels, const quint8* mask, int count, quint32 color);

    /// The fastest this processor runs. Alive as long as the program.
    static const RasterKernels& best();
};

}  // namespace plotkit
