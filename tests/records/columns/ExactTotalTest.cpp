#include "records/columns/ExactTotal.h"

#include "tests/records/columns/ColumnCodecFixture.h"

#include <bit>

// Against sums kept as many doubles that do not overlap, another exact way.

namespace {

using namespace codectest;
using plotix::ExactTotal;

constexpr double kInfinity = std::numeric_limits<double>::infinity();

class ExactTotalTest : public ColumnCodecFixture {
protected:
    static std::uint64_t bitsOf(double value) { return std::bit_cast<std::uint64_t>(value); }
    static ExactTotal of(const Values& values)
    {
        ExactTotal total;
        for (const double value : values)
            total.add(value);
        return total;
    }
    /// The sum as doubles that do not overlap, least first.
    static Values parts(const Values& values)
    {
        Values kept;
        for (double value : values) {
            std::size_t used = 0;
            for (double other : kept) {
                if (std::abs(value) < std::abs(other))
                    std::swap(value, other);
                const double sum = value + other;
                const double lost = other - (sum - value);
                if (lost != 0)
                    kept[used++] = lost;
                value = sum;
            }
            kept.resize(used);
            kept.push_back(value);
        }
        return kept;
    }
    static ExactTotal minus(const Values& values, const ExactTotal& from)
    {
        ExactTotal left = from;
        for (const double value : values)
            left.add(-value);
        return left;
    }
    /// Whether no double is nearer to the sum ÷ count.
    static void expectNearest(double mean, const ExactTotal& sum, std::size_t count)
    {
        for (const double direction : {kInfinity, -kInfinity}) {
            const double half = (std::nextafter(mean, direction) - mean) / 2;
            ExactTotal beyond = sum;
            for (std::size_t i = 0; i < count; ++i) {
                beyond.add(-mean);
                beyond.add(-half);
            }
            EXPECT_TRUE(direction > 0 ? beyond.value() <= 0 : beyond.value() >= 0) << mean << " of " << count;
        }
    }
    Values wild(std::size_t count)
    {
        Values values = randomBits(count);
        std::erase_if(values, [](double value) { return !std::isfinite(value) || std::abs(value) > 1e300; });
        return values;
    }
};

TEST_F(ExactTotalTest, NothingIsZero)
{
    EXPECT_EQ(of({}).value(), 0);
    EXPECT_EQ(of({-0.0, -0.0}).value(), 0);
    EXPECT_TRUE(of({}).written().bytes().empty());
}

TEST_F(ExactTotalTest, WhatRoundingWouldTakeIsKept)
{
    EXPECT_EQ(of({1e300, 1, -1e300}).value(), 1);
    EXPECT_EQ(of({1e-300, 1e300, 5e-324, -1e300, -1e-300}).value(), 5e-324);
    EXPECT_EQ(of({0.1, 0.2, -0.3}).value(), 0x1p-55);  // what these three are off from tenths
}

TEST_F(ExactTotalTest, AnyValuesAreSummedWithoutError)
{
    for (int round = 0; round < 50; ++round) {
        const Values values = round % 2 == 0 ? wild(300) : walk(300, 0, 1e-3);
        EXPECT_TRUE(minus(parts(values), of(values)) == ExactTotal());
    }
}

TEST_F(ExactTotalTest, OrderAndPartsDoNotMatter)
{
    Values values = wild(2000);
    const ExactTotal whole = of(values);
    std::shuffle(values.begin(), values.end(), random);
    ExactTotal joined = of({values.begin(), values.begin() + 700});
    joined.add(of({values.begin() + 700, values.end()}));
    EXPECT_TRUE(joined == whole);
    EXPECT_EQ(bitsOf(joined.value()), bitsOf(whole.value()));
}

TEST_F(ExactTotalTest, AMeanIsTheNearestDouble)
{
    for (std::size_t count = 1; count < 400; count += 13) {
        const Values values = decimals(count, 2);
        expectNearest(of(values).mean(count), of(values), count);
    }
}

TEST_F(ExactTotalTest, HalfWayGoesToTheEvenDouble)
{
    EXPECT_EQ(of({1, 0x1p-53}).value(), 1);
    EXPECT_EQ(of({1, 0x1p-52, 0x1p-53}).value(), 1 + 0x1p-51);
    EXPECT_EQ(of({1, 0x1p-53, 5e-324}).value(), 1 + 0x1p-52);
    EXPECT_EQ(of({5e-324}).mean(2), 0);
    EXPECT_EQ(of({5e-324, 1e-323}).mean(2), 1e-323);
}

TEST_F(ExactTotalTest, AMeanNeedNotOverflowWhereTheSumDoes)
{
    const double most = std::numeric_limits<double>::max();
    EXPECT_EQ(of({most, most}).value(), kInfinity);
    EXPECT_EQ(of({most, most}).mean(2), most);
    EXPECT_EQ(of({-most, -most, -most}).mean(3), -most);
}

TEST_F(ExactTotalTest, InfinitiesGoAsTheyDoInSums)
{
    EXPECT_EQ(of({1, kInfinity}).mean(2), kInfinity);
    EXPECT_EQ(of({-kInfinity, 1e308}).value(), -kInfinity);
    EXPECT_TRUE(std::isnan(of({kInfinity, -kInfinity}).value()));
}

TEST_F(ExactTotalTest, WrittenItIsReadBackTheSame)
{
    for (int round = 0; round < 200; ++round) {
        const ExactTotal total = of(round % 2 == 0 ? wild(random() % 20) : decimals(1 + random() % 600, 1));
        const ExactTotal::Written written = total.written();
        ExactTotal read;
        read.add(written.at, written.bytes());
        EXPECT_TRUE(read == total);
        EXPECT_TRUE(written.size == 0 || written.bytes().front() != std::byte{0});
    }
}

}  // namespace
