#include "plotkit/model/SeriesLookup.h"

#include <gtest/gtest.h>

#include <cmath>
#include <limits>
#include <vector>

namespace {

using plotkit::RecordsAtX;

constexpr float kNan = std::numeric_limits<float>::quiet_NaN();
constexpr double kInfinity = std::numeric_limits<double>::infinity();

/// Records at 10, 20, 30, 40 with values 1, 2, 3, 4 unless a test says otherwise; `points` has a bit for each.
class SeriesLookupTest : public testing::Test {
protected:
    RecordsAtX at(double asked) const
    {
        const CPTPointSeries series(
            plotix::SharedArray<double>::fromVector(x), plotix::SharedArray<float>::fromVector(y),
            plotix::ValidityBitmap(plotix::SharedArray<std::uint64_t>::fromVector({points})), y.size());
        return plotkit::recordsAtX(series, asked);
    }
    void expectNone(double asked) const
    {
        EXPECT_FALSE(at(asked).atOrBefore);
        EXPECT_FALSE(at(asked).after);
        EXPECT_FALSE(at(asked).nearest());
    }

    std::vector<double> x{10, 20, 30, 40};
    std::vector<float> y{1, 2, 3, 4};
    std::uint64_t points = 0b1111;
};

TEST_F(SeriesLookupTest, BetweenTwoRecordsBothAreAnswered)
{
    const RecordsAtX records = at(23);
    ASSERT_TRUE(records.atOrBefore && records.after);
    EXPECT_EQ(records.atOrBefore->element, 1U);
    EXPECT_EQ(records.atOrBefore->x, 20);
    EXPECT_EQ(records.atOrBefore->y, 2);
    EXPECT_EQ(records.atOrBefore->distance, 3);
    EXPECT_EQ(records.after->element, 2U);
    EXPECT_EQ(records.after->distance, 7);
}

TEST_F(SeriesLookupTest, TheNearerRecordIsNearestAndOfEqualsTheEarlier)
{
    EXPECT_EQ(at(23).nearest()->element, 1U);
    EXPECT_EQ(at(27).nearest()->element, 2U);
    EXPECT_EQ(at(25).nearest()->element, 1U);
}

TEST_F(SeriesLookupTest, ARecordStandsAtItsOwnX)
{
    EXPECT_EQ(at(30).atOrBefore->element, 2U);
    EXPECT_EQ(at(30).nearest()->distance, 0);
    EXPECT_EQ(at(30).after->element, 3U);
}

TEST_F(SeriesLookupTest, OfRecordsWithTheSameXTheLastCounts)
{
    x = {10, 20, 20, 40};
    EXPECT_EQ(at(20).atOrBefore->element, 2U);
    EXPECT_EQ(at(19).after->element, 1U);
}

TEST_F(SeriesLookupTest, BeforeTheFirstThereIsOnlyWhatComesAfter)
{
    for (const double asked : {9.0, -kInfinity}) {
        EXPECT_FALSE(at(asked).atOrBefore);
        EXPECT_EQ(at(asked).nearest()->element, 0U);
    }
    EXPECT_EQ(at(-kInfinity).nearest()->distance, kInfinity);
}

TEST_F(SeriesLookupTest, AfterTheLastThereIsOnlyWhatWasBefore)
{
    for (const double asked : {40.0, 41.0, kInfinity}) {
        EXPECT_EQ(at(asked).atOrBefore->element, 3U);
        EXPECT_FALSE(at(asked).after);
    }
}

TEST_F(SeriesLookupTest, ADroppedRecordAndAValueThatIsNotFiniteAreGaps)
{
    points = 0b1101;
    y[2] = std::numeric_limits<float>::infinity();
    for (const double asked : {20.0, 30.0}) {
        EXPECT_FALSE(at(asked).atOrBefore->isPoint);
        EXPECT_TRUE(std::isnan(at(asked).atOrBefore->y));
        EXPECT_EQ(at(asked).atOrBefore->x, asked);
    }
    EXPECT_TRUE(at(10).atOrBefore->isPoint);
    EXPECT_TRUE(at(40).atOrBefore->isPoint);
}

TEST_F(SeriesLookupTest, OneRecordIsNearestEverywhere)
{
    x = {10};
    y = {1};
    for (const double asked : {-5.0, 10.0, 1e300})
        EXPECT_EQ(at(asked).nearest()->element, 0U);
}

TEST_F(SeriesLookupTest, AnXThatIsNoNumberHasNoRecords)
{
    expectNone(std::nan(""));
}

TEST_F(SeriesLookupTest, EmptyAndUnsortedSeriesHaveNoRecords)
{
    x = {10, 30, 20, 40};
    expectNone(20);
    x = {10, std::nan(""), 20, 40};
    expectNone(20);
    x = {};
    y = {};
    expectNone(20);
}

TEST_F(SeriesLookupTest, TimesBeyondTheLastValueAreNoRecords)
{
    y = {1, 2};
    EXPECT_EQ(at(35).atOrBefore->element, 1U);
    EXPECT_EQ(at(35).nearest()->y, 2);
}

TEST_F(SeriesLookupTest, EveryRecordOfManyIsFound)
{
    x.clear();
    y.assign(1000, kNan);
    for (int element = 0; element < 1000; ++element)
        x.push_back(element * element);
    const CPTPointSeries series(plotix::SharedArray<double>::fromVector(x), plotix::SharedArray<float>::fromVector(y),
                                plotix::ValidityBitmap(), y.size());
    for (std::size_t element = 0; element + 1 < x.size(); ++element)
        EXPECT_EQ(plotkit::recordsAtX(series, x[element] + 0.5).atOrBefore->element, element);
}

}  // namespace
