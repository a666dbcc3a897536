#pragma once

#include <QtCore/QByteArray>
#include <QtCore/QtGlobal>

#include <cstddef>

/// Lossless PNG at drawing speed: one fixed row filter and the cheapest compression that still finds repeats.
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
/// Empty pictures, or memory that is missing, answer no data.
QByteArray encodedPng(const PngPixels& picture);

}  // namespace plotix
