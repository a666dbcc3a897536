#include "base/ColumnRuns.h"

#include <gtest/gtest.h>

#include <random>

namespace {

using plotix::KeptRuns;
using plotix::ValueRuns;

/// Runs whose least value is their number, in pieces of random lengths.
class KeptRunsTest : public testing::Test {
protected:
    KeptRunsTest()
    {
        std::vector<std::shared_ptr<const KeptRuns>> pieces;
        for (int piece = 0; piece < 20; ++piece) {
            ValueRuns runs;
            for (std::size_t count = random() % 7; count > 0; --count, ++total) {
                runs.least.push_back(static_cast<double>(total));
                runs.greatest.push_back(1e9);
                runs.first.push_back(0);
            }
            pieces.push_back(KeptRuns::of(std::move(runs)));
        }
        joined = KeptRuns::joined(std::move(pieces));
    }

    std::mt19937 random{3};
    std::size_t total = 0;
    std::shared_ptr<const KeptRuns> joined;
};

TEST_F(KeptRunsTest, PiecesOfSomeRunsHaveThemAllInOrder)
{
    for (std::size_t first = 0; first <= total; ++first)
        for (std::size_t end = first; end <= total; ++end) {
            std::size_t next = first;
            joined->piecesOf(first, end, [&](const ValueRuns& piece, std::size_t firstRun) {
                ASSERT_LE(firstRun, next);
                ASSERT_EQ(piece.least.front(), static_cast<double>(firstRun));
                next = firstRun + piece.count();
            });
            ASSERT_TRUE(first == end || next >= end) << first << " to " << end;
        }
}

TEST_F(KeptRunsTest, PiecesOfSomeRunsAreNoOthers)
{
    joined->piecesOf(total / 3, total / 2, [&](const ValueRuns& piece, std::size_t firstRun) {
        EXPECT_GT(firstRun + piece.count(), total / 3);
        EXPECT_LT(firstRun, total / 2);
    });
}

}  // namespace
