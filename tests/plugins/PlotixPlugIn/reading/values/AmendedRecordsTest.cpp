#include "plugins/PlotixPlugIn/reading/values/AmendedRecords.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <random>

namespace {

using namespace plotix;
using Kind = KTVAmendment::Kind;
using Amendments = std::vector<KTVAmendment>;

constexpr KTVAmendment kBurst{Kind::Late, 100, 200, 300, 300};   // everything at once: late by 200 down to 100
constexpr KTVAmendment kSteady{Kind::Late, 100, 200, 130, 230};  // always late by 30
constexpr KTVAmendment kCorrected{Kind::Corrected, 150, 160, 155, 165};

TEST(AmendedRecordsTest, ARecordCameBetweenTheEndsOfItsStretch)
{
    EXPECT_EQ(cameAt(kSteady, 150), 180);
    EXPECT_EQ(cameAt(kBurst, 150), 300);
    EXPECT_EQ(cameAt({Kind::Late, 5, 5, 10, 20}, 5), 20);
}

TEST(AmendedRecordsTest, WhatIsLateByNoMoreIsLeftOut)
{
    EXPECT_EQ(lateByMoreThan(0, {kSteady}), Amendments{kSteady});
    EXPECT_EQ(lateByMoreThan(30, {kSteady}), Amendments{});
    EXPECT_EQ(lateByMoreThan(50, {kBurst, kSteady}), Amendments{kBurst});
}

TEST(AmendedRecordsTest, APartThatIsLateByMoreStays)
{
    EXPECT_EQ(lateByMoreThan(150, {kBurst}), (Amendments{{Kind::Late, 100, 150, 300, 300}}));
    EXPECT_EQ(lateByMoreThan(50, {{Kind::Late, 0, 100, 0, 200}}), (Amendments{{Kind::Late, 50, 100, 100, 200}}));
}

TEST(AmendedRecordsTest, CorrectionsAreNeverLate)
{
    EXPECT_EQ(lateByMoreThan(1e9, {kCorrected}), Amendments{kCorrected});
}

TEST(AmendedRecordsTest, WhatHappenedLastIsToldOfARecord)
{
    const Amendments both{kBurst, {Kind::Corrected, 150, 160, 900, 900}};
    const AmendedRecords records(both);
    EXPECT_EQ(records.at(155)->kind, Kind::Corrected);
    EXPECT_EQ(records.at(170)->kind, Kind::Late);
    EXPECT_FALSE(records.at(201));
    EXPECT_FALSE(AmendedRecords().at(155));
    EXPECT_FALSE(AmendedRecords(Amendments()).at(155));
}

TEST(AmendedRecordsTest, APartThatBeginsLaterHidesNoOther)
{
    const Amendments untilLate{{Kind::Late, 0, 100, 0, 200}, {Kind::Late, 10, 20, 110, 120}};
    const AmendedRecords records(lateByMoreThan(50, untilLate));
    ASSERT_TRUE(records.at(15));
    EXPECT_EQ(records.at(15)->from, 10);
    EXPECT_EQ(records.at(80)->to, 100);
}

/// Stretches of all lengths, over and beside each other.
class ManyAmendmentsTest : public testing::Test {
protected:
    ManyAmendmentsTest()
    {
        std::mt19937 random(7);
        for (int count = 0; count < 300; ++count) {
            const double from = static_cast<double>(random() % 10'000);
            const double length = random() % 20 == 0 ? 3'000 : static_cast<double>(random() % 20);
            const double first = static_cast<double>(20'000 + random() % 1'000);
            all.push_back({random() % 2 == 0 ? Kind::Late : Kind::Corrected, from, from + length, first, first});
        }
    }
    double latestAt(double time) const
    {
        double latest = 0;
        for (const KTVAmendment& each : all)
            if (each.from <= time && time <= each.to)
                latest = std::max(latest, cameAt(each, time));
        return latest;
    }
    bool isAnyAt(Kind kind, double time) const
    {
        return std::any_of(all.begin(), all.end(), [&](const KTVAmendment& each) {
            return each.kind == kind && each.from <= time && time <= each.to;
        });
    }
    Amendments all;
};

TEST_F(ManyAmendmentsTest, TheLatestIsFoundAsByGoingThroughAll)
{
    const AmendedRecords records(all);
    for (double time = -5; time < 13'100; time += 0.5) {
        const auto found = records.at(time);
        EXPECT_EQ(found ? cameAt(*found, time) : 0, latestAt(time)) << time;
    }
}

TEST_F(ManyAmendmentsTest, SpansCoverWhatAnyStretchCovers)
{
    const AmendedRecords records(all);
    for (const Kind kind : {Kind::Late, Kind::Corrected}) {
        const std::vector<TimeSpan> spans = records.spans(kind, {-100, 14'000}, 0.25);
        for (double time = -5; time < 13'100; time += 0.5) {
            const bool isCovered = std::any_of(spans.begin(), spans.end(), [time](const TimeSpan& span) {
                return span.from <= time && time <= span.to;
            });
            EXPECT_EQ(isCovered, isAnyAt(kind, time)) << time;
        }
    }
}

TEST(AmendedRecordsTest, WhatBeganLongBeforeTheSpanIsInItToo)
{
    const AmendedRecords records({{Kind::Late, 0, 1'000, 2'000, 2'000}, {Kind::Late, 10, 20, 2'000, 2'000}});
    EXPECT_EQ(records.spans(Kind::Late, {500, 600}, 1), (std::vector<TimeSpan>{{0, 1'000}}));
    EXPECT_TRUE(records.spans(Kind::Corrected, {500, 600}, 1).empty());
    EXPECT_TRUE(records.spans(Kind::Late, {1'001, 2'000}, 1).empty());
}

TEST(AmendedRecordsTest, SpansNearerThanAskedAreOne)
{
    const AmendedRecords records({{Kind::Late, 0, 1, 9, 9}, {Kind::Late, 2, 3, 9, 9}, {Kind::Late, 10, 10, 19, 19}});
    EXPECT_EQ(records.spans(Kind::Late, {0, 20}, 1), (std::vector<TimeSpan>{{0, 3}, {10, 10}}));
    EXPECT_EQ(records.spans(Kind::Late, {0, 20}, 0.9), (std::vector<TimeSpan>{{0, 1}, {2, 3}, {10, 10}}));
}

}  // namespace
