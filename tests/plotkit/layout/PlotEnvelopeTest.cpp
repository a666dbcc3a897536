#include "plotkit/layout/PlotEnvelope.h"

#include "tests/plotkit/layout/LinePictureTest.h"

#include <algorithm>
#include <cmath>
#include <limits>
#include <random>
#include <string>

// An envelope is right when its picture is the one that drawing every point gives.

namespace {

using namespace plotkit;

class PlotEnvelopeTest : public LinePictureTest {
protected:
    void show(const CPTPlotRange& x, const CPTPlotRange& y)
    {
        view.xRange = x;
        view.yRange = y;
    }

    void addWalk(int count, double step, unsigned seed)
    {
        std::mt19937 random(seed);
        std::normal_distribution<double> change(0, step);
        double y = 0;
        for (int index = 0; index < count; ++index)
            builder.add(1.4e9 + index, static_cast<float>(y = y * 0.999 + change(random)));
    }

    bool makeEnvelope() { return enveloping.envelopeInto(envelope, *series(), view, 0); }

    QImage envelopeDrawn(double width = 3)
    {
        QImage image = emptyImage();
        rasteriser.stroke(bufferOf(image),
                          LineColumns{envelope.left, envelope.atLeft, envelope.atRight, envelope.low, envelope.high},
                          width, Qt::white, image.rect());
        return image;
    }

    QImage pointsDrawn(double width, std::size_t step)
    {
        std::vector<QPointF> points;
        for (std::size_t element = 0; element < builder.x().size(); element += step) {
            if (builder.isPoint(element) && std::isfinite(builder.y()[element]))
                points.push_back(placeOf(element));
        }
        QImage image = emptyImage();
        const std::vector<std::size_t> ends{points.size()};
        rasteriser.stroke(bufferOf(image), PolylineSet{points, ends}, width, Qt::white, image.rect());
        return image;
    }

    /// `step`: a smooth curve is drawn most exactly through some of its points.
    void expectSamePicture(double width = 3, std::size_t step = 1)
    {
        ASSERT_TRUE(makeEnvelope());
        expectSame(envelopeDrawn(width), pointsDrawn(width, step), 200);
    }

    /// A walk with gaps, times that repeat and jump, dropped elements and values that are not finite.
    void addBrokenWalk(int count, unsigned seed)
    {
        std::mt19937 random(seed);
        std::normal_distribution<float> change(0, 2);
        double time = 0;
        float y = 0;
        for (int index = 0; index < count; ++index) {
            time += random() % 20000 == 0 ? 9000 : random() % 5 == 0 ? 0 : random() % 40 == 0 ? 7 : 1;
            y = y * 0.999F + change(random);
            const bool isSpike = random() % 9000 == 0;
            const bool isBroken = random() % 3000 == 0;
            builder.add(time,
                        isBroken  ? std::nanf("")
                        : isSpike ? 150
                                  : y,
                        (index / 30000) % 3 != 2 || random() % 700 != 0);
        }
    }

