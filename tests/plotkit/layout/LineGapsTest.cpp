#include "plotkit/layout/PlotReduction.h"
#include "tests/plotkit/layout/LinePictureTest.h"

#include <cmath>
#include <random>
#include <string>

// A line that breaks at gaps is right when its picture is that of each stretch drawn by itself, at every zoom: by
// columns, by points, and mirrored.

namespace {

using namespace plotkit;

constexpr double kPen = 3;

class LineGapsTest : public LinePictureTest {
protected:
    LineGapsTest() { view.yRange = {-60, 120}; }

    /// Stretches of a walk, one sample a second, each at a height of its own; `pause` seconds between them.
    void addStretches(int stretches, int samples, double pause, unsigned seed = 1)
    {
        std::mt19937 random(seed);
        std::normal_distribution<float> change(0, 1);
        for (int stretch = 0; stretch < stretches; ++stretch) {
            float y = stretch % 2 == 0 ? 30 : -30;
            for (int sample = 0; sample < samples; ++sample, ++m_time)
                builder.add(m_time, y += change(random) * 0.2F);
            m_time += pause - 1;
        }
    }
    /// The gap of a view: `threshold`, but at least a pixel.
    void show(const CPTPlotRange& x, double threshold)
    {
        view.xRange = x;
        view.gap = std::max(threshold, std::abs(x.length) / kWidth);
    }

    /// Every point, each stretch between gaps as a line of its own.
    QImage stretchesDrawn()
    {
        QImage image = emptyImage();
        std::vector<QPointF> stretch;
        double last = 0;
        const auto finish = [&] {
            const std::vector<std::size_t> ends{stretch.size()};
            if (!stretch.empty())
                rasteriser.stroke(bufferOf(image), PolylineSet{stretch, ends}, kPen, Qt::white, image.rect());
            stretch.clear();
        };
        for (std::size_t element = 0; element < builder.x().size(); ++element) {
            if (!builder.isPoint(element))
                continue;
            if (!stretch.empty() && builder.x()[element] - last > view.gap)
                finish();
            last = builder.x()[element];
            stretch.push_back(placeOf(element));
        }
        finish();
        return image;
    }
    QImage columnsDrawn()
    {
        QImage image = emptyImage();
        EXPECT_TRUE(enveloping.envelopeInto(envelope, *series(), view, 0));
        rasteriser.stroke(bufferOf(image),
                          LineColumns{envelope.left, envelope.atLeft, envelope.atRight, envelope.low, envelope.high,
                                      envelope.partEnds},
                          kPen, Qt::white, image.rect());
        return image;
    }
    QImage pointsDrawn()
    {
        QImage image = emptyImage();
        const ReducedPlot reduced = reducePlot(*series(), view);
        rasteriser.stroke(bufferOf(image), PolylineSet{reduced.points, reduced.partEnds}, kPen, Qt::white,
                          image.rect());
        return image;
    }

    static void expectSame(const QImage& drawn, const QImage& expected)
    {
        LinePictureTest::expectSame(drawn, expected, 400);
    }

private:
    double m_time = 0;
};

TEST_F(LineGapsTest, StretchesStandApartAtEveryZoom)
{
    addStretches(40, 5000, 3000);
    for (const double length : {320e3, 130e3, 61e3, 17e3})
        for (const double start : {0.0, 40e3 + 0.37, 150e3}) {
            SCOPED_TRACE(std::to_string(start) + " + " + std::to_string(length));
            show({start, length}, 60);
            expectSame(columnsDrawn(), stretchesDrawn());
            expectSame(pointsDrawn(), stretchesDrawn());
        }
}

TEST_F(LineGapsTest, GapsOfTwoPixelsAreNotBridged)
{
    addStretches(30, 20000, 2 * 700);
    show({0, 210e3}, 60);
    ASSERT_EQ(view.gap, 700);
    expectSame(columnsDrawn(), stretchesDrawn());
    expectSame(pointsDrawn(), stretchesDrawn());
    EXPECT_EQ(envelope.partEnds.size(), 11U);
}

TEST_F(LineGapsTest, AGapNarrowerThanAPixelIsBridged)
{
    addStretches(30, 20000, 500);
    show({0, 210e3}, 60);
    expectSame(columnsDrawn(), stretchesDrawn());
    EXPECT_EQ(envelope.partEnds.size(), 1U);
}

TEST_F(LineGapsTest, TheSameMirrored)
{
    addStretches(20, 5000, 3000);
    show({160e3, -160e3}, 60);
    expectSame(columnsDrawn(), stretchesDrawn());
    show({70e3, -50e3}, 60);
    expectSame(columnsDrawn(), stretchesDrawn());
}

TEST_F(LineGapsTest, WhatLiesBesideTheViewIsNotJoinedAcrossAGap)
{
    addStretches(3, 60000, 50000);
    show({40e3, 80e3}, 60);  // the end of the first stretch, and the beginning of the second beyond a gap
    expectSame(columnsDrawn(), stretchesDrawn());
    show({70e3, 30e3}, 60);  // nothing but the gap
    EXPECT_EQ(pointsDrawn(), emptyImage());
}

TEST_F(LineGapsTest, ALoneSampleIsADot)
{
    addStretches(1, 1, 1000);
    addStretches(1, 1, 1000);
    addStretches(1, 100, 1);
    show({-100, 2500}, 60);
    const ReducedPlot reduced = reducePlot(*series(), view);
    ASSERT_EQ(reduced.partEnds.size(), 3U);
    EXPECT_EQ(reduced.partEnds[0], 1U);
    EXPECT_EQ(reduced.partEnds[1], 2U);
    expectSame(pointsDrawn(), stretchesDrawn());
}

TEST_F(LineGapsTest, DroppedElementsMakeAGapToo)
{
    for (int second = 0; second < 90000; ++second)
        builder.add(second, second < 40000 ? 20 : -20, second < 40000 || second >= 50000);
    show({0, 90000}, 60);
    expectSame(columnsDrawn(), stretchesDrawn());
    EXPECT_EQ(envelope.partEnds.size(), 2U);
}

TEST_F(LineGapsTest, WithoutAThresholdEverythingIsJoined)
{
    addStretches(4, 20000, 20000);
    view.xRange = {0, 160e3};
    columnsDrawn();
    EXPECT_EQ(envelope.partEnds.size(), 1U);
    EXPECT_EQ(reducePlot(*series(), view).partEnds.size(), 1U);
}

TEST_F(LineGapsTest, APanDrawsTheSameGaps)
{
    addStretches(40, 5000, 3000);
    for (int step = 0; step < 20; ++step) {
        show({step * 533.0, 160e3}, 60);
        expectSame(columnsDrawn(), stretchesDrawn());
    }
}

}  // namespace
