#include "plotkit/layout/BinEdges.h"

#include "plotkit/model/CPTFineBlocks.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <cmath>
#include <functional>
#include <random>
#include <vector>

// Edges are the same whether they were worked out from the course of the times or found by reading every time.

namespace {

using namespace plotkit;

constexpr std::size_t kCount = 60'000;
constexpr std::size_t kBlock = CPTFineBlocks::kElements;

class BinEdgesTest : public testing::Test {
protected:
    void take(const std::function<double(std::size_t)>& timeOf)
    {
        x.resize(kCount);
        for (std::size_t at = 0; at < kCount; ++at)
            x[at] = timeOf(at);
        series = std::make_shared<const CPTPointSeries>(
            plotix::SharedArray<double>::fromVector(x),
            plotix::SharedArray<float>::fromVector(std::vector<float>(kCount, 1.0F)), plotix::ValidityBitmap(), kCount);
        ASSERT_TRUE(series->isXSorted());
    }

    std::size_t firstNotBelow(double value, std::size_t from = 0) const
    {
        const auto begin = x.begin() + static_cast<std::ptrdiff_t>(from);
        return static_cast<std::size_t>(std::lower_bound(begin, x.end(), value) - x.begin());
    }

    /// What an edge is, from the times alone.
    std::size_t edgeRead(std::size_t from, double value, double width) const
    {
        const std::size_t exact = firstNotBelow(value, from);
        const std::size_t after = (exact + kBlock - 1) / kBlock * kBlock;
        if (after >= x.size() || after < from + kBlock)
            return exact;
        const double above = x[after] - value;
        const double below = value - x[after - kBlock];
        if (above < 0 || below <= 0 || std::min(above, below) > width / 4)
            return exact;
        return above < below ? after : after - kBlock;
    }

    void expectEdgesAsRead(double low, double high, std::size_t bins)
    {
        const BinGrid grid = BinGrid::covering(low, high, (high - low) / static_cast<double>(bins), 1);
        const auto edgeOf = [&](std::size_t bin) { return grid.edge(grid.first + static_cast<std::int64_t>(bin)); };
        std::size_t edge = firstNotBelow(edgeOf(0));
        ASSERT_GE(firstNotBelow(edgeOf(grid.count)) - edge, 64 * grid.count) << "not crowded";
        BinEdges edges;
        edges.cover(*series, grid);
        ASSERT_EQ(edges.edges()[0], edge);
        for (std::size_t bin = 1; bin <= grid.count; ++bin) {
            edge = edgeRead(edge, edgeOf(bin), grid.width);
            ASSERT_EQ(edges.edges()[bin], edge) << "bin " << bin << " of " << grid.count;
        }
    }

    void expectEdgesAsReadAtEveryZoom()
    {
        const double length = x.back() - x.front();
        for (const std::size_t bins : {std::size_t{37}, std::size_t{100}, std::size_t{311}, std::size_t{600}})
            for (const double start : {0.0, 0.0137, 0.11}) {
                SCOPED_TRACE(testing::Message() << bins << " bins from " << start);
                expectEdgesAsRead(x.front() + start * length, x.front() + (start + 0.8) * length, bins);
            }
    }

    std::vector<double> x;
    CPTPointSeriesPtr series;
};

TEST_F(BinEdgesTest, OfEvenTimesAreAsReadHoweverFarFromZero)
{
    for (const double start : {0.0, 1.7e9, -1.7e9, 1e14, 4e15}) {
        SCOPED_TRACE(start);
        take([start](std::size_t at) { return start + static_cast<double>(at); });
        expectEdgesAsReadAtEveryZoom();
    }
}

TEST_F(BinEdgesTest, OfStepsThatRoundAreAsRead)
{
    for (const double step : {0.1, 1e-4, 3e-6, 1e-7}) {
        SCOPED_TRACE(step);
        take([step](std::size_t at) { return 1.7e9 + static_cast<double>(at) * step; });
        expectEdgesAsReadAtEveryZoom();
    }
}

TEST_F(BinEdgesTest, WithOneOddStepAreAsRead)
{
    for (const double odd : {0.5, 1.0, 3000.0})
        for (const std::size_t place : {std::size_t{4096}, std::size_t{20'011}, kCount - 1}) {
            take([=](std::size_t at) { return 1.7e9 + static_cast<double>(at) + (at >= place ? odd : 0); });
            expectEdgesAsReadAtEveryZoom();
        }
}

TEST_F(BinEdgesTest, OfRepeatedTimesAreAsRead)
{
    for (const std::size_t repeats : {std::size_t{2}, std::size_t{32}, std::size_t{50}, std::size_t{5000}}) {
        SCOPED_TRACE(repeats);
        take([repeats](std::size_t at) { return static_cast<double>(at / repeats * repeats); });
        expectEdgesAsRead(x.front(), x.back(), 37);
        expectEdgesAsRead(x.front(), x.back(), 600);
    }
}

TEST_F(BinEdgesTest, OfUnevenTimesAreAsRead)
{
    std::mt19937 random(4);
    std::exponential_distribution<double> step(1);
    double time = 1.7e9;
    take([&](std::size_t) { return time += step(random); });
    expectEdgesAsReadAtEveryZoom();
}

TEST_F(BinEdgesTest, OnTheBeginningsOfBlocksAndHalfwayBetweenAreAsRead)
{
    take([](std::size_t at) { return 1.7e9 + static_cast<double>(at); });
    for (const double first : {0.0, 16.0, 15.5, 8.0, 1.0})
        expectEdgesAsRead(1.7e9 + first, 1.7e9 + first + 128 * 400, 400);
}

}  // namespace
