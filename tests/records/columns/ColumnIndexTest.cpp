#include "records/columns/ColumnIndex.h"

#include "records/columns/IndexCodec.h"
#include "tests/records/columns/ColumnCodecFixture.h"
#include "tests/support/EveryTarget.h"

#include <bit>

// Against going through the values one by one.

namespace {

using namespace codectest;
using plotix::ColumnIndex;
using plotix::ColumnKernels;
using plotix::ColumnView;
using plotix::ExactTotal;
using plotix::RunFigures;
using plotix::Summary;
namespace indexcodec = plotix::indexcodec;

constexpr double kInfinity = std::numeric_limits<double>::infinity();
constexpr indexcodec::Owner kNobody{};
constexpr Codec kCodec = Codec::Decimal;

struct Column {
    Values values;
    Words valid;  ///< empty: all

    ColumnView view() const { return {values.data(), valid.empty() ? nullptr : valid.data(), 0}; }
    bool counts(std::size_t i) const
    {
        return !std::isnan(values[i]) && (valid.empty() || ((valid[i / 64] >> (i % 64)) & 1U) != 0);
    }
};

class ColumnIndexTest : public ColumnCodecFixture {
protected:
    static RunFigures plainFigures(const Column& column, std::size_t begin, std::size_t end, ExactTotal& sum)
    {
        RunFigures found;
        for (std::size_t i = begin; i < end; ++i) {
            if (!column.counts(i))
                continue;
            const RunFigures::Point point{column.values[i], i - begin};
            if (found.valid++ == 0)
                found = {1, point, point, point, point};
            found.last = point;
            if (point.value < found.least.value)
                found.least = point;
            if (point.value > found.greatest.value)
                found.greatest = point;
            sum.add(point.value);
        }
        return found;
    }
    static void expectTrue(const ColumnIndex& index, const Column& column)
    {
        ASSERT_EQ(index.count, column.values.size());
        ExactTotal sum;
        EXPECT_TRUE(isSame(index.whole, plainFigures(column, 0, index.count, sum)));
        EXPECT_TRUE(index.sum == sum);
        for (std::size_t run = 0; run < index.runs.size(); ++run) {
            const std::size_t begin = run * index.runLength;
            ExactTotal ofRun;
            const RunFigures plain = plainFigures(column, begin, std::min(begin + index.runLength, index.count), ofRun);
            EXPECT_TRUE(isSame(index.runs[run], plain)) << run;
            EXPECT_TRUE(index.sumOf(run) == ofRun) << run;
        }
    }
    static void expectTrue(const Column& column)
    {
        ColumnIndex index = plotix::indexOf(column.view(), column.values.size());
        EXPECT_EQ(index.runs.size(), (column.values.size() + 511) / 512);
        expectTrue(index, column);
        while (index.runs.size() > 1)
            expectTrue(index = index.coarser(), column);
    }
    /// The index written in so many bytes at most, and read.
    static ColumnIndex rewritten(const Column& column, std::size_t limit)
    {
        const ColumnIndex index = plotix::indexOf(column.view(), column.values.size());
        Summary summary = plotix::summaryOf(column.view(), column.values.size());
        const indexcodec::Owner owner{7, column.values.size()};
        const std::vector<std::byte> runs = indexcodec::writtenRuns(index, kCodec, limit, owner);
        EXPECT_LE(runs.size(), limit);
        const auto whole =
            indexcodec::readWhole(indexcodec::writtenWhole(index, summary, !runs.empty(), owner), summary, owner);
        EXPECT_TRUE(whole && whole->hasRuns == !runs.empty());
        ColumnIndex read = whole->index;
        EXPECT_TRUE(runs.empty() || indexcodec::readRuns(runs, owner, read));
        return read;
    }
    /// What stays in memory of written runs, beside all that they say.
    static void expectSameExtremes(const ColumnIndex& index)
    {
        const indexcodec::Owner owner{7, index.count};
        const std::vector<std::byte> runs = indexcodec::writtenRuns(index, kCodec, 100'000, owner);
        indexcodec::RunExtremes read;
        ASSERT_EQ(indexcodec::readExtremes(runs, owner, read), !runs.empty());
        ASSERT_EQ(read.runs, runs.empty() ? 0 : index.runs.size());
        for (std::size_t run = 0; run < read.runs; ++run) {
            const RunFigures& figures = index.runs[run];
            const bool counts = figures.valid > 0;
            EXPECT_PRED2(isSameValue, read.least[run], counts ? figures.least.value : kInfinity);
            EXPECT_PRED2(isSameValue, read.greatest[run], counts ? figures.greatest.value : -kInfinity);
            EXPECT_PRED2(isSameValue, read.first[run],
                         counts && figures.first.at == 0 ? figures.first.value : plotix::absentValue());
        }
    }
    static bool isSameValue(double one, double other)
    {
        return std::bit_cast<std::uint64_t>(one) == std::bit_cast<std::uint64_t>(other);
    }
    /// Values of every kind, with gaps and oddities.
    std::vector<Column> every()
    {
        std::vector<Column> columns;
        for (const std::size_t count : {std::size_t{1}, std::size_t{2}, std::size_t{511}, std::size_t{512},
                                        std::size_t{513}, std::size_t{3000}, kChunk}) {
            columns.push_back({decimals(count, 1), {}});
            columns.push_back({decimals(count, 2), validity(count, 0.7)});
            columns.push_back({walk(count, 0, 1e-9), validity(count, 0.01)});
            columns.push_back({randomBits(count), validity(count, 0.9)});
            columns.push_back({Values(count, -0.0), {}});
            columns.push_back({Values(count, kAbsent), {}});
            columns.push_back({made(count, [this](std::size_t) { return odd(); }), validity(count, 0.8)});
            columns.push_back({made(count, [](std::size_t i) { return i % 2 == 0 ? 1e200 : 1e-200; }), {}});
        }
        return columns;
    }
    double odd()
    {
        const double odds[] = {0.0, -0.0, kAbsent, kInfinity, -kInfinity, 5e-324, -1.5, 1e308};
        return odds[random() % std::size(odds)];
    }
};

TEST_F(ColumnIndexTest, ItSaysWhatGoingThroughTheValuesSays)
{
    for (const Column& column : every())
        expectTrue(column);
}

TEST_F(ColumnIndexTest, OfEqualExtremesTheFirstCounts)
{
    const ColumnIndex index = plotix::indexOf(Column{{3, -0.0, 0.0, 3, 0.0}, {}}.view(), 5);
    EXPECT_EQ(index.whole.least.at, 1U);
    EXPECT_TRUE(std::signbit(index.whole.least.value));
    EXPECT_EQ(index.whole.greatest.at, 0U);
}

TEST_F(ColumnIndexTest, EveryProcessorFindsTheSame)
{
    for (int round = 0; round < 200; ++round) {
        const Values values = round % 2 == 0 ? decimals(512, 2) : walk(512, 0, 1);
        const Words valid = validity(512, round % 3 == 0 ? 1 : 0.5);
        std::vector<ColumnKernels::Details> found;
        for (const ColumnKernels* each : plotix::testing::everyTarget<ColumnKernels>())
            found.push_back(each->details(values.data(), valid.data(), each->sumOfSome(values.data(), valid.data())));
        for (const ColumnKernels::Details& each : found) {
            EXPECT_EQ(each.leastAt, found.front().leastAt);
            EXPECT_EQ(each.greatestAt, found.front().greatestAt);
            EXPECT_EQ(each.high, found.front().high);
            EXPECT_EQ(each.low, found.front().low);
            EXPECT_EQ(each.isExact, found.front().isExact);
        }
    }
}

TEST_F(ColumnIndexTest, UsualValuesAreSummedTheQuickWay)
{
    const Values values = decimals(512, 2);
    const Words valid = validity(512, 1);
    const ColumnKernels& kernels = ColumnKernels::best();
    EXPECT_TRUE(kernels.details(values.data(), valid.data(), kernels.sumOfSome(values.data(), valid.data())).isExact);
}

TEST_F(ColumnIndexTest, WrittenItIsReadBackTheSame)
{
    for (const Column& column : every())
        for (const std::size_t limit : {std::size_t{100'000}, std::size_t{1000}, std::size_t{300}, std::size_t{0}})
            expectTrue(rewritten(column, limit), column);
}

TEST_F(ColumnIndexTest, OfPlainValuesItIsPlainToo)
{
    const Column column{randomBits(3000), {}};
    const ColumnIndex index = plotix::indexOf(column.view(), 3000);
    const indexcodec::Owner owner{7, 3000};
    ColumnIndex read;
    read.count = 3000;
    EXPECT_TRUE(indexcodec::readRuns(indexcodec::writtenRuns(index, Codec::Raw, 100'000, owner), owner, read));
    for (std::size_t run = 0; run < index.runs.size(); ++run)
        EXPECT_TRUE(isSame(read.runs[run], index.runs[run]));
}

TEST_F(ColumnIndexTest, ExtremesAreThoseOfTheRuns)
{
    for (const Column& column : every()) {
        const ColumnIndex index = plotix::indexOf(column.view(), column.values.size());
        expectSameExtremes(index);
        if (index.runs.size() > 2)
            expectSameExtremes(index.coarser());
    }
}

TEST_F(ColumnIndexTest, WithLessRoomRunsAreLonger)
{
    const Column column{decimals(kChunk, 2), {}};
    EXPECT_EQ(rewritten(column, 2000).runLength, 512U);
    EXPECT_GT(rewritten(column, 300).runLength, 512U);
    EXPECT_EQ(rewritten(column, 50).runLength, 0U);
}

TEST_F(ColumnIndexTest, AChangedBitIsNoticed)
{
    const Column column{decimals(3000, 2), validity(3000, 0.9)};
    const ColumnIndex index = plotix::indexOf(column.view(), 3000);
    const Summary summary = plotix::summaryOf(column.view(), 3000);
    std::vector<std::byte> whole = indexcodec::writtenWhole(index, summary, true, kNobody);
    std::vector<std::byte> runs = indexcodec::writtenRuns(index, kCodec, 100'000, kNobody);
    for (std::vector<std::byte>* bytes : {&whole, &runs})
        for (std::size_t bit = 0; bit < bytes->size() * 8; ++bit) {
            (*bytes)[bit / 8] ^= std::byte{1} << (bit % 8);
            ColumnIndex read;
            indexcodec::RunExtremes extremes;
            EXPECT_FALSE(indexcodec::readExtremes(runs, kNobody, extremes) && bytes == &runs);
            EXPECT_FALSE(bytes == &whole ? indexcodec::readWhole(whole, summary, kNobody).has_value()
                                         : indexcodec::readRuns(runs, kNobody, read));
            (*bytes)[bit / 8] ^= std::byte{1} << (bit % 8);
        }
}

TEST_F(ColumnIndexTest, TimesOfRunsAreReadBackTheSame)
{
    for (const std::size_t count : {std::size_t{513}, std::size_t{5000}, kChunk})
        for (const bool isRegular : {true, false}) {
            const Values times = made(count, [&](std::size_t i) {
                return 1.7e9 + static_cast<double>(i) * 10 + (isRegular ? 0 : uniform());
            });
            const plotix::RunTimes runs = plotix::runTimesOf(times);
            EXPECT_EQ(runs.first[1], times[512]);
            EXPECT_EQ(runs.last.back(), times.back());
            EXPECT_EQ(indexcodec::readTimes(indexcodec::writtenTimes(runs, {0, count}), {0, count}), runs);
        }
}

}  // namespace
