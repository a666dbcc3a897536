#include "records/columns/ValidityBits.h"

#include <gtest/gtest.h>

#include <random>
#include <vector>

namespace {

namespace bits = plotix::bits;

using Words = std::vector<std::uint64_t>;

bool bitOf(const Words& words, std::size_t index)
{
    return ((words[index / 64] >> (index % 64)) & 1U) != 0;
}

TEST(ValidityBitsTest, CopiesARunFromAnyPositionToAnyPosition)
{
    std::mt19937_64 random(1);
    for (int round = 0; round < 500; ++round) {
        const Words from{random(), random(), random(), random()}, before{random(), random(), random(), random()};
        const std::size_t first = random() % 64, target = random() % 64, count = random() % 190;
        Words to = before;
        bits::copy(from.data(), first, to.data(), target, count);
        for (std::size_t i = 0; i < 256; ++i) {
            const bool inside = i >= target && i < target + count;
            ASSERT_EQ(bitOf(to, i), inside ? bitOf(from, first + i - target) : bitOf(before, i));
        }
    }
}

TEST(ValidityBitsTest, NoSourceMeansAllValid)
{
    Words to(2, 0);
    bits::copy(nullptr, 5, to.data(), 3, 70);
    EXPECT_EQ(to[0], ~std::uint64_t{0} << 3);
    EXPECT_EQ(to[1], std::uint64_t{0x1FF});
    EXPECT_TRUE(bits::allSet(nullptr, 0, 1000));
}

TEST(ValidityBitsTest, AllSetLooksAtTheRunAlone)
{
    const Words words{~std::uint64_t{1}, 0x0F};
    EXPECT_FALSE(bits::allSet(words.data(), 0, 64));
    EXPECT_TRUE(bits::allSet(words.data(), 1, 67));
    EXPECT_FALSE(bits::allSet(words.data(), 1, 68));
    EXPECT_TRUE(bits::allSet(words.data(), 0, 0));
}

}  // namespace
