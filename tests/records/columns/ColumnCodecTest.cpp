#include "tests/records/columns/ColumnCodecFixture.h"

// Values are read back bit for bit, and take no more space than they should.

namespace {

using namespace codectest;
using plotix::codec::Encoded;

class ColumnCodecTest : public ColumnCodecFixture {
protected:
    static std::vector<std::byte> bytesOf(const std::string& digits)
    {
        std::vector<std::byte> bytes;
        for (std::size_t i = 0; i < digits.size(); i += 2)
            bytes.push_back(static_cast<std::byte>(std::stoi(digits.substr(i, 2), nullptr, 16)));
        return bytes;
    }
};

constexpr std::size_t kCounts[] = {0,    1,    2,    3,    7,     8,     9,     63,    64,
                                   65,   127,  511,  512,  513,   520,   1000,  1024,  1025,
                                   5000, 8191, 8192, 8193, 10000, 15872, 16000, 16383, kChunk};

TEST_F(ColumnCodecTest, DecimalsOfEveryLengthComeBack)
{
    for (const std::size_t count : kCounts)
        expectSame(decimals(count, 1));
}

TEST_F(ColumnCodecTest, DecimalsOfEveryScaleArePacked)
{
    for (int digits = 0; digits <= 9; ++digits)
        EXPECT_EQ(expectSame(decimals(kChunk, digits)).codec, Codec::Decimal) << digits;
}

TEST_F(ColumnCodecTest, NegativeAndLargeDecimalsArePacked)
{
    const Values cents = made(kChunk, [this](std::size_t) { return std::round(normal() * 1e12) / 100; });
    EXPECT_EQ(expectSame(cents).codec, Codec::Decimal);
    const Values whole = made(kChunk, [this](std::size_t) { return std::round(normal() * 1e14); });
    EXPECT_EQ(expectSame(whole).codec, Codec::Decimal);
}

TEST_F(ColumnCodecTest, TenthsThatRoundToNothingFromBelowArePacked)
{
    const Values values = made(kChunk, [this](std::size_t) { return std::round(normal()) / 10; });
    const Encoded encoded = expectSame(values);
    EXPECT_EQ(encoded.codec, Codec::Decimal);
    EXPECT_LE(bytesAValue(encoded, kChunk), 1.2);
}

TEST_F(ColumnCodecTest, MultiplesOfATenthThatAreNoDecimalsArePacked)
{
    const Values values = made(kChunk, [this](std::size_t) { return std::round(200 + 50 * normal()) * 0.1; });
    EXPECT_EQ(expectSame(values).codec, Codec::Product);
}

TEST_F(ColumnCodecTest, TenthsCostAtMostTwoBytes)
{
    EXPECT_LE(bytesAValue(expectSame(decimals(kChunk, 1)), kChunk), 2);
}

TEST_F(ColumnCodecTest, AWalkOfTenthsCostsAtMostOneByte)
{
    Values values = walk(kChunk, 15, 0.05);
    for (double& value : values)
        value = std::round(value * 10) / 10;
    EXPECT_LE(bytesAValue(expectSame(values), kChunk), 1);
}

TEST_F(ColumnCodecTest, ACounterCostsNearlyNothing)
{
    const Values values = made(kChunk, [](std::size_t i) { return static_cast<double>(1'000'000 + 7 * i); });
    EXPECT_LE(expectSame(values).bytes.size(), 600U);
}

TEST_F(ColumnCodecTest, FewDifferentValuesCostAtMostTwoBytes)
{
    Values values = walk(kChunk, 15, 0.05);
    for (double& value : values)
        value = std::round(value * 10) / 10 * 1.8 + 32;
    values[99] = kAbsent;
    values[100] = doubleOf(0x7FF0000000000077);
    const Encoded encoded = expectSame(values);
    EXPECT_EQ(encoded.codec, Codec::Table);
    EXPECT_LE(bytesAValue(encoded, kChunk), 2);
}

TEST_F(ColumnCodecTest, ATableMayHaveAsManyEntriesAsFit)
{
    for (const std::size_t different : {2U, 3U, 1023U, 1024U, 1025U, 2000U}) {
        const Values some = randomBits(different);
        const Values values = made(kChunk, [&](std::size_t) { return some[random() % different]; });
        EXPECT_EQ(expectSame(values).codec == Codec::Table, different <= 1024) << different;
    }
}

TEST_F(ColumnCodecTest, AConstantCostsEightBytes)
{
    for (const double value : {0.0, -0.0, 21.5, 1.0 / 3, kAbsent, -std::numeric_limits<double>::infinity()}) {
        const Encoded encoded = expectSame(Values(kChunk, value));
        EXPECT_EQ(encoded.codec, Codec::Constant);
        EXPECT_EQ(encoded.bytes.size(), sizeof(double));
    }
}

TEST_F(ColumnCodecTest, ZerosOfBothSignsAreNoConstant)
{
    Values values(1000, 0.0);
    values[500] = -0.0;
    expectSame(values);
}

TEST_F(ColumnCodecTest, ValuesOfSinglePrecisionCostAtMostHalf)
{
    const Values values = made(kChunk, [this](std::size_t) { return double{static_cast<float>(20 + normal())}; });
    const Encoded encoded = expectSame(values);
    EXPECT_EQ(encoded.codec, Codec::Pattern);
    EXPECT_LE(bytesAValue(encoded, kChunk), 4);
}

TEST_F(ColumnCodecTest, AWalkOfFullPrecisionIsPackedOnEitherSideOfZero)
{
    EXPECT_LE(bytesAValue(expectSame(walk(kChunk, 300, 0.05)), kChunk), 7);
    EXPECT_LE(bytesAValue(expectSame(walk(kChunk, -300, 0.05)), kChunk), 7);
    expectSame(walk(kChunk, 0, 0.05));
}

TEST_F(ColumnCodecTest, NoiseRoundZeroIsPackedWithItsSigns)
{
    const Values values = made(kChunk, [this](std::size_t) { return normal(); });
    EXPECT_EQ(expectSame(values).codec, Codec::Pattern);
}

TEST_F(ColumnCodecTest, RandomBitsStayRaw)
{
    for (const std::size_t count : kCounts) {
        const Encoded encoded = expectSame(randomBits(count));
        EXPECT_TRUE(encoded.codec == Codec::Raw || count <= 64) << count;
    }
}

TEST_F(ColumnCodecTest, DenormalsAndTheLargestComeBack)
{
    expectSame(made(kChunk, [this](std::size_t) { return doubleOf(random() >> 12); }));
    expectSame(made(kChunk, [this](std::size_t) { return doubleOf((random() >> 12) | (random() << 63)); }));
    expectSame(made(kChunk, [this](std::size_t) { return doubleOf(0x7FEFFFFFFFFFFFFF - (random() >> 20)); }));
    expectSame(made(kChunk, [this](std::size_t) { return doubleOf(0xFFEFFFFFFFFFFFFF - (random() >> 20)); }));
    expectSame(made(kChunk, [this](std::size_t) {
        return (random() & 1U) == 0 ? std::numeric_limits<double>::max() : -std::numeric_limits<double>::max();
    }));
}

TEST_F(ColumnCodecTest, PowersOfTwoComeBack)
{
    expectSame(made(kChunk, [this](std::size_t) { return std::ldexp(1.0, static_cast<int>(random() % 40)); }));
    expectSame(
        made(kChunk, [this](std::size_t) { return std::ldexp(-1.0, static_cast<int>(random() % 2000) - 1000); }));
    expectSame(made(kChunk, [this](std::size_t) { return (random() & 1U) == 0 ? 2.0 : -2.0; }));
}

TEST_F(ColumnCodecTest, AFewOddValuesAreCarriedAlong)
{
    const double odd[] = {-0.0,
                          kAbsent,
                          doubleOf(0x7FF0000000000001),
                          doubleOf(0xFFF8000000000ABC),
                          1.0 / 3,
                          1e300,
                          std::numeric_limits<double>::infinity(),
                          -std::numeric_limits<double>::infinity(),
                          5e-324};
    Values values = decimals(kChunk, 1);
    for (const double value : odd)
        for (int times = 0; times < 10; ++times)
            values[random() % kChunk] = value;
    const Encoded encoded = expectSame(values);
    EXPECT_EQ(encoded.codec, Codec::Decimal);
    EXPECT_LE(bytesAValue(encoded, kChunk), 2);
}

TEST_F(ColumnCodecTest, OddValuesAtBothEndsAreCarriedAlong)
{
    Values values = decimals(1030, 2);
    values.front() = values.back() = values[511] = values[512] = kAbsent;
    EXPECT_EQ(expectSame(values).codec, Codec::Decimal);
}

TEST_F(ColumnCodecTest, FinerDecimalsThatNoSampleShowsAreFound)
{
    Values values = decimals(kChunk, 1);
    for (std::size_t i = 1; i < kChunk; i += 16)
        values[i] = std::round(values[i] * 1000 + 1) / 1000;
    EXPECT_EQ(expectSame(values).codec, Codec::Decimal);
}

TEST_F(ColumnCodecTest, AbsentElementsCostNoMoreThanOthers)
{
    for (const double share : {0.0, 0.01, 0.5, 0.9, 0.999}) {
        Values values = decimals(kChunk, 1);
        const Words valid = validity(kChunk, share);
        makeAbsentWhereInvalid(values, valid);
        EXPECT_LE(bytesAValue(expectSame(values, valid), kChunk), 1.2) << share;
    }
}

TEST_F(ColumnCodecTest, AbsentElementsAmongFullPrecisionArePacked)
{
    Values values = walk(kChunk, 300, 0.05);
    const Words valid = validity(kChunk, 0.8);
    makeAbsentWhereInvalid(values, valid);
    EXPECT_EQ(expectSame(values, valid).codec, Codec::Pattern);
}

TEST_F(ColumnCodecTest, AnythingMayStandWhereNothingIsValid)
{
    const Words valid = validity(kChunk, 0.5);
    Values values = decimals(kChunk, 1);
    expectSame(values, valid);
    for (std::size_t i = 0; i < kChunk; ++i)
        if (((valid[i / 64] >> (i % 64)) & 1U) == 0)
            values[i] = i % 3 == 0 ? doubleOf(random()) : kAbsent;
    expectSame(values, valid);
    expectSame(randomBits(kChunk), valid);
}

TEST_F(ColumnCodecTest, ValidElementsMayBeAbsentValuesToo)
{
    Values values = decimals(kChunk, 1);
    const Words valid = validity(kChunk, 0.5);
    makeAbsentWhereInvalid(values, valid);
    for (std::size_t i = 0; i < kChunk; i += 100)
        values[i] = kAbsent;
    expectSame(values, valid);
}

TEST_F(ColumnCodecTest, ValidityMayBeginAtAnyBit)
{
    for (const std::size_t first : {std::size_t{1}, std::size_t{63}, std::size_t{64}, std::size_t{100}}) {
        const Words all = validity(first + 3000, 0.7);
        Words own(47, 0);
        for (std::size_t i = 0; i < 3000; ++i)
            own[i / 64] |= ((all[(first + i) / 64] >> ((first + i) % 64)) & 1U) << (i % 64);
        Values values = decimals(3000, 1);
        makeAbsentWhereInvalid(values, own);
        const Encoded encoded = plotix::codec::encodedValues(values, all.data(), first);
        EXPECT_EQ(encoded.codec, Codec::Decimal);
        EXPECT_TRUE(areSame(read(encoded, 3000, own, 0, 3000).data(), values.data(), 3000));
    }
}

TEST_F(ColumnCodecTest, StoredBytesKeepTheirMeaning)
{
    const Values tenths{21.5, 21.6, 21.6, 21.7, 21.8, 21.8, 21.7, 21.6, 21.5, 21.6, 21.7, 21.8, 21.8, 21.7, 21.6, -0.0};
    std::vector<std::byte> bytes = bytesOf("0100000001000000"
                                           "02"
                                           "D700000000000000"
                                           "0000000000000000"
                                           "0500000000000000"
                                           "0900000000000000"
                                           "0E00000000000000"
                                           "0F00000000000000"
                                           "0B00000000000000"
                                           "0600000000000000"
                                           "0500000000000000"
                                           "0F00");
    EXPECT_TRUE(areSame(read({Codec::Decimal, bytes}, 16, {}, 0, 16).data(), tenths.data(), 16));
    EXPECT_EQ(expectSame(tenths).bytes, bytes);

    const Values times = made(100, [](std::size_t i) { return 1.7e9 + 10.0 * static_cast<double>(i); });
    bytes = bytesOf("0002000000000000"
                    "00"
                    "00F1536500000000"
                    "0A00000000000000");
    EXPECT_TRUE(areSame(read({Codec::Decimal, bytes}, 100, {}, 0, 100).data(), times.data(), 100));
    EXPECT_EQ(expectSame(times).bytes, bytes);
}

TEST_F(ColumnCodecTest, MixturesOfEverythingComeBack)
{
    for (int round = 0; round < 200; ++round) {
        const std::size_t count = 1 + random() % 3000;
        const Words valid = validity(count, uniform());
        const Values tenths = decimals(count, static_cast<int>(random() % 4)), any = randomBits(count);
        const double oddShare = round % 2 == 0 ? 0.01 : uniform();
        Values values = made(count, [&](std::size_t i) { return uniform() < oddShare ? any[i] : tenths[i]; });
        if (round % 3 != 0)
            makeAbsentWhereInvalid(values, valid);
        expectSame(values, round % 5 == 0 ? Words() : valid);
    }
}

}  // namespace
