#include "plugins/PlotixPlugIn/reading/lanes/LaneScale.h"
#include "plugins/PlotixPlugIn/reading/lanes/OffScaleMarks.h"
#include "tests/plotkit/model/PagedSeriesMaking.h"

#include <gtest/gtest.h>

#include <bit>

namespace {

using namespace plotix;

/// What lanes make of a series in memory and of the same in pages.
class PagedLanesTest : public testing::TestWithParam<unsigned> {
protected:
    void SetUp() override
    {
        plotkit_test::OddSeries wanted{.count = 50'000, .seed = GetParam()};
        wanted.dropped = GetParam() % 2 == 0 ? 0 : 0.1;
        wanted.odd = GetParam() % 3 == 0 ? 0 : 0.01;
        m_twin = plotkit_test::oddTwin(wanted);
        m_one = m_twin.inMemory();
        m_other = m_twin.paged(1 << 20);
    }
    plotkit_test::TwinSeries m_twin;
    CPTPointSeriesPtr m_one, m_other;
};

TEST_P(PagedLanesTest, LogarithmsAreTheSame)
{
    const CPTPointSeriesPtr one = logarithmicSeries(*m_one), other = logarithmicSeries(*m_other);
    ASSERT_TRUE(other->runs());
    ASSERT_TRUE(one->extent() && other->extent());
    EXPECT_EQ(one->extent()->minY, other->extent()->minY);
    EXPECT_EQ(one->extent()->maxY, other->extent()->maxY);
    const CPTPointSeries::Hold held = other->hold(0, other->elementCount());
    for (std::size_t element = 0; element < one->elementCount(); ++element) {
        ASSERT_EQ(one->isPoint(element), other->isPoint(element)) << element;
        if (one->isPoint(element)) {
            ASSERT_EQ(std::bit_cast<std::uint32_t>(one->y()[element]),
                      std::bit_cast<std::uint32_t>(other->y()[element]));
        }
    }
}

TEST_P(PagedLanesTest, UsualValuesAreTheSame)
{
    const auto one = usualValues(*m_one), other = usualValues(*m_other);
    ASSERT_EQ(one.has_value(), other.has_value());
    EXPECT_EQ(one->lowest, other->lowest);
    EXPECT_EQ(one->highest, other->highest);
}

TEST_P(PagedLanesTest, ValuesOffTheScaleAreTheSame)
{
    const OffScaleRuns one = offScaleRuns(*m_one, 77, 49'000, -2, 3, 40),
                       other = offScaleRuns(*m_other, 77, 49'000, -2, 3, 40);
    for (const auto side : {&OffScaleRuns::below, &OffScaleRuns::above}) {
        ASSERT_EQ((one.*side).size(), (other.*side).size());
        for (std::size_t run = 0; run < (one.*side).size(); ++run) {
            EXPECT_EQ((one.*side)[run].first, (other.*side)[run].first);
            EXPECT_EQ((one.*side)[run].count, (other.*side)[run].count);
            EXPECT_EQ((one.*side)[run].farthest, (other.*side)[run].farthest);
        }
    }
}

INSTANTIATE_TEST_SUITE_P(Series, PagedLanesTest, testing::Range(1U, 7U));

}  // namespace
