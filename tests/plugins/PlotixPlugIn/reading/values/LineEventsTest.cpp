#include "plugins/PlotixPlugIn/reading/values/LineEvents.h"

#include "tests/plugins/PlotixPlugIn/reading/values/RecordedLine.h"

#include <gtest/gtest.h>

#include <functional>

namespace {

using namespace plotix;
using plotix_test::arbitraryLine;
using plotix_test::RecordedLine;

constexpr double kHole = std::numeric_limits<double>::quiet_NaN();

/// All gaps and all crossings, found by going through the records one by one.
std::vector<double> gapsOf(const RecordedLine& line, double join)
{
    std::vector<double> begins;
    double last = kHole;
    for (std::size_t element = 0; element < line.times.size(); ++element) {
        if (!line.isRecord(element))
            continue;
        if (line.times[element] - last > join)
            begins.push_back(last);
        last = line.times[element];
    }
    return begins;
}

std::vector<double> crossingsOf(const RecordedLine& line, double limit)
{
    std::vector<double> times;
    std::optional<bool> above;
    for (std::size_t element = 0; element < line.times.size(); ++element) {
        if (!line.isRecord(element))
            continue;
        const bool isAbove = line.values[element] > limit;
        if (above && *above != isAbove)
            times.push_back(line.times[element]);
        above = isAbove;
    }
    return times;
}

/// A line whose times all differ, so that stepping by time can reach every record.
RecordedLine spread(RecordedLine line)
{
    for (std::size_t element = 0; element < line.times.size(); ++element)
        line.times[element] += 1e-4 * static_cast<double>(element);
    return line;
}

TEST(LineEventsTest, AGapReachesFromRecordToRecord)
{
    const LineRecords line = (RecordedLine{{0, 1, 2, 9, 10, 30, 31}, {1, 1, kHole, 1, 1, 1, 1}}).records(5);
    EXPECT_EQ(gapAfter(line, -1), (LineGap{1, 9}));
    EXPECT_EQ(gapAfter(line, 1), (LineGap{10, 30}));
    EXPECT_EQ(gapAfter(line, 10), std::nullopt);
    EXPECT_EQ(gapBefore(line, 31), (LineGap{10, 30}));
    EXPECT_EQ(gapBefore(line, 10), (LineGap{1, 9}));
    EXPECT_EQ(gapBefore(line, 1), std::nullopt);
}

TEST(LineEventsTest, WhereEverythingIsJoinedThereIsNoGap)
{
    EXPECT_EQ(gapAfter((RecordedLine{{0, 1'000}, {1, 1}}).records(), -1), std::nullopt);
    EXPECT_EQ(gapBefore(lineRecords(nullptr, nullptr, 1), 0), std::nullopt);
}

TEST(LineEventsTest, StepsFromGapToGapThroughLongLines)
{
    for (unsigned seed = 0; seed < 12; ++seed) {
        const RecordedLine made = spread(arbitraryLine(seed, seed % 2 == 0 ? 20'000 : 900));
        const double join = seed % 3 == 0 ? 39.5 : 6.5;
        const LineRecords line = made.records(join);
        std::vector<double> forward, backward;
        for (auto gap = gapAfter(line, -1e9); gap; gap = gapAfter(line, gap->from))
            forward.push_back(gap->from);
        for (auto gap = gapBefore(line, 1e9); gap; gap = gapBefore(line, gap->from))
            backward.insert(backward.begin(), gap->from);
        ASSERT_EQ(forward, gapsOf(made, join)) << seed;
        ASSERT_EQ(backward, gapsOf(made, join)) << seed;
    }
}

TEST(LineEventsTest, ARecordOnTheLimitStandsBelowIt)
{
    const LineRecords line = (RecordedLine{{0, 1, 2, 3}, {4, 5, 6, 5}}).records();
    EXPECT_EQ(crossingAfter(line, -1, 5)->time, 2);
    EXPECT_EQ(crossingAfter(line, 2, 5)->time, 3);
    EXPECT_EQ(crossingAfter(line, 3, 5), std::nullopt);
    EXPECT_EQ(crossingBefore(line, 9, 5)->time, 3);
    EXPECT_EQ(crossingBefore(line, 3, 5)->time, 2);
    EXPECT_EQ(crossingBefore(line, 2, 5), std::nullopt);
}

TEST(LineEventsTest, ALimitBetweenTwoSinglePrecisionNumbersIsKeptExactly)
{
    const LineRecords line = (RecordedLine{{0, 1, 2}, {16'777'217.2, 16'777'217.4, 16'777'217.2}}).records();
    EXPECT_EQ(crossingAfter(line, -1, 16'777'217.3)->time, 1);
    EXPECT_EQ(crossingBefore(line, 2, 16'777'217.3)->time, 1);
}

TEST(LineEventsTest, StepsFromCrossingToCrossing)
{
    for (unsigned seed = 0; seed < 20; ++seed) {
        const RecordedLine made = spread(arbitraryLine(seed, 3'000));
        const LineRecords line = made.records();
        const double limit = seed % 4;
        std::vector<double> forward, backward;
        for (auto record = crossingAfter(line, -1e9, limit); record; record = crossingAfter(line, record->time, limit))
            forward.push_back(record->time);
        for (auto record = crossingBefore(line, 1e9, limit); record; record = crossingBefore(line, record->time, limit))
            backward.insert(backward.begin(), record->time);
        ASSERT_EQ(forward, crossingsOf(made, limit)) << seed;
        ASSERT_EQ(backward, crossingsOf(made, limit)) << seed;
    }
}

}  // namespace
