#include "plotkit/layout/BinKernels.h"

#include "tests/plotkit/layout/SeriesBuilder.h"
#include "tests/support/EveryTarget.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <array>
#include <bit>
#include <cmath>
#include <limits>
#include <random>

// The loops for each target this processor has against those that go through one number at a time, bit for bit, and the
// latter against every sample.

namespace {

using namespace plotkit;

constexpr std::size_t kPadding = SlidingRow<float>::kPadding;
constexpr float kInfinity = std::numeric_limits<float>::infinity();

struct Rows {
    explicit Rows(std::size_t count)
    {
        for (std::vector<float>& number : numbers)
            number.assign(count + kPadding, 0);
    }
    BinRows rows()
    {
        return {numbers[0].data(), numbers[1].data(), numbers[2].data(),
                numbers[3].data(), numbers[4].data(), numbers[5].data()};
    }
    std::array<std::vector<float>, 6> numbers;
};

void expectSameBits(const std::vector<float>& one, const std::vector<float>& other, std::size_t from, std::size_t to)
{
    for (std::size_t at = from; at < to; ++at)
        ASSERT_EQ(std::bit_cast<std::uint32_t>(one[at]), std::bit_cast<std::uint32_t>(other[at])) << at;
}

class BinKernelsTest : public testing::Test {
protected:
    /// Bins of up to `most` elements, some empty, some that begin and end with blocks of the index.
    void makeSeries(std::size_t bins, std::size_t most, bool breaks)
    {
        std::normal_distribution<float> value(0, 100);
        edges = {0};
        for (std::size_t bin = 0; bin < bins; ++bin) {
            std::size_t end = edges.back() + (random() % 5 == 0 ? 0 : random() % most);
            if (random() % 2 == 0)
                end = (end + 31) / 32 * 32;
            edges.push_back(end);
        }
        for (std::size_t element = 0; element < edges.back(); ++element) {
            const float odd = random() % 2 == 0 ? std::nanf("") : random() % 2 == 0 ? kInfinity : -kInfinity;
            const bool isOdd = breaks && random() % 100 == 0;
            builder.add(static_cast<double>(element), isOdd ? odd : value(random), !breaks || random() % 50 != 0);
        }
        series = builder.series();
        shares.resize(bins);
        for (float& share : shares)
            share = static_cast<float>(random() % 1000) / 1000;
    }

    Rows summarised(const BinKernels& kernels)
    {
        Rows rows(shares.size());
        const BinSource source{series->y().data(), series->points().words().data(),
                               series->index(),    edges.data(),
                               shares.data(),      shares.data()};
        kernels.summarise(source, rows.rows(), 0, shares.size());
        return rows;
    }

    void expectEverySampleCounted(const Rows& rows, std::size_t bin)
    {
        float least = kInfinity;
        float greatest = -kInfinity;
        for (std::size_t element = edges[bin]; element < edges[bin + 1]; ++element) {
            const float y = builder.y()[element];
            if (builder.isPoint(element) && std::isfinite(y)) {
                least = std::min(least, y);
                greatest = std::max(greatest, y);
            }
        }
        ASSERT_EQ(rows.numbers[1][bin], least) << bin;
        ASSERT_EQ(rows.numbers[2][bin], greatest) << bin;
        if (edges[bin] < edges[bin + 1]) {
            ASSERT_EQ(rows.numbers[0][bin], builder.y()[edges[bin]]);
            const float last = rows.numbers[3][bin];
            ASSERT_TRUE(last == builder.y()[edges[bin + 1] - 1] || last == builder.y()[edges[bin + 1]]) << bin;
        }
    }

