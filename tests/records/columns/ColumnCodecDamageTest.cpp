#include "tests/records/columns/ColumnCodecFixture.h"

#include <memory>

// Bytes that make no sense are refused or read as some other values; nothing outside of them is touched. A build with
// an address sanitizer sees to the latter: every try has memory of its own size.

namespace {

using namespace codectest;
using plotix::codec::Encoded;

class ColumnCodecDamageTest : public ColumnCodecFixture {
protected:
    bool decodes(int codec, const std::vector<std::byte>& bytes, std::size_t count, const Words& valid = {})
    {
        const auto exact = std::make_unique<std::byte[]>(bytes.size());
        std::copy(bytes.begin(), bytes.end(), exact.get());
        const std::size_t first = random() % (count + 1);
        Values target(random() % (count - first + 1));
        const std::span<const std::byte> span(exact.get(), bytes.size());
        const std::uint64_t* words = valid.empty() ? nullptr : valid.data();
        const bool isRead = plotix::codec::decode(codec, span, count, words, first, target);
        Values past(target.size());
        EXPECT_EQ(plotix::codec::decode(codec, span, count, words, first, past, plotix::codec::Into::Memory), isRead);
        EXPECT_EQ(plotix::codec::decodeInPieces(codec, span, count, words, first, target.size(), [](const auto&) {}),
                  isRead);
        return isRead;
    }
    std::vector<Encoded> everyKind()
    {
        Values gaps = decimals(kCount, 1);
        gapsAt = validity(kCount, 0.8);
        makeAbsentWhereInvalid(gaps, gapsAt);
        gaps[77] = 1e300;
        const Values counter = made(kCount, [](std::size_t i) { return double(i * 3); });
        std::vector<Encoded> kinds{written(gaps, gapsAt), written(counter), written(walk(kCount, 0, 1)),
                                   written(Values(kCount, 1.5)), written(randomBits(kCount))};
        kinds.push_back(written(made(kCount, [this](std::size_t) { return double(random() % 99) * 0.1; })));
        const Values few = randomBits(50);
        kinds.push_back(written(made(kCount, [&](std::size_t) { return few[random() % few.size()]; })));
        return kinds;
    }

    static constexpr std::size_t kCount = 2900;  // more than a piece and a run
    Words gapsAt;
};

TEST_F(ColumnCodecDamageTest, TheKindsCoverEveryCodec)
{
    std::vector<Codec> codecs;
    for (const Encoded& encoded : everyKind())
        codecs.push_back(encoded.codec);
    for (const Codec codec :
         {Codec::Raw, Codec::Constant, Codec::Decimal, Codec::Product, Codec::Pattern, Codec::Table})
        EXPECT_NE(std::find(codecs.begin(), codecs.end(), codec), codecs.end()) << static_cast<int>(codec);
}

TEST_F(ColumnCodecDamageTest, ShortenedOrLengthenedBytesAreRefused)
{
    for (const Encoded& encoded : everyKind()) {
        const int codec = static_cast<int>(encoded.codec);
        std::vector<std::byte> bytes = encoded.bytes;
        EXPECT_TRUE(decodes(codec, bytes, kCount, gapsAt));
        bytes.push_back(std::byte{0});
        EXPECT_FALSE(decodes(codec, bytes, kCount, gapsAt));
        for (int round = 0; round < 300; ++round) {
            bytes = encoded.bytes;
            bytes.resize(random() % bytes.size());
            EXPECT_FALSE(decodes(codec, bytes, kCount, gapsAt));
        }
    }
}

TEST_F(ColumnCodecDamageTest, UnknownCodecsAreRefused)
{
    for (const int codec : {-1, 6, 7, 100, 1 << 30})
        EXPECT_FALSE(decodes(codec, written(decimals(kCount, 1)).bytes, kCount));
}

TEST_F(ColumnCodecDamageTest, ImpossibleHeadersAreRefused)
{
    const Encoded good = written(decimals(kCount, 1));
    ASSERT_EQ(good.codec, Codec::Decimal);
    const struct {
        std::size_t at;
        int value;
    } rows[] = {{0, 10}, {0, 255}, {1, 4}, {1, 128}, {2, 1}, {3, 1}, {4, 1}, {5, 1}, {6, 1}, {7, 1}, {8, 65}, {8, 255}};
    for (const auto& row : rows) {
        std::vector<std::byte> bytes = good.bytes;
        bytes[row.at] = static_cast<std::byte>(row.value);
        EXPECT_FALSE(decodes(static_cast<int>(good.codec), bytes, kCount)) << row.at << ' ' << row.value;
    }
}

TEST_F(ColumnCodecDamageTest, TurnedBitsReadNothingOutside)
{
    for (const Encoded& encoded : everyKind()) {
        for (int round = 0; round < 2000; ++round) {
            std::vector<std::byte> bytes = encoded.bytes;
            const std::size_t reach = round % 2 == 0 ? std::min<std::size_t>(bytes.size(), 64) : bytes.size();
            for (std::size_t flips = 1 + random() % 3; flips > 0; --flips)
                bytes[random() % reach] ^= static_cast<std::byte>(1U << (random() % 8));
            decodes(static_cast<int>(encoded.codec), bytes, kCount, gapsAt);
        }
    }
    SUCCEED();
}

TEST_F(ColumnCodecDamageTest, RandomBytesReadNothingOutside)
{
    int accepted = 0;
    for (int round = 0; round < 20'000; ++round) {
        std::vector<std::byte> bytes(random() % 300);
        for (std::byte& byte : bytes)
            byte = static_cast<std::byte>(random() & (round % 2 == 0 ? 0x03U : 0xFFU));
        accepted += static_cast<int>(decodes(static_cast<int>(random() % 7), bytes, random() % 2000));
    }
    EXPECT_LT(accepted, 4000);
}

TEST_F(ColumnCodecDamageTest, BytesOfAnotherCountAreNotReadBeyondTheirEnd)
{
    for (const Encoded& encoded : everyKind())
        for (const std::size_t count : {0U, 1U, 512U, 1499U, 1501U, 2048U, 16384U})
            decodes(static_cast<int>(encoded.codec), encoded.bytes, count);
    EXPECT_FALSE(decodes(static_cast<int>(Codec::Decimal), written(decimals(kCount, 1)).bytes, 16384));
}

}  // namespace
