#include "base/LargeMemory.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <cstdint>
#include <limits>
#include <new>

namespace {

constexpr std::uintptr_t kHugePage = std::uintptr_t{2} << 20;

std::uintptr_t placeOf(const std::shared_ptr<double>& numbers)
{
    return reinterpret_cast<std::uintptr_t>(numbers.get());
}

TEST(LargeMemoryTest, UnsetMemoryHoldsWhatIsWritten)
{
    for (const std::size_t count : {std::size_t{1}, std::size_t{1000}, std::size_t{3'000'001}}) {
        const std::shared_ptr<double> numbers = plotix::unsetArray<double>(count);
        EXPECT_EQ(placeOf(numbers) % 64, 0U);
        std::fill_n(numbers.get(), count, 1.5);
        EXPECT_EQ(std::count(numbers.get(), numbers.get() + count, 1.5), static_cast<std::ptrdiff_t>(count));
    }
}

TEST(LargeMemoryTest, PiecesInUseDoNotOverlap)
{
    std::vector<std::shared_ptr<double>> pieces;
    for (int round = 0; round < 2; ++round) {
        pieces.clear();
        for (int piece = 0; piece < 20; ++piece) {
            pieces.push_back(plotix::unsetArray<double>(600'000));
            std::fill_n(pieces.back().get(), 600'000, piece);
        }
        for (int piece = 0; piece < 20; ++piece)
            EXPECT_EQ(std::count(pieces[static_cast<std::size_t>(piece)].get(),
                                 pieces[static_cast<std::size_t>(piece)].get() + 600'000, piece),
                      600'000);
    }
}

TEST(LargeMemoryTest, LongColumnsBeginOnAHugePage)
{
    EXPECT_EQ(placeOf(plotix::unsetArray<double>(2'000'000)) % kHugePage, 0U);
}

TEST(LargeMemoryTest, NothingIsNull)
{
    EXPECT_EQ(plotix::unsetArray<float>(0), nullptr);
}

TEST(LargeMemoryTest, MoreThanThereCanBeIsRefused)
{
    EXPECT_THROW(plotix::unsetMemory(std::numeric_limits<std::size_t>::max()), std::bad_alloc);
    EXPECT_THROW(plotix::unsetMemory(std::numeric_limits<std::size_t>::max() / 2), std::bad_alloc);
}

}  // namespace
