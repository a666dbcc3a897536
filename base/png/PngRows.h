#pragma once

#include <QtCore/QtGlobal>

/// The inner loop of PNG encoding: one row of pixels becomes its difference to the row above.
///
/// Compiled for several processors, chosen at run time (see base/vectors); all write the same. Pure; any thread.
namespace plotix {

/// One row to be encoded. All memory is borrowed; no two pieces overlap.
struct PngRow {
    const quint32* pixels = nullptr;  ///< alpha in the highest byte, then red, green, blue
    const quint32* above = nullptr;   ///< the row above, as long
    int width = 0;                    ///< pixels
    quint32* differences = nullptr;   ///< out: channel by channel, modulo 256, where the pixels had them
    quint8* bytes = nullptr;          ///< out: red, green, blue (and alpha) of each difference; see `kPngRowSlack`
    quint64* repeats = nullptr;       ///< out: bit n % 64 of word n / 64 says that difference n equals the one before
};

/// How many bytes past the end of `bytes` may be written.
constexpr int kPngRowSlack = 8;

struct PngRowKernels {
    void (*color)(const PngRow&);          ///< three bytes a pixel; alpha counts as 0
    void (*colorAndAlpha)(const PngRow&);  ///< four bytes a pixel

    static const PngRowKernels& best();  ///< what this processor runs fastest; alive as long as the program
};

}  // namespace plotix
