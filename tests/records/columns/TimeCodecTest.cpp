#include "tests/records/columns/ColumnCodecFixture.h"

// Times are read back bit for bit, and regular ones take next to no space.

namespace {

using namespace codectest;
using plotix::codec::Encoded;

constexpr double kStart = 1'700'000'000;

class TimeCodecTest : public ColumnCodecFixture {
protected:
    /// Times from the start on; `step` says how far it is to the next.
    template <class Step>
    static Values times(Step step, double start = kStart)
    {
        double at = start;
        return made(kChunk, [&](std::size_t i) { return i == 0 ? at : at += step(); });
    }
    std::size_t bytesOf(const Values& values)
    {
        const Encoded encoded = plotix::codec::encodedTimes(values);
        EXPECT_TRUE(areSame(read(encoded, values.size(), {}, 0, values.size()).data(), values.data(), values.size()));
        EXPECT_TRUE(areSame(read(encoded, values.size(), {}, 700, 9).data(), values.data() + 700, 9));
        return encoded.bytes.size();
    }
};

TEST_F(TimeCodecTest, RegularTimesCostNothingATime)
{
    for (const double step : {0.25, 1.0, 10.0, 60.0, 86'400.0})
        EXPECT_LE(bytesOf(times([step] { return step; })), 600U) << step;
}

TEST_F(TimeCodecTest, TimesOnALineOfTenthsCostNothingATime)
{
    EXPECT_LE(bytesOf(made(kChunk, [](std::size_t i) { return (kStart * 10 + static_cast<double>(i)) / 10; })), 600U);
}

TEST_F(TimeCodecTest, TimesBeforeTheEpochAreTimesLikeOthers)
{
    EXPECT_LE(bytesOf(times([] { return 1.0; }, -8000)), 600U);
}

TEST_F(TimeCodecTest, TimesThatAddUpTheirErrorComeBack)
{
    EXPECT_LE(bytesOf(times([] { return 0.1; })), kChunk * 2);
    EXPECT_LE(bytesOf(times([] { return 1.0 / 3; })), kChunk * 2);
}

TEST_F(TimeCodecTest, MinutesWithGapsCostAtMostAByte)
{
    const auto step = [this] { return random() % 2000 == 0 ? 60.0 * double(random() % 1440 + 1) : 60.0; };
    EXPECT_LE(bytesOf(times(step)), kChunk);
}

TEST_F(TimeCodecTest, MicrosecondsOfALiveRecordingCostAtMostThreeBytes)
{
    const Values values = made(kChunk, [this](std::size_t i) {
        return (kStart * 1e6 + static_cast<double>(i) * 1e6 + std::floor(uniform() * 50'000)) / 1e6;
    });
    EXPECT_LE(bytesOf(values), kChunk * 3);
}

TEST_F(TimeCodecTest, TimesOfAnyFractionCostAtMostThreeBytes)
{
    const Values values =
        made(kChunk, [this](std::size_t i) { return kStart + static_cast<double>(i) + uniform() * 0.05; });
    EXPECT_LE(bytesOf(values), kChunk * 3);
}

TEST_F(TimeCodecTest, TimesFarApartComeBack)
{
    Values values = randomBits(kChunk);
    for (double& value : values)
        value = std::isfinite(value) ? value : 0;
    std::sort(values.begin(), values.end());
    bytesOf(values);
}

}  // namespace
