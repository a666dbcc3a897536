#include "plotkit/layout/PlotDots.h"
#include "plotkit/layout/PlotEnvelope.h"
#include "plotkit/layout/PlotReduction.h"
#include "plotkit/model/CPTSeriesRuns.h"
#include "plotkit/model/SeriesLookup.h"
#include "plotkit/model/UsualDistance.h"
#include "tests/plotkit/model/PagedSeriesFixture.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <bit>
#include <random>

// Frames of a paged series are those of the same series in memory, with a cache that keeps nothing.

namespace {

using namespace plotkit;
using namespace plotkit_test;

constexpr double kWidth = 120;  // pixels

class PagedFramesTest : public PagedSeriesFixture {
protected:
    PagedFramesTest() : PagedSeriesFixture(3) {}

    /// A share of all times, beginning at another.
    PlotView viewOf(double share, double from) const
    {
        const double length = twin.x().back() - twin.x().front();
        PlotView view;
        view.xRange = {twin.x().front() + from * length, share * length};
        view.yRange = {-60, 120};
        view.area = QRectF(10, 5, kWidth, 200);
        view.margin = 2;
        return view;
    }
    PlotView someView()
    {
        constexpr double kShares[] = {0.1, 0.05, 0.03, 0.01, 1e-3, 1e-4, 1e-5};
        PlotView view = viewOf(kShares[random() % 7], static_cast<double>(random() % 1100) / 1000 - 0.05);
        view.holdsValues = random() % 3 == 0;
        view.gap = random() % 2 == 0 ? std::numeric_limits<double>::infinity() : view.xRange.length / kWidth;
        if (random() % 5 == 0)
            view.xRange = {view.xRange.maxLimit(), -view.xRange.length};
        return view;
    }

    static void expectSameRow(std::span<const float> one, std::span<const float> other)
    {
        ASSERT_EQ(one.size(), other.size());
        for (std::size_t column = 0; column < one.size(); ++column)
            ASSERT_EQ(std::bit_cast<std::uint32_t>(one[column]), std::bit_cast<std::uint32_t>(other[column])) << column;
    }
    void expectSameEnvelope(const PlotView& view)
    {
        PlotEnvelope one, other;
        ASSERT_EQ(ofPaged.envelopeInto(one, *paged, view, 0, PlotEnveloping::kAnyPoints),
                  ofResident.envelopeInto(other, *resident, view, 0, PlotEnveloping::kAnyPoints));
        EXPECT_EQ(one.left, other.left);
        EXPECT_EQ(one.partEnds, other.partEnds);
        expectSameRow(one.low, other.low);
        expectSameRow(one.high, other.high);
        expectSameRow(one.atLeft, other.atLeft);
        expectSameRow(one.atRight, other.atRight);
    }
    void expectSameLine(const PlotView& view)
    {
        const ReducedPlot one = reducePlot(*paged, view);
        const ReducedPlot other = reducePlot(*resident, view);
        ASSERT_EQ(one.partEnds, other.partEnds);
        ASSERT_EQ(one.points.size(), other.points.size());
        for (std::size_t point = 0; point < one.points.size(); ++point) {
            ASSERT_EQ(one.points[point].x(), other.points[point].x()) << point;
            ASSERT_EQ(one.points[point].y(), other.points[point].y()) << point;
        }
    }
    void expectSameDots(const PlotView& view)
    {
        std::vector<QPointF> one, other;
        ASSERT_EQ(PlotDots::placesInto(one, *paged, view), PlotDots::placesInto(other, *resident, view));
        ASSERT_EQ(one, other);
        const DotCells cells = dotsOfPaged.cells(*paged, view, 0);
        const DotCells others = dotsOfResident.cells(*resident, view, 0);
        ASSERT_EQ(cells.columns, others.columns);
        for (std::size_t column = 0; column < cells.columns; ++column)
            ASSERT_TRUE(std::equal(cells.column(column), cells.column(column) + cells.bytes, others.column(column)))
                << column;
    }
    void expectSameFrames(int count)
    {
        for (int frame = 0; frame < count; ++frame) {
            const PlotView view = someView();
            SCOPED_TRACE(testing::Message()
                         << "frame " << frame << ", x " << view.xRange.location << " + " << view.xRange.length);
            expectSameEnvelope(view);
            expectSameLine(view);
            expectSameDots(view);
        }
    }

