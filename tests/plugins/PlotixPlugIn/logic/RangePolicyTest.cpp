#include "plugins/PlotixPlugIn/logic/RangePolicy.h"

#include <gtest/gtest.h>

#include <limits>

namespace {

constexpr CPTPlotRange kCurrentX{1.6e9, 3'600};
constexpr CPTPlotRange kCurrentY{-5, 30};
constexpr plotix::ModifierKeys kOption{.option = true};
constexpr plotix::ModifierKeys kShift{.shift = true};
constexpr plotix::ModifierKeys kBoth{.option = true, .shift = true};

class RangeVerdict : public testing::Test {
protected:
    void proposeX(const CPTPlotRange& range, plotix::ModifierKeys keys = {})
    {
        m_verdict = plotix::judgeRange(range, kCurrentX, CPTCoordinate::X, keys);
    }
    void proposeY(const CPTPlotRange& range, plotix::ModifierKeys keys = {})
    {
        m_verdict = plotix::judgeRange(range, kCurrentY, CPTCoordinate::Y, keys);
    }
    void expectAccepted(const CPTPlotRange& range) const { expect(range, true); }
    void expectNotFollowed(const CPTPlotRange& range) const { expect(range, false); }

private:
    void expect(const CPTPlotRange& range, bool accepted) const
    {
        EXPECT_EQ(m_verdict.range.location, range.location);
        EXPECT_EQ(m_verdict.range.length, range.length);
        EXPECT_EQ(m_verdict.accepted, accepted);
    }
    plotix::RangeVerdict m_verdict;
};

TEST_F(RangeVerdict, OrdinaryRangesPassUnchanged)
{
    proposeX({1.7e9, 86'400});
    expectAccepted({1.7e9, 86'400});
    proposeY({-10, 40});
    expectAccepted({-10, 40});
}

TEST_F(RangeVerdict, TooLongSpanKeepsItsLocation)
{
    proposeX({1.7e9, 4e8});
    expectNotFollowed({1.7e9, 307'584'000});
    proposeY({3, 5'000.1});
    expectNotFollowed({3, 5'000});
}

TEST_F(RangeVerdict, TooShortSpanKeepsItsLocation)
{
    proposeX({1.7e9, 0.05});
    expectNotFollowed({1.7e9, 0.1});
    proposeY({3, 0.05});
    expectNotFollowed({3, 0.1});
}

TEST_F(RangeVerdict, EmptyAndReversedSpansAreTooShort)
{
    proposeX({0, 0});
    expectNotFollowed({0, 0.1});
    proposeX({1.7e9, -3'600});
    expectNotFollowed({1.7e9, 0.1});
}

TEST_F(RangeVerdict, LimitsThemselvesAreAccepted)
{
    proposeX({1.7e9, 307'584'000});
    expectAccepted({1.7e9, 307'584'000});
    proposeX({1.7e9, 0.1});
    expectAccepted({1.7e9, 0.1});
    proposeY({0, 5'000});
    expectAccepted({0, 5'000});
    proposeY({0, 0.1});
    expectAccepted({0, 0.1});
}

TEST_F(RangeVerdict, OptionFreezesY)
{
    proposeY({0, 10}, kOption);
    expectNotFollowed(kCurrentY);
    proposeX({1.7e9, 60}, kOption);
    expectAccepted({1.7e9, 60});
}

TEST_F(RangeVerdict, ShiftFreezesX)
{
    proposeX({1.7e9, 60}, kShift);
    expectNotFollowed(kCurrentX);
    proposeY({0, 10}, kShift);
    expectAccepted({0, 10});
}

TEST_F(RangeVerdict, WithBothKeysOnlyYIsFrozen)
{
    proposeY({0, 10}, kBoth);
    expectNotFollowed(kCurrentY);
    proposeX({1.7e9, 60}, kBoth);
    expectAccepted({1.7e9, 60});
}

TEST_F(RangeVerdict, RangesThatAreNoNumbersChangeNothing)
{
    const double nan = std::numeric_limits<double>::quiet_NaN();
    proposeX({nan, 60});
    expectNotFollowed(kCurrentX);
    proposeY({0, nan});
    expectNotFollowed(kCurrentY);
    proposeX({std::numeric_limits<double>::infinity(), 60});
    expectNotFollowed(kCurrentX);
}

TEST(RangeVerdictOfAnotherCoordinate, IsTheProposalFollowedByNothing)
{
    const CPTPlotRange proposed{1, 1e12};
    const plotix::RangeVerdict expected{proposed, false};
    EXPECT_EQ(plotix::judgeRange(proposed, kCurrentX, CPTCoordinate::Z, {}), expected);
}

TEST(LiftedRangePolicyTest, ValuesMayBeOfAnyLengthThatCanBeTold)
{
    const auto judged = [](double location, double length) {
        return plotix::judgeRange({location, length}, {0, 1}, CPTCoordinate::Y, {}, plotix::ValueLimits::Lifted);
    };
    EXPECT_EQ(judged(0, 1e9), (plotix::RangeVerdict{{0, 1e9}, true}));
    EXPECT_EQ(judged(1.8, 0.001), (plotix::RangeVerdict{{1.8, 0.001}, true}));
    EXPECT_EQ(judged(5, 0), (plotix::RangeVerdict{{5, 0.1}, false}));
    EXPECT_EQ(plotix::judgeRange({0, 4e8}, {0, 1}, CPTCoordinate::X, {}, plotix::ValueLimits::Lifted).accepted, false);
}

}  // namespace
