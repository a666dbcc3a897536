#include "base/ReportableError.h"
#include "tests/records/sqlite/ArchiveFixture.h"
#include "tests/support/FormerSite.h"

#include <QtCore/QFile>

namespace {

const auto kMissing = std::nullopt;

/// What a program of the first version wrote: no tail, plain doubles, a sum rounded its own way.
class FormatUpgradeTest : public ArchiveFixture {
protected:
    FormatUpgradeTest()
    {
        QFile::remove(file());
        formersite::create(file(), 1);
        agent = 1;
        air = 1;
        wind = 2;
    }
    void append(double time, double value)
    {
        opened()->appender()->append(agent, block({time}, {column(air, {value})}));
    }
    qint64 version() { return ask("PRAGMA user_version"); }
};

TEST_F(FormatUpgradeTest, TheFirstVersionIsReadAsItIs)
{
    EXPECT_EQ(times(), (std::vector<double>{10, 20, 30}));
    EXPECT_EQ(values(air), (Values{1.5, kMissing, -0.25}));
    EXPECT_EQ(count(), 3U);
    EXPECT_TRUE(opened()->verify().isSound());
    EXPECT_EQ(version(), 1);
}

TEST_F(FormatUpgradeTest, WritingBringsItToTheCurrentVersionAndLosesNothing)
{
    append(40, 4);
    EXPECT_EQ(version(), SqliteFile::schema().version);
    EXPECT_EQ(ask("SELECT count(*) FROM tail"), 1);
    EXPECT_EQ(times(), (std::vector<double>{10, 20, 30, 40}));
    EXPECT_EQ(values(air), (Values{1.5, kMissing, -0.25, 4}));
    EXPECT_TRUE(opened()->verify().isSound());
}

TEST_F(FormatUpgradeTest, WhatHasNoChecksumsIsNotWrong)
{
    append(40, 4);
    EXPECT_EQ(ask("SELECT count(*) FROM segment WHERE codec >= 16"), 0);
    EXPECT_TRUE(opened()->verify().isSound());
}

TEST_F(FormatUpgradeTest, TheFirstVersionHasNoIndexAndItsValuesAreReadInstead)
{
    const auto piece = [&] {
        return opened()->index(agent, std::vector{air}, {}, {}, plotix::RecordIndex::Detail::Runs).pieces.at(0);
    };
    EXPECT_EQ(piece().columns[0].source, plotix::RecordIndex::Source::Records);
    EXPECT_EQ(piece().columns[0].index.sum.value(), 1.25);
    EXPECT_EQ(piece().columns[0].index.whole.least.at, 2U);
    append(40, 4);
    EXPECT_EQ(piece().columns[0].source, plotix::RecordIndex::Source::Records);
    opened()->compact({});
    EXPECT_EQ(piece().columns[0].source, plotix::RecordIndex::Source::Index);
    EXPECT_EQ(piece().columns[0].index.sum.value(), 5.25);
}

TEST_F(FormatUpgradeTest, AReaderThatIsOpenSeesTheIndexThatComes)
{
    const auto reader = opened();
    const auto source = [&] {
        return reader->index(agent, std::vector{air}, {}, {}, plotix::RecordIndex::Detail::Pieces)
            .pieces.at(0)
            .columns[0]
            .source;
    };
    EXPECT_EQ(source(), plotix::RecordIndex::Source::Records);
    EXPECT_EQ(reader->overview(agent, std::vector{air}).columns[0].summaries[0].sum, 1.25);
    append(20, 2);
    EXPECT_EQ(source(), plotix::RecordIndex::Source::Index);
    EXPECT_EQ(reader->overview(agent, std::vector{air}).columns[0].summaries[0].sum, 3.25);
}

TEST_F(FormatUpgradeTest, ARowOfTheTailBeforeChecksumsIsRead)
{
    append(40, 4);
    append(50, 5);
    // As version 6 wrote it.
    run("UPDATE tail SET data = substr(data, 1, length(data) - 8) WHERE id % 1048576 = 0");
    EXPECT_EQ(values(air, 35), (Values{4, 5}));
    EXPECT_TRUE(opened()->verify().isSound());
    append(45, 4.5);
    EXPECT_EQ(values(air, 35), (Values{4, 4.5, 5}));
}

TEST_F(FormatUpgradeTest, AReaderThatIsOpenSeesWhatComesInTheNewForm)
{
    const auto reader = opened();
    EXPECT_EQ(countIn(*reader, agent), 3U);
    append(40, 4);
    EXPECT_EQ(countIn(*reader, agent), 4U);
    EXPECT_EQ(reader->extent(agent)->last, 40);
    EXPECT_EQ(reader->read(agent, std::vector{air}, {}, {})->times.size(), 4U);
}

TEST_F(FormatUpgradeTest, AReadOnlyFileOfTheFirstVersionStaysAsItIs)
{
    QFile::setPermissions(file(), QFile::ReadOwner);
    EXPECT_EQ(times().size(), 3U);
    EXPECT_THROW(append(40, 4), plotix::ReportableError);
    EXPECT_EQ(version(), 1);
}

TEST_F(FormatUpgradeTest, LateRecordsGoIntoOldChunks)
{
    append(20, 2);
    append(5, 0.5);
    EXPECT_EQ(times(), (std::vector<double>{5, 10, 20, 30}));
    EXPECT_EQ(values(air), (Values{0.5, 1.5, 2, -0.25}));
}

TEST_F(FormatUpgradeTest, TheFirstVersionHasNoAmendmentsAndTakesSome)
{
    EXPECT_TRUE(opened()->amendments(agent, std::vector{air}).empty());
    const auto writer = opened()->begin();
    writer->noteAmendments(1000);
    writer->store(agent, block({15}, {column(air, {2})}));
    writer->commit();
    EXPECT_EQ(opened()->amendments(agent, std::vector{air}).size(), 1U);
}

TEST_F(FormatUpgradeTest, CompactionWritesOldChunksAnew)
{
    opened()->compact({});
    EXPECT_EQ(values(air), (Values{1.5, kMissing, -0.25}));
    EXPECT_EQ(version(), SqliteFile::schema().version);
    EXPECT_EQ(ask("SELECT count(*) FROM segment WHERE codec < 16"), 0);
    EXPECT_EQ(ask("SELECT count(*) FROM summary WHERE whole IS NULL"), 0);
    EXPECT_TRUE(opened()->verify().isSound());
}

/// Files as the versions between the first one and this one wrote them: chunks of several codecs and a tail, without
/// checksums and index.
class EarlierVersionTest : public ArchiveFixture, public testing::WithParamInterface<int> {
protected:
    EarlierVersionTest()
    {
        store(ramp(air, 0, 16384 + 3000));
        store(block({5.5, 6}, {column(wind, {-0.0, kMissing})}));
        opened()->appender()->append(agent, ramp(wind, 50'000, 20));
        whole = read({air, wind});
        QByteArray sql = "DELETE FROM segment WHERE id / 1048576 NOT IN (SELECT id FROM chunk); ";
        if (GetParam() < 9)
            sql += "DROP TABLE outline; DROP TABLE outlined;";
        if (GetParam() < 8)
            sql += "DROP TABLE retired;";
        if (GetParam() < 7)
            sql += "UPDATE segment SET codec = codec - 16, data = substr(data, 1, length(data) - 8);"
                   "UPDATE tail SET data = substr(data, 1, length(data) - 8);"
                   "DROP TABLE run; ALTER TABLE summary DROP COLUMN whole;";
        sql += GetParam() < 6 ? "DROP TABLE amendment;" : "";
        run((sql + "PRAGMA user_version = " + QByteArray::number(GetParam())).constData());
    }
    void expectWhole()
    {
        const plotix::RecordBlock now = read({air, wind});
        ASSERT_EQ(now.times.size(), whole.times.size());
        for (std::size_t c = 0; c < 2; ++c)
            for (std::size_t i = 0; i < now.times.size(); ++i) {
                ASSERT_EQ(now.columns[c].validity.isValid(i), whole.columns[c].validity.isValid(i));
                ASSERT_EQ(bitsOf(now.columns[c].values[i]), bitsOf(whole.columns[c].values[i]));
            }
    }
    qint64 version() { return ask("PRAGMA user_version"); }
    qint64 unsealed() { return ask("SELECT count(*) FROM segment WHERE codec < 16"); }

    plotix::RecordBlock whole;
};

TEST_P(EarlierVersionTest, IsReadAsItIsAndIsSound)
{
    expectWhole();
    EXPECT_TRUE(opened()->verify().isSound());
    EXPECT_EQ(opened()->overview(agent, std::vector{air}).records(), whole.times.size());
    EXPECT_EQ(version(), GetParam());
}

TEST_P(EarlierVersionTest, WritingUpgradesItAndLeavesItsRecords)
{
    opened()->begin()->commit();
    EXPECT_EQ(version(), SqliteFile::schema().version);
    EXPECT_EQ(unsealed() > 0, GetParam() < 7);
    expectWhole();
    EXPECT_TRUE(opened()->verify().isSound());
}

TEST_P(EarlierVersionTest, CompactingGivesItChecksumsAndAnIndex)
{
    opened()->compact({});
    EXPECT_EQ(unsealed(), 0);
    expectWhole();
    EXPECT_TRUE(opened()->verify().isSound());
    const auto index = opened()->index(agent, std::vector{air, wind}, {}, {}, plotix::RecordIndex::Detail::Runs);
    for (const plotix::RecordIndex::Piece& piece : index.pieces)
        for (const plotix::RecordIndex::Column& each : piece.columns)
            EXPECT_EQ(each.source, plotix::RecordIndex::Source::Index);
}

TEST_P(EarlierVersionTest, ItsProgramRefusesThisVersion)
{
    opened()->begin()->commit();
    plotix::DatabaseSchema earlier = SqliteFile::schema();
    earlier.version = GetParam();
    try {
        plotix::Database(file(), earlier, plotix::Database::Access::ReadOnly);
        ADD_FAILURE() << "it was opened";
    } catch (const plotix::ReportableError& error) {
        EXPECT_TRUE(error.message().contains("made by a newer Plotix (format 9")) << error.message().toStdString();
    }
}

INSTANTIATE_TEST_SUITE_P(Versions, EarlierVersionTest, testing::Range(2, 9));

}  // namespace
