#include "base/png/PngEncoding.h"

#include <QtGui/QImage>
#include <gtest/gtest.h>

#include <random>

namespace {

using plotix::PngAlpha;

/// Pictures of few colours in short patterns that repeat, near and far, as letters do; read back by another decoder.
class PngBlockTest : public testing::Test {
protected:
    static QImage words(int width, int height, QImage::Format format)
    {
        constexpr int kWords = 40;
        std::mt19937 random(static_cast<unsigned>(width + height));
        std::vector<std::vector<quint32>> dictionary(kWords);
        for (std::vector<quint32>& word : dictionary)
            for (unsigned length = 1 + random() % 12; length > 0; --length)
                word.push_back(static_cast<quint32>(random()) & 0x030f3f0fU);
        QImage image(width, height, format);
        for (int row = 0; row < height; ++row) {
            auto* pixels = reinterpret_cast<quint32*>(image.scanLine(row));
            for (int column = 0; column < width;)
                for (const quint32 pixel : dictionary[random() % kWords])
                    if (column < width)
                        pixels[column++] = pixel | (format == QImage::Format_RGB32 ? 0xff000000U : 0U);
        }
        return image;
    }

    static void expectRoundTrip(const QImage& image, PngAlpha alpha)
    {
        const QByteArray data = plotix::encodedPng({reinterpret_cast<const quint32*>(image.constBits()), image.width(),
                                                    image.height(), image.bytesPerLine() / 4, alpha, 0, 0});
        EXPECT_EQ(QImage::fromData(data, "PNG").convertToFormat(image.format()), image)
            << image.width() << " x " << image.height();
    }
};

TEST_F(PngBlockTest, WordsThatComeAgainComeBack)
{
    for (const QSize size : {QSize(40, 3000), QSize(1200, 60), QSize(3, 20'000)}) {
        expectRoundTrip(words(size.width(), size.height(), QImage::Format_RGB32), PngAlpha::None);
        expectRoundTrip(words(size.width(), size.height(), QImage::Format_ARGB32), PngAlpha::Straight);
    }
}

TEST_F(PngBlockTest, RowsAboutAsLongAsAMatchReachesComeBack)
{
    for (const int width : {8190, 8191, 8192, 10'921, 10'922, 10'923, 20'000}) {
        expectRoundTrip(words(width, 5, QImage::Format_RGB32), PngAlpha::None);
        expectRoundTrip(words(width, 5, QImage::Format_ARGB32), PngAlpha::Straight);
    }
}

TEST_F(PngBlockTest, WhatCameBeforeIsShorterTheSecondTime)
{
    const QImage once = words(1000, 8, QImage::Format_RGB32);
    QImage twice(2000, 8, QImage::Format_RGB32);
    for (int row = 0; row < once.height(); ++row)
        for (int column = 0; column < twice.width(); ++column)
            twice.setPixel(column, row, once.pixel(column % once.width(), row));
    const auto sizeOf = [](const QImage& image) {
        return plotix::encodedPng({reinterpret_cast<const quint32*>(image.constBits()), image.width(), image.height(),
                                   image.bytesPerLine() / 4, PngAlpha::None, 0, 0})
            .size();
    };
    EXPECT_LT(sizeOf(twice), sizeOf(once) * 19 / 10);
    expectRoundTrip(twice, PngAlpha::None);
}

}  // namespace