    CPTMinMax extremesOfAll(std::size_t first, std::size_t end) const
    {
        CPTMinMax pair = emptyMinMax();
        for (std::size_t element = first; element < end; ++element)
            if (resident->isPoint(element) && std::isfinite(resident->y()[element]))
                pair = joined(pair, {resident->y()[element], resident->y()[element]});
        return pair;
    }
    /// Every bin of a grid over everything has the extremes of its elements, and begins within half a bin from where
    /// it should.
    void expectBinsOfAll(std::size_t bins, std::size_t leastByRuns)
    {
        const double low = twin.x().front();
        const double high = twin.x().back();
        const BinGrid grid = BinGrid::covering(low, high, (high - low) / static_cast<double>(bins), 1);
        BinEdges edges;
        edges.cover(*paged, grid);
        SeriesBins sums;
        const BinRows rows = sums.summaries(*paged, grid, edges);
        std::size_t byRuns = 0;
        for (std::size_t bin = 0; bin < grid.count; ++bin) {
            const std::size_t first = edges.edges()[bin];
            const std::size_t end = edges.edges()[bin + 1];
            const CPTMinMax all = extremesOfAll(first, end);
            byRuns += edges.isByRuns(bin) ? 1 : 0;
            if (first == end)
                continue;  // a run beside it may reach in
            ASSERT_EQ(rows.min[bin], all.min) << bin;
            ASSERT_EQ(rows.max[bin], all.max) << bin;
            if (rows.min[bin] <= rows.max[bin]) {
                ASSERT_TRUE(rows.first[bin] >= all.min && rows.first[bin] <= all.max) << bin;
            }
            const double edge = grid.edge(grid.first + static_cast<std::int64_t>(bin));
            if (first < twin.size()) {
                ASSERT_GE(twin.x()[first], edge - grid.width / 2) << bin;
            }
            if (first > 0) {
                ASSERT_LE(twin.x()[first - 1], edge + grid.width / 2) << bin;
            }
        }
        const std::size_t after = edges.edges()[grid.count];
        EXPECT_TRUE(after == twin.size() ||
                    twin.x()[after] >= grid.edge(grid.first + static_cast<std::int64_t>(grid.count)) - grid.width / 2);
        EXPECT_GE(byRuns, leastByRuns);
    }

    /// Every point is drawn, at most so many columns from its place.
    void expectEverySpike(double reach)
    {
        const PlotView view = viewOf(1.1, -0.05);
        PlotEnvelope envelope;
        ASSERT_TRUE(ofPaged.envelopeInto(envelope, *paged, view, 0));
        for (std::size_t element = 0; element < twin.size(); ++element) {
            if (!resident->isPoint(element))
                continue;
            const double x =
                (twin.x()[element] - view.xRange.location) / view.xRange.length * kWidth + view.area.left();
            const double at = (x - envelope.left) * PlotEnvelope::kColumnsPerPixel;
            const auto place = static_cast<float>(view.area.bottom() -
                                                  (static_cast<double>(resident->y()[element]) - view.yRange.location) /
                                                      view.yRange.length * 200);
            bool isShown = false;
            for (auto column = static_cast<std::size_t>(std::max(0.0, at - reach));
                 static_cast<double>(column) <= at + reach; ++column)
                isShown |= envelope.low[column] <= place + 0.01F && envelope.high[column] >= place - 0.01F;
            ASSERT_TRUE(isShown) << element;
        }
    }

