#include "plotkit/render/RectBlending.h"

#include <QtGui/QRgba64>

#include <algorithm>

namespace plotkit {

namespace {

/// Every channel of a pixel times `alpha` / 255, rounded as the toolkit rounds: two channels side by side in a number.
quint32 partOf(quint32 pixel, quint32 alpha)
{
    constexpr quint32 kEven = 0x00ff00ffU;
    constexpr quint32 kHalf = 0x00800080U;
    quint32 even = (pixel & kEven) * alpha;
    even = ((even + ((even >> 8U) & kEven) + kHalf) >> 8U) & kEven;
    quint32 odd = ((pixel >> 8U) & kEven) * alpha;
    odd = (odd + ((odd >> 8U) & kEven) + kHalf) & ~kEven;
    return even | odd;
}

}  // namespace

void blendRect(QImage& image, const QRect& rect, const QColor& color)
{
    Q_ASSERT(image.depth() == 32);
    const QRect shown = rect.intersected(image.rect());
    const quint32 source = qPremultiply(color.rgba64()).toArgb32();
    const quint32 rest = 255U - static_cast<quint32>(qAlpha(source));
    if (shown.isEmpty() || rest == 255U)
        return;
    const qsizetype stride = image.bytesPerLine();
    uchar* bits = image.bits() + shown.top() * stride;
    for (int row = 0; row < shown.height(); ++row, bits += stride) {
        quint32* pixels = reinterpret_cast<quint32*>(bits) + shown.left();
        if (rest == 0)
            std::fill_n(pixels, shown.width(), source);
        else
            std::transform(pixels, pixels + shown.width(), pixels,
                           [source, rest](quint32 below) { return source + partOf(below, rest); });
    }
}

}  // namespace plotkit