    SeriesBuilder builder;
    CPTPointSeriesPtr series;
    std::vector<std::size_t> edges;
    std::vector<float> shares;
    std::mt19937 random{21};
    const std::vector<const BinKernels*> every = plotix::testing::everyTarget<BinKernels>();
    const BinKernels& plain = *every.back();
};

TEST_F(BinKernelsTest, SummariesHoldEverySample)
{
    makeSeries(600, 400, true);
    const Rows rows = summarised(plain);
    std::size_t known = 0;
    for (std::size_t bin = 0; bin < shares.size(); ++bin) {
        if (std::isnan(rows.numbers[0][bin]))
            continue;  // such a bin is not summed up by kernels
        expectEverySampleCounted(rows, bin);
        ++known;
    }
    EXPECT_GT(known, shares.size() / 4);
}

TEST_F(BinKernelsTest, BinsOfManyBlocksTakeTheCoarserLevel)
{
    makeSeries(60, 9000, false);
    const Rows rows = summarised(plain);
    for (std::size_t bin = 0; bin < shares.size(); ++bin)
        if (!std::isnan(rows.numbers[0][bin]))
            expectEverySampleCounted(rows, bin);
}

TEST_F(BinKernelsTest, WiderProcessorsSumUpTheSame)
{
    for (const std::size_t most : {std::size_t{5}, std::size_t{40}, std::size_t{300}, std::size_t{3000}}) {
        builder = {};
        makeSeries(400, most, most % 3 != 0);
        const Rows one = summarised(plain);
        for (const BinKernels* kernels : every) {
            const Rows other = summarised(*kernels);
            for (std::size_t row = 0; row < one.numbers.size(); ++row)
                expectSameBits(one.numbers[row], other.numbers[row], 0, shares.size());
        }
    }
}

TEST_F(BinKernelsTest, WiderProcessorsMapTheSame)
{
    makeSeries(403, 30, false);
    Rows rows = summarised(plain);
    for (const double perValue : {-3.7, 0.01, -1e30}) {
        const ValueScale scale{0.3, perValue, 200, 65536};
        const auto mapped = [&](const BinKernels& kernels) {
            Rows made(shares.size() + 1);
            std::array<std::vector<float>, 6>& to = made.numbers;
            EXPECT_TRUE(kernels.map(rows.rows(), shares.size(), scale, to[0].data(), to[1].data(), to[2].data()));
            to[3] = to[1];
            to[4] = to[2];
            kernels.takeJoins(to[0].data(), shares.size() - 1, to[3].data(), to[4].data());
            return made;
        };
        const Rows one = mapped(plain);
        for (const BinKernels* kernels : every) {
            const Rows other = mapped(*kernels);
            expectSameBits(one.numbers[0], other.numbers[0], 1, shares.size());
            for (const std::size_t mappedTo : {1U, 2U})
                expectSameBits(one.numbers[mappedTo], other.numbers[mappedTo], 0, shares.size());
            for (const std::size_t joinedTo : {3U, 4U})  // the last bin has no right edge
                expectSameBits(one.numbers[joinedTo], other.numbers[joinedTo], 0, shares.size() - 1);
        }
    }
}

TEST_F(BinKernelsTest, ARowKeepsWhatStaysInTheWindow)
{
    SlidingRow<int> row;
    std::vector<int> shown;
    std::ptrdiff_t start = 0;
    const auto expected = [&](std::size_t at) { return static_cast<int>(start + static_cast<std::ptrdiff_t>(at)); };
    for (int step = 0; step < 500; ++step) {
        const auto by = static_cast<std::ptrdiff_t>(random() % 61) - 30;
        const std::size_t old = row.size();
        const std::size_t count = 20 + random() % 3;
        row.slide(by, count);
        start += by;
        for (std::size_t at = 0; at < count; ++at) {
            const std::ptrdiff_t before = static_cast<std::ptrdiff_t>(at) + by;
            if (before >= 0 && before < static_cast<std::ptrdiff_t>(old)) {
                ASSERT_EQ(row.data()[at], expected(at)) << step;
            }
            row.data()[at] = expected(at);
        }
    }
}

}  // namespace
