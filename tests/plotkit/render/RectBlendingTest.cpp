#include "plotkit/render/RectBlending.h"

#include <QtGui/QPainter>
#include <gtest/gtest.h>

#include <random>

namespace {

class RectBlendingTest : public testing::TestWithParam<QImage::Format> {
protected:
    RectBlendingTest() : blended(97, 203, GetParam())
    {
        std::mt19937 random(5);
        for (int y = 0; y < blended.height(); ++y)
            for (int x = 0; x < blended.width(); ++x)
                blended.setPixel(x, y, qPremultiply(random()));
        painted = blended.copy();
    }

    void fillBoth(const QRect& rect, const QColor& color)
    {
        plotkit::blendRect(blended, rect, color);
        QPainter(&painted).fillRect(QRectF(rect), color);
    }

    QImage blended;
    QImage painted;
};

TEST_P(RectBlendingTest, GivesThePaintersPixelsAtEveryOpacity)
{
    for (int alpha = 0; alpha < 256; ++alpha) {
        fillBoth({alpha % 90, 0, 1 + alpha % 3, 203}, QColor(255, 90, 3 + alpha / 2, alpha));
        ASSERT_EQ(blended, painted) << alpha;
    }
}

TEST_P(RectBlendingTest, GivesThePaintersPixelsForWideRows)
{
    fillBoth({3, 7, 90, 100}, QColor(12, 250, 80, 77));
    fillBoth({0, 100, 97, 1}, QColor(255, 255, 255, 60));
    EXPECT_EQ(blended, painted);
}

TEST_P(RectBlendingTest, KeepsWithinTheImage)
{
    fillBoth({-5, -5, 20, 20}, QColor(255, 0, 0, 128));
    fillBoth({90, 190, 50, 50}, QColor(0, 0, 255));
    fillBoth({200, 10, 5, 5}, QColor(0, 0, 255));
    fillBoth({10, 10, 0, 5}, QColor(0, 0, 255));
    EXPECT_EQ(blended, painted);
}

INSTANTIATE_TEST_SUITE_P(Formats, RectBlendingTest,
                         testing::Values(QImage::Format_RGB32, QImage::Format_ARGB32_Premultiplied));

}  // namespace
