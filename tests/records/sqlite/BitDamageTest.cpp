#include "base/PageCache.h"
#include "base/ReportableError.h"
#include "tests/records/sqlite/ArchiveFixture.h"
#include "tests/records/sqlite/FlippedBit.h"

#include <cmath>
#include <random>

namespace {

using plotix::RecordBlock;
using plotix::RecordIndex;
using plotix::ReportableError;

constexpr std::size_t kChunk = 16384;

/// Single bits that change in what is stored: each one is found, none becomes a value.
class BitDamageTest : public ArchiveFixture {
protected:
    /// Two chunks and a tail, of values with and without a pattern, and with gaps.
    BitDamageTest()
    {
        store(records(0, kChunk + 5000));
        opened()->appender()->append(agent, records(100'000, 50));
        whole = read({air, wind});
    }
    RecordBlock records(double first, std::size_t count)
    {
        std::vector<double> stamps;
        Values some, others;
        for (std::size_t i = 0; i < count; ++i) {
            stamps.push_back(first + static_cast<double>(i));
            some.emplace_back(std::round(std::sin(static_cast<double>(i) / 100) * 1000) / 10);
            others.push_back(random() % 20 == 0 ? std::nullopt : std::optional(std::normal_distribution()(random)));
        }
        return block(stamps, {column(air, some), column(wind, others)});
    }

    /// Of a random row's bytes, a random bit.
    FlippedBit flipped(const char* table, const char* name, const char* where = "1")
    {
        const std::vector<StoredCell> cells = cellsOf(database, table, name, where);
        const StoredCell& cell = cells[random() % cells.size()];
        return {database, cell, random() % cell.bits()};
    }

    QStringList findings() { return opened()->verify().findings; }
    void expectUnreadable(plotix::RowId property)
    {
        try {
            read({property});
            ADD_FAILURE() << "changed values were read";
        } catch (const ReportableError& error) {
            EXPECT_TRUE(error.message().contains("since it was stored") ||
                        error.message().contains("since they were stored"));
            EXPECT_TRUE(error.message().contains("restore it from a copy"));
        }
    }
    /// Everything reads as before.
    void expectWhole()
    {
        const RecordBlock now = read({air, wind});
        ASSERT_EQ(now.times.size(), whole.times.size());
        for (std::size_t c = 0; c < 2; ++c)
            for (std::size_t i = 0; i < now.times.size(); ++i) {
                ASSERT_EQ(now.columns[c].validity.isValid(i), whole.columns[c].validity.isValid(i));
                ASSERT_EQ(bitsOf(now.columns[c].values[i]), bitsOf(whole.columns[c].values[i]));
            }
    }

    std::mt19937_64 random{1};
    RecordBlock whole;
};

TEST_F(BitDamageTest, InPackedColumnsItIsFoundAndNeverRead)
{
    for (int flip = 0; flip < 80; ++flip) {
        const FlippedBit damage = flipped("segment", "data");
        EXPECT_EQ(findings().size(), 1);
        const plotix::RowId property = damage.id() % plotix::schema::kPropertiesPerChunk;
        expectUnreadable(property == plotix::kTimes ? air : property);
    }
    expectWhole();
}

TEST_F(BitDamageTest, InValidityItIsFoundAndNeverRead)
{
    for (int flip = 0; flip < 40; ++flip) {
        const FlippedBit damage = flipped("segment", "valid");
        EXPECT_EQ(findings().size(), 1);
        expectUnreadable(damage.id() % plotix::schema::kPropertiesPerChunk);
    }
}

TEST_F(BitDamageTest, InTheTailItIsFoundAndNeverRead)
{
    for (int flip = 0; flip < 80; ++flip) {
        const FlippedBit damage = flipped("tail", "data");
        EXPECT_EQ(findings().size(), 1);
        expectUnreadable(air);
    }
    expectWhole();
}

TEST_F(BitDamageTest, AllElseIsReadAsEver)
{
    const FlippedBit damage = flipped("segment", "data", "id = 1048576 + 1");
    EXPECT_EQ(values(wind).size(), whole.times.size());
    EXPECT_EQ(values(air, kChunk, {}).size(), 5050U);
    EXPECT_EQ(times().size(), whole.times.size());
}

TEST_F(BitDamageTest, RowsAroundADamagedOneAreReadAsEver)
{
    for (int flip = 0; flip < 40; ++flip) {
        const FlippedBit damage = flipped("tail", "data", "id % 1048576 = 25");
        EXPECT_EQ(values(air, 99'000, 100'024).size(), 25U);
        EXPECT_EQ(values(air, 100'026, {}).size(), 24U);
        EXPECT_EQ(values(air, {}, 50'000).size(), kChunk + 5000);
        EXPECT_THROW(values(air, 100'020, 100'030), ReportableError);
        EXPECT_THROW(values(air, 100'025, 100'025), ReportableError);
    }
}

TEST_F(BitDamageTest, BehindADamagedRowRecordsAreStillTaken)
{
    const FlippedBit damage = flipped("tail", "data", "id % 1048576 = 49");
    EXPECT_EQ(extent()->last, 100'048);
    opened()->appender()->append(agent, ramp(air, 200'000, 3));
    EXPECT_EQ(values(air, 200'000, {}), (Values{200'000, 200'001, 200'002}));
    EXPECT_THROW(values(air, 150'000, {}), ReportableError) << "it may belong there";
}

TEST_F(BitDamageTest, ATailDamagedAtItsBeginningLeavesTheChunksReadable)
{
    run("UPDATE tail SET data = substr(data, 1, length(data) - 1) || x'77' WHERE id % 1048576 < 20");
    EXPECT_EQ(values(air, {}, kChunk + 4999.0).size(), kChunk + 5000);
    EXPECT_EQ(values(air, 100'020, {}).size(), 30U);
    EXPECT_THROW(values(air, 90'000, {}), ReportableError);
}

TEST_F(BitDamageTest, NothingDamagedIsWrittenAnew)
{
    const FlippedBit damage = flipped("segment", "data", "id = 1048576 + 1");
    EXPECT_THROW(store(block({50.5}, {column(wind, {1})})), ReportableError);
    EXPECT_THROW(opened()->begin()->remove(agent, std::vector{wind}, 10, 20), ReportableError);
    EXPECT_THROW(opened()->compact({50.0, true}), ReportableError);
    EXPECT_EQ(findings().size(), 1);
}

TEST_F(BitDamageTest, ADamagedIndexIsFoundAndItsValuesAreReadInstead)
{
    const auto wanted = opened()->overview(agent, std::vector{air, wind});
    for (int flip = 0; flip < 60; ++flip) {
        const bool isOfRuns = flip % 2 == 0;
        const FlippedBit damage = flipped(isOfRuns ? "run" : "summary", isOfRuns ? "data" : "whole");
        EXPECT_EQ(findings().size(), 1);
        expectWhole();
        const auto told = opened()->overview(agent, std::vector{air, wind});
        for (std::size_t column = 0; column < 2; ++column)
            EXPECT_EQ(told.columns[column].summaries[0].minimum, wanted.columns[column].summaries[0].minimum);
    }
}

TEST_F(BitDamageTest, AnIndexTellsThatItWasWorkedOutAnew)
{
    const auto sourceOf = [&] {
        return opened()->index(agent, std::vector{air}, 0, 1, RecordIndex::Detail::Runs).pieces[0].columns[0].source;
    };
    EXPECT_EQ(sourceOf(), RecordIndex::Source::Index);
    const FlippedBit damage = flipped("run", "data", "id = 1048576 + 1");
    EXPECT_EQ(sourceOf(), RecordIndex::Source::DamagedIndex);
}

TEST_F(BitDamageTest, AChunkOfAnImpossibleNumberIsFoundAndNotRead)
{
    run("UPDATE chunk SET id = id + (1 << 52) WHERE id = 2");
    EXPECT_FALSE(findings().isEmpty());
    EXPECT_THROW(times(), ReportableError);
    EXPECT_THROW(opened()->columns(agent, std::vector{air}, {}, {}, std::make_shared<plotix::PageCache>()),
                 ReportableError);
}

TEST_F(BitDamageTest, ALastRowThatNoAgentHasAnyMoreIsFound)
{
    for (const char* id : {"-id", "49", "id + (1 << 40)"}) {
        run(qPrintable(QString("UPDATE tail SET id = %1 WHERE id = (SELECT max(id) FROM tail)").arg(id)));
        EXPECT_FALSE(findings().isEmpty()) << id;
        run("UPDATE tail SET id = 1048576 + 49 WHERE id NOT BETWEEN 1048576 AND 1048576 + 48");
    }
    EXPECT_EQ(findings(), QStringList());
}

TEST_F(BitDamageTest, ASummaryThatChangedIsNotBelieved)
{
    const auto wanted = opened()->statistics(agent, air);
    run("UPDATE summary SET maximum = maximum + 64 WHERE id = 1048576 + 1");
    EXPECT_EQ(findings().size(), 1);
    EXPECT_EQ(opened()->statistics(agent, air).maximum, wanted.maximum);
}

TEST_F(BitDamageTest, CompactingMakesANewIndex)
{
    run("UPDATE run SET data = x'00' WHERE id = 1048576 + 1");
    run("DELETE FROM run WHERE id = 1048576");
    EXPECT_EQ(findings().size(), 2);
    opened()->compact({});
    EXPECT_EQ(findings(), QStringList());
    expectWhole();
}

}  // namespace
