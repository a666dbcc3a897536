#include "plugins/PlotixPlugIn/host/PngImage.h"

#include <QtCore/QBuffer>

#include <gtest/gtest.h>

namespace {

/// A picture of some format whose every pixel differs from its neighbours.
QImage picture(QImage::Format format)
{
    QImage image(37, 11, QImage::Format_ARGB32);
    for (int y = 0; y < image.height(); ++y)
        for (int x = 0; x < image.width(); ++x)
            image.setPixel(x, y, qRgba(7 * x, 20 * y, x * y, 255 - 3 * x));
    return image.convertToFormat(format);
}

class PngImageTest : public testing::TestWithParam<QImage::Format> {};

TEST_P(PngImageTest, HoldsEveryPixel)
{
    const QImage image = picture(GetParam());
    EXPECT_EQ(QImage::fromData(pngOfImage(image), "PNG").convertToFormat(image.format()), image);
}

INSTANTIATE_TEST_SUITE_P(Formats, PngImageTest,
                         testing::Values(QImage::Format_RGB32, QImage::Format_ARGB32,
                                         QImage::Format_ARGB32_Premultiplied, QImage::Format_RGB888,
                                         QImage::Format_RGBA8888, QImage::Format_Grayscale8));

TEST(PngFile, IsWhatTheImageIsAsData)
{
    const QImage image = picture(QImage::Format_RGB32);
    QBuffer file;
    file.open(QIODevice::WriteOnly);
    EXPECT_TRUE(writePng(file, image));
    EXPECT_EQ(file.data(), pngOfImage(image));
}

TEST(PngFile, SaysWhenItWasNotWritten)
{
    QBuffer closed;
    EXPECT_FALSE(writePng(closed, picture(QImage::Format_RGB32)));
    QBuffer file;
    file.open(QIODevice::WriteOnly);
    EXPECT_FALSE(writePng(file, QImage()));
}

}  // namespace
