#include "plotkit/model/SeriesNarrowing.h"

#include "plotkit/model/CPTSeriesIndex.h"

#include "tests/support/EveryTarget.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <bit>
#include <cmath>
#include <limits>
#include <random>
#include <vector>

// What each target this processor has makes of the same values, against one another and against the index made from the
// floats.

namespace {

using plotkit::SeriesNarrowing;

constexpr std::size_t kWords = 20;

struct Narrowed {
    std::vector<float> y = std::vector<float>(kWords * 64, -1);
    std::vector<std::uint64_t> points = std::vector<std::uint64_t>(kWords);
    std::vector<float> least = std::vector<float>(kWords * 2);
    std::vector<float> greatest = least;
    std::vector<float> first = least;
    std::size_t done = 0;
};

class SeriesNarrowingTest : public testing::Test {
protected:
    SeriesNarrowingTest()
    {
        std::normal_distribution<double> value(0, 1e3);
        for (double& each : values)
            each = value(random);
        for (std::uint64_t& word : validity)
            word = random() % 2 == 0 ? ~std::uint64_t{0} : random() % 3 == 0 ? 0 : random();
    }

    Narrowed narrowed(const SeriesNarrowing& narrowing, const std::uint64_t* valid)
    {
        Narrowed into;
        into.done = narrowing.narrow(
            values.data(), valid, kWords,
            {into.y.data(), into.points.data(), into.least.data(), into.greatest.data(), into.first.data()});
        return into;
    }

    static void expectIndexed(const Narrowed& made)
    {
        const CPTFineBlocks blocks(made.y.size());
        for (std::size_t block = 0; block < 2 * made.done; ++block) {
            blocks.set(block, made.y.data() + 32 * block,
                       static_cast<std::uint32_t>(made.points[block / 2] >> (32 * (block % 2))));
            EXPECT_EQ(made.least[block], blocks.least()[block]);
            EXPECT_EQ(made.greatest[block], blocks.greatest()[block]);
            EXPECT_EQ(std::bit_cast<std::uint32_t>(made.first[block]),
                      std::bit_cast<std::uint32_t>(blocks.first()[block]));
        }
    }

    void expectAllAlike(const std::uint64_t* valid, std::size_t done)
    {
        const Narrowed plain = narrowed(*every.back(), valid);
        EXPECT_EQ(plain.done, done);
        for (std::size_t at = 0; at < done * 64; ++at)
            ASSERT_EQ(plain.y[at], static_cast<float>(values[at]));
        for (std::size_t word = 0; word < done; ++word)
            EXPECT_EQ(plain.points[word], valid != nullptr ? valid[word] : ~std::uint64_t{0});
        expectIndexed(plain);
        for (const SeriesNarrowing* other : every) {
            const Narrowed wide = narrowed(*other, valid);
            EXPECT_EQ(wide.done, done);
            EXPECT_TRUE(
                std::equal(wide.y.begin(), wide.y.begin() + static_cast<std::ptrdiff_t>(done) * 64, plain.y.begin()));
            EXPECT_EQ(wide.points, plain.points);
            expectIndexed(wide);
        }
    }

    /// What every target answers of the first `count` runs; all write the floats next to what is told.
    bool areRunsNarrowed(std::size_t count)
    {
        std::vector<bool> answers;
        for (const SeriesNarrowing* each : every) {
            std::vector<float> least(count), greatest(count), first(count);
            answers.push_back(each->narrowRuns({values.data(), above.data(), values.data()}, count,
                                               {least.data(), greatest.data(), first.data()}));
            for (std::size_t run = 0; answers.back() && run < count; ++run) {
                EXPECT_EQ(least[run], static_cast<float>(values[run]));
                EXPECT_EQ(greatest[run], static_cast<float>(above[run]));
                EXPECT_EQ(first[run], static_cast<float>(values[run]));
            }
        }
        EXPECT_EQ(std::count(answers.begin(), answers.end(), answers.front()), std::ssize(answers));
        return answers.front();
    }

    const std::vector<const SeriesNarrowing*> every = plotix::testing::everyTarget<SeriesNarrowing>();
    std::mt19937_64 random{11};
    std::vector<double> values = std::vector<double>(kWords * 64);
    std::vector<double> above = std::vector<double>(kWords * 64, 1e6);
    std::vector<std::uint64_t> validity = std::vector<std::uint64_t>(kWords);
};

TEST_F(SeriesNarrowingTest, WholeColumnsBecomeFloatsWithTheirIndex)
{
    expectAllAlike(nullptr, kWords);
}

TEST_F(SeriesNarrowingTest, OnlyValidValuesCount)
{
    expectAllAlike(validity.data(), kWords);
}

TEST_F(SeriesNarrowingTest, AWordWithAValueNoFloatHoldsStopsIt)
{
    const double tooLarge = 2.0 * static_cast<double>(std::numeric_limits<float>::max());
    for (const double odd : {std::nan(""), -tooLarge, std::numeric_limits<double>::infinity()}) {
        values[7 * 64 + 41] = odd;
        expectAllAlike(validity.data(), 7);
    }
}

TEST_F(SeriesNarrowingTest, WhatIsKnownOfRunsBecomesFloats)
{
    for (std::size_t count = 8; count < 40; ++count)
        EXPECT_TRUE(areRunsNarrowed(count));
}

TEST_F(SeriesNarrowingTest, RunsOfWhichTooLittleIsKnownAreLeftToTheCaller)
{
    const double tooLarge = 2.0 * static_cast<double>(std::numeric_limits<float>::max());
    for (std::size_t odd = 0; odd < 21; ++odd) {
        const double plain = values[odd];
        for (const double each : {std::nan(""), tooLarge, -tooLarge, 2e6}) {
            values[odd] = each;
            EXPECT_FALSE(areRunsNarrowed(21));
        }
        values[odd] = plain;
    }
}

TEST_F(SeriesNarrowingTest, TheLargestFloatIsStillNarrowed)
{
    values[0] = -static_cast<double>(std::numeric_limits<float>::max());
    expectAllAlike(nullptr, kWords);
}

}  // namespace
