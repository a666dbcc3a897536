#include "base/ReportableError.h"
#include "tests/records/sqlite/ArchiveFixture.h"

#include <QtCore/QFile>

#include <sqlite3.h>

namespace {

const auto kMissing = std::nullopt;

/// What a program of the first version wrote: no tail, plain doubles, a sum rounded its own way.
constexpr const char* kVersion1 = R"sql(
PRAGMA page_size=16384;
BEGIN IMMEDIATE;
CREATE TABLE site(id INTEGER PRIMARY KEY CHECK(id = 1), name TEXT NOT NULL, location TEXT NOT NULL);
CREATE TABLE agent(id INTEGER PRIMARY KEY AUTOINCREMENT, identifier TEXT NOT NULL UNIQUE, name TEXT NOT NULL UNIQUE);
CREATE TABLE property(id INTEGER PRIMARY KEY AUTOINCREMENT, agent INTEGER NOT NULL, name TEXT NOT NULL,
    key TEXT NOT NULL, unit TEXT NOT NULL, archived_unit TEXT NOT NULL, color INTEGER NOT NULL,
    type INTEGER NOT NULL, visible INTEGER NOT NULL, UNIQUE(agent, key));
CREATE TABLE plugin(id INTEGER PRIMARY KEY AUTOINCREMENT, class_name TEXT NOT NULL, state BLOB NOT NULL);
CREATE TABLE setting(key TEXT PRIMARY KEY, value BLOB NOT NULL);
CREATE TABLE chunk(id INTEGER PRIMARY KEY AUTOINCREMENT, agent INTEGER NOT NULL, t0 REAL NOT NULL, t1 REAL NOT NULL,
    n INTEGER NOT NULL);
CREATE INDEX chunk_by_time ON chunk(agent, t0);
CREATE TABLE segment(id INTEGER PRIMARY KEY, codec INTEGER NOT NULL, valid BLOB, data BLOB NOT NULL);
CREATE TABLE summary(id INTEGER PRIMARY KEY, valid INTEGER NOT NULL, minimum REAL, maximum REAL, sum REAL);
PRAGMA application_id=1349284984;
PRAGMA user_version=1;
INSERT INTO site VALUES(1, 'Old', '');
INSERT INTO agent VALUES(1, 'a', 'One');
INSERT INTO property VALUES(1, 1, 'Air', 'air', '', '', 0, 0, 1);
INSERT INTO property VALUES(2, 1, 'Wind', 'wind', '', '', 0, 0, 1);
INSERT INTO chunk VALUES(1, 1, 10.0, 30.0, 3);
INSERT INTO segment VALUES(1048576, 0, NULL, x'000000000000244000000000000034400000000000003E40');
INSERT INTO segment VALUES(1048577, 0, x'05', x'000000000000F83F0000000000000000000000000000D0BF');
INSERT INTO summary VALUES(1048577, 2, -0.25, 1.5, 1.25);
COMMIT;
PRAGMA journal_mode=WAL;
)sql";

class FormatUpgradeTest : public ArchiveFixture {
protected:
    FormatUpgradeTest()
    {
        QFile::remove(file());
        sqlite3* handle = nullptr;
        sqlite3_open(file().toUtf8().constData(), &handle);
        EXPECT_EQ(sqlite3_exec(handle, kVersion1, nullptr, nullptr, nullptr), SQLITE_OK) << sqlite3_errmsg(handle);
        sqlite3_close(handle);
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
    EXPECT_TRUE(opened()->verify().isSound());
}

}  // namespace
