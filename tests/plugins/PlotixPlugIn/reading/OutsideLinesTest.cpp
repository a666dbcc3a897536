#include "plugins/PlotixPlugIn/reading/OutsideLines.h"

#include <gtest/gtest.h>

namespace {

using namespace plotix;

const std::vector<LineReach> kLines{{"Power", -9'000, 9'000}, {"State", 0, 6}, {"Level", -8'000, -7'000}};

TEST(OutsideLinesTest, TheLongestRangeTellsWhatReachesBeyondIt)
{
    EXPECT_EQ(outsideLines(kLines, {-9'000, 5'000}), (OutsideLines{OutsideLines::Kind::Outside, {"Power", "State"}}));
    EXPECT_EQ(outsideLines({kLines[1]}, {0, 5'000}), OutsideLines());
}

TEST(OutsideLinesTest, TheShortestRangeTellsWhatItDrawsFlat)
{
    const std::vector<LineReach> lines{{"Wave", 1.8, 1.801}, {"Constant", 1.8, 1.8}, {"Steep", 1.8, 1.9}};
    EXPECT_EQ(outsideLines(lines, {1.8, 0.1}), (OutsideLines{OutsideLines::Kind::Flat, {"Wave"}}));
}

TEST(OutsideLinesTest, ARangeOfTheUsersOwnTellsNothing)
{
    EXPECT_EQ(outsideLines(kLines, {0, 100}), OutsideLines());
    EXPECT_EQ(outsideLines({}, {0, 5'000}), OutsideLines());
}

TEST(OutsideLinesTest, LongListsAreCutShort)
{
    EXPECT_EQ(shortList({"A", "B"}), "A, B");
    EXPECT_EQ(shortList({"A", "B", "C", "D", "E"}), "A, B, C +2");
}

}  // namespace
