#include "plotkit/model/PagedSeries.h"

#include "plotkit/model/CPTSeriesIndex.h"
#include "plotkit/model/CPTSeriesRuns.h"
#include "tests/plotkit/model/PagedSeriesFixture.h"

#include <gtest/gtest.h>

#include <bit>
#include <limits>
#include <random>

// A paged series answers what the same series in memory does, with a cache that keeps nothing.

namespace {

using namespace plotkit_test;

class PagedSeriesTest : public PagedSeriesFixture {
protected:
    PagedSeriesTest() : PagedSeriesFixture(5) {}

    std::size_t someElement() { return random() % (resident->elementCount() + 1); }

    void expectSameElements(std::size_t first, std::size_t end)
    {
        const CPTPointSeries::Hold held = paged->hold(first, end);
        for (std::size_t element = first; element < end; ++element) {
            ASSERT_EQ(paged->x()[element], resident->x()[element]) << element;
            ASSERT_EQ(paged->isPoint(element), resident->isPoint(element)) << element;
            if (paged->isPoint(element)) {
                ASSERT_EQ(std::bit_cast<std::uint32_t>(paged->y()[element]),
                          std::bit_cast<std::uint32_t>(resident->y()[element]))
                    << element;
            }
        }
    }
    void expectSameExtremes(std::size_t first, std::size_t last)
    {
        const CPTMinMax one = paged->index().minMax(first, last);
        const CPTMinMax other = resident->index().minMax(first, last);
        ASSERT_EQ(one.min, other.min) << first << " to " << last;
        ASSERT_EQ(one.max, other.max) << first << " to " << last;
    }
    void expectSame()
    {
        EXPECT_EQ(paged->count(), resident->count());
        ASSERT_EQ(paged->elementCount(), resident->elementCount());
        ASSERT_EQ(paged->isXSorted(), resident->isXSorted());
        ASSERT_EQ(paged->extent().has_value(), resident->extent().has_value());
        if (paged->extent()) {
            EXPECT_EQ(paged->extent()->minX, resident->extent()->minX);
            EXPECT_EQ(paged->extent()->maxX, resident->extent()->maxX);
            EXPECT_EQ(paged->extent()->minY, resident->extent()->minY);
            EXPECT_EQ(paged->extent()->maxY, resident->extent()->maxY);
        }
        expectSameElements(0, paged->elementCount());
        for (int turn = 0; turn < 200; ++turn) {
            const std::size_t one = someElement();
            const std::size_t other = turn % 2 == 0 ? someElement() : std::min(one + random() % 600, twin.size());
            expectSameExtremes(std::min(one, other), std::max(one, other));
            ASSERT_EQ(paged->index().firstPointFrom(one), resident->index().firstPointFrom(one)) << one;
            ASSERT_EQ(paged->index().lastPointBefore(one), resident->index().lastPointBefore(one)) << one;
        }
    }
    void expectSamePlaces()
    {
        for (int turn = 0; turn < 300; ++turn) {
            const std::size_t near = std::min(someElement(), twin.size() - 1);
            const double x = twin.x()[near] + (turn % 3 - 1) * 0.25;
            ASSERT_EQ(paged->elementFrom(x), resident->elementFrom(x)) << x;
            ASSERT_EQ(paged->elementAfter(x), resident->elementAfter(x)) << x;
        }
    }
};

TEST_F(PagedSeriesTest, IsTheSeriesInMemory)
{
    make({});
    expectSame();
    expectSamePlaces();
}

TEST_F(PagedSeriesTest, WithDroppedAndOddValuesIsTheSeriesInMemory)
{
    for (unsigned seed = 1; seed <= 6; ++seed) {
        SCOPED_TRACE(seed);
        make({.count = 60'000 + seed * 997,
              .longestRun = seed % 2 == 0 ? 512U : 40U,
              .dropped = 0.4,
              .odd = seed % 3 == 0 ? 0.5 : 0.001,
              .gap = 0.001,
              .seed = seed});
        expectSame();
        expectSamePlaces();
    }
}

TEST_F(PagedSeriesTest, OfVeryManyRunsIsTheSeriesInMemory)
{
    make({.count = 90'000, .longestRun = 5, .dropped = 0.4, .odd = 0.01, .gap = 0.001});
    EXPECT_LT(paged->runs()->bytesOfRuns(), paged->runs()->count() * sizeof(float));
    expectSame();
    expectSamePlaces();
}

TEST_F(PagedSeriesTest, OfRunsOfOneElementIsTheSeriesInMemory)
{
    make({.count = 5000, .longestRun = 1, .dropped = 0.3, .odd = 0.1});
    expectSame();
    expectSamePlaces();
}

TEST_F(PagedSeriesTest, OfNoPointsHasNoExtent)
{
    TwinSeries none;
    for (int second = 0; second < 40'000; ++second)
        none.add(second, second % 2 == 0 ? std::nan("") : 1, second % 2 == 0);
    none.cutRuns(512, 1);
    take(none);
    EXPECT_FALSE(paged->extent());
    expectSame();
}

TEST_F(PagedSeriesTest, WhoseTimeTurnsBackIsNotSorted)
{
    TwinSeries turning;
    for (int second = 0; second < 40'000; ++second)
        turning.add(second < 30'000 ? second : second - 20'000, second);
    auto times = turning;
    times.cutRuns(1, 1);
    take(times);
    EXPECT_FALSE(paged->isXSorted());
    expectSame();
}

TEST_F(PagedSeriesTest, IsMadeByLookingAtItsEndsAlone)
{
    make({.count = 40 * plotix::PagedMemory::kPage});
    EXPECT_LE(looksOfMaking, 2U);
}

TEST_F(PagedSeriesTest, ExtremesOfMuchTakeTwoPagesAtMost)
{
    make({.count = 40 * plotix::PagedMemory::kPage});
    paged->index().minMax(1000, 39 * plotix::PagedMemory::kPage);
    EXPECT_LE(looksSinceMade(), 2U);
}

TEST_F(PagedSeriesTest, RunsOfChangedElementsAreLookedInto)
{
    const TwinSeries told = oddTwin({.count = 100'000});
    TwinSeries changed;
    const CPTPointSeriesPtr before = told.inMemory();
    std::vector<std::size_t> which;
    for (std::size_t element = 0; element < told.size(); ++element) {
        const bool isOther = element % 9973 == 17;
        changed.add(told.x()[element], isOther ? 1e6 : static_cast<double>(before->y()[element]),
                    element % 20'011 != 0);
        if (isOther || element % 20'011 == 0)
            which.push_back(element);
    }
    changed.takeRunsOf(told);
    twin = changed;
    resident = twin.inMemory();
    paged = twin.paged(0, which);
    expectSame();
}

TEST_F(PagedSeriesTest, RunsInTheMiddleOfAllAreFoundByElementAndTime)
{
    make({.count = 50'000, .dropped = 0.5});
    const CPTSeriesRuns& runs = *paged->runs();
    for (std::size_t run = 0; run < runs.count(); ++run) {
        ASSERT_EQ(runs.runAt(runs.begin(run)), run);
        ASSERT_EQ(runs.runAt(runs.end(run) - 1), run);
        ASSERT_EQ(runs.runFrom(runs.begin(run)), run);
        ASSERT_EQ(runs.runFrom(runs.begin(run) + 1), run + 1);
        ASSERT_GE(runs.firstTime(run), run == 0 ? 0 : runs.lastTime(run - 1));
    }
    EXPECT_EQ(runs.end(runs.count() - 1), paged->elementCount());
}

TEST_F(PagedSeriesTest, TimesBesidePointsInMemoryAreReadIntoMemory)
{
    const TwinSeries made = oddTwin({.count = 70'000});
    const auto cache = std::make_shared<plotix::PageCache>(0);
    const auto times = std::make_shared<PagedTimes>(cache, made.x());
    const CPTPointSeries series(
        times->array(), plotix::SharedArray<float>::fromVector(std::vector<float>(made.size(), 1)), {}, made.size());
    EXPECT_TRUE(series.x().isResident());
    EXPECT_EQ(series.x()[69'999], made.x()[69'999]);
    EXPECT_EQ(cache->inUse(), 0U);
}

TEST_F(PagedSeriesTest, APointByItsNumberIsTheSame)
{
    make({.count = 100'000, .dropped = 0.5});
    for (const std::size_t number : {std::size_t{0}, resident->count() / 2, resident->count() - 1})
        EXPECT_EQ(paged->pointAt(number), resident->pointAt(number));
}

TEST_F(PagedSeriesTest, WhatRunsTellOfPointsThatCanNoLongerBeReadHasItsFirstAndLastPoint)
{
    const TwinSeries told = oddTwin({.count = 100'000});
    TwinSeries lost;
    for (const double time : told.x())
        lost.add(time, 0, false);
    lost.takeRunsOf(told);
    const CPTPointSeriesPtr series = lost.paged();
    EXPECT_LE(series->index().firstPointFrom(0), series->index().lastPointBefore(series->elementCount()));
    EXPECT_LT(series->index().lastPointBefore(series->elementCount()), series->elementCount());
}

}  // namespace
