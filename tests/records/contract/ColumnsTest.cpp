#include "base/PageCache.h"
#include "base/PagedReading.h"
#include "tests/records/RandomBlocks.h"
#include "tests/records/contract/RecordStoreContract.h"

#include <cmath>
#include <limits>

namespace {

using plotix::ExactTotal;
using plotix::PageCache;
using plotix::PagedMemory;
using plotix::RecordBlock;
using plotix::RecordColumns;

constexpr double kInfinity = std::numeric_limits<double>::infinity();

/// Columns that are unpacked where somebody looks, against the same records read at once.
class ColumnsTest : public RecordStoreContract {
protected:
    using Bound = std::optional<double>;

    RecordColumns columns(Bound from = {}, Bound to = {}, std::size_t budget = PageCache::kDefaultBudget)
    {
        return *opened()->columns(agent, std::vector{wind, air}, from, to, std::make_shared<PageCache>(budget));
    }
    RecordBlock block(Bound from = {}, Bound to = {}) { return read({wind, air}, from, to); }

    /// Looked at page by page, from the last one to the first.
    static void expectSame(const RecordColumns& told, const RecordBlock& wanted)
    {
        ASSERT_EQ(told.times.size(), wanted.times.size());
        ASSERT_EQ(told.columns.size(), wanted.columns.size());
        for (std::size_t end = wanted.times.size(); end > 0;) {
            const std::size_t first = (end - 1) / kPage * kPage;
            expectSame(told, wanted, first, end);
            end = first;
        }
        EXPECT_EQ(told.failure->message(), std::nullopt);
    }
    static void expectSame(const RecordColumns& told, const RecordBlock& wanted, std::size_t first, std::size_t end)
    {
        std::size_t wrong = 0;
        {
            const PagedMemory::Hold held = told.times.hold(first, end);
            for (std::size_t i = first; i < end; ++i)
                wrong += bitsOf(told.times[i]) != bitsOf(wanted.times[i]) ? 1 : 0;
        }
        for (std::size_t c = 0; c < wanted.columns.size(); ++c) {
            const RecordColumns::Column& column = told.columns[c];
            const PagedMemory::Hold held = column.values.hold(first, end);
            for (std::size_t i = first; i < end; ++i)
                wrong += bitsOf(column.values[i]) != bitsOf(wanted.columns[c].values[i]) ||
                                 column.validity.isValid(i) != wanted.columns[c].validity.isValid(i)
                             ? 1
                             : 0;
        }
        EXPECT_EQ(wrong, 0U) << first << " to " << end;
    }

