#include "plugins/PlotixPlugIn/reading/values/LineRecords.h"

#include "tests/plugins/PlotixPlugIn/reading/values/RecordedLine.h"

#include <gtest/gtest.h>

namespace {

using namespace plotix;
using plotix_test::arbitraryLine;
using plotix_test::RecordedLine;

constexpr double kHole = std::numeric_limits<double>::quiet_NaN();

RecordedLine hourly()
{
    return {{0, 1, 2, 3, 10, 11, 12}, {5, 6, kHole, 8, 9.1, 10, kHole}};
}

double timeOf(const OptionalLineRecord& record)
{
    return record ? record->time : -1;
}

TEST(LineRecordsTest, FindsTheRecordsRoundATimePastWhatWasNotRecorded)
{
    const LineRecords line = hourly().records();
    EXPECT_EQ(recordAtOrBefore(line, 2.5), (LineRecord{1, 1, 6}));
    EXPECT_EQ(timeOf(recordAtOrBefore(line, 3)), 3);
    EXPECT_EQ(timeOf(recordBefore(line, 3)), 1);
    EXPECT_EQ(timeOf(recordAfter(line, 1)), 3);
    EXPECT_EQ(timeOf(recordAfter(line, 11)), -1);
    EXPECT_EQ(timeOf(recordBefore(line, 0)), -1);
}

TEST(LineRecordsTest, TheNearestRecordIsTheEarlierOfTwoEquallyNear)
{
    const LineRecords line = hourly().records();
    EXPECT_EQ(timeOf(nearestRecord(line, 2)), 1);
    EXPECT_EQ(timeOf(nearestRecord(line, 7)), 10);
    EXPECT_EQ(timeOf(nearestRecord(line, -50)), 0);
    EXPECT_EQ(timeOf(nearestRecord(line, 50)), 11);
}

TEST(LineRecordsTest, ValuesAreDoublePrecisionAndInTheUnitShown)
{
    const RecordedLine line{{0, 1}, {20.123456789012345, -40}};
    EXPECT_EQ(line.records().valueAt(0), 20.123456789012345);
    EXPECT_NEAR(line.records(5, "degF").valueAt(1), -40, 1e-10);
}

TEST(LineRecordsTest, AReadingTellsHowFarItsRecordIs)
{
    const LineReading reading = readingAt(hourly().records(), 2.5);
    ASSERT_TRUE(reading.record);
    EXPECT_EQ(reading.record->value, 6);
    EXPECT_EQ(reading.distance, 1.5);
}

TEST(LineRecordsTest, NothingIsRecordedInAGapBeforeTheFirstAndLongAfterTheLast)
{
    const LineRecords line = hourly().records(5);
    EXPECT_FALSE(readingAt(line, 6).record);
    EXPECT_FALSE(readingAt(line, -0.1).record);
    EXPECT_FALSE(readingAt(line, 16.1).record);
    EXPECT_EQ(timeOf(readingAt(line, 3).record), 3) << "the last record before a gap is there";
    EXPECT_EQ(timeOf(readingAt(line, 16).record), 11) << "the line would join as far as this";
}

TEST(LineRecordsTest, WhereEverythingIsJoinedTheLastRecordCountsForAFewUsualDistances)
{
    const LineRecords line = hourly().records();
    EXPECT_EQ(timeOf(readingAt(line, 6).record), 3);
    EXPECT_EQ(timeOf(readingAt(line, 11 + 5 * line.usualDistance).record), 11);
    EXPECT_FALSE(readingAt(line, 11.1 + 5 * line.usualDistance).record);
}

TEST(LineRecordsTest, ARecordWithinReachCountsAsBeingThere)
{
    const LineRecords line = hourly().records(5);
    EXPECT_EQ(timeOf(readingAt(line, 9.5, 0.5).record), 10);
    EXPECT_EQ(readingAt(line, 9.5, 0.5).distance, -0.5);
    EXPECT_FALSE(readingAt(line, 9.4, 0.5).record);
}

TEST(LineRecordsTest, ThereIsNothingToReadWithoutRecordsOrWhereTimesRunBackwards)
{
    EXPECT_FALSE(readingAt(lineRecords(nullptr, nullptr, 1), 0).record);
    EXPECT_FALSE(readingAt(RecordedLine().records(), 0).record);
    EXPECT_FALSE(readingAt((RecordedLine{{0, 1}, {kHole, kHole}}).records(), 0).record);
    EXPECT_FALSE(readingAt((RecordedLine{{2, 1}, {1, 1}}).records(), 2).record);
    EXPECT_FALSE(nearestRecord(hourly().records(), kHole));
}

TEST(LineRecordsTest, EveryLookUpAgreesWithGoingThroughAllRecords)
{
    for (unsigned seed = 0; seed < 20; ++seed) {
        const RecordedLine made = arbitraryLine(seed, 700);
        const LineRecords line = made.records();
        for (double time = -2.25; time < made.times.back() + 3; time += 0.75) {
            double before = -1, atOrBefore = -1, after = -1;
            for (std::size_t element = 0; element < made.times.size(); ++element) {
                if (!made.isRecord(element))
                    continue;
                const double at = made.times[element];
                before = at < time ? at : before;
                atOrBefore = at <= time ? at : atOrBefore;
                after = after < 0 && at > time ? at : after;
            }
            ASSERT_EQ(timeOf(recordBefore(line, time)), before) << seed << " " << time;
            ASSERT_EQ(timeOf(recordAtOrBefore(line, time)), atOrBefore) << seed << " " << time;
            ASSERT_EQ(timeOf(recordAfter(line, time)), after) << seed << " " << time;
        }
    }
}

}  // namespace
