#include "base/ReportableError.h"
#include "tests/storage/DatabaseFixture.h"

#include <QtCore/QFile>

#include <sqlite3.h>

namespace {

using plotix::Database;

/// A file of the first version: without prices.
class SchemaUpgradeTest : public DatabaseFixture {
protected:
    SchemaUpgradeTest()
    {
        QFile::remove(file());
        sqlite3* handle = nullptr;
        sqlite3_open(file().toUtf8().constData(), &handle);
        EXPECT_EQ(sqlite3_exec(handle,
                               "CREATE TABLE shop(id INTEGER PRIMARY KEY, name TEXT NOT NULL);"
                               "CREATE TABLE ware(id INTEGER PRIMARY KEY, name TEXT NOT NULL);"
                               "INSERT INTO ware VALUES(7, 'soap');"
                               "PRAGMA application_id=1399353200; PRAGMA user_version=1; PRAGMA journal_mode=WAL;",
                               nullptr, nullptr, nullptr),
                  SQLITE_OK)
            << sqlite3_errmsg(handle);
        sqlite3_close(handle);
    }
    qint64 version() const { return ask("PRAGMA user_version"); }
};

TEST_F(SchemaUpgradeTest, LookingAtAnOldFileLeavesItAsItIs)
{
    EXPECT_EQ(wares(), 1);
    const Database looking = opened(Access::BestAvailable);
    EXPECT_EQ(version(), 1);
}

TEST_F(SchemaUpgradeTest, WritingTakesEveryStepInOrder)
{
    opened();
    EXPECT_EQ(version(), 3);
    EXPECT_EQ(ask("SELECT cents FROM price WHERE ware = 7"), 100);
}

TEST_F(SchemaUpgradeTest, AStepIsTakenOnce)
{
    opened();
    run("UPDATE price SET cents = 250");
    opened();
    EXPECT_EQ(ask("SELECT cents FROM price"), 250);
}

TEST_F(SchemaUpgradeTest, AnOlderProgramStopsAtItsOwnVersion)
{
    Database(file(), schema(2), Access::ReadWrite);
    EXPECT_EQ(version(), 2);
    EXPECT_EQ(ask("SELECT count(*) FROM price"), 0);
}

TEST_F(SchemaUpgradeTest, AStepThatFailsLeavesTheOldVersion)
{
    run("UPDATE ware SET name = name");  // now of version 3
    run("DROP TABLE price; CREATE VIEW price AS SELECT 1; PRAGMA user_version = 1");
    EXPECT_THROW(opened(), plotix::ReportableError);
    EXPECT_EQ(version(), 1);
}

}  // namespace
