#include "plotkit/raster/RasterKernels.h"

#include "plotkit/raster/PolylineRasteriser.h"

#include <QtGui/QColor>
#include <QtGui/QImage>
#include <gtest/gtest.h>

#include <random>
#include <vector>

// The loops for this processor against those for every processor: not one bit may differ.

namespace {

using plotkit::RasterKernels;

constexpr int kLanes = RasterKernels::kLanes;

class RasterKernelsTest : public testing::Test {
protected:
    std::vector<quint32> noisyPixels(std::size_t count)
    {
        std::vector<quint32> pixels(count);
        for (quint32& pixel : pixels)
            pixel = qPremultiply(static_cast<QRgb>(random()));
        return pixels;
    }

    const RasterKernels& plain = RasterKernels::plain();
    const RasterKernels& best = RasterKernels::best();
    std::mt19937 random{1};
};

constexpr quint32 kColors[] = {0xff204060U, 0xffffffffU, 0x80402010U, 0x01010000U, 0x7f7f7f7fU};

TEST_F(RasterKernelsTest, MasksBlendAlikeAtEveryLength)
{
    for (const quint32 color : kColors) {
        for (int count = 0; count < 40; ++count) {
            std::vector<quint8> mask(static_cast<std::size_t>(count));
            for (quint8& share : mask)
                share = static_cast<quint8>(random());
            std::vector<quint32> one = noisyPixels(static_cast<std::size_t>(count));
            std::vector<quint32> other = one;
            plain.blendMask(one.data(), mask.data(), count, color);
            best.blendMask(other.data(), mask.data(), count, color);
            EXPECT_EQ(one, other) << count;
        }
    }
}

TEST_F(RasterKernelsTest, RowsBlendAlikeAndLeaveTheSameBehind)
{
    constexpr int kRows = 50;
    for (const quint32 color : kColors) {
        std::vector<qint32> changes(kRows * kLanes, 0);
        for (int row = 0; row < 10; ++row)
            for (int lane = 0; lane < kLanes; ++lane)
                changes[static_cast<std::size_t>((row * 5) * kLanes + lane)] =
                    (row % 2 == 0 ? 1 : -1) * (row < 4 ? 2048 : 300 + 100 * lane);
        std::vector<qint32> otherChanges = changes;
        std::vector<qint32> coverage(kLanes, 0), otherCoverage(kLanes, 0);
        std::vector<quint32> one = noisyPixels(kRows * 20);
        std::vector<quint32> other = one;
        plain.blendRows(one.data(), 20, kRows, changes.data(), coverage.data(), 11, color);
        best.blendRows(other.data(), 20, kRows, otherChanges.data(), otherCoverage.data(), 11, color);
        EXPECT_EQ(one, other);
        EXPECT_EQ(coverage, otherCoverage);
        EXPECT_EQ(changes, std::vector<qint32>(changes.size(), 0));
        EXPECT_EQ(otherChanges, changes);
        plain.fillRows(one.data(), 20, kRows, color);
        best.fillRows(other.data(), 20, kRows, color);
        EXPECT_EQ(one, other);
    }
}

TEST_F(RasterKernelsTest, WholeCoverageOfAnOpaqueColourIsThatColour)
{
    std::vector<quint32> pixels = noisyPixels(24);
    const std::vector<quint8> mask(24, 255);
    plain.blendMask(pixels.data(), mask.data(), 24, kColors[0]);
    EXPECT_EQ(pixels, std::vector<quint32>(24, kColors[0]));
}

TEST_F(RasterKernelsTest, WholePicturesAreAlike)
{
    std::vector<QPointF> points;
    for (int index = 0; index < 3000; ++index)
        points.emplace_back(index * 0.1, 60 + static_cast<double>(random() % 100) / 3);
    const std::vector<std::size_t> ends{1500, points.size()};
    const std::vector<std::size_t> whole{points.size()};
    plotkit::PolylineRasteriser one(plain), other(best);
    for (const std::vector<std::size_t>& parts : {ends, whole}) {
        for (const QColor& color : {QColor(200, 30, 90), QColor(10, 250, 60, 90)}) {
            QImage images[2];
            for (QImage& image : images) {
                image = QImage(300, 160, QImage::Format_ARGB32_Premultiplied);
                image.fill(Qt::darkCyan);
                plotkit::PolylineRasteriser& rasteriser = &image == images ? one : other;
                rasteriser.stroke({reinterpret_cast<quint32*>(image.bits()), 300, 160, image.bytesPerLine() / 4},
                                  plotkit::PolylineSet{points, parts}, 3, color, image.rect());
            }
            EXPECT_EQ(images[0], images[1]);
        }
    }
}

}  // namespace
