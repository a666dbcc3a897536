#include "base/ReportableError.h"
#include "records/sqlite/SqliteReader.h"
#include "tests/records/sqlite/ArchiveFixture.h"

#include <cmath>
#include <filesystem>

// What reading itself guarantees, however the records were written: long reads that take helping threads, ranges that
// cut chunks, overviews and statistics.

namespace {

using plotix::ReadConnections;
using plotix::RecordBlock;
using plotix::RecordExtent;
using plotix::RecordOverview;
using plotix::SqliteReader;
using plotix::StatisticsFrom;

constexpr std::size_t kMany = 1'200'000;  ///< enough for a second thread

class RecordReaderTest : public ArchiveFixture {
protected:
    /// Air is a tenth of the time, wind is valid at even times only.
    void storeMany(std::size_t count = kMany)
    {
        std::vector<double> times(count), tenths(count), roots(count);
        std::vector<std::uint64_t> even((count + 63) / 64, 0x5555'5555'5555'5555);
        for (std::size_t i = 0; i < count; ++i) {
            times[i] = static_cast<double>(i);
            tenths[i] = times[i] / 10;
            roots[i] = std::sqrt(times[i]);
        }
        RecordBlock records = block(times, {{air, plotix::SharedArray<double>::fromVector(tenths), {}}});
        records.columns.push_back(
            {wind, plotix::SharedArray<double>::fromVector(roots),
             plotix::ValidityBitmap(plotix::SharedArray<std::uint64_t>::fromVector(std::move(even)))});
        store(records);
    }

    static bool isAsStored(const RecordBlock& records, std::size_t i)
    {
        const double time = records.times[i];
        const auto& [tenths, roots] = std::tie(records.columns[0], records.columns[1]);
        const bool isEven = std::fmod(time, 2) == 0;
        return tenths.values[i] == time / 10 && tenths.validity.isValid(i) && roots.validity.isValid(i) == isEven &&
               (!isEven || roots.values[i] == std::sqrt(time));
    }

    void expectAsStored(double from, double to)
    {
        const RecordBlock records = read({air, wind}, from, to);
        ASSERT_EQ(records.times.size(), static_cast<std::size_t>(to - from) + 1);
        std::size_t wrong = 0;
        for (std::size_t i = 0; i < records.times.size(); ++i)
            wrong += records.times[i] == from + static_cast<double>(i) && isAsStored(records, i) ? 0 : 1;
        EXPECT_EQ(wrong, 0U) << from << " to " << to;
    }
};

TEST_F(RecordReaderTest, LongReadsAreAsStored)
{
    storeMany();
    expectAsStored(0, kMany - 1);
    expectAsStored(5, kMany - 1000);
}

TEST_F(RecordReaderTest, AnyRangeIsAsStored)
{
    storeMany(50'000);
    for (const auto& [from, to] : {std::pair(0, 0), std::pair(16'383, 16'384), std::pair(16'384, 32'767),
                                   std::pair(100, 49'000), std::pair(16'390, 16'400), std::pair(49'999, 49'999)})
        expectAsStored(from, to);
}

TEST_F(RecordReaderTest, ProgressOfALongReadNeverDecreasesAndEndsAtOne)
{
    storeMany();
    std::vector<double> told;
    const std::vector<plotix::RowId> both{air, wind};
    opened()->read(agent, both, {}, {}, [&](double fraction) {
        told.push_back(fraction);
        return true;
    });
    EXPECT_TRUE(std::is_sorted(told.begin(), told.end()));
    EXPECT_EQ(told.back(), 1);
    EXPECT_GT(told.size(), 10U);
}

TEST_F(RecordReaderTest, ALongReadStopsWhenTold)
{
    storeMany();
    const std::vector<plotix::RowId> both{air, wind};
    EXPECT_FALSE(opened()->read(agent, both, {}, {}, [](double fraction) { return fraction < 0.2; }));
}

TEST_F(RecordReaderTest, ADamagedSegmentOfALongReadIsAnError)
{
    storeMany();
    run("UPDATE segment SET data = x'00112233' WHERE id = (SELECT max(id) FROM segment)");
    EXPECT_THROW(read({air, wind}), plotix::ReportableError);
}

TEST_F(RecordReaderTest, AnErrorLeavesTheConnectionUsable)
{
    store(ramp(air, 0, 20'000));
    run("CREATE TABLE kept AS SELECT * FROM segment");
    run("UPDATE segment SET data = x'00'");
    const auto reader = opened();
    EXPECT_THROW(reader->read(agent, {}, {}, {}), plotix::ReportableError);
    run("DELETE FROM segment; INSERT INTO segment SELECT * FROM kept");
    EXPECT_EQ(reader->read(agent, {}, {}, {})->times.size(), 20'000U);
}

TEST_F(RecordReaderTest, OverviewHasOneRunAChunk)
{
    store(ramp(air, 0, 40'000));
    const RecordOverview overview = opened()->overview(agent, std::span(&air, 1));
    ASSERT_EQ(overview.runs.size(), 3U);
    EXPECT_EQ(overview.runs[1].t0, 16'384);
    EXPECT_EQ(overview.runs[1].t1, 32'767);
    EXPECT_EQ(overview.runs[1].records, 16'384U);
    EXPECT_EQ(overview.columns[0].summaries[1].minimum, 16'384);
    EXPECT_EQ(overview.columns[0].summaries[1].maximum, 32'767);
    EXPECT_EQ(overview.columns[0].summaries[1].valid, 16'384U);
}

TEST_F(RecordReaderTest, OverviewCoversTheRangeAlone)
{
    store(ramp(air, 0, 40'000));
    const auto reader = opened();
    EXPECT_EQ(reader->overview(agent, {}, 16'384, 20'000).runs.size(), 1U);
    EXPECT_EQ(reader->overview(agent, {}, 50'000, {}).runs.size(), 0U);
    EXPECT_EQ(reader->overview(agent, {}, 16'000, 20'000).runs.size(), 2U);
}

TEST_F(RecordReaderTest, OverviewOfAPropertyWithoutValuesIsEmptyRuns)
{
    store(ramp(air, 0, 20'000));
    const std::vector<plotix::RowId> both{wind, air};
    const RecordOverview overview = opened()->overview(agent, both);
    ASSERT_EQ(overview.columns.size(), 2U);
    EXPECT_EQ(overview.columns[0].property, wind);
    EXPECT_EQ(overview.columns[0].summaries[0].valid, 0U);
    EXPECT_EQ(overview.columns[1].summaries[0].valid, 16'384U);
}

TEST_F(RecordReaderTest, OverviewIsTheSameBesideManyProperties)
{
    std::vector<RecordBlock::Column> columns{column(air, {1, 2, 3})};
    for (int i = 0; i < 30; ++i)
        columns.push_back(column(addProperty(agent, QStringLiteral("p%1").arg(i)), {100, 100, 100}));
    store(block({1, 2, 3}, columns));
    const RecordOverview overview = opened()->overview(agent, std::span(&air, 1));
    EXPECT_EQ(overview.columns[0].summaries[0].sum, 6);
}

TEST_F(RecordReaderTest, KeptConnectionsServeOneAfterTheOther)
{
    store(ramp(air, 0, 3));
    const auto connections = ReadConnections::ofFile(file(), SqliteFile::schema());
    for (int round = 0; round < 3; ++round) {
        SqliteReader reader(connections);
        EXPECT_EQ(connections->inUse(), 1);
        EXPECT_EQ(reader.extent(agent), (RecordExtent{0, 2}));
    }
    EXPECT_EQ(connections->inUse(), 0);
}

// Agents and properties of the new file may have the numbers of others: nothing false is read.
TEST_F(RecordReaderTest, AFileThatTakesThePlaceOfAnotherIsNotRead)
{
    store(ramp(air, 0, 3));
    const auto connections = ReadConnections::ofFile(file(), SqliteFile::schema());
    EXPECT_EQ(SqliteReader(connections).extent(agent), (RecordExtent{0, 2}));
    const QString other = folder.filePath("other.plotix");
    run(qPrintable(QStringLiteral("VACUUM INTO '%1'").arg(other)));
    const auto writer = plotix::SqliteRecordStore(other, SqliteFile::schema()).begin();
    writer->store(agent, ramp(air, 3, 4));
    writer->commit();
    std::filesystem::rename(other.toStdString(), file().toStdString());
    EXPECT_THROW(SqliteReader{connections}, plotix::FileReplaced);
    EXPECT_EQ(SqliteReader(ReadConnections::ofFile(file(), SqliteFile::schema())).extent(agent), (RecordExtent{0, 6}));
}

TEST_F(RecordReaderTest, AFileThatIsGoneIsAnErrorAlsoForKeptConnections)
{
    const auto connections = ReadConnections::ofFile(file(), SqliteFile::schema());
    SqliteReader(connections).extent(agent);
    QFile::remove(file());
    EXPECT_THROW(SqliteReader{connections}, plotix::ReportableError);
}

}  // namespace
