#include "base/png/PngRows.h"

#include "tests/support/EveryTarget.h"

#include <gtest/gtest.h>

#include <random>
#include <vector>

namespace {

using plotix::PngRow;
using plotix::PngRowKernels;

/// A row of equal stretches and single pixels below another row, and what a kernel makes of the two.
class PngRowsTest : public testing::Test {
protected:
    struct Result {
        std::vector<quint32> differences;
        std::vector<quint8> bytes;
        std::vector<quint64> repeats;
        bool operator==(const Result&) const = default;
    };

    static std::vector<quint32> pixels(int width, unsigned seed)
    {
        std::mt19937 random(seed);
        std::vector<quint32> row(static_cast<std::size_t>(width));
        for (quint32& pixel : row)
            pixel = &pixel == row.data() || random() % 4 == 0 ? static_cast<quint32>(random()) : (&pixel)[-1];
        return row;
    }

    static Result run(void (*kernel)(const PngRow&), const std::vector<quint32>& row, const std::vector<quint32>& above,
                      std::size_t bytesPerPixel)
    {
        const std::size_t width = row.size();
        Result result{std::vector<quint32>(width), std::vector<quint8>(width * bytesPerPixel + plotix::kPngRowSlack),
                      std::vector<quint64>((width + 63) / 64)};
        kernel({row.data(), above.data(), static_cast<int>(width), result.differences.data(), result.bytes.data(),
                result.repeats.data()});
        result.bytes.resize(width * bytesPerPixel);
        return result;
    }

    const std::vector<const PngRowKernels*> every = plotix::testing::everyTarget<PngRowKernels>();
    const PngRowKernels& plain = *every.back();
};

TEST_F(PngRowsTest, EveryProcessorWritesTheSame)
{
    for (const int width : {1, 7, 63, 64, 65, 128, 200, 1201}) {
        const std::vector<quint32> row = pixels(width, 1);
        const std::vector<quint32> above = pixels(width, 2);
        for (const PngRowKernels* kernels : every) {
            EXPECT_EQ(run(kernels->color, row, above, 3), run(plain.color, row, above, 3)) << width;
            EXPECT_EQ(run(kernels->colorAndAlpha, row, above, 4), run(plain.colorAndAlpha, row, above, 4)) << width;
        }
    }
}

TEST_F(PngRowsTest, EachChannelIsSubtractedByItself)
{
    const Result result = run(plain.colorAndAlpha, {0x10002003U}, {0x01ff2104U}, 4);
    EXPECT_EQ(result.differences, std::vector<quint32>{0x0f01ffffU});
    EXPECT_EQ(result.bytes, (std::vector<quint8>{0x01, 0xff, 0xff, 0x0f}));
}

TEST_F(PngRowsTest, WithoutAlphaItsByteCountsForNothing)
{
    const Result result = run(PngRowKernels::best().color, {0xff010203U, 0x00010203U}, {0x11000000U, 0x99000000U}, 3);
    EXPECT_EQ(result.differences, (std::vector<quint32>{0x010203U, 0x010203U}));
    EXPECT_EQ(result.repeats, std::vector<quint64>{0b10});
}

TEST_F(PngRowsTest, TheFirstPixelRepeatsNothing)
{
    const std::vector<quint32> even(130, 5);
    const Result result = run(PngRowKernels::best().color, even, even, 3);
    EXPECT_EQ(result.repeats, (std::vector<quint64>{~quint64{1}, ~quint64{0}, 0b11}));
}

}  // namespace
