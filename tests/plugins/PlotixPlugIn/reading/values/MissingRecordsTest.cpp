#include "plugins/PlotixPlugIn/reading/values/MissingRecords.h"

#include "tests/plugins/PlotixPlugIn/reading/values/RecordedLine.h"

#include <gtest/gtest.h>

namespace {

using namespace plotix;
using plotix_test::arbitraryLine;
using plotix_test::RecordedLine;
using Stretches = std::vector<MissingStretch>;

constexpr double kHole = std::numeric_limits<double>::quiet_NaN();
constexpr auto kNotRecorded = Missing::NotRecorded;
constexpr auto kNotValid = Missing::NotValid;

/// A record an hour from 0 to 20, without those from 6 to 9.
RecordedLine hourly()
{
    RecordedLine line;
    for (int hour = 0; hour <= 20; ++hour)
        if (hour < 6 || hour > 9)
            line.add(hour, hour);
    return line;
}

TEST(MissingRecordsTest, AGapRunsFromTheRecordBeforeToTheOneAfter)
{
    EXPECT_EQ(missingStretches(hourly().records(2), {0, 20}, 0.5), (Stretches{{5, 10, kNotRecorded}}));
}

TEST(MissingRecordsTest, WhatTheLineJoinsIsNoGap)
{
    EXPECT_TRUE(missingStretches(hourly().records(5), {0, 20}, 0.5).empty());
}

TEST(MissingRecordsTest, AStretchShorterThanTheLeastIsNotLookedFor)
{
    EXPECT_TRUE(missingStretches(hourly().records(2), {0, 20}, 6).empty());
}

TEST(MissingRecordsTest, StretchesAreCutToTheSpan)
{
    EXPECT_EQ(missingStretches(hourly().records(2), {7, 8}, 0.5), (Stretches{{7, 8, kNotRecorded}}));
    EXPECT_EQ(missingStretches(hourly().records(2), {3, 7}, 0.5), (Stretches{{5, 7, kNotRecorded}}));
}

TEST(MissingRecordsTest, NothingIsRecordedBeforeTheFirstAndBehindTheLast)
{
    EXPECT_EQ(missingStretches(hourly().records(5), {-10, 40}, 0.5),
              (Stretches{{-10, 0, kNotRecorded}, {20, 40, kNotRecorded}}));
}

TEST(MissingRecordsTest, BehindTheLastRecordTheNextMayStillCome)
{
    EXPECT_TRUE(missingStretches(hourly().records(5), {0, 23}, 0.5).empty());
}

TEST(MissingRecordsTest, ElementsWithoutAValueAreNotRecorded)
{
    RecordedLine line{{0, 1, 2, 3, 4, 5}, {1, kHole, kHole, kHole, 5, 6}};
    EXPECT_EQ(missingStretches(line.records(2), {0, 5}, 0.5), (Stretches{{0, 4, kNotRecorded}}));
}

TEST(MissingRecordsTest, ElementsThatKeepAValueAreNotValidEvenWhereTheLineGoesOn)
{
    RecordedLine line{{0, 1, 2, 3, 4}, {1, 2, -999, 4, 5}, {2}};
    EXPECT_EQ(missingStretches(line.records(10), {0, 4}, 0.5), (Stretches{{1, 3, kNotValid}}));
}

TEST(MissingRecordsTest, ALineWithoutRecordsIsMissingAltogether)
{
    const RecordedLine line{{0, 1}, {kHole, kHole}};
    EXPECT_EQ(missingStretches(line.records(), {-5, 5}, 0.5), (Stretches{{-5, 5, kNotRecorded}}));
}

TEST(MissingRecordsTest, NotValidIsWhatWasRecordedLast)
{
    RecordedLine line{{0, 1, 2, 3}, {1, -999, kHole, 4}, {1}};
    EXPECT_FALSE(isNotValidAt(line.records(), 0.5));
    EXPECT_TRUE(isNotValidAt(line.records(), 1));
    EXPECT_TRUE(isNotValidAt(line.records(), 2.5));  // of another property's record at 2 this line knows nothing
    EXPECT_FALSE(isNotValidAt(line.records(), 3));
}

TEST(MissingRecordsTest, FindsTheGapsThatLookingAtEveryRecordFinds)
{
    for (unsigned seed = 0; seed < 40; ++seed) {
        const RecordedLine line = arbitraryLine(seed, 500);
        Stretches expected;
        std::optional<double> last;
        for (std::size_t element = 0; element < line.times.size(); ++element) {
            if (!line.isRecord(element))
                continue;
            if (last && line.times[element] - *last > 3)
                expected.push_back({*last, line.times[element], kNotRecorded});
            last = line.times[element];
        }
        Stretches found = missingStretches(line.records(3), {line.times.front(), line.times.back()}, 2.5);
        std::erase_if(found, [&](const MissingStretch& each) {
            return each.to == line.times.back() || each.from == line.times.front();
        });
        std::erase_if(expected, [&](const MissingStretch& each) {
            return each.to == line.times.back() || each.from == line.times.front();
        });
        EXPECT_EQ(found, expected) << seed;
    }
}

}  // namespace
