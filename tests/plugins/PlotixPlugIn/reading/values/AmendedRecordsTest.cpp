#include "plugins/PlotixPlugIn/reading/values/AmendedRecords.h"

#include <gtest/gtest.h>

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
    EXPECT_EQ(amendmentAt(both, 155)->kind, Kind::Corrected);
    EXPECT_EQ(amendmentAt(both, 170)->kind, Kind::Late);
    EXPECT_FALSE(amendmentAt(both, 201));
    EXPECT_FALSE(amendmentAt({}, 155));
}

}  // namespace
