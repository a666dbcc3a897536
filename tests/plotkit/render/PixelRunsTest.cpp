#include "plotkit/render/PixelRuns.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <random>

namespace {

using plotkit::PixelRuns;

class PixelRunsTest : public testing::Test {
protected:
    /// Long runs, different in each row, with single pixels between.
    static QImage striped(int width, int height)
    {
        std::mt19937 random(4);
        QImage image(width, height, QImage::Format_RGB32);
        for (int y = 0; y < height; ++y)
            for (int x = 0; x < width;) {
                const QRgb color = 0xff000000 | static_cast<QRgb>(random());
                const int end = std::min(width, x + (random() % 8 == 0 ? 1 : 90 + static_cast<int>(random() % 200)));
                for (; x < end; ++x)
                    image.setPixel(x, y, color);
            }
        return image;
    }

    static QImage blank(int width, int height)
    {
        QImage image(width, height, QImage::Format_RGB32);
        image.fill(Qt::blue);
        return image;
    }
};

TEST_F(PixelRunsTest, ThePictureComesBack)
{
    const QImage picture = striped(500, 40);
    QImage drawn = blank(500, 40);
    PixelRuns(picture).draw(drawn, {}, drawn.rect());
    EXPECT_EQ(drawn, picture);
}

TEST_F(PixelRunsTest, AColumnCanBeRepeated)
{
    const QImage picture = striped(500, 40);
    for (const int column : {0, 250, 499}) {
        QImage drawn = blank(700, 40);
        PixelRuns(picture, column, 200).draw(drawn, {}, drawn.rect());
        for (int y = 0; y < 40; ++y)
            for (int x = 0; x < 700; ++x)
                ASSERT_EQ(drawn.pixel(x, y), picture.pixel(x <= column ? x : std::max(column, x - 200), y)) << x;
    }
}

TEST_F(PixelRunsTest, OnlyTheClipIsWritten)
{
    const QImage picture = striped(300, 30);
    for (const QPoint& place : {QPoint(20, 5), QPoint(-70, -9), QPoint(250, 0)}) {
        QImage drawn = blank(320, 50);
        const QRect clip(33, 2, 201, 40);
        PixelRuns(picture).draw(drawn, place, clip);
        for (int y = 0; y < drawn.height(); ++y)
            for (int x = 0; x < drawn.width(); ++x) {
                const QPoint at(x, y);
                const bool written = clip.contains(at) && picture.rect().contains(at - place);
                ASSERT_EQ(drawn.pixel(at), written ? picture.pixel(at - place) : QColor(Qt::blue).rgb())
                    << x << ", " << y;
            }
    }
}

TEST_F(PixelRunsTest, APictureOfManyColoursIsLeftToCopying)
{
    QImage noise(64, 64, QImage::Format_RGB32);
    for (int y = 0; y < 64; ++y)
        for (int x = 0; x < 64; ++x)
            noise.setPixel(x, y, qRgb(x, y, x ^ y));
    EXPECT_TRUE(PixelRuns(noise).isEmpty());
    EXPECT_TRUE(PixelRuns(QImage()).isEmpty());
}

}  // namespace
