#include "base/LargeMemory.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <cstdint>

namespace {

TEST(LargeMemoryTest, EveryLengthBeginsAsZerosAndCanBeWritten)
{
    for (const std::size_t count : {std::size_t{1}, std::size_t{1000}, std::size_t{3'000'001}}) {
        const std::shared_ptr<float> numbers = plotix::zeroedArray<float>(count);
        EXPECT_TRUE(std::all_of(numbers.get(), numbers.get() + count, [](float each) { return each == 0; }));
        std::fill_n(numbers.get(), count, 1.5F);
        EXPECT_EQ(numbers.get()[count - 1], 1.5F);
    }
}

TEST(LargeMemoryTest, LongColumnsBeginOnAHugePage)
{
    const std::shared_ptr<double> numbers = plotix::zeroedArray<double>(2'000'000);
    EXPECT_EQ(reinterpret_cast<std::uintptr_t>(numbers.get()) % (std::uintptr_t{2} << 20), 0U);
}

TEST(LargeMemoryTest, NothingIsNull)
{
    EXPECT_EQ(plotix::zeroedArray<float>(0), nullptr);
}

}  // namespace
