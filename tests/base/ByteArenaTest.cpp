#include "base/ByteArena.h"

#include <gtest/gtest.h>

#include <vector>

namespace {

class ByteArenaTest : public testing::Test {
protected:
    static std::vector<std::byte> bytes(std::size_t count, int value)
    {
        return std::vector<std::byte>(count, std::byte(value));
    }
    static bool is(const plotix::SharedArray<std::byte>& kept, const std::vector<std::byte>& expected)
    {
        return std::vector<std::byte>(kept.span().begin(), kept.span().end()) == expected;
    }

    plotix::ByteArena arena;
};

TEST_F(ByteArenaTest, EveryPieceIsKeptAsItWas)
{
    std::vector<plotix::SharedArray<std::byte>> kept;
    for (int piece = 0; piece < 500; ++piece)
        kept.push_back(arena.kept(bytes(static_cast<std::size_t>(piece) * 97, piece)));
    for (int piece = 0; piece < 500; ++piece)
        ASSERT_TRUE(is(kept[static_cast<std::size_t>(piece)], bytes(static_cast<std::size_t>(piece) * 97, piece)));
}

TEST_F(ByteArenaTest, APieceMayBeLongerThanAnyBlock)
{
    arena.kept(bytes(10, 1));
    EXPECT_TRUE(is(arena.kept(bytes(9'000'000, 2)), bytes(9'000'000, 2)));
    EXPECT_TRUE(is(arena.kept(bytes(10, 3)), bytes(10, 3)));
}

TEST_F(ByteArenaTest, PiecesStayWithoutTheArena)
{
    plotix::SharedArray<std::byte> kept;
    {
        plotix::ByteArena going;
        kept = going.kept(bytes(100, 4));
    }
    EXPECT_TRUE(is(kept, bytes(100, 4)));
}

}  // namespace
