#include "records/columns/ColumnKernels.h"
#include "records/columns/PackedColumn.h"
#include "records/columns/PackedEncoder.h"

#include "tests/records/columns/ColumnCodecFixture.h"
#include "tests/support/EveryTarget.h"

#include <array>

// The loops for each target this processor has against those that go through one number at a time: not one bit may
// differ.

namespace {

using namespace codectest;
using plotix::ColumnKernels;
using plotix::PackedColumn;
using plotix::PackedEncoder;

constexpr std::size_t kRun = ColumnKernels::kRun;
using Numbers = std::array<std::uint64_t, kRun>;
using Reals = std::array<double, kRun>;
using Mask = std::array<std::uint64_t, ColumnKernels::kMask>;

class ColumnKernelsTest : public ColumnCodecFixture {
protected:
    Numbers numbersBelow(std::uint64_t limit)
    {
        Numbers numbers;
        for (std::uint64_t& number : numbers)
            number = limit == 0 ? 0 : random() % limit;
        return numbers;
    }
    Mask someBits()
    {
        Mask mask;
        for (std::uint64_t& word : mask)
            word = random() % 3 == 0 ? ~std::uint64_t{0} : random();
        return mask;
    }
    static std::vector<std::byte> packed(const ColumnKernels& kernels, const Numbers& numbers, std::uint64_t width,
                                         std::size_t rows = 64)
    {
        std::vector<std::byte> words(PackedColumn::bytesOf(rows * ColumnKernels::kRow, width));
        kernels.pack(numbers.data(), 0, 0, width, rows, words.data());
        return words;
    }
    static Reals patterns(const ColumnKernels& kernels, const std::vector<std::byte>& words, std::uint64_t width,
                          std::uint64_t base, std::uint64_t slope, ColumnKernels::Pattern pattern)
    {
        Reals values;
        const std::vector<std::byte> nothing(64);
        kernels.patterns({width == 0 ? nothing.data() : words.data(), width, base, slope}, pattern, values.data());
        return values;
    }
    static bool areSame(const Reals& one, const Reals& other) { return codectest::areSame(&one[0], &other[0], kRun); }

