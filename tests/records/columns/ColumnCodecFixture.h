#pragma once

#include "records/columns/ColumnCodec.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <cmath>
#include <cstring>
#include <limits>
#include <random>
#include <string>
#include <vector>

/// Columns of many kinds, and the verbs to write and read them back.
namespace codectest {

using Values = std::vector<double>;
using Words = std::vector<std::uint64_t>;
using plotix::schema::Codec;

constexpr std::size_t kChunk = plotix::schema::kRecordsPerChunk;

inline const double kAbsent = std::numeric_limits<double>::quiet_NaN();

inline double doubleOf(std::uint64_t bits)
{
    double value = 0;
    std::memcpy(&value, &bits, sizeof value);
    return value;
}

inline bool areSame(const double* one, const double* other, std::size_t count)
{
    return count == 0 || std::memcmp(one, other, count * sizeof(double)) == 0;
}

class ColumnCodecFixture : public testing::Test {
protected:
    double uniform() { return std::uniform_real_distribution<double>(0, 1)(random); }
    double normal() { return std::normal_distribution<double>()(random); }

    template <class Make>
    static Values made(std::size_t count, Make make)
    {
        Values values(count);
        for (std::size_t i = 0; i < count; ++i)
            values[i] = make(i);
        return values;
    }
    Values randomBits(std::size_t count)
    {
        return made(count, [this](std::size_t) { return doubleOf(random()); });
    }
    /// Noise round 20 with that many digits behind the point, as text would be read.
    Values decimals(std::size_t count, int digits)
    {
        const double power = std::pow(10, digits);
        return made(count, [&](std::size_t) { return std::round((20 + normal()) * power) / power; });
    }
    Values walk(std::size_t count, double start, double step)
    {
        double at = start;
        return made(count, [&](std::size_t) { return at += step * normal(); });
    }
    /// A bit per element, about that fraction of them set.
    Words validity(std::size_t count, double share)
    {
        Words words((count + 63) / 64, 0);
        for (std::size_t i = 0; i < count; ++i)
            words[i / 64] |= std::uint64_t{uniform() < share} << (i % 64);
        return words;
    }
    static void makeAbsentWhereInvalid(Values& values, const Words& valid)
    {
        for (std::size_t i = 0; i < values.size(); ++i)
            if (((valid[i / 64] >> (i % 64)) & 1U) == 0)
                values[i] = kAbsent;
    }

    static plotix::codec::Encoded written(const Values& values, const Words& valid = {})
    {
        return plotix::codec::encodedValues(values, valid.empty() ? nullptr : valid.data());
    }
    static Values read(const plotix::codec::Encoded& encoded, std::size_t count, const Words& valid, std::size_t first,
                       std::size_t size)
    {
        const Values target = readInto(plotix::codec::Into::Caches, encoded, count, valid, first, size);
        const Values past = readInto(plotix::codec::Into::Memory, encoded, count, valid, first, size);
        EXPECT_TRUE(areSame(past.data(), target.data(), size));
        const Values inPieces = readInPieces(encoded, count, valid, first, size);
        EXPECT_EQ(inPieces.size(), size);
        EXPECT_TRUE(areSame(inPieces.data(), target.data(), std::min(size, inPieces.size())));
        return target;
    }
    static Values readInto(plotix::codec::Into into, const plotix::codec::Encoded& encoded, std::size_t count,
                           const Words& valid, std::size_t first, std::size_t size)
    {
        // What is not written by decode() must not look right by chance.
        Values target(size, doubleOf(0x7FF4DEADBEEF0000));
        EXPECT_TRUE(plotix::codec::decode(static_cast<int>(encoded.codec), encoded.bytes, count,
                                          valid.empty() ? nullptr : valid.data(), first, target, into));
        return target;
    }
    static Values readInPieces(const plotix::codec::Encoded& encoded, std::size_t count, const Words& valid,
                               std::size_t first, std::size_t size)
    {
        Values all;
        EXPECT_TRUE(plotix::codec::decodeInPieces(
            static_cast<int>(encoded.codec), encoded.bytes, count, valid.empty() ? nullptr : valid.data(), first, size,
            [&all](std::span<const double> piece) { all.insert(all.end(), piece.begin(), piece.end()); }));
        return all;
    }
    /// Writes the values, and reads back all of them and some parts.
    plotix::codec::Encoded expectSame(const Values& values, const Words& valid = {})
    {
        const plotix::codec::Encoded encoded = written(values, valid);
        EXPECT_LE(encoded.bytes.size(), values.size() * sizeof(double));
        const std::size_t count = values.size();
        EXPECT_TRUE(areSame(read(encoded, count, valid, 0, count).data(), values.data(), count));
        for (int part = 0; part < 12; ++part) {
            const std::size_t first = random() % (count + 1);
            const std::size_t size = random() % (count - first + 1);
            EXPECT_TRUE(areSame(read(encoded, count, valid, first, size).data(), values.data() + first, size))
                << first << " + " << size << " of " << count;
        }
        return encoded;
    }
    static double bytesAValue(const plotix::codec::Encoded& encoded, std::size_t count)
    {
        return static_cast<double>(encoded.bytes.size()) / static_cast<double>(count);
    }

    std::mt19937_64 random{1};
};

}  // namespace codectest
