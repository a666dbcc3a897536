#include "plotkit/raster/RasterKernels.h"

#include "plotkit/raster/PolylineRasteriser.h"

#include "tests/support/EveryTarget.h"

#include <QtGui/QColor>
#include <QtGui/QImage>
#include <gtest/gtest.h>

#include <algorithm>
#include <limits>
#include <random>
#include <utility>
#include <vector>

// The loops for each target this processor has against those that go through one number at a time: not one bit may
// differ.

namespace {

using plotkit::RasterKernels;

constexpr int kLanes = RasterKernels::kLanes;
constexpr float kInfinity = std::numeric_limits<float>::infinity();

class RasterKernelsTest : public testing::Test {
protected:
    std::vector<quint32> noisyPixels(std::size_t count)
    {
        std::vector<quint32> pixels(count);
        for (quint32& pixel : pixels)
            pixel = qPremultiply(static_cast<QRgb>(random()));
        return pixels;
    }

    float anyFloat(float low, float high) { return std::uniform_real_distribution<float>(low, high)(random); }

    /// Rows in which edges begin and end, some unchanged, some uncovered, some wholly covered.
    std::vector<qint16> noisyChanges(int rows)
    {
        std::vector<qint16> changes(static_cast<std::size_t>(rows) * kLanes, 0);
        std::vector<int> covered(kLanes, 0);
        for (int row = 0; row < rows; ++row) {
            if (random() % 3 == 0)
                continue;
            const int kind = static_cast<int>(random() % 4);
            for (std::size_t lane = 0; lane < kLanes; ++lane) {
                const int next = kind == 0   ? 0
                                 : kind == 1 ? RasterKernels::kWhole
                                             : static_cast<int>(random() % (RasterKernels::kWhole + 1));
                changes[static_cast<std::size_t>(row) * kLanes + lane] = static_cast<qint16>(next - covered[lane]);
                covered[lane] = next;
            }
        }
        return changes;
    }

