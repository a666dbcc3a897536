#include "tests/records/RandomBlocks.h"
#include "tests/records/contract/RecordStoreContract.h"

#include <cmath>
#include <limits>

namespace {

using plotix::ColumnIndex;
using plotix::ExactTotal;
using plotix::RecordBlock;
using plotix::RecordIndex;
using plotix::RunFigures;

constexpr double kInfinity = std::numeric_limits<double>::infinity();

/// What is known of values without reading them, against going through them one by one.
class IndexTest : public RecordStoreContract {
protected:
    RecordIndex index(std::optional<double> from = {}, std::optional<double> to = {},
                      RecordIndex::Detail detail = RecordIndex::Detail::Runs)
    {
        return opened()->index(agent, std::vector{wind, air}, from, to, detail);
    }

    static RunFigures plain(const RecordBlock::Column& column, std::size_t begin, std::size_t end, ExactTotal& sum)
    {
        RunFigures found;
        for (std::size_t i = begin; i < end; ++i) {
            const RunFigures::Point point{column.values[i], i - begin};
            if (!column.validity.isValid(i) || std::isnan(point.value))
                continue;
            if (found.valid++ == 0)
                found = {1, point, point, point, point};
            found.last = point;
            found.least = point.value < found.least.value ? point : found.least;
            found.greatest = point.value > found.greatest.value ? point : found.greatest;
            sum.add(point.value);
        }
        return found;
    }
    static void expectTrue(const ColumnIndex& told, const RecordBlock::Column& column)
    {
        ExactTotal sum;
        EXPECT_TRUE(isSame(told.whole, plain(column, 0, told.count, sum)));
        EXPECT_TRUE(told.sum == sum);
        for (std::size_t run = 0; run < told.runs.size(); ++run) {
            ExactTotal ofRun;
            const std::size_t begin = run * told.runLength;
            const std::size_t end = std::min(begin + told.runLength, told.count);
            EXPECT_TRUE(isSame(told.runs[run], plain(column, begin, end, ofRun)));
            EXPECT_TRUE(told.sumOf(run) == ofRun);
        }
    }
    /// Its pieces are successive records; answers how many.
    std::size_t expectTrue(const RecordIndex& told)
    {
        std::size_t records = 0;
        double last = -kInfinity;
        for (const RecordIndex::Piece& piece : told.pieces) {
            EXPECT_GT(piece.t0, last);
            last = piece.t1;
            const RecordBlock block = read({wind, air}, piece.t0, piece.t1);
            EXPECT_EQ(piece.records, block.times.size());
            EXPECT_TRUE(piece.times.runLength == 0 || piece.times == plotix::runTimesOf(block.times.span()));
            EXPECT_EQ(piece.columns[0].property, wind);
            for (std::size_t i = 0; i < 2; ++i) {
                EXPECT_EQ(piece.columns[i].index.count, piece.records);
                expectTrue(piece.columns[i].index, block.columns[i]);
            }
            records += piece.records;
        }
        return records;
    }
    double meanOf(std::size_t property)
    {
        ExactTotal sum;
        std::size_t count = 0;
        for (const RecordIndex::Piece& piece : index({}, {}, RecordIndex::Detail::Pieces).pieces) {
            sum.add(piece.columns[property].index.sum);
            count += piece.columns[property].index.whole.valid;
        }
        return sum.mean(count);
    }
};

TEST_P(IndexTest, WithoutRecordsThereIsNothing)
{
    EXPECT_TRUE(index().pieces.empty());
}

TEST_P(IndexTest, ItIsThatOfTheValues)
{
    store(ramp(air, 0, 40'000));
    store(ramp(wind, 50'000, 700));
    opened()->appender()->append(agent, block({60'000, 60'001}, {column(air, {std::nullopt, -0.0})}));
    EXPECT_EQ(expectTrue(index()), 40'702U);
}

TEST_P(IndexTest, OneRecordHasAnIndexToo)
{
    store(block({5}, {column(air, {-0.0}), column(wind, {std::nullopt})}));
    EXPECT_EQ(expectTrue(index()), 1U);
}

TEST_P(IndexTest, LateRecordsChangeIt)
{
    store(ramp(air, 0, 40'000));
    store(block({100.5, 20'000}, {column(air, {1e9, std::nullopt}), column(wind, {1, 2})}));
    EXPECT_EQ(expectTrue(index()), 40'001U);
}

TEST_P(IndexTest, OfASpanItHasThePiecesThatShareATimeWithIt)
{
    store(ramp(air, 0, 40'000));
    EXPECT_TRUE(index(100'000, {}).pieces.empty());
    const RecordIndex part = index(16'390, 16'400);
    ASSERT_FALSE(part.pieces.empty());
    EXPECT_LE(part.pieces.front().t0, 16'390);
    EXPECT_GE(part.pieces.back().t1, 16'400);
    EXPECT_LT(expectTrue(part), 40'000U);
}

TEST_P(IndexTest, WithoutRunsItSaysTheSameOfPieces)
{
    store(ramp(air, 0, 20'000));
    const RecordIndex told = index({}, {}, RecordIndex::Detail::Pieces);
    EXPECT_EQ(expectTrue(told), 20'000U);
    EXPECT_EQ(told.pieces[0].columns[1].index.runLength, 0U);
    EXPECT_EQ(told.pieces[0].times.runLength, 0U);
}

TEST_P(IndexTest, AnyRecordsHaveATrueOne)
{
    RandomBlocks random(1);
    const std::vector properties{air, wind};
    for (int round = 0; round < 12; ++round) {
        std::vector<double> stamps(1 + random.below(9000));
        const double begin = static_cast<double>(random.below(30'000));
        for (std::size_t i = 0; i < stamps.size(); ++i)
            stamps[i] = begin + static_cast<double>(i) / 4;
        store(random.block(properties, stamps));
        EXPECT_EQ(expectTrue(index()), count());
    }
    opened()->compact({});
    EXPECT_EQ(expectTrue(index()), count());
}

TEST_P(IndexTest, AMeanDoesNotDependOnHowRecordsCame)
{
    std::vector<double> stamps, values;
    for (std::size_t i = 0; i < 20'000; ++i) {
        stamps.push_back(static_cast<double>(i));
        values.push_back(std::sin(static_cast<double>(i)) * std::pow(10, static_cast<double>(i % 17) - 8));
    }
    const auto part = [&](plotix::RowId property, std::size_t begin, std::size_t end) {
        return block(
            {stamps.begin() + static_cast<std::ptrdiff_t>(begin), stamps.begin() + static_cast<std::ptrdiff_t>(end)},
            {{property,
              plotix::SharedArray<double>::fromVector({values.begin() + static_cast<std::ptrdiff_t>(begin),
                                                       values.begin() + static_cast<std::ptrdiff_t>(end)}),
              {}}});
    };
    store(part(air, 0, 20'000));
    const double atOnce = meanOf(1);
    for (std::size_t begin = 0; begin < 20'000; begin += 1237)
        store(part(wind, begin, std::min<std::size_t>(begin + 1237, 20'000)));
    EXPECT_EQ(meanOf(0), atOnce);
    opened()->compact({});
    EXPECT_EQ(meanOf(1), atOnce);
}

HELD_BY_EVERY_STORE(IndexTest);

}  // namespace
