#include "plugins/PlotixPlugIn/reading/moves/RangeHistory.h"

#include <gtest/gtest.h>

namespace {

using plotix::RangeHistory;

class RangeHistoryTest : public testing::Test {
protected:
    static QVariantMap view(int number) { return {{QStringLiteral("times"), number}}; }
    void look(std::initializer_list<int> numbers)
    {
        for (const int number : numbers)
            history.add(view(number));
    }
    RangeHistory history;
};

TEST_F(RangeHistoryTest, GoesBackAndForward)
{
    look({1, 2, 3});
    EXPECT_EQ(history.back(), view(2));
    EXPECT_EQ(history.back(), view(1));
    EXPECT_FALSE(history.canGoBack());
    EXPECT_EQ(history.forward(), view(2));
}

TEST_F(RangeHistoryTest, TheSameViewIsOne)
{
    look({1, 2, 2});
    EXPECT_EQ(history.back(), view(1));
}

TEST_F(RangeHistoryTest, ANewViewForgetsWhatWasAhead)
{
    look({1, 2});
    history.back();
    look({3});
    EXPECT_FALSE(history.canGoForward());
    EXPECT_EQ(history.back(), view(1));
}

TEST_F(RangeHistoryTest, ForgetsTheOldest)
{
    for (int number = 0; number < 60; ++number)
        look({number});
    int steps = 0;
    while (history.back())
        ++steps;
    EXPECT_EQ(steps, int(RangeHistory::kMost) - 1);
}

TEST_F(RangeHistoryTest, AtEitherEndNothingHappens)
{
    EXPECT_FALSE(history.back());
    look({1});
    EXPECT_FALSE(history.back());
    EXPECT_FALSE(history.forward());
}

}  // namespace
