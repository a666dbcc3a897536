#include "plotkit/layout/PlotReduction.h"

#include "plotkit/raster/PolylineRasteriser.h"
#include "tests/plotkit/layout/SeriesBuilder.h"

#include <QtGui/QImage>
#include <gtest/gtest.h>

#include <algorithm>
#include <cmath>
#include <functional>
#include <limits>
#include <random>
#include <string>

// A reduced plot is right when its picture is the one that drawing every point gives; both are drawn by the same
// rasteriser and compared.

namespace {

using namespace plotkit;

constexpr int kWidth = 300;
constexpr int kHeight = 160;
constexpr float kNan = std::numeric_limits<float>::quiet_NaN();

class PlotReductionTest : public testing::Test {
protected:
    PlotReductionTest() { view.area = QRectF(0, 0, kWidth, kHeight); }

    void show(const CPTPlotRange& x, const CPTPlotRange& y)
    {
        view.xRange = x;
        view.yRange = y;
    }

    QImage drawn(std::span<const QPointF> points, std::span<const std::size_t> partEnds)
    {
        QImage image(kWidth, kHeight, QImage::Format_ARGB32_Premultiplied);
        image.fill(Qt::transparent);
        PolylineRasteriser rasteriser;
        rasteriser.stroke({reinterpret_cast<quint32*>(image.bits()), kWidth, kHeight, image.bytesPerLine() / 4},
                          {points, partEnds}, 3, Qt::white, image.rect());
        return image;
    }

    QImage everyPointDrawn()
    {
        std::vector<QPointF> points;
        for (std::size_t element = 0; element < builder.x().size(); ++element) {
            const double y = static_cast<double>(builder.y()[element]);
            if (builder.isPoint(element) && std::isfinite(y))
                points.emplace_back((builder.x()[element] - view.xRange.location) / view.xRange.length * kWidth,
                                    kHeight - (y - view.yRange.location) / view.yRange.length * kHeight);
        }
        const std::vector<std::size_t> ends{points.size()};
        return drawn(points, ends);
    }

    void expectSamePicture()
    {
        const ReducedPlot plot = reducePlot(*builder.series(), view);
        const QImage reduced = drawn(plot.points, plot.partEnds);
        const QImage every = everyPointDrawn();
        int touched = 0, sum = 0, far = 0;
        for (int y = 0; y < kHeight; ++y) {
            for (int x = 0; x < kWidth; ++x) {
                const int a = qAlpha(reduced.pixel(x, y));
                const int b = qAlpha(every.pixel(x, y));
                touched += a != 0 || b != 0 ? 1 : 0;
                sum += std::abs(a - b);
                far += std::abs(a - b) > 128 ? 1 : 0;
            }
        }
        EXPECT_LE(sum, 4 * touched) << "mean over " << touched;
        EXPECT_LE(far * 200, touched);
        for (const QPointF& point : plot.points)
            ASSERT_TRUE(std::isfinite(point.x()) && std::isfinite(point.y()));
    }

    ReducedPlot reduced() { return reducePlot(*builder.series(), view); }

    void addWalk(int count, double step, unsigned seed, std::function<double(int)> time)
    {
        std::mt19937 random(seed);
        std::normal_distribution<double> change(0, step);
        double y = 0;
        for (int index = 0; index < count; ++index) {
            y = y * 0.999 + change(random);
            builder.add(time(index), static_cast<float>(y));
        }
    }

