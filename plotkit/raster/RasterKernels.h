#pragma once

#include <QtCore/QtGlobal>

#include <cstddef>

/// The inner loops of the rasteriser: plain arithmetic over rows of numbers, without any notion of a line.
///
/// Compiled once for every processor and once for AVX2, chosen at run time; both give identical pixels. Pure; any
/// thread.
namespace plotkit {

struct RasterKernels {
    static constexpr int kLanes = 16;  ///< pixel columns handled side by side

    /// Widens the extent in every source column by a disc. Target t lies between sources t and t + 1; `left[k]` is half
    /// the disc's height at source t − k, `right[k]` at source t + 1 + k; −infinity beyond the disc. An empty extent is
    /// (+infinity, −infinity).
    /// Requires: `count` a multiple of kLanes; sources readable from −(taps − 1) to count + taps − 1.
    void (*dilate)(const float* low, const float* high, float* top, float* bottom, int count, const float* left,
                   const float* right, int taps);

    /// Blends `rows` rows of kLanes pixels. `changes` holds, row by row, how much each lane's coverage changes there;
    /// they are summed into `coverage`, which carries on from call to call, and are left zero. Whole coverage is
    /// 2 ^ `fullBits`. `color` is premultiplied.
    void (*blendRows)(quint32* pixels, std::ptrdiff_t stride, int rows, qint32* changes, qint32* coverage, int fullBits,
                      quint32 color);

    /// Blends whole coverage over `rows` rows of kLanes pixels.
    void (*fillRows)(quint32* pixels, std::ptrdiff_t stride, int rows, quint32 color);

    /// Blends one row of `count` pixels by coverages of 0…255.
    void (*blendMask)(quint32* pixels, const quint8* mask, int count, quint32 color);

    /// For every processor.
    static const RasterKernels& plain();
    /// The fastest this processor runs; `plain` where it has nothing better.
    static const RasterKernels& best();
};

}  // namespace plotkit
