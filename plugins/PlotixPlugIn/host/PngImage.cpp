#include "plugins/PlotixPlugIn/host/PngImage.h"

#include "base/png/PngEncoding.h"

namespace {

/// The image in one of the formats the encoder reads, as it is where it can be.
QImage readable(const QImage& image)
{
    switch (image.format()) {
    case QImage::Format_RGB32:
    case QImage::Format_ARGB32:
    case QImage::Format_ARGB32_Premultiplied: return image;
    default: return image.convertToFormat(image.hasAlphaChannel() ? QImage::Format_ARGB32 : QImage::Format_RGB32);
    }
}

plotix::PngAlpha alphaOf(QImage::Format format)
{
    if (format == QImage::Format_ARGB32_Premultiplied)
        return plotix::PngAlpha::Premultiplied;
    return format == QImage::Format_ARGB32 ? plotix::PngAlpha::Straight : plotix::PngAlpha::None;
}

}  // namespace

QByteArray pngOfImage(const QImage& image)
{
    if (image.isNull())
        return {};
    const QImage pixels = readable(image);
    plotix::PngPixels picture;
    picture.pixels = reinterpret_cast<const quint32*>(pixels.constBits());
    picture.width = pixels.width();
    picture.height = pixels.height();
    picture.stride = pixels.bytesPerLine() / qsizetype(sizeof(quint32));
    picture.alpha = alphaOf(pixels.format());
    picture.dotsPerMetreX = pixels.dotsPerMeterX();
    picture.dotsPerMetreY = pixels.dotsPerMeterY();
    return plotix::encodedPng(picture);
}

bool writePng(QIODevice& to, const QImage& image)
{
    const QByteArray data = pngOfImage(image);
    return !data.isEmpty() && to.write(data) == data.size();
}
