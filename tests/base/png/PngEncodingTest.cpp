#include "base/png/PngEncoding.h"

#include <QtGui/QImage>
#include <gtest/gtest.h>

#include <random>

namespace {

using plotix::PngAlpha;

/// A picture with every kind of row: noise, one plain colour, repeats, and colours of any alpha.
class PngEncodingTest : public testing::Test {
protected:
    static QImage noise(int width, int height, QImage::Format format)
    {
        QImage image(width, height, QImage::Format_ARGB32);
        std::mt19937 random(static_cast<unsigned>(width * 1000 + height));
        for (int y = 0; y < height; ++y)
            for (int x = 0; x < width; ++x)
                image.setPixel(x, y, y % 3 == 1 ? 0xff102030U : random());
        return image.convertToFormat(format);
    }

    static QByteArray encoded(const QImage& image, PngAlpha alpha)
    {
        return plotix::encodedPng({reinterpret_cast<const quint32*>(image.constBits()), image.width(), image.height(),
                                   image.bytesPerLine() / 4, alpha, image.dotsPerMeterX(), image.dotsPerMeterY()});
    }

    static void expectRoundTrip(QImage::Format format, PngAlpha alpha)
    {
        for (const QSize size : {QSize(1, 1), QSize(2, 1), QSize(1, 7), QSize(3, 5), QSize(17, 33), QSize(641, 259)}) {
            const QImage image = noise(size.width(), size.height(), format);
            const QImage decoded = QImage::fromData(encoded(image, alpha), "PNG");
            EXPECT_EQ(decoded.convertToFormat(format), image) << size.width() << " x " << size.height();
        }
    }
};

TEST_F(PngEncodingTest, EveryPixelComesBackAtEverySize)
{
    expectRoundTrip(QImage::Format_RGB32, PngAlpha::None);
    expectRoundTrip(QImage::Format_ARGB32, PngAlpha::Straight);
}

TEST_F(PngEncodingTest, PremultipliedColoursComeOutAsTheyWereMeant)
{
    expectRoundTrip(QImage::Format_ARGB32_Premultiplied, PngAlpha::Premultiplied);
}

TEST_F(PngEncodingTest, RowsMayLieFurtherApartThanTheyAreWide)
{
    const QImage image = noise(64, 20, QImage::Format_RGB32);
    const QByteArray data =
        plotix::encodedPng({reinterpret_cast<const quint32*>(image.constBits()) + 3, 31, 20, 64, PngAlpha::None, 0, 0});
    EXPECT_EQ(QImage::fromData(data, "PNG").convertToFormat(QImage::Format_RGB32), image.copy(3, 0, 31, 20));
}

TEST_F(PngEncodingTest, APictureWithoutTranslucencyIsStoredWithoutAlpha)
{
    QImage image(5, 5, QImage::Format_ARGB32_Premultiplied);
    image.fill(Qt::red);
    EXPECT_FALSE(QImage::fromData(encoded(image, PngAlpha::Premultiplied), "PNG").hasAlphaChannel());
    image.setPixel(4, 4, 0);
    EXPECT_TRUE(QImage::fromData(encoded(image, PngAlpha::Premultiplied), "PNG").hasAlphaChannel());
}

TEST_F(PngEncodingTest, TheResolutionIsKept)
{
    QImage image = noise(4, 4, QImage::Format_RGB32);
    image.setDotsPerMeterX(5669);
    image.setDotsPerMeterY(2835);
    const QImage decoded = QImage::fromData(encoded(image, PngAlpha::None), "PNG");
    EXPECT_EQ(decoded.dotsPerMeterX(), 5669);
    EXPECT_EQ(decoded.dotsPerMeterY(), 2835);
}

TEST_F(PngEncodingTest, TheSamePixelsGiveTheSameBytes)
{
    const QImage image = noise(300, 100, QImage::Format_ARGB32);
    EXPECT_EQ(encoded(image, PngAlpha::Straight), encoded(image.copy(), PngAlpha::Straight));
}

TEST_F(PngEncodingTest, EvenGroundTakesNextToNothing)
{
    QImage image(1200, 600, QImage::Format_RGB32);
    image.fill(Qt::darkGray);
    EXPECT_LT(encoded(image, PngAlpha::None).size(), 20000);
}

TEST_F(PngEncodingTest, RunsOfEveryLengthComeBack)
{
    QImage image(700, 300, QImage::Format_ARGB32);
    for (int y = 0; y < image.height(); ++y)
        for (int x = 0; x < image.width(); ++x)
            image.setPixel(x, y, x <= y + 1 ? qRgba(y, 0, 255 - y % 256, 128) : x > 400 ? qRgb(x / (y + 1), 7, 9) : 0U);
    EXPECT_EQ(QImage::fromData(encoded(image, PngAlpha::Straight), "PNG").convertToFormat(image.format()), image);
    const QImage colors = image.convertToFormat(QImage::Format_RGB32);
    EXPECT_EQ(QImage::fromData(encoded(colors, PngAlpha::None), "PNG").convertToFormat(colors.format()), colors);
}

TEST_F(PngEncodingTest, GradientsComeBackInLittle)
{
    QImage image(600, 400, QImage::Format_RGB32);
    for (int y = 0; y < image.height(); ++y)
        for (int x = 0; x < image.width(); ++x)
            image.setPixel(x, y, qRgb(y / 2, x / 3, 40));
    const QByteArray data = encoded(image, PngAlpha::None);
    EXPECT_EQ(QImage::fromData(data, "PNG").convertToFormat(image.format()), image);
    EXPECT_LT(data.size(), 600 * 400 * 3 / 8);
}

TEST_F(PngEncodingTest, NoiseGrowsByNextToNothing)
{
    QImage image(500, 300, QImage::Format_RGB32);
    std::mt19937 random(3);
    for (int y = 0; y < image.height(); ++y)
        for (int x = 0; x < image.width(); ++x)
            image.setPixel(x, y, static_cast<quint32>(random()) | 0xff000000U);
    const QByteArray data = encoded(image, PngAlpha::None);
    EXPECT_EQ(QImage::fromData(data, "PNG").convertToFormat(image.format()), image);
    EXPECT_LT(data.size(), 500 * 300 * 3 * 101 / 100);
}

TEST_F(PngEncodingTest, NothingToEncodeIsNoData)
{
    EXPECT_TRUE(plotix::encodedPng({}).isEmpty());
    const quint32 pixel = 0;
    EXPECT_TRUE(plotix::encodedPng({&pixel, 0, 1, 1, PngAlpha::None, 0, 0}).isEmpty());
    EXPECT_TRUE(plotix::encodedPng({nullptr, 1, 1, 1, PngAlpha::None, 0, 0}).isEmpty());
}

}  // namespace