    /// What is known without reading is true of the values.
    static void expectTrueRuns(const RecordColumns& told, const RecordBlock& of)
    {
        if (!told.runs) {
            EXPECT_TRUE(told.times.isResident());
            return;
        }
        ASSERT_EQ(told.runs->begin.size(), told.runs->count() + 1);
        EXPECT_EQ(told.runs->begin.back(), of.times.size());
        for (std::size_t run = 0; run < told.runs->count(); ++run) {
            const std::size_t begin = told.runs->begin[run], end = told.runs->begin[run + 1];
            ASSERT_LT(begin, end);
            EXPECT_EQ(told.runs->first[run], of.times[begin]);
            EXPECT_EQ(told.runs->last[run], of.times[end - 1]);
        }
        for (std::size_t c = 0; c < of.columns.size(); ++c)
            expectTrue(*told.runs, told.columns[c], of.columns[c]);
    }
    static void expectTrue(const plotix::TimeRuns& runs, const RecordColumns::Column& told,
                           const RecordBlock::Column& column)
    {
        RecordColumns::Total total;
        const plotix::ValueRuns known = told.runs->unpacked();
        ASSERT_EQ(known.count(), runs.count());
        for (std::size_t run = 0; run < runs.count(); ++run) {
            double least = kInfinity, greatest = -kInfinity;
            const auto counts = [&](std::size_t i) {
                return column.validity.isValid(i) && !std::isnan(column.values[i]);
            };
            for (std::size_t i = runs.begin[run]; i < runs.begin[run + 1]; ++i) {
                if (!counts(i))
                    continue;
                least = std::min(least, column.values[i]);
                greatest = std::max(greatest, column.values[i]);
                ++total.valid;
                total.sum.add(column.values[i]);
            }
            EXPECT_EQ(known.least[run], least);
            EXPECT_EQ(known.greatest[run], greatest);
            const double first = known.first[run];
            EXPECT_TRUE(counts(runs.begin[run]) ? first == column.values[runs.begin[run]] : std::isnan(first));
        }
        EXPECT_EQ(told.total->valid, total.valid);
        EXPECT_TRUE(told.total->sum == total.sum);
    }
    /// Read once, past the pages where a store can do so.
    static void expectSamePieces(const RecordColumns& told, const RecordBlock& wanted, std::size_t first)
    {
        for (std::size_t c = 0; c < wanted.columns.size(); ++c) {
            const RecordColumns::Column& column = told.columns[c];
            const RecordBlock::Column& other = wanted.columns[c];
            std::size_t wrong = 0, next = first;
            EXPECT_TRUE(plotix::inPieces(
                column.values, column.validity, first, wanted.times.size(), [&](const PagedMemory::Piece& piece) {
                    wrong += piece.first != next ? 1 : 0;
                    for (std::size_t i = 0; i < piece.values.size(); ++i, ++next) {
                        const bool isValid = !piece.valid || (piece.valid[i / 64] >> (i % 64) & 1U) != 0;
                        wrong += bitsOf(piece.values[i]) != bitsOf(other.values[next]) ||
                                         isValid != other.validity.isValid(next)
                                     ? 1
                                     : 0;
                    }
                }));
            EXPECT_EQ(wrong, 0U) << "from " << first;
            EXPECT_EQ(next, wanted.times.size());
        }
    }
    void expectTrue(Bound from, Bound to, std::size_t budget)
    {
        const RecordColumns told = columns(from, to, budget);
        const RecordBlock wanted = block(from, to);
        for (const std::size_t first : {std::size_t{0}, wanted.times.size() / 128 * 64})
            expectSamePieces(told, wanted, first);
        expectSame(told, wanted);
        expectSamePieces(told, wanted, 0);
        expectTrueRuns(told, wanted);
    }

