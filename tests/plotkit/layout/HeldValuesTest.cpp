#include "plotkit/layout/PlotReduction.h"
#include "tests/plotkit/layout/LinePictureTest.h"

#include <cmath>
#include <random>
#include <string>

// A line that holds each value until the next point is right when its picture is that of every step drawn by itself:
// by columns, by points, mirrored, and where it breaks at gaps.

namespace {

using namespace plotkit;

constexpr double kPen = 3;

class HeldValuesTest : public LinePictureTest {
protected:
    HeldValuesTest()
    {
        view.yRange = {-60, 120};
        view.holdsValues = true;
    }

    /// A value that changes now and then, sampled every second; `pause` seconds without samples after each stretch.
    void addSteps(int stretches, int samples, double pause, unsigned seed = 1)
    {
        std::mt19937 random(seed);
        float y = 0;
        for (int stretch = 0; stretch < stretches; ++stretch) {
            for (int sample = 0; sample < samples; ++sample, ++m_time) {
                if (random() % 700 == 0)
                    y = static_cast<float>(random() % 100) - 50;
                builder.add(m_time, y, random() % 50 != 0);
            }
            m_time += pause;
        }
    }
    /// Few changes far apart, at odd times.
    void addSparse(int count, unsigned seed = 2)
    {
        std::mt19937 random(seed);
        for (int index = 0; index < count; ++index) {
            builder.add(m_time, static_cast<float>(random() % 100) - 50);
            m_time += 1 + random() % 5000;
        }
    }
    void show(const CPTPlotRange& x, double threshold = std::numeric_limits<double>::infinity())
    {
        view.xRange = x;
        view.gap = std::max(threshold, std::abs(x.length) / kWidth);
    }

    QImage everyStepDrawn()
    {
        QImage image = emptyImage();
        std::vector<QPointF> line;
        double last = 0;
        const auto finish = [&] {
            const std::vector<std::size_t> ends{line.size()};
            if (!line.empty())
                rasteriser.stroke(bufferOf(image), PolylineSet{line, ends}, kPen, Qt::white, image.rect());
            line.clear();
        };
        for (std::size_t element = 0; element < builder.x().size(); ++element) {
            if (!builder.isPoint(element))
                continue;
            if (!line.empty() && builder.x()[element] - last > view.gap)
                finish();
            const QPointF place = placeOf(element);
            if (!line.empty())
                line.emplace_back(place.x(), line.back().y());
            line.push_back(place);
            last = builder.x()[element];
        }
        finish();
        return image;
    }
    QImage columnsDrawn()
    {
        QImage image = emptyImage();
        EXPECT_TRUE(enveloping.envelopeInto(envelope, *series(), view, 0, PlotEnveloping::kAnyPoints));
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
    void expectSameBothWays()
    {
        const QImage expected = everyStepDrawn();
        // The upright edges of steps stand in columns: on the average a fiftieth of a pixel off.
        expectSame(columnsDrawn(), expected, 1000, 6);
        expectSame(pointsDrawn(), expected, 1000, 6);
    }

private:
    double m_time = 0;
};

TEST_F(HeldValuesTest, CrowdedStepsAreThoseOfEveryPoint)
{
    addSteps(1, 200000, 0);
    for (const double length : {200e3, 61e3, 11e3, 900.0})
        for (const double start : {0.0, 40e3 + 0.37, 150e3}) {
            SCOPED_TRACE(std::to_string(start) + " + " + std::to_string(length));
            show({start, length});
            expectSameBothWays();
        }
}

TEST_F(HeldValuesTest, FewStepsAreThoseOfEveryPoint)
{
    addSparse(60);
    for (const double length : {170e3, 20e3, 3e3}) {
        show({40e3 + 0.37, length});
        expectSameBothWays();
    }
}

TEST_F(HeldValuesTest, AHeldValueEndsAtTheGap)
{
    addSteps(20, 5000, 3000);
    for (const double length : {160e3, 31e3}) {
        show({1000, length}, 60);
        expectSameBothWays();
    }
    EXPECT_GT(envelope.partEnds.size(), 1U);
}

TEST_F(HeldValuesTest, TheSameMirrored)
{
    addSteps(6, 20000, 3000);
    show({130e3, -130e3}, 60);
    expectSameBothWays();
    show({70e3, -20e3}, 60);
    expectSameBothWays();
}

TEST_F(HeldValuesTest, AValueIsHeldFromBesideTheView)
{
    builder.add(0, 30);
    builder.add(1000, -30);
    show({200, 300});
    const QImage picture = pointsDrawn();
    EXPECT_EQ(picture, everyStepDrawn());
    const int row = static_cast<int>((60.0 - 30) / 120 * kHeight);
    EXPECT_EQ(qAlpha(picture.pixel(kWidth / 2, row)), 255);
    expectSame(columnsDrawn(), picture, 300);
}

TEST_F(HeldValuesTest, APanDrawsTheSameSteps)
{
    addSteps(10, 20000, 4000);
    for (int step = 0; step < 12; ++step) {
        show({step * 533.0, 160e3}, 60);
        expectSameBothWays();
    }
}

}  // namespace