    const std::vector<const RasterKernels*> every = plotix::testing::everyTarget<RasterKernels>();
    const RasterKernels& plain = *every.back();
    const std::vector<const RasterKernels*> widerKernels{every.begin(), every.end() - 1};
    std::mt19937 random{1};
};

constexpr quint32 kColors[] = {0xff204060U, 0xffffffffU, 0xff000000U, 0x80402010U, 0x01010000U, 0x7f7f7f7fU};

TEST_F(RasterKernelsTest, MasksBlendAlikeAtEveryLength)
{
    for (const RasterKernels* wider : widerKernels) {
        for (const quint32 color : kColors) {
            for (int count = 0; count < 40; ++count) {
                std::vector<quint8> mask(static_cast<std::size_t>(count));
                for (quint8& share : mask)
                    share = static_cast<quint8>(random());
                std::vector<quint32> one = noisyPixels(static_cast<std::size_t>(count));
                std::vector<quint32> other = one;
                plain.blendMask(one.data(), mask.data(), count, color);
                wider->blendMask(other.data(), mask.data(), count, color);
                EXPECT_EQ(one, other) << count;
            }
        }
    }
}

TEST_F(RasterKernelsTest, RowsBlendAlikeAndLeaveNoChangeBehind)
{
    constexpr int kRows = 400;
    for (const RasterKernels* wider : widerKernels) {
        for (const quint32 color : kColors) {
            std::vector<qint16> changes = noisyChanges(kRows);
            std::vector<qint16> otherChanges = changes;
            std::vector<quint32> one = noisyPixels(kRows * 20);
            std::vector<quint32> other = one;
            plain.blendRows(one.data(), 20, kRows, changes.data(), color);
            wider->blendRows(other.data(), 20, kRows, otherChanges.data(), color);
            EXPECT_EQ(one, other);
            EXPECT_EQ(changes, std::vector<qint16>(changes.size(), 0));
            EXPECT_EQ(otherChanges, changes);
        }
    }
}

TEST_F(RasterKernelsTest, ColoursStayPremultiplied)
{
    constexpr int kRows = 200;
    for (const quint32 color : kColors) {
        std::vector<qint16> changes = noisyChanges(kRows);
        std::vector<quint32> pixels = noisyPixels(kRows * kLanes);
        plain.blendRows(pixels.data(), kLanes, kRows, changes.data(), color);
        EXPECT_TRUE(std::all_of(pixels.begin(), pixels.end(), [](quint32 pixel) {
            return std::max({qRed(pixel), qGreen(pixel), qBlue(pixel)}) <= qAlpha(pixel);
        }));
    }
}

TEST_F(RasterKernelsTest, ExtentsShrinkAlikeAtEveryLength)
{
    for (const RasterKernels* wider : widerKernels) {
        for (std::size_t count = 0; count < 100; ++count) {
            std::vector<float> enter(count), leave(count), low(count), high(count);
            for (std::size_t column = 0; column < count; ++column) {
                enter[column] = anyFloat(0, 50);
                leave[column] = random() % 5 == 0 ? enter[column] : anyFloat(0, 50);
                const float beyond = random() % 2 == 0 ? 0 : anyFloat(0, 20);
                low[column] = std::min(enter[column], leave[column]) - beyond;
                high[column] = random() % 9 == 0 ? -kInfinity : std::max(enter[column], leave[column]) + beyond / 3;
            }
            std::vector<float> one(2 * count + 1), other(2 * count + 1);
            plain.shrink(enter.data(), leave.data(), low.data(), high.data(), one.data(), one.data() + count,
                         static_cast<std::ptrdiff_t>(count), {0.3F, 0.9F});
            wider->shrink(enter.data(), leave.data(), low.data(), high.data(), other.data(), other.data() + count,
                          static_cast<std::ptrdiff_t>(count), {0.3F, 0.9F});
            EXPECT_EQ(one, other);
        }
    }
}

TEST_F(RasterKernelsTest, ShrinkingKeepsTurningPointsAndTheMiddleOfGentleLines)
{
    const float enter[] = {10, 10, 10, kInfinity}, leave[] = {11, 10, 30, kInfinity};
    const float low[] = {10, 4, 10, kInfinity}, high[] = {11, 10, 30, -kInfinity};
    float shrunkLow[4], shrunkHigh[4];
    plain.shrink(enter, leave, low, high, shrunkLow, shrunkHigh, 4, {2, 1});
    EXPECT_EQ(std::pair(shrunkLow[0], shrunkHigh[0]), std::pair(10.5F, 10.5F));  // straight and gentle: its middle
    EXPECT_EQ(std::pair(shrunkLow[1], shrunkHigh[1]), std::pair(4.0F, 10.0F));   // turns: as far as it reaches
    EXPECT_NEAR(shrunkHigh[2] - shrunkLow[2], 20 * 0.81, 1e-4);                  // steep: (1 − 2 / 20)² of it
    EXPECT_GT(shrunkLow[3], shrunkHigh[3]);                                      // empty
}

TEST_F(RasterKernelsTest, ExtentsWidenAlike)
{
    constexpr int kCount = 64, kTaps = 9;
    const std::vector<float> heights{3, 2.9F, 2.7F, 2.5F, 2.2F, 1.9F, 1.5F, 0.7F, 0.1F};
    std::vector<float> low(kCount + 2 * kTaps), high(low.size());
    for (std::size_t source = 0; source < low.size(); ++source) {
        low[source] = random() % 3 == 0 ? kInfinity : anyFloat(-30, 60);
        high[source] = low[source] == kInfinity ? -kInfinity : low[source] + anyFloat(0, 30);
    }
    std::vector<qint32> one(2 * kCount), other(2 * kCount);
    plain.dilate(low.data() + kTaps, high.data() + kTaps, one.data(), one.data() + kCount, kCount,
                 {heights.data(), kTaps}, 7, 41);
    EXPECT_EQ(*std::min_element(one.begin(), one.end()), 0);
    EXPECT_LE(*std::max_element(one.begin(), one.end()), (41 - 7) * RasterKernels::kRowSteps);
    for (const RasterKernels* wider : widerKernels) {
        wider->dilate(low.data() + kTaps, high.data() + kTaps, other.data(), other.data() + kCount, kCount,
                      {heights.data(), kTaps}, 7, 41);
        EXPECT_EQ(one, other);
    }
}

TEST_F(RasterKernelsTest, WholeCoverageOfAnOpaqueColourIsThatColour)
{
    std::vector<quint32> pixels = noisyPixels(24);
    const std::vector<quint8> mask(24, 255);
    plain.blendMask(pixels.data(), mask.data(), 24, kColors[0]);
    EXPECT_EQ(pixels, std::vector<quint32>(24, kColors[0]));
    std::vector<qint16> changes(kLanes, RasterKernels::kWhole);
    plain.blendRows(pixels.data(), kLanes, 1, changes.data(), kColors[1]);
    EXPECT_EQ(std::vector<quint32>(pixels.begin(), pixels.begin() + kLanes), std::vector<quint32>(kLanes, kColors[1]));
}

TEST_F(RasterKernelsTest, WholePicturesAreAlike)
{
    std::vector<QPointF> points;
    for (int index = 0; index < 3000; ++index)
        points.emplace_back(index * 0.1, 60 + static_cast<double>(random() % 100) / 3);
    const std::vector<std::size_t> ends{1500, points.size()};
    const std::vector<std::size_t> whole{points.size()};
    plotkit::PolylineRasteriser one(plain), other;
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
