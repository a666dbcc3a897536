#include "records/columns/ColumnSummary.h"

#include "tests/records/columns/ColumnCodecFixture.h"

// Against adding up one after the other in a wider type.

namespace {

using namespace codectest;
using plotix::Summary;

constexpr double kInfinity = std::numeric_limits<double>::infinity();

class ColumnSummaryTest : public ColumnCodecFixture {
protected:
    static Summary of(const Values& values, const Words& valid = {}, std::size_t firstValid = 0)
    {
        return plotix::summaryOf({values.data(), valid.empty() ? nullptr : valid.data(), firstValid}, values.size());
    }
    static void expectRight(const Values& values, const Words& valid = {}, std::size_t firstValid = 0)
    {
        std::size_t count = 0;
        double minimum = 0, maximum = 0;
        long double sum = 0, magnitudes = 0;
        for (std::size_t i = 0; i < values.size(); ++i) {
            const std::size_t bit = firstValid + i;
            if (std::isnan(values[i]) || (!valid.empty() && ((valid[bit / 64] >> (bit % 64)) & 1U) == 0))
                continue;
            minimum = count == 0 ? values[i] : std::min(minimum, values[i]);
            maximum = count == 0 ? values[i] : std::max(maximum, values[i]);
            sum += static_cast<long double>(values[i]);
            magnitudes += static_cast<long double>(std::abs(values[i]));
            ++count;
        }
        const Summary summary = of(values, valid, firstValid);
        EXPECT_EQ(summary.valid, count);
        EXPECT_EQ(summary.minimum, minimum);
        EXPECT_EQ(summary.maximum, maximum);
        EXPECT_NEAR(summary.sum, static_cast<double>(sum), static_cast<double>(magnitudes) * 1e-15);
    }
};

TEST_F(ColumnSummaryTest, NothingSumsUpToNothing)
{
    for (const Values& values : {Values(), Values(3, kAbsent), Values(5000, kAbsent)}) {
        const Summary summary = of(values);
        EXPECT_EQ(summary.valid, 0U);
        EXPECT_EQ(summary.minimum, 0);
        EXPECT_EQ(summary.maximum, 0);
        EXPECT_EQ(summary.sum, 0);
    }
}

TEST_F(ColumnSummaryTest, ColumnsOfEveryLengthSumUp)
{
    for (std::size_t count = 1; count < 1100; count += 7)
        expectRight(walk(count, 1, 1));
    expectRight(walk(300'000, 100, 1));
}

TEST_F(ColumnSummaryTest, NegativeColumnsHaveANegativeMaximum)
{
    expectRight(walk(5000, -1e6, 1));
}

TEST_F(ColumnSummaryTest, NaNIsPassedOver)
{
    Values values = walk(5000, 10, 1);
    for (int times = 0; times < 9; ++times)
        values[random() % 5000] = kAbsent;
    expectRight(values);
}

TEST_F(ColumnSummaryTest, WhatIsNotValidIsPassedOver)
{
    for (const std::size_t first : {std::size_t{0}, std::size_t{1}, std::size_t{63}, std::size_t{100}}) {
        Values values = walk(3000, 10, 1);
        const Words valid = validity(first + 3000, 0.6);
        values[200] = 1e30;
        Words without = valid;
        without[(first + 200) / 64] &= ~(std::uint64_t{1} << ((first + 200) % 64));
        expectRight(values, without, first);
    }
}

TEST_F(ColumnSummaryTest, InfinitiesCount)
{
    Values values = walk(2000, 10, 1);
    values[700] = kInfinity;
    EXPECT_EQ(of(values).maximum, kInfinity);
    EXPECT_EQ(of(values).sum, kInfinity);
    values[1500] = -kInfinity;
    EXPECT_EQ(of(values).minimum, -kInfinity);
    EXPECT_EQ(of(values).valid, 2000U);
    EXPECT_TRUE(std::isnan(of(values).sum));
    values[701] = -kInfinity;
    EXPECT_EQ(of(values).valid, 2000U);
    EXPECT_TRUE(std::isnan(of(values).sum));
}

TEST_F(ColumnSummaryTest, OnlyInfinitiesHaveInfiniteExtremes)
{
    EXPECT_EQ(of(Values(10, kInfinity)).minimum, kInfinity);
    EXPECT_EQ(of(Values(10, -kInfinity)).maximum, -kInfinity);
}

TEST_F(ColumnSummaryTest, LongColumnsLoseNothing)
{
    EXPECT_DOUBLE_EQ(of(Values(3'000'000, 0.1)).sum, 300'000);
}

}  // namespace