    const std::vector<const ColumnKernels*> every = plotix::testing::everyTarget<ColumnKernels>();
    const ColumnKernels& plain = *every.back();
    const std::vector<const ColumnKernels*> others{every.begin(), every.end() - 1};
};

TEST_F(ColumnKernelsTest, NumbersOfEveryWidthPackAndUnpack)
{
    for (std::uint64_t width = 0; width <= 64; ++width) {
        const Numbers numbers = numbersBelow(width == 64 ? ~std::uint64_t{0} : (std::uint64_t{1} << width));
        const std::vector<std::byte> words = packed(plain, numbers, width);
        const Reals values = patterns(plain, words, width, 0, 0, {});
        EXPECT_EQ(std::memcmp(values.data(), numbers.data(), sizeof values), 0) << width;
        for (const ColumnKernels* other : others) {
            EXPECT_EQ(packed(*other, numbers, width), words) << width;
            EXPECT_TRUE(areSame(patterns(*other, words, width, 0, 0, {}), values)) << width;
        }
    }
}

TEST_F(ColumnKernelsTest, RowsPackAlike)
{
    const Numbers numbers = numbersBelow(1U << 11);
    for (std::size_t rows = 1; rows <= 64; ++rows)
        for (const ColumnKernels* other : others)
            EXPECT_EQ(packed(*other, numbers, 11, rows), packed(plain, numbers, 11, rows)) << rows;
}

TEST_F(ColumnKernelsTest, PatternsUnpackAlike)
{
    for (int round = 0; round < 500; ++round) {
        const std::uint64_t width = random() % 65, base = random(), slope = random();
        const std::vector<std::byte> words = packed(plain, numbersBelow(~std::uint64_t{0}), 64);
        const ColumnKernels::Pattern pattern{random() % 64, round % 2 == 0};
        const Reals expected = patterns(plain, words, width, base, slope, pattern);
        for (const ColumnKernels* other : others)
            EXPECT_TRUE(areSame(patterns(*other, words, width, base, slope, pattern), expected));
    }
}

TEST_F(ColumnKernelsTest, QuotientsAreThoseOfADivision)
{
    for (int round = 0; round < 20'000; ++round) {
        const std::uint64_t digits = random() % (PackedColumn::kMostDigits + 1), width = random() % 52;
        const ColumnKernels::Scale scale = PackedColumn::scaleOf(static_cast<unsigned>(digits));
        const Numbers numbers = numbersBelow(std::uint64_t{1} << width);
        const std::uint64_t base = round % 2 == 0 ? 0 : std::uint64_t{0} - (std::uint64_t{1} << width);
        const std::vector<std::byte> words = packed(plain, numbers, width);
        const std::vector<std::byte> nothing(64);
        const ColumnKernels::Packed run{width == 0 ? nothing.data() : words.data(), width, base, 0};
        Reals expected;
        for (std::size_t i = 0; i < kRun; ++i)
            expected[i] = static_cast<double>(static_cast<std::int64_t>(numbers[i] + base)) / scale.up;
        Reals values;
        plain.quotients(run, scale, values.data());
        ASSERT_TRUE(areSame(values, expected));
        for (const ColumnKernels* other : others) {
            other->quotients(run, scale, values.data());
            ASSERT_TRUE(areSame(values, expected));
        }
    }
}

TEST_F(ColumnKernelsTest, AnyBytesMultiplyAndDivideAlike)
{
    const Numbers numbers = numbersBelow(~std::uint64_t{0} >> 14);
    const std::vector<std::byte> words = packed(plain, numbers, 50);
    for (int round = 0; round < 200; ++round) {
        const ColumnKernels::Packed run{words.data(), 50, random() >> 15, random() % 1000};
        const ColumnKernels::Scale scale = PackedColumn::scaleOf(static_cast<unsigned>(random() % 10));
        Reals quotients;
        Reals products;
        plain.quotients(run, scale, quotients.data());
        plain.products(run, scale, products.data());
        for (const ColumnKernels* other : others) {
            Reals values;
            other->quotients(run, scale, values.data());
            EXPECT_TRUE(areSame(values, quotients));
            other->products(run, scale, values.data());
            EXPECT_TRUE(areSame(values, products));
        }
    }
}

TEST_F(ColumnKernelsTest, BlanksAreFilledAlike)
{
    for (int round = 0; round < 50; ++round) {
        const Values before = randomBits(kRun);
        const Mask mask = someBits();
        for (const ColumnKernels* kernels : every) {
            Values values = before;
            kernels->blank(mask.data(), kAbsent, values.data());
            for (std::size_t i = 0; i < kRun; ++i)
                ASSERT_TRUE(
                    codectest::areSame(&values[i], ((mask[i / 64] >> (i % 64)) & 1U) != 0 ? &before[i] : &kAbsent, 1));
        }
    }
}

TEST_F(ColumnKernelsTest, WhatIsPutPastCachesStandsWhereItShouldAndNowhereElse)
{
    const Values values = randomBits(kRun);
    for (const ColumnKernels* kernels : every)
        for (std::size_t at = 0; at < 20; ++at) {
            Values room(kRun + 40, kAbsent);
            kernels->putPastCaches(values.data(), room.data() + at);
            kernels->endPuttingPast();
            Values expected(kRun + 40, kAbsent);
            std::copy(values.begin(), values.end(), expected.begin() + static_cast<std::ptrdiff_t>(at));
            ASSERT_TRUE(codectest::areSame(room.data(), expected.data(), room.size())) << at;
        }
}

TEST_F(ColumnKernelsTest, EveryProcessorWritesTheSameBytes)
{
    for (int round = 0; round < 100; ++round) {
        const std::size_t count = 9 + random() % 2000;
        const Words valid = validity(count, 0.9);
        Values values = round % 2 == 0 ? decimals(count, static_cast<int>(random() % 7)) : walk(count, 0, 1);
        makeAbsentWhereInvalid(values, valid);
        values[random() % count] = doubleOf(random());
        const std::uint64_t* hint = round % 3 == 0 ? nullptr : valid.data();
        const auto decimal = PackedEncoder(values, hint, 0, plain).decimals();
        const auto pattern = PackedEncoder(values, hint, 0, plain).patterns();
        for (const ColumnKernels* other : others) {
            EXPECT_EQ(PackedEncoder(values, hint, 0, *other).decimals().bytes, decimal.bytes);
            EXPECT_EQ(PackedEncoder(values, hint, 0, *other).patterns().bytes, pattern.bytes);
        }
    }
}

TEST_F(ColumnKernelsTest, EveryProcessorSumsUpAlike)
{
    for (int round = 0; round < 200; ++round) {
        Values values = round % 2 == 0 ? walk(kRun, 0, 1) : randomBits(kRun);
        const Mask mask = someBits();
        const ColumnKernels::Sum all = plain.sumOfAll(values.data());
        const ColumnKernels::Sum some = plain.sumOfSome(values.data(), mask.data());
        for (const ColumnKernels* other : others) {
            const ColumnKernels::Sum otherAll = other->sumOfAll(values.data());
            const ColumnKernels::Sum otherSome = other->sumOfSome(values.data(), mask.data());
            EXPECT_EQ(std::isnan(otherAll.sum), std::isnan(all.sum));
            EXPECT_TRUE(std::isnan(all.sum) || std::memcmp(&otherAll, &all, sizeof all) == 0);
            EXPECT_EQ(otherSome.count, some.count);
            EXPECT_TRUE(codectest::areSame(&otherSome.minimum, &some.minimum, 1));
            EXPECT_TRUE(codectest::areSame(&otherSome.maximum, &some.maximum, 1));
            EXPECT_TRUE(std::isnan(some.sum) ? std::isnan(otherSome.sum) : otherSome.sum == some.sum);
        }
    }
}

TEST_F(ColumnKernelsTest, AllAndSomeAddInTheSameOrder)
{
    Mask everything;
    everything.fill(~std::uint64_t{0});
    for (int round = 0; round < 50; ++round) {
        const Values values = walk(kRun, 1, 1);
        const ColumnKernels::Sum all = plain.sumOfAll(values.data());
        const ColumnKernels::Sum some = plain.sumOfSome(values.data(), everything.data());
        EXPECT_EQ(std::memcmp(&all, &some, sizeof all), 0);
    }
}

}  // namespace