    static constexpr std::size_t kPage = PagedMemory::kPage;
};

TEST_P(ColumnsTest, WithoutRecordsThereAreNone)
{
    EXPECT_EQ(columns().times.size(), 0U);
    EXPECT_EQ(columns().columns.size(), 2U);
}

TEST_P(ColumnsTest, TheyAreWhatReadingAnswers)
{
    store(ramp(air, 0, 100'000));
    store(ramp(wind, 100'000, 20'000));
    opened()->appender()->append(agent, ramp(wind, 500'000, 50));
    for (const std::size_t budget : {std::size_t{0}, PageCache::kDefaultBudget})
        for (const auto& [from, to] :
             {std::pair(Bound(), Bound()), std::pair(Bound(10'000), Bound()), std::pair(Bound(16'384), Bound(90'000)),
              std::pair(Bound(77), Bound(499'999)), std::pair(Bound(90'000), Bound(500'020)),
              std::pair(Bound(400'000), Bound(600'000)), std::pair(Bound(5), Bound(3))})
            expectTrue(from, to, budget);
}

TEST_P(ColumnsTest, AFewRecordsAreTheRightOnesToo)
{
    store(ramp(air, 0, 10));
    expectTrue(3, 5, 0);
    EXPECT_EQ(columns(3, 5).times.size(), 3U);
}

TEST_P(ColumnsTest, WithoutACacheEverythingIsInMemory)
{
    store(ramp(air, 0, 40'000));
    const auto told = opened()->columns(agent, std::vector{wind, air}, {}, {}, nullptr);
    EXPECT_TRUE(told->times.isResident());
    expectSame(*told, block());
}

TEST_P(ColumnsTest, APropertyMayBeAskedForTwice)
{
    store(ramp(air, 0, 40'000));
    const auto told = opened()->columns(agent, std::vector{air, air}, {}, {}, std::make_shared<PageCache>());
    expectSame(*told, read({air, air}));
    expectTrueRuns(*told, read({air, air}));
}

TEST_P(ColumnsTest, ConstantsAndWhatIsNeverValidHaveTrueRuns)
{
    const std::size_t size = 60'000;
    std::vector<double> stamps(size);
    for (std::size_t i = 0; i < size; ++i)
        stamps[i] = static_cast<double>(i);
    Values gaps(size, std::nullopt);
    gaps[40'000] = 7;
    store(BlockFixture::block(stamps, {column(air, Values(size, 0.5)), column(wind, gaps)}));
    expectTrue({}, {}, 0);
}

TEST_P(ColumnsTest, InfinitiesAreExtremesAndHaveNoMean)
{
    RecordBlock records = ramp(air, 0, 40'000);
    std::vector<double> odd(records.times.span().begin(), records.times.span().end());
    odd[100] = kInfinity;
    odd[30'000] = -kInfinity;
    records.columns[0].values = plotix::SharedArray<double>::fromVector(odd);
    store(records);
    expectTrue({}, {}, 0);
}

TEST_P(ColumnsTest, AnyRecordsAreTheSame)
{
    RandomBlocks random(1);
    const std::vector properties{air, wind};
    for (int round = 0; round < 12; ++round) {
        std::vector<double> stamps(1 + random.below(20'000));
        double time = static_cast<double>(random.below(40'000));
        for (double& stamp : stamps)
            stamp = time += static_cast<double>(1 + random.below(8)) / 4;
        store(random.block(properties, stamps));
        const double from = static_cast<double>(random.below(60'000));
        expectTrue({}, {}, 0);
        expectTrue(from, {}, PageCache::kDefaultBudget);
        expectTrue({}, from + 20'000, 0);
    }
    opened()->compact({});
    expectTrue({}, {}, 0);
}

TEST_P(ColumnsTest, TheyOutliveTheStore)
{
    store(ramp(air, 0, 40'000));
    const RecordColumns told = columns();
    expectSame(told, block());
}

TEST_P(ColumnsTest, WhateverHappensAfterwardsTheyAreWhatTheyWere)
{
    store(ramp(air, 0, 60'000));
    opened()->appender()->append(agent, ramp(wind, 70'000, 50));
    const RecordBlock before = block();
    const RecordColumns told = columns({}, {}, 0);
    store(ramp(air, 80'000, 30'000));
    store(BlockFixture::block({10, 20'000.5, 70'001}, {column(air, {1, 2, 3})}));
    store(BlockFixture::block({10, 20'000.5, 70'001}, {column(air, {4, 5, 6})}));
    expectSame(told, before);
    const auto writer = opened()->begin();
    writer->remove(agent, std::vector{air}, 5'000, 40'000);
    writer->commit();
    opened()->compact({45'000.0, true});
    expectSame(told, before);
    expectTrue({}, {}, 0);
    EXPECT_TRUE(opened()->verify().isSound());
}

TEST_P(ColumnsTest, ProgressRisesToOneAndStops)
{
    store(ramp(air, 0, 40'000));
    std::vector<double> seen;
    const auto cache = std::make_shared<PageCache>();
    const auto look = [&](double until) {
        return opened()->columns(agent, std::vector{air}, {}, {}, cache, [&](double fraction) {
            seen.push_back(fraction);
            return fraction < until;
        });
    };
    EXPECT_TRUE(look(2));
    EXPECT_EQ(seen.front(), 0);
    EXPECT_EQ(seen.back(), 1);
    EXPECT_TRUE(std::is_sorted(seen.begin(), seen.end()));
    EXPECT_FALSE(look(0));
}

HELD_BY_EVERY_STORE(ColumnsTest);

}  // namespace
