#include "tests/plotkit/layout/SeriesBuilder.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <cmath>
#include <limits>
#include <random>

namespace {

constexpr float kNan = std::numeric_limits<float>::quiet_NaN();
constexpr float kInfinity = std::numeric_limits<float>::infinity();

/// A series of random length, values, drop-outs long and short, and a few values that are not finite.
SeriesBuilder randomSeries(std::mt19937& random)
{
    SeriesBuilder builder;
    std::normal_distribution<float> value(0, 100);
    const bool dropsSome = random() % 3 != 0;
    const bool breaksSome = random() % 3 == 0;
    bool dropping = false;
    const std::size_t count = random() % 5000;
    for (std::size_t element = 0; element < count; ++element) {
        if (dropsSome && random() % (dropping ? 700 : 300) == 0)
            dropping = !dropping;
        float y = value(random);
        if (breaksSome && random() % 50 == 0)
            y = random() % 3 == 0 ? kNan : random() % 2 == 0 ? kInfinity : -kInfinity;
        builder.add(static_cast<double>(element), y, !dropping && !(dropsSome && random() % 20 == 0));
    }
    return builder;
}

class SeriesIndexTest : public testing::Test {
protected:
    void build(const SeriesBuilder& made)
    {
        builder = made;
        bitmap = builder.bitmap();
        index = std::make_unique<CPTSeriesIndex>(builder.y(), bitmap);
    }

    bool counts(std::size_t element) const { return builder.isPoint(element) && std::isfinite(builder.y()[element]); }

    void expectMinMax(std::size_t first, std::size_t last)
    {
        CPTSeriesIndex::MinMax expected{kInfinity, -kInfinity};
        for (std::size_t element = first; element < last; ++element) {
            if (!counts(element))
                continue;
            expected.min = std::min(expected.min, builder.y()[element]);
            expected.max = std::max(expected.max, builder.y()[element]);
        }
        const CPTSeriesIndex::MinMax found = index->minMax(first, last);
        ASSERT_EQ(found.isEmpty(), expected.isEmpty()) << first << " … " << last;
        if (expected.isEmpty())
            return;
        ASSERT_EQ(found.min, expected.min) << first << " … " << last;
        ASSERT_EQ(found.max, expected.max) << first << " … " << last;
    }

    void expectNeighbours(std::size_t element)
    {
        std::size_t next = element;
        while (next < index->size() && !counts(next))
            ++next;
        std::size_t previous = element;
        while (previous > 0 && !counts(previous - 1))
            --previous;
        ASSERT_EQ(index->firstPointFrom(element), next) << element;
        ASSERT_EQ(index->lastPointBefore(element), previous == 0 ? index->size() : previous - 1) << element;
    }

