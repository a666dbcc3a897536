#include "hostapp/site/TrendSpans.h"

#include <gtest/gtest.h>

namespace {

using plotix::MomentSpan;
using plotix::TrendNeed;
using plotix::TrendSpans;
using plotix::Wanted;

/// A trend whose dates, graph and records agree: an hour from 1000.
class TrendSpansTest : public testing::Test {
protected:
    static constexpr MomentSpan kHour{1000, 4600}, kOther{9000, 9600};

    TrendNeed need(Wanted wanted = Wanted::Covered) const { return needOf(spans, wanted); }
    void moveGraphTo(MomentSpan span)
    {
        spans.dates = span;
        spans.drawn = span;
        spans.datesLead = false;
    }
    void chooseDates(MomentSpan span)
    {
        spans.dates = span;
        spans.datesLead = true;
    }

    TrendSpans spans{kHour, kHour, kHour, MomentSpan{1010, 4590}, {}, true};
};

TEST_F(TrendSpansTest, WhereAllAgreeThereIsNothingToDo)
{
    EXPECT_EQ(need(), TrendNeed::Nothing);
    EXPECT_EQ(need(Wanted::Exact), TrendNeed::Nothing);
}

TEST_F(TrendSpansTest, ChosenDatesAreToBeShown)
{
    chooseDates(kOther);
    EXPECT_EQ(need(), TrendNeed::Show);
    spans.asked = kOther;
    EXPECT_EQ(need(), TrendNeed::Waiting);
}

TEST_F(TrendSpansTest, ReversedDatesAreLeftToTheUser)
{
    chooseDates({4600, 1000});
    EXPECT_EQ(need(), TrendNeed::OtherDates);
}

TEST_F(TrendSpansTest, WhatWasNotReadIsRead)
{
    moveGraphTo({900, 4500});
    EXPECT_EQ(need(), TrendNeed::Read);
    spans.asked = MomentSpan{800, 4600};
    EXPECT_EQ(need(), TrendNeed::Waiting);
    spans.asked = kOther;
    EXPECT_EQ(need(), TrendNeed::Read);
}

TEST_F(TrendSpansTest, InsideWhatWasReadOnlyPaperWantsTheRecordsOfItsDates)
{
    moveGraphTo({2000, 3000});
    EXPECT_EQ(need(), TrendNeed::Nothing);
    EXPECT_EQ(need(Wanted::Exact), TrendNeed::Read);
    spans.held = MomentSpan{2100, 2900};
    EXPECT_EQ(need(Wanted::Exact), TrendNeed::Nothing);
}

TEST_F(TrendSpansTest, ACutGraphTakesTheDatesAlong)
{
    chooseDates(kHour);
    spans.drawn = kOther;
    spans.datesLead = false;
    EXPECT_EQ(need(), TrendNeed::MoveDates);
}

TEST_F(TrendSpansTest, BeforeTheFirstGraphItWaits)
{
    spans.drawn.reset();
    EXPECT_EQ(need(), TrendNeed::Nothing);
    spans.asked = kHour;
    EXPECT_EQ(need(), TrendNeed::Waiting);
}

}  // namespace
