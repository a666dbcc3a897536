#include "base/SharedArray.h"

#include "base/ValidityBitmap.h"

#include <gtest/gtest.h>

using plotix::SharedArray;
using plotix::ValidityBitmap;

namespace {

TEST(SharedArray, IsEmptyAtFirst)
{
    const SharedArray<double> array;
    EXPECT_TRUE(array.isEmpty());
    EXPECT_TRUE(array.span().empty());
}

TEST(SharedArray, TakesAVectorOverWithoutCopying)
{
    std::vector<double> values{1, 2, 3};
    const double* const memory = values.data();
    const auto array = SharedArray<double>::fromVector(std::move(values));
    EXPECT_EQ(array.data(), memory);
    EXPECT_EQ(array.size(), 3U);
    EXPECT_EQ(array[2], 3);
}

TEST(SharedArray, CopiesShareOneMemoryAndKeepItAlive)
{
    SharedArray<double> copy;
    {
        const auto array = SharedArray<double>::fromVector({4, 5});
        copy = array;
        EXPECT_EQ(copy.data(), array.data());
    }
    EXPECT_EQ(copy[0], 4);
}

TEST(SharedArray, ReleasesItsMemoryWithTheLastCopy)
{
    auto owner = std::make_shared<std::vector<double>>(3);
    const std::weak_ptr<std::vector<double>> watch = owner;
    SharedArray<double> array(std::shared_ptr<const double>(owner, owner->data()), 3);
    owner.reset();
    EXPECT_FALSE(watch.expired());
    array = {};
    EXPECT_TRUE(watch.expired());
}

TEST(ValidityBitmap, WithoutWordsEverythingIsValid)
{
    const ValidityBitmap bitmap;
    EXPECT_TRUE(bitmap.isAllValid());
    EXPECT_TRUE(bitmap.isValid(0));
    EXPECT_TRUE(bitmap.isValid(1'000'000));
}

TEST(ValidityBitmap, TheLeastSignificantBitOfWordZeroIsTheFirstElement)
{
    const ValidityBitmap bitmap(SharedArray<std::uint64_t>::fromVector({0b10, 1}));
    EXPECT_FALSE(bitmap.isValid(0));
    EXPECT_TRUE(bitmap.isValid(1));
    EXPECT_FALSE(bitmap.isValid(63));
    EXPECT_TRUE(bitmap.isValid(64));
    EXPECT_FALSE(bitmap.isAllValid());
}

}  // namespace
