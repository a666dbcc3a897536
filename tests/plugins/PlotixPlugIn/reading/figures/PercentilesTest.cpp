#include "plugins/PlotixPlugIn/reading/figures/Percentiles.h"

#include "tests/plugins/PlotixPlugIn/reading/figures/LineFixture.h"

#include <algorithm>
#include <bit>

namespace {

const std::vector<double> kShares{0, 0.01, 0.05, 0.25, 0.5, 0.75, 0.95, 0.999, 1};

class PercentilesTest : public LineFixture {
protected:
    void expectExact(double from, double to)
    {
        std::vector<double> sorted;
        for (const auto& point : points(from, to))
            sorted.push_back(point.value);
        std::sort(sorted.begin(), sorted.end());
        const auto found = plotix::percentiles(*line, from, to, kShares);
        ASSERT_TRUE(found);
        for (std::size_t i = 0; i < kShares.size(); ++i) {
            const double place = kShares[i] * static_cast<double>(sorted.size() - 1);
            const auto low = static_cast<std::size_t>(place);
            const double next = sorted[std::min(low + 1, sorted.size() - 1)];
            const double part = place - std::floor(place);
            EXPECT_EQ((*found)[i], sorted[low] + (next - sorted[low]) * part) << kShares[i];
        }
    }
    double median(double from, double to)
    {
        return plotix::percentiles(*line, from, to, std::vector<double>{0.5})->front();
    }
};

TEST_F(PercentilesTest, AreThoseOfTheSortedValues)
{
    recordMany(50'000);
    summarise(60);
    expectExact(times.front(), times.back());
    expectExact(times[3'000] + 0.1, times[44'444]);
}

TEST_F(PercentilesTest, AreExactForValuesOfVeryUnlikeSizes)
{
    for (int i = 0; i < 20'000; ++i)
        record(i, std::bit_cast<double>((random() & ~(std::uint64_t{0x7FF} << 52)) | (1 + random() % 2000) << 52));
    summarise(60);
    expectExact(0, 20'000);
}

// More values in one bin than are sorted as they are: the bin itself is searched.
TEST_F(PercentilesTest, AreExactWhereNearlyAllValuesAreAlike)
{
    record(0, -1e300);
    record(1, 1e300);
    for (int i = 2; i < 1'300'000; ++i)
        record(i, 20 + static_cast<double>(random() % 100'000) * 1e-9);
    summarise(60);
    expectExact(0, 1'300'000);
}

TEST_F(PercentilesTest, OfTwoValuesTheMedianIsHalfway)
{
    record(0, 1);
    record(1, 2);
    summarise(60);
    EXPECT_EQ(median(0, 1), 1.5);
}

TEST_F(PercentilesTest, OfEqualValuesTheMedianIsTheirValue)
{
    for (int i = 0; i < 10'000; ++i)
        record(i, -0.1);
    summarise(60);
    EXPECT_EQ(median(0, 1e9), -0.1);
}

TEST_F(PercentilesTest, WithoutValuesThereIsNone)
{
    record(0, kNone);
    summarise(60);
    EXPECT_TRUE(std::isnan(median(0, 1)));
}

TEST_F(PercentilesTest, StopsWhenItIsTold)
{
    recordMany(10'000);
    summarise(60);
    std::stop_source stop;
    stop.request_stop();
    EXPECT_FALSE(plotix::percentiles(*line, 0, 2e9, kShares, {stop.get_token(), {}}));
}

}  // namespace