    /// Every sample in view lies in its column's extent or, near an edge, in the next one's.
    void expectEverySampleInItsColumn()
    {
        ASSERT_TRUE(makeEnvelope());
        const double pixels = kWidth / view.xRange.length;
        const auto columns = static_cast<std::ptrdiff_t>(envelope.low.size());
        for (std::size_t element = 0; element < builder.x().size(); ++element) {
            const double y = static_cast<double>(builder.y()[element]);
            const double x = (builder.x()[element] - view.xRange.location) * pixels;
            if (!builder.isPoint(element) || !std::isfinite(y) || x < 0 || x >= kWidth)
                continue;
            const double place = kHeight - (y - view.yRange.location) / view.yRange.length * kHeight;
            const double column = (x - envelope.left) * PlotEnvelope::kColumnsPerPixel;
            const auto near = [&](double shift) {
                const auto at = static_cast<std::size_t>(std::clamp<std::ptrdiff_t>(
                    static_cast<std::ptrdiff_t>(std::floor(column + shift)), 0, columns - 1));
                return place >= static_cast<double>(envelope.low[at]) - 1e-3 &&
                       place <= static_cast<double>(envelope.high[at]) + 1e-3;
            };
            ASSERT_TRUE(near(0) || near(-0.26) || near(0.26)) << element << " at " << x << ", " << place;
        }
    }
};

TEST_F(PlotEnvelopeTest, ADenseWalkLooksTheSameAtEveryZoom)
{
    addWalk(400000, 1, 1);
    for (const double length : {4e5, 9e4, 2.1e4})
        for (const double start : {1.4e9 - 11.3, 1.4e9 + 5e4 + 0.37, 1.4e9 + 370e3}) {
            SCOPED_TRACE(std::to_string(start) + " + " + std::to_string(length));
            show({start, length}, {-60, 120});
            expectSamePicture();
        }
}

TEST_F(PlotEnvelopeTest, ASmoothCurveOfManyPointsKeepsItsWidth)
{
    for (int index = 0; index < 100000; ++index)
        builder.add(index, static_cast<float>(40 * std::sin(index * 0.0003)));
    for (const double length : {1e5, 3e4, 1.3e4}) {
        show({0, length}, {-50, 100});
        expectSamePicture(3, 50);
    }
}

TEST_F(PlotEnvelopeTest, NoiseLooksTheSameWithEveryPen)
{
    std::mt19937 random(2);
    std::normal_distribution<float> value(0, 10);
    for (int index = 0; index < 60000; ++index)
        builder.add(index, value(random));
    show({100, 59000}, {-50, 100});
    for (const double width : {1.0, 1.3, 2.0, 3.0, 6.5, 24.0}) {
        SCOPED_TRACE(width);
        expectSamePicture(width);
    }
}

TEST_F(PlotEnvelopeTest, GapsAndDropOutsAreBridgedAtTheRightSlope)
{
    std::mt19937 random(3);
    double time = 0;
    float y = 0;
    std::normal_distribution<float> change(0, 2);
    for (int index = 0; index < 80000; ++index) {
        if (random() % 3000 == 0)
            time += 5000;
        if (random() % 4 != 0)
            time += 1;
        y = y * 0.999F + change(random);
        builder.add(time, y, (index / 5000) % 4 != 2 && random() % 500 != 0);
    }
    for (const double share : {0.0, 0.31}) {
        show({share * time, time * 0.6}, {-100, 200});
        expectSamePicture();
    }
}

TEST_F(PlotEnvelopeTest, ALineThatBeginsAndEndsInTheViewIsNotProlonged)
{
    addWalk(20000, 1, 5);
    show({1.4e9 - 10000, 40000}, {-60, 120});
    expectSamePicture();
}

TEST_F(PlotEnvelopeTest, AReversedRangeMirrors)
{
    addWalk(50000, 1, 7);
    show({1.4e9 + 50200, -50000}, {60, -120});
    expectSamePicture();
}

TEST_F(PlotEnvelopeTest, ValuesFarOutsideKeepTheSlope)
{
    for (int index = 0; index < 40000; ++index)
        builder.add(index, index % 2000 == 0 ? 3e7F : -1e-3F * static_cast<float>(index % 2000));
    show({100.3, 39000}, {-8, 16});
    expectSamePicture();
}

TEST_F(PlotEnvelopeTest, ASpikeOneSampleWideIsNeverLost)
{
    for (int index = 0; index < 1000000; ++index)
        builder.add(index, index == 654321 ? 100.0F : 0.0F);
    show({0, 1e6}, {-10, 120});
    ASSERT_TRUE(makeEnvelope());
    const auto top = std::min_element(envelope.low.begin(), envelope.low.end());
    EXPECT_NEAR(*top, kHeight - 110.0 / 120 * kHeight, 0.001);
    EXPECT_NEAR(envelope.left + static_cast<double>(top - envelope.low.begin()) / PlotEnvelope::kColumnsPerPixel,
                0.654321 * kWidth, 0.25);
    EXPECT_EQ(qAlpha(envelopeDrawn().pixel(static_cast<int>(0.654321 * kWidth), 15)), 255);
}

TEST_F(PlotEnvelopeTest, APannedPictureIsTheOneMadeAnew)
{
    addWalk(400000, 1, 8);
    for (int step = 0; step < 40; ++step) {
        show({1.4e9 + 1e5 + (step % 2 == 0 ? 337.7 : -731.3) * step, 1e5}, {-60, 120});
        ASSERT_TRUE(makeEnvelope());
        PlotEnvelope anew;
        ASSERT_TRUE(PlotEnveloping().envelopeInto(anew, *series(), view, 0));
        EXPECT_EQ(envelope.left, anew.left);
        EXPECT_TRUE(std::ranges::equal(envelope.low, anew.low)) << "step " << step;
        EXPECT_TRUE(std::ranges::equal(envelope.high, anew.high));
    }
}

TEST_F(PlotEnvelopeTest, NoSampleIsLostAtAnyZoomForwardsOrBackwards)
{
    addBrokenWalk(1'500'000, 12);
    const double end = builder.x().back();
    for (const double share : {1.0, 0.71, 0.4, 0.19, 0.05, 0.021}) {
        SCOPED_TRACE(share);
        show({0.31 * end * (1 - share), share * end}, {-100, 300});
        expectEverySampleInItsColumn();
        show({0.31 * end * (1 - share) + share * end, -share * end}, {200, -300});
        expectEverySampleInItsColumn();
    }
}

TEST_F(PlotEnvelopeTest, NoSampleIsLostWhileThePictureIsPanned)
{
    addBrokenWalk(1'500'000, 13);
    const double end = builder.x().back();
    for (const double share : {0.5, 0.1})
        for (int step = 0; step < 12; ++step) {
            show({end * (0.2 + share * (step % 3 == 0 ? -0.043 : 0.031) * step), share * end}, {-100, 300});
            expectEverySampleInItsColumn();
        }
}

TEST_F(PlotEnvelopeTest, AZoomedPictureOfManySamplesLooksLikeAllOfThem)
{
    addBrokenWalk(1'500'000, 14);
    const double end = builder.x().back();
    for (const double share : {0.93, 0.33, 0.08}) {
        SCOPED_TRACE(share);
        show({0.05 * end, share * end}, {-100, 300});
        expectSamePicture();
    }
}

TEST_F(PlotEnvelopeTest, AnotherSeriesInTheSameSlotIsNotTakenForTheFirst)
{
    addWalk(100000, 1, 9);
    show({1.4e9, 1e5}, {-60, 120});
    ASSERT_TRUE(makeEnvelope());
    SeriesBuilder flat;
    for (int index = 0; index < 100000; ++index)
        flat.add(1.4e9 + index, 1);
    ASSERT_TRUE(enveloping.envelopeInto(envelope, *flat.series(), view, 0));
    const float lowest = *std::min_element(envelope.high.begin(), envelope.high.end());
    EXPECT_TRUE(lowest == -std::numeric_limits<float>::infinity() || std::abs(lowest - 78.6666F) < 0.01F);
    EXPECT_NEAR(*std::max_element(envelope.high.begin(), envelope.high.end()), 78.6666F, 0.01);
}

TEST_F(PlotEnvelopeTest, FewPointsAndDegenerateViewsAreLeftToThePoints)
{
    addWalk(3000, 1, 10);
    show({1.4e9, 3000}, {-60, 120});
    EXPECT_FALSE(makeEnvelope());
    const double huge = std::numeric_limits<double>::max();
    for (const double length : {0.0, std::nan(""), huge, -huge, std::numeric_limits<double>::denorm_min()}) {
        show({1.4e9, length}, {-60, 120});
        EXPECT_FALSE(makeEnvelope());
    }
    view.area = QRectF();
    EXPECT_FALSE(makeEnvelope());
}

}  // namespace
