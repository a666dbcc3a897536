#include "plugins/PlotixPlugIn/reading/values/QualityCounts.h"

#include "tests/plugins/PlotixPlugIn/reading/values/RecordedLine.h"

#include <gtest/gtest.h>

namespace {

using namespace plotix;
using Kind = KTVAmendment::Kind;

/// Records a second apart, of which some are not valid and some never came.
class QualityCountsTest : public testing::Test {
protected:
    QualityCountsTest()
    {
        for (int second = 0; second < 200; ++second)
            m_line.add(second, second % 10 == 9 ? std::nan("") : second);
    }
    QualityCounts counts(const TimeSpan& within, const std::vector<KTVAmendment>& amendments = {}) const
    {
        return countQuality(*m_line.records().column, SharedArray<double>::fromVector(m_line.times), within,
                            amendments);
    }

    plotix_test::RecordedLine m_line;
    const TimeSpan m_all{0, 199};
};

TEST_F(QualityCountsTest, WhatNeverCameCountsNowhere)
{
    EXPECT_EQ(counts(m_all), QualityCounts());
    m_line.notValid = {9, 19};
    EXPECT_EQ(counts(m_all), QualityCounts());
}

TEST_F(QualityCountsTest, WhatCameAndIsNotValidIsCountedInTheSpan)
{
    m_line.notValid = {0, 9, 63, 64, 130, 198};
    EXPECT_EQ(counts(m_all).notValid, 5);
    EXPECT_EQ(counts({63, 130}).notValid, 3);
    EXPECT_EQ(counts({64.5, 129.5}).notValid, 0);
    EXPECT_EQ(counts({300, 400}).notValid, 0);
}

TEST_F(QualityCountsTest, RecordsOfAStretchThatCameLateAreCountedOnce)
{
    EXPECT_EQ(counts(m_all, {{Kind::Late, 10, 28, 50, 50}}), (QualityCounts{0, 18, 0}));
    EXPECT_EQ(counts(m_all, {{Kind::Late, 20, 28, 50, 50}, {Kind::Late, 10, 24, 50, 50}}).late, 18);
    EXPECT_EQ(counts(m_all, {{Kind::Late, 10, 28, 50, 50}, {Kind::Late, 12, 14, 50, 50}}).late, 18);
    EXPECT_EQ(counts({0, 12}, {{Kind::Late, 10, 28, 50, 50}}).late, 3);
}

TEST_F(QualityCountsTest, LateAndCorrectedAreCountedApart)
{
    EXPECT_EQ(counts(m_all, {{Kind::Late, 0, 3, 50, 50}, {Kind::Corrected, 2, 2, 60, 60}}), (QualityCounts{0, 4, 1}));
}

}  // namespace
