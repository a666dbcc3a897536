#pragma once

#include <QtCore/QByteArray>
#include <QtCore/QtGlobal>

#include <cstddef>

/// Lossless PNG at drawing speed: one fixed row filter, and a compression that looks for little more than repeats of
/// one pixel. Drawings and windows come out about as large as with a general compressor's quickest setting.
///
/// Any decoder reads the result. The same pixels give the same bytes. Pure; any thread.
namespace plotix {

enum class PngAlpha { None, Straight, Premultiplied };

/// 32-bit pixels, alpha in the highest byte, then red, green, blue. Borrows the memory.
struct PngPixels {
    const quint32* pixels = nullptr;
    int width = 0;                    ///< pixels
    int height = 0;                   ///< pixels
    std::ptrdiff_t stride = 0;        ///< pixels from one row to the next, at least `width`
    PngAlpha alpha = PngAlpha::None;  ///< None: the alpha byte is not looked at
    int dotsPerMetreX = 0;            ///< 0 in either direction: no resolution is written
    int dotsPerMetreY = 0;
};

/// The file. Pictures without a translucent pixel are stored without alpha, in three bytes a pixel.
/// Empty pictures, and those of more than 2 GiB in the file, answer no data.
QByteArray encodedPng(const PngPixels& picture);

}  // namespace plotix