    PlotEnveloping ofPaged, ofResident;
    PlotDots dotsOfPaged, dotsOfResident;
};

TEST_F(PagedFramesTest, OfRegularTimesAreThoseOfTheSeriesInMemory)
{
    make({.count = 300'000, .isRegular = true});
    expectSameFrames(60);
}

TEST_F(PagedFramesTest, OfOddTimesAndValuesAreThoseOfTheSeriesInMemory)
{
    for (unsigned seed = 1; seed <= 8; ++seed) {
        SCOPED_TRACE(seed);
        make({.count = 150'000 + 777 * seed,
              .longestRun = seed % 4 == 0 ? 7U : 512U,
              .dropped = seed % 2 == 0 ? 0.0 : 0.3,
              .odd = seed % 3 == 0 ? 0.0 : 0.01,
              .gap = seed % 4 == 1 ? 0.002 : 0.0,
              .isRegular = seed % 5 == 0,
              .seed = seed});
        expectSameFrames(20);
    }
}

TEST_F(PagedFramesTest, OfRunsOfOneElementAreThoseOfTheSeriesInMemory)
{
    make({.count = 20'000, .longestRun = 1, .dropped = 0.2, .odd = 0.05, .gap = 0.001});
    expectSameFrames(40);
}

TEST_F(PagedFramesTest, OfAShortSeriesAreThoseOfTheSeriesInMemory)
{
    for (const std::size_t count : {1U, 2U, 31U, 33U, 500U}) {
        make({.count = count, .longestRun = 20, .dropped = 0.2, .seed = 7});
        expectSameFrames(15);
    }
}

TEST_F(PagedFramesTest, WhilePannedAreThoseOfTheSeriesInMemory)
{
    make({.count = 300'000, .dropped = 0.1, .gap = 0.0005});
    for (int step = 0; step < 60; ++step) {
        const PlotView view = viewOf(0.05, 0.3 + 0.0007 * ((step % 20) - 10));
        expectSameEnvelope(view);
        expectSameDots(view);
    }
}

TEST_F(PagedFramesTest, BinsOfManyRunsHaveTheExtremesOfTheirElements)
{
    make({.count = 800'000, .isRegular = true});
    expectBinsOfAll(300, 250);
    make({.count = 800'000, .dropped = 0.3, .odd = 0.01, .gap = 1e-5, .seed = 2});
    expectBinsOfAll(300, 100);
    make({.count = 800'000, .dropped = 0.9, .odd = 0.3, .gap = 1e-4, .seed = 3});
    expectBinsOfAll(150, 20);
}

TEST_F(PagedFramesTest, BinsOfManyRunsAreSummedUpWithoutLookingAtPagesButAtTheEnds)
{
    make({.count = 1'000'000, .isRegular = true});
    const std::size_t before = twin.looks();
    PlotEnvelope envelope;
    ASSERT_TRUE(ofPaged.envelopeInto(envelope, *paged, viewOf(1.1, -0.05), 0));
    EXPECT_LE(twin.looks(), before + 2);
}

TEST_F(PagedFramesTest, OfManyRunsBreakAtTheGapsOfTheSeriesInMemoryWithoutLookingAtThem)
{
    for (const bool isInTime : {true, false}) {
        TwinSeries gaps;
        for (int element = 0; element < 1'500'000; ++element) {
            const bool isInGap = element % 100'000 > 80'000;
            if (!isInTime || !isInGap)
                gaps.add(element, element % 1000, !isInGap);
        }
        gaps.cutRuns(512, 1);
        take(gaps);
        const std::size_t before = twin.looks();
        PlotView view = viewOf(1.1, -0.05);
        view.gap = view.xRange.length / kWidth / 2;
        PlotEnvelope one, other;
        ASSERT_TRUE(ofPaged.envelopeInto(one, *paged, view, 0));
        ASSERT_TRUE(ofResident.envelopeInto(other, *resident, view, 0));
        EXPECT_EQ(one.partEnds.size(), other.partEnds.size());
        EXPECT_GT(one.partEnds.size(), 10U);
        if (!isInTime) {  // a run may span a gap in time, where the edges must be looked for
            EXPECT_LE(twin.looks(), before + 8);
        }
    }
}

TEST_F(PagedFramesTest, OfManyRunsShowEverySpike)
{
    make({.count = 1'000'000, .dropped = 0.1, .gap = 1e-5});
    expectEverySpike(6.1);
}

TEST_F(PagedFramesTest, OfRunsLongerThanColumnsShowEverySpikeWithoutALook)
{
    make({.count = 1'500'000, .longestRun = 8000, .isRegular = true});
    const std::size_t before = twin.looks();
    expectEverySpike(6.1);
    EXPECT_LE(twin.looks(), before + 4);
}

TEST_F(PagedFramesTest, OfManyRunsArePannedAsDrawnAnew)
{
    make({.count = 2'000'000, .dropped = 0.1, .gap = 1e-5});
    for (int step = 0; step < 40; ++step) {
        const PlotView view = viewOf(0.8, 0.1 + 0.003 * ((step % 14) - 7));
        PlotEnvelope panned, anew;
        PlotEnveloping fresh;
        ASSERT_TRUE(ofPaged.envelopeInto(panned, *paged, view, 0));
        ASSERT_TRUE(fresh.envelopeInto(anew, *paged, view, 0));
        // The outermost columns lie in the margin, where a kept bin may begin with another run.
        const auto inside = [](std::span<const float> row) { return row.subspan(4, row.size() - 8); };
        expectSameRow(inside(panned.low), inside(anew.low));
        expectSameRow(inside(panned.high), inside(anew.high));
    }
}

TEST_F(PagedFramesTest, RecordsAtATimeAreThoseOfTheSeriesInMemory)
{
    make({.count = 200'000, .dropped = 0.2, .gap = 0.001});
    for (int turn = 0; turn < 200; ++turn) {
        const double x = twin.x()[random() % twin.size()] + (turn % 3 - 1) * 0.3;
        const RecordsAtX one = recordsAtX(*paged, x);
        const RecordsAtX other = recordsAtX(*resident, x);
        ASSERT_EQ(one.atOrBefore.has_value(), other.atOrBefore.has_value());
        ASSERT_EQ(one.after.has_value(), other.after.has_value());
        for (const auto& [mine, its] : {std::pair(one.atOrBefore, other.atOrBefore), std::pair(one.after, other.after)})
            if (mine) {
                EXPECT_EQ(mine->element, its->element);
                EXPECT_EQ(mine->isPoint, its->isPoint);
                EXPECT_EQ(mine->distance, its->distance);
            }
    }
}

TEST_F(PagedFramesTest, TheUsualDistanceIsThatOfTheSeriesInMemory)
{
    for (unsigned seed = 1; seed < 5; ++seed) {
        make({.count = 40'000 * seed, .dropped = 0.3, .gap = 0.01, .seed = seed});
        EXPECT_EQ(usualDistance(*paged), usualDistance(*resident));
    }
}

TEST_F(PagedFramesTest, TheUsualDistanceOfAllElementsIsToldByTheirTimes)
{
    make({.count = 200'000, .isRegular = true});
    ASSERT_EQ(paged->count(), paged->elementCount());
    const std::size_t before = twin.looks();
    EXPECT_EQ(usualDistance(*paged), usualDistance(*resident));
    EXPECT_EQ(twin.looks(), before);
}

TEST_F(PagedFramesTest, AWideFrameLooksAtGroupsOfRunsAlone)
{
    make({.count = 2'000'000, .longestRun = 40, .isRegular = true});
    const std::size_t before = paged->runs()->bytesOfRuns();
    const PlotView view = viewOf(0.7, 0.1);
    PlotEnvelope envelope;
    ASSERT_TRUE(ofPaged.envelopeInto(envelope, *paged, view, 0));
    EXPECT_EQ(paged->runs()->bytesOfRuns(), before);
}

TEST_F(PagedFramesTest, BinsOfGroupsOfRunsHaveTheExtremesOfTheirElements)
{
    make({.count = 2'000'000, .longestRun = 40, .dropped = 0.05, .gap = 1e-5});
    expectBinsOfAll(1500, 1200);
}

TEST_F(PagedFramesTest, PlotsPreparedSideBySideAreTheSame)
{
    make({.count = 600'000, .longestRun = 40, .dropped = 0.1, .odd = 0.001, .gap = 1e-4});
    PlotEnveloping prepared;
    for (int frame = 0; frame < 40; ++frame) {
        PlotView view = someView();
        view.area.setWidth(700);
        std::vector<PlotEnveloping::Plot> plots;
        for (std::size_t slot = 0; slot < 6; ++slot)
            plots.push_back({slot < 3 ? paged.get() : resident.get(), view, slot});
        prepared.prepare(plots);
        PlotEnvelope plain;
        const bool isMade = ofResident.envelopeInto(plain, *resident, view, 0);
        PlotEnvelope one;
        ASSERT_EQ(prepared.envelopeInto(one, *resident, view, 5), isMade);
        if (isMade) {
            expectSameRow(one.low, plain.low);
            expectSameRow(one.high, plain.high);
        }
        PlotEnvelope ofOne, ofOther;
        ASSERT_EQ(prepared.envelopeInto(ofOne, *paged, view, 2), ofPaged.envelopeInto(ofOther, *paged, view, 0));
        expectSameRow(ofOne.low, ofOther.low);
        expectSameRow(ofOne.high, ofOther.high);
    }
}

TEST_F(PagedFramesTest, WhatWasPreparedIsNotSummedUpAgain)
{
    make({.count = 600'000, .longestRun = 512, .isRegular = true});
    PlotView view = viewOf(0.9, 0.05);
    view.area.setWidth(1400);
    PlotEnvelope envelope;
    PlotEnveloping plain, prepared;
    ASSERT_TRUE(plain.envelopeInto(envelope, *paged, view, 1));
    const std::size_t plainLooks = looksSinceMade();
    prepared.prepare(std::vector<PlotEnveloping::Plot>{{paged.get(), view, 0}, {paged.get(), view, 1}});
    const std::size_t looksBefore = looksSinceMade();
    ASSERT_TRUE(prepared.envelopeInto(envelope, *paged, view, 1));
    EXPECT_LT(looksSinceMade() - looksBefore, plainLooks);
}

TEST_F(PagedFramesTest, TheSameTimesCutIntoOtherRunsHaveEdgesOfTheirOwn)
{
    make({.count = 600'000, .longestRun = 40, .isRegular = true});
    TwinSeries longer = twin;
    longer.cutRuns(2000, 5);
    const CPTPointSeriesPtr beside = longer.pagedBeside(*paged);
    PlotView view = viewOf(0.9, 0.05);
    view.area.setWidth(20);
    PlotEnvelope unused, kept, fresh;
    ASSERT_TRUE(ofPaged.envelopeInto(unused, *paged, view, 0));
    ASSERT_TRUE(ofPaged.envelopeInto(kept, *beside, view, 1));
    ASSERT_TRUE(ofResident.envelopeInto(fresh, *beside, view, 0));
    expectSameRow(kept.low, fresh.low);
    expectSameRow(kept.high, fresh.high);
}

}  // namespace