    SeriesBuilder builder;
    plotix::ValidityBitmap bitmap;
    std::unique_ptr<CPTSeriesIndex> index;
};

TEST_F(SeriesIndexTest, AnswersAsALookAtEveryElementWould)
{
    std::mt19937 random(20);
    for (int round = 0; round < 60; ++round) {
        build(randomSeries(random));
        const std::size_t size = index->size();
        for (int query = 0; query < 60; ++query) {
            const std::size_t a = random() % (size + 1);
            const std::size_t b = random() % (size + 1);
            expectMinMax(std::min(a, b), std::max(a, b));
            expectMinMax(a, std::min(size, a + random() % 70));
            expectNeighbours(a);
        }
        expectMinMax(0, size);
    }
}

TEST_F(SeriesIndexTest, BlockBordersBelongToOneSideOnly)
{
    SeriesBuilder made;
    for (int element = 0; element < 3000; ++element)
        made.add(element, static_cast<float>(element));
    build(made);
    for (const std::size_t border : {31U, 32U, 33U, 1023U, 1024U, 1025U, 2048U, 2999U, 3000U}) {
        expectMinMax(0, border);
        expectMinMax(border, 3000);
        expectMinMax(border - 1, border);
    }
}

TEST_F(SeriesIndexTest, EmptyStretchesHaveNoExtremes)
{
    SeriesBuilder made;
    for (int element = 0; element < 5000; ++element)
        made.add(element, 1, element == 0 || element == 4999);
    build(made);
    EXPECT_TRUE(index->minMax(1, 4999).isEmpty());
    EXPECT_TRUE(index->minMax(700, 700).isEmpty());
    EXPECT_EQ(index->firstPointFrom(1), 4999U);
    EXPECT_EQ(index->lastPointBefore(4999), 0U);
}

TEST_F(SeriesIndexTest, NoElementsMeansNoPoints)
{
    build({});
    EXPECT_TRUE(index->minMax(0, 0).isEmpty());
    EXPECT_EQ(index->firstPointFrom(0), 0U);
    EXPECT_EQ(index->lastPointBefore(0), 0U);
}

TEST_F(SeriesIndexTest, PastTheEndThereIsNoNextPoint)
{
    SeriesBuilder made;
    made.add(0, 5);
    build(made);
    EXPECT_EQ(index->firstPointFrom(77), 1U);
    EXPECT_EQ(index->lastPointBefore(77), 0U);
}

class PointSeriesTest : public testing::Test {
protected:
    SeriesBuilder builder;
};

TEST_F(PointSeriesTest, TheOriginIsOnePoint)
{
    const auto origin = CPTPointSeries::origin();
    EXPECT_EQ(origin->count(), 1U);
    EXPECT_EQ(origin->pointAt(0), (CPTPoint{0, 0}));
    EXPECT_EQ(origin->extent()->maxX, 0);
}

TEST_F(PointSeriesTest, PointsAreCountedWithoutTheDropped)
{
    for (int element = 0; element < 300; ++element)
        builder.add(element, static_cast<float>(element * 2), element % 3 == 1);
    const auto series = builder.series();
    EXPECT_EQ(series->count(), 100U);
    EXPECT_EQ(series->elementCount(), 300U);
    EXPECT_EQ(series->pointAt(0), (CPTPoint{1, 2}));
    EXPECT_EQ(series->pointAt(63), (CPTPoint{190, 380}));
    EXPECT_EQ(series->pointAt(99), (CPTPoint{298, 596}));
}

TEST_F(PointSeriesTest, TheExtentIsThatOfThePoints)
{
    builder.add(-1000, 900, false);
    builder.add(10, -3);
    builder.add(20, -7);
    builder.add(5000, 900, false);
    const auto extent = builder.series()->extent();
    ASSERT_TRUE(extent);
    EXPECT_EQ(extent->minX, 10);
    EXPECT_EQ(extent->maxX, 20);
    EXPECT_EQ(extent->minY, -7);
    EXPECT_EQ(extent->maxY, -3);
}

TEST_F(PointSeriesTest, AnUnsortedSeriesHasTheSameExtent)
{
    builder.add(30, -3);
    builder.add(20, -7);
    builder.add(25, 4);
    const auto series = builder.series();
    EXPECT_FALSE(series->isXSorted());
    EXPECT_EQ(series->extent()->minX, 20);
    EXPECT_EQ(series->extent()->maxX, 30);
    EXPECT_EQ(series->extent()->maxY, 4);
}

TEST_F(PointSeriesTest, WithoutPointsThereIsNoExtent)
{
    EXPECT_FALSE(builder.series()->extent());
    builder.add(1, 2, false);
    builder.add(3, kNan);
    EXPECT_FALSE(builder.series()->extent());
}

TEST_F(PointSeriesTest, ValuesThatAreNotFiniteStayOutOfTheExtent)
{
    builder.add(1, kInfinity);
    builder.add(2, 8);
    builder.add(3, kNan);
    EXPECT_EQ(builder.series()->extent()->minX, 2);
    EXPECT_EQ(builder.series()->extent()->maxY, 8);
}

TEST_F(PointSeriesTest, RepeatedTimesAreSorted)
{
    builder.add(1, 1);
    builder.add(1, 2);
    EXPECT_TRUE(builder.series()->isXSorted());
}

TEST_F(PointSeriesTest, TimesThatAreNotFiniteAreNotSorted)
{
    builder.add(1, 1);
    builder.add(std::numeric_limits<double>::infinity(), 2);
    EXPECT_FALSE(builder.series()->isXSorted());
    EXPECT_EQ(builder.series()->extent()->maxX, 1);
}

TEST_F(PointSeriesTest, OneTurnInALongSeriesIsFound)
{
    for (int element = 0; element < 20000; ++element)
        builder.add(element == 12288 ? 12286.5 : element, 0);
    EXPECT_FALSE(builder.series()->isXSorted());
}

TEST_F(PointSeriesTest, ValuesWithoutATimeAreLeftOut)
{
    const CPTPointSeries series(plotix::SharedArray<double>::fromVector({1, 2}),
                                plotix::SharedArray<float>::fromVector({1, 2, 3}), {}, 2);
    EXPECT_EQ(series.elementCount(), 2U);
    EXPECT_EQ(series.extent()->maxY, 2);
}

}  // namespace
