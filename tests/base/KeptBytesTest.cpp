#include "base/KeptBytes.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <cstring>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

namespace {

using namespace plotix;

class KeptBytesTest : public testing::Test {
protected:
    KeptBytes keep(std::string_view text) { return keeper->keep(std::as_bytes(std::span(text))); }
    static std::string textOf(const KeptBytes& kept)
    {
        return {reinterpret_cast<const char*>(kept.start.get()), kept.size};
    }

    std::optional<ByteKeeper> keeper = ByteKeeper();
};

TEST_F(KeptBytesTest, AreACopy)
{
    std::string text = "soap";
    const KeptBytes kept = keep(text);
    text = "pins";
    EXPECT_EQ(textOf(kept), "soap");
}

TEST_F(KeptBytesTest, OutliveTheirKeeper)
{
    const KeptBytes one = keep("soap"), other = keep("pins");
    keeper.reset();
    EXPECT_EQ(textOf(one) + textOf(other), "soappins");
}

TEST_F(KeptBytesTest, ShortOnesStandSideBySide)
{
    const KeptBytes one = keep("soap"), other = keep("pins");
    EXPECT_EQ(one.start.get() + one.size, other.start.get());
}

TEST_F(KeptBytesTest, NoneAreKeptAsNone)
{
    EXPECT_EQ(keep("").size, 0U);
}

TEST_F(KeptBytesTest, AreWholeHoweverLongAndManyTheyAre)
{
    std::vector<KeptBytes> kept;
    for (std::size_t length = 1; length < 3'000'000; length *= 3)
        kept.push_back(keep(std::string(length, static_cast<char>('a' + kept.size()))));
    for (std::size_t i = 0; i < kept.size(); ++i)
        EXPECT_EQ(textOf(kept[i]), std::string(kept[i].size, static_cast<char>('a' + i)));
}

}  // namespace
