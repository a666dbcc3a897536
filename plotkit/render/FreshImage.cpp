#include "plotkit/render/FreshImage.h"

#include "base/HugePages.h"

namespace plotkit {

QImage freshImage(const QSize& pixels, QImage::Format format)
{
    QImage image(pixels, format);
    if (!image.isNull())
        plotix::preferHugePages(image.bits(), static_cast<std::size_t>(image.sizeInBytes()));
    return image;
}

}  // namespace plotkit