    SeriesBuilder builder;
    PlotView view;
};

TEST_F(PlotReductionTest, ADenseWalkLooksTheSameAtEveryZoom)
{
    addWalk(200000, 1, 1, [](int index) { return 1.4e9 + index; });
    for (const double length : {2e5, 9e4, 2.1e4, 5003.3, 700.7, 90.1, 3.3, 0.4})
        for (const double start : {1.4e9 - 11.3, 1.4e9 + 5e4 + 0.37, 1.4e9 + 190e3}) {
            SCOPED_TRACE(std::to_string(start) + " + " + std::to_string(length));
            show({start, length}, {-60, 120});
            expectSamePicture();
        }
}

TEST_F(PlotReductionTest, NoiseLooksTheSame)
{
    std::mt19937 random(2);
    std::normal_distribution<float> value(0, 10);
    for (int index = 0; index < 60000; ++index)
        builder.add(index, value(random));
    for (const double length : {60000.0, 12000.0, 2500.0, 400.0}) {
        show({100, length}, {-50, 100});
        expectSamePicture();
    }
}

TEST_F(PlotReductionTest, UnevenTimesWithGapsAndRepeatsLookTheSame)
{
    std::mt19937 random(3);
    double time = 0;
    std::normal_distribution<float> change(0, 2);
    float y = 0;
    for (int index = 0; index < 80000; ++index) {
        if (random() % 3000 == 0)
            time += 5000;
        if (random() % 4 != 0)
            time += (index / 10000) % 2 == 0 ? 0.01 : 1;
        y = y * 0.999F + change(random);
        builder.add(time, y, random() % 500 != 0);
    }
    for (const double length : {time, time / 7, time / 50, time / 900}) {
        for (const double share : {0.0, 0.31, 0.77}) {
            SCOPED_TRACE(std::to_string(length) + " from " + std::to_string(share));
            show({share * time, length}, {-100, 200});
            expectSamePicture();
        }
    }
}

TEST_F(PlotReductionTest, LongDropOutsAreBridgedAtTheRightSlope)
{
    for (int index = 0; index < 100000; ++index)
        builder.add(index, static_cast<float>(40 * std::sin(index * 0.0003)), (index / 9000) % 3 == 0);
    for (const double length : {100000.0, 30000.0, 6000.0})
        for (const double start : {0.0, 8000.0, 15000.0}) {
            show({start, length}, {-50, 100});
            expectSamePicture();
        }
}

TEST_F(PlotReductionTest, ABurstBetweenLongLinesKeepsBothSlopes)
{
    std::mt19937 random(8);
    builder.add(0, 0);
    for (int index = 0; index < 5000; ++index)
        builder.add(500 + index * 0.0001, static_cast<float>(random() % 90));
    builder.add(1000, 100);
    show({0, 1000}, {-10, 120});
    expectSamePicture();
}

TEST_F(PlotReductionTest, ASpikeOneSampleWideIsNeverLost)
{
    for (int index = 0; index < 1000000; ++index)
        builder.add(index, index == 654321 ? 100.0F : 0.0F);
    show({0, 1e6}, {-10, 120});
    const ReducedPlot plot = reduced();
    const auto top = std::min_element(plot.points.begin(), plot.points.end(),
                                      [](const QPointF& a, const QPointF& b) { return a.y() < b.y(); });
    EXPECT_NEAR(top->y(), kHeight - 110.0 / 120 * kHeight, 0.001);
    EXPECT_NEAR(top->x(), 0.654321 * kWidth, 0.25);
}

TEST_F(PlotReductionTest, TheWorkIsBoundedByThePixels)
{
    addWalk(300000, 1, 4, [](int index) { return index * 0.5; });
    show({0, 150000}, {-60, 120});
    EXPECT_LE(reduced().points.size(), static_cast<std::size_t>((kWidth + 64) * 6 * 4));
    view.columnsPerPixel = 1;
    EXPECT_LE(reduced().points.size(), static_cast<std::size_t>((kWidth + 64) * 4));
}

TEST_F(PlotReductionTest, ASparseViewGivesThePointsThemselves)
{
    builder.add(0, 0);
    builder.add(50, 10);
    builder.add(100, 5);
    show({0, 100}, {0, 16});
    const ReducedPlot plot = reduced();
    EXPECT_EQ(plot.points, (std::vector<QPointF>{{0, 160}, {150, 60}, {300, 110}}));
    EXPECT_EQ(plot.partEnds, std::vector<std::size_t>{3});
}

TEST_F(PlotReductionTest, NeighboursOutsideTheViewLeadTheLineInAndOut)
{
    builder.add(-1000, -1000);
    builder.add(1000, 1000);
    show({0, 30}, {0, 16});
    const ReducedPlot plot = reduced();
    ASSERT_EQ(plot.points.size(), 2U);
    for (const QPointF& point : plot.points)
        EXPECT_NEAR(160 - point.x(), point.y(), 1e-6);
    EXPECT_LT(plot.points.front().x(), 0);
    EXPECT_GT(plot.points.back().x(), 160);
}

TEST_F(PlotReductionTest, ValuesFarOutsideKeepTheSlope)
{
    for (int index = 0; index < 400; ++index)
        builder.add(index, index % 2 == 0 ? -3e7F : 3e7F + static_cast<float>(index));
    for (const double length : {400.0, 20.0, 2.0}) {
        show({100.3, length}, {-8, 16});
        expectSamePicture();
    }
}

TEST_F(PlotReductionTest, ALineThatLeavesAndComesBackStaysOnePart)
{
    addWalk(3000, 5, 6, [](int index) { return index; });
    show({0, 3000}, {-3, 6});
    EXPECT_EQ(reduced().partEnds.size(), 1U);
    expectSamePicture();
}

TEST_F(PlotReductionTest, AReversedRangeMirrors)
{
    addWalk(50000, 1, 7, [](int index) { return index; });
    for (const double length : {50000.0, 3000.0, 60.0}) {
        show({length + 200, -length}, {60, -120});
        expectSamePicture();
    }
}

TEST_F(PlotReductionTest, UnsortedTimesAreWalked)
{
    std::mt19937 random(9);
    for (int index = 0; index < 300; ++index)
        builder.add(random() % 1000, static_cast<float>(random() % 100));
    show({100, 700}, {20, 60});
    expectSamePicture();
}

TEST_F(PlotReductionTest, AnUnsortedLineOutsideTheViewIsNotJoinedThroughIt)
{
    builder.add(50, 50);
    builder.add(50, 300);
    builder.add(300, 300);
    builder.add(300, 40);
    builder.add(60, 40);
    show({0, 100}, {0, 100});
    expectSamePicture();
    EXPECT_EQ(reduced().partEnds.size(), 2U);
}

TEST_F(PlotReductionTest, ASinglePointIsADot)
{
    builder.add(50, 8);
    show({0, 100}, {0, 16});
    const ReducedPlot plot = reduced();
    EXPECT_EQ(plot.points, (std::vector<QPointF>{{150, 80}}));
    EXPECT_EQ(qAlpha(drawn(plot.points, plot.partEnds).pixel(150, 80)), 255);
}

TEST_F(PlotReductionTest, RepeatedPointsAreADotToo)
{
    for (int index = 0; index < 5000; ++index)
        builder.add(50, 8);
    show({0, 100}, {0, 16});
    EXPECT_EQ(reduced().points, (std::vector<QPointF>{{150, 80}}));
}

TEST_F(PlotReductionTest, ValuesThatAreNotFiniteArePassedOver)
{
    builder.add(0, 0);
    builder.add(20, kNan);
    builder.add(30, std::numeric_limits<float>::infinity());
    builder.add(100, 10);
    show({0, 100}, {0, 16});
    EXPECT_EQ(reduced().points, (std::vector<QPointF>{{0, 160}, {300, 60}}));
}

TEST_F(PlotReductionTest, TimesThatAreNotFiniteArePassedOver)
{
    builder.add(0, 0);
    builder.add(std::nan(""), 5);
    builder.add(100, 10);
    show({0, 100}, {0, 16});
    EXPECT_EQ(reduced().points, (std::vector<QPointF>{{0, 160}, {300, 60}}));
}

TEST_F(PlotReductionTest, ARangeWithoutLengthPlacesEverythingInTheMiddle)
{
    builder.add(0, 4);
    builder.add(100, 8);
    for (const double length : {0.0, std::nan(""), std::numeric_limits<double>::infinity()}) {
        show({0, length}, {0, 16});
        EXPECT_EQ(reduced().points, (std::vector<QPointF>{{150, 80}, {150, 120}}));
    }
    show({0, 100}, {5, 0});
    EXPECT_EQ(reduced().points, (std::vector<QPointF>{{0, 80}, {300, 80}}));
}

TEST_F(PlotReductionTest, NothingToShowIsAnEmptyPlot)
{
    show({0, 100}, {0, 16});
    EXPECT_TRUE(reduced().isEmpty());
    builder.add(50, 8, false);
    builder.add(50, kNan);
    EXPECT_TRUE(reduced().isEmpty());
    builder.add(50, 8);
    EXPECT_FALSE(reduced().isEmpty());
    view.area = QRectF(0, 0, 0, 100);
    EXPECT_TRUE(reduced().isEmpty());
    view.area = QRectF(0, 0, std::nan(""), 100);
    EXPECT_TRUE(reduced().isEmpty());
}

TEST_F(PlotReductionTest, APlotBesideTheViewIsEmpty)
{
    for (int index = 0; index < 10; ++index)
        builder.add(index, 3);
    show({1000, 100}, {0, 16});
    EXPECT_TRUE(reduced().isEmpty());
}

TEST_F(PlotReductionTest, RangesAtTheLimitsOfNumbersStayFinite)
{
    addWalk(20000, 1, 10, [](int index) { return 1.7e9 + index; });
    const double huge = std::numeric_limits<double>::max();
    const double tiny = std::numeric_limits<double>::denorm_min();
    for (const double length : {huge, -huge, tiny, 1e-9, 1e300})
        for (const double start : {0.0, 1.7e9, -huge, 1.7e9 + 10000}) {
            show({start, length}, {start, length});
            for (const QPointF& point : reduced().points)
                ASSERT_TRUE(std::isfinite(point.x()) && std::isfinite(point.y()));
        }
}

TEST_F(PlotReductionTest, TheSamePlotComesOutOfUsedMemory)
{
    addWalk(20000, 1, 11, [](int index) { return index; });
    show({0, 20000}, {-60, 120});
    ReducedPlot plot = reduced();
    const std::vector<QPointF> first = plot.points;
    reducePlotInto(plot, *builder.series(), view);
    EXPECT_EQ(plot.points, first);
}

}  // namespace
