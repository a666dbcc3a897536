#include "plotkit/layout/FrameParts.h"
#include "plotkit/layout/PlotEnvelope.h"
#include "plotkit/model/CPTSeriesRuns.h"
#include "tests/plotkit/model/PagedSeriesFixture.h"

#include <gtest/gtest.h>

#include <algorithm>

// The envelope that runs alone tell covers the line, and has no value that they have not.

namespace {

using namespace plotkit;
using namespace plotkit_test;

constexpr double kWidth = 120;   // pixels
constexpr double kHeight = 200;  // the values' range, turned upside down

class RunsAloneTest : public PagedSeriesFixture {
protected:
    RunsAloneTest() : PagedSeriesFixture(5) {}

    PlotView someView()
    {
        constexpr double kShares[] = {1.1, 0.3, 0.1, 0.01, 1e-3, 1e-4};
        const double length = twin.x().back() - twin.x().front();
        const double share = kShares[random() % 6];
        PlotView view;
        view.xRange = {twin.x().front() + static_cast<double>(random() % 1000) / 1000 * (1 - share) * length,
                       share * length};
        view.yRange = {-kHeight / 2, kHeight};
        view.area = QRectF(0, 0, kWidth, kHeight);
        view.margin = 2;
        if (random() % 3 == 0)
            view.xRange = {view.xRange.maxLimit(), -view.xRange.length};
        return view;
    }
    PlotEnvelope& enveloped(const PlotView& view)
    {
        EXPECT_TRUE(enveloping.envelopeInto(envelope, *paged, view, 0));
        return envelope;
    }
    double yOf(double value) const { return kHeight / 2 - value; }
    std::size_t columnOf(double x, const PlotView& view) const
    {
        const double pixel = (x - view.xRange.location) / view.xRange.length * kWidth;
        return static_cast<std::size_t>((pixel - envelope.left) * PlotEnvelope::kColumnsPerPixel);
    }
    bool isInView(double x, const PlotView& view) const
    {
        return x > view.xRange.minLimit() && x < view.xRange.maxLimit();
    }

    PlotEnveloping enveloping{PlotReading::RunsAlone};
    PlotEnvelope envelope;
};

TEST_F(RunsAloneTest, CoverEveryPointWithoutALook)
{
    make({.longestRun = 3000, .dropped = 0.1, .gap = 1e-4});
    for (int frame = 0; frame < 40; ++frame) {
        const PlotView view = someView();
        const PlotEnvelope& drawn = enveloped(view);
        for (std::size_t element = 0; element < twin.size(); ++element) {
            if (!resident->isPoint(element) || !isInView(twin.x()[element], view))
                continue;
            // One that stands on an edge may be in either column.
            const std::size_t column = columnOf(twin.x()[element], view);
            const double y = yOf(resident->y()[element]);
            const float low = std::min({drawn.low[column - 1], drawn.low[column], drawn.low[column + 1]});
            const float high = std::max({drawn.high[column - 1], drawn.high[column], drawn.high[column + 1]});
            ASSERT_LE(low, y + 1e-3) << element;
            ASSERT_GE(high, y - 1e-3) << element;
        }
    }
    EXPECT_EQ(looksSinceMade(), 0U);
}

TEST_F(RunsAloneTest, HaveNoValueBeyondTheRunsInView)
{
    make({.longestRun = 3000, .gap = 1e-4});
    const CPTSeriesRuns& runs = *paged->runs();
    for (int frame = 0; frame < 40; ++frame) {
        const PlotView view = someView();
        const PlotEnvelope& drawn = enveloped(view);
        const double beside = view.xRange.length / kWidth * 3;  // pixels: the margin, and where lines go on to
        const std::size_t first = runs.runFromTime(view.xRange.minLimit() - std::abs(beside));
        const std::size_t end = runs.runFromTime(view.xRange.maxLimit() + std::abs(beside));
        const CPTMinMax all = runs.minMax(first > 0 ? first - 1 : 0, std::min(end + 1, runs.count()));
        EXPECT_GE(*std::min_element(drawn.low.begin(), drawn.low.end()), yOf(all.max) - 1e-3);
        for (const float high : drawn.high)
            ASSERT_LE(high, yOf(all.min) + 1e-3);
    }
}

TEST_F(RunsAloneTest, AColumnHasNoMoreThanTheRunsAtIt)
{
    TwinSeries steps;
    for (int second = 0; second < 100'000; ++second)
        steps.add(second, second / 10'000 * 10 + second % 2);
    steps.cutRuns(1000, 3);
    take(std::move(steps));
    PlotView view;
    view.xRange = {0, 100'000};
    view.yRange = {-kHeight / 2, kHeight};
    view.area = QRectF(0, 0, kWidth, kHeight);
    const PlotEnvelope& drawn = enveloped(view);
    const std::size_t column = columnOf(35'000, view);  // far from where values change
    EXPECT_NEAR(drawn.low[column], yOf(31), 1e-3);
    EXPECT_NEAR(drawn.high[column], yOf(30), 1e-3);
}

TEST_F(RunsAloneTest, NothingIsHeldForBinsThatAreKept)
{
    make({.isRegular = true});
    PlotEnveloping exact;
    PlotView view = someView();
    view.xRange = {twin.x().front(), 20'000};
    SeriesParts before, after;
    ASSERT_TRUE(exact.addPartsHeld(before, paged, view, 0));
    ASSERT_TRUE(exact.envelopeInto(envelope, *paged, view, 0));
    ASSERT_TRUE(exact.addPartsHeld(after, paged, view, 0));
    EXPECT_EQ(before.size(), 1U);
    EXPECT_TRUE(after.empty());
}

}  // namespace
