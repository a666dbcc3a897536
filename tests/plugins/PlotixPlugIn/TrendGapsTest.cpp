#include "TrendViewFixture.h"

#include <cmath>

// Lines that break where nothing was recorded, as a choice of the trend.

namespace {

class TrendGaps : public TrendViewFixture {
protected:
    void openWith(std::vector<double> seconds)
    {
        for (double& second : seconds)
            second += kFrom;
        openTrend();
        answer(recordsAt(seconds).column("airTemperature", std::vector<double>(seconds.size(), 20.0)));
    }
    void choose(const QVariantMap& options) { trend().setReading(options); }
    double threshold() { return trend().graph()->allPlots().front()->gapThreshold(); }
    QImage picture() { return trend().graphImageWithSize({600, 400}, 1, {}); }
};

TEST_F(TrendGaps, AreJoinedUnlessChosen)
{
    openWith({0, 60, 120, 180, 1800, 1860});
    EXPECT_TRUE(std::isinf(threshold()));
    EXPECT_FALSE(archived().contains("reading"));
}

TEST_F(TrendGaps, BeginFarAboveTheUsualDistance)
{
    openWith({0, 60, 120, 180, 1800, 1860});
    const QImage joined = picture();
    choose({{"brokenLines", true}});
    EXPECT_EQ(threshold(), 300);
    EXPECT_NE(picture(), joined);
    choose({{"brokenLines", false}});
    EXPECT_EQ(picture(), joined);
}

TEST_F(TrendGaps, OrAtADistanceOfOnesOwn)
{
    openWith({0, 60, 120, 180, 1800, 1860});
    choose({{"brokenLines", true}, {"longestJoin", 3600.0}});
    EXPECT_EQ(threshold(), 3600);
    choose({{"longestJoin", 0.0}});
    EXPECT_EQ(threshold(), 300);
}

TEST_F(TrendGaps, AreThoseOfTheRecordsShownNow)
{
    openWith({0, 60, 120});
    choose({{"brokenLines", true}});
    answerRefresh(recordsAt({kFrom, kFrom + 10, kFrom + 20}).column("airTemperature", {1, 2, 3}));
    EXPECT_EQ(threshold(), 50);
}

TEST_F(TrendGaps, TheChoiceIsArchived)
{
    openWith({0, 60, 120});
    choose({{"brokenLines", true}, {"longestJoin", 600.0}});
    EXPECT_EQ(encodedAndDecoded()->reading(), (QVariantMap{{"brokenLines", true}, {"longestJoin", 600.0}}));
}

}  // namespace
