#include "storage/LogCheckpointer.h"

#include "tests/storage/DatabaseFixture.h"

#include <QtCore/QDeadlineTimer>
#include <QtCore/QFile>

namespace {

using plotix::LogCheckpointer;

class LogCheckpointerTest : public DatabaseFixture {
protected:
    /// Each writes one page to the log.
    static void commit(plotix::Database& database, int count)
    {
        for (int i = 0; i < count; ++i)
            database.execute("INSERT INTO ware(name) VALUES('soap')");
    }
    /// Commits until the log is shorter than all that was written to it: how soon a merge ends is the disk's.
    /// Answers how many; a minute without that is enough.
    int commitUntilTheLogBeginsAnew(plotix::Database& database)
    {
        int count = 0;
        const QDeadlineTimer patience(60000);
        do {
            commit(database, 64);
            count += 64;
        } while (logBytes() >= qint64(count) * 16384 && !patience.hasExpired());
        return count;
    }
    qint64 logBytes() const { return QFile(file() + "-wal").size(); }
};

TEST_F(LogCheckpointerTest, AShortLogIsLeftAlone)
{
    plotix::Database database = opened();
    LogCheckpointer checkpointer(database);
    commit(database, 1100);  // after a thousand pages the database itself would have merged the log
    EXPECT_GT(logBytes(), qint64(1100) * 16384);
}

TEST_F(LogCheckpointerTest, TheLogBeginsAnewWhileCommitsGoOn)
{
    plotix::Database database = opened();
    LogCheckpointer checkpointer(database);
    const int commits = commitUntilTheLogBeginsAnew(database);
    EXPECT_LT(logBytes(), qint64(commits) * 16384);
    EXPECT_EQ(wares(), commits);
}

TEST_F(LogCheckpointerTest, WhatItMergedIsInTheFileWhenItIsGone)
{
    plotix::Database database = opened();
    {
        LogCheckpointer checkpointer(database);
        database.execute("INSERT INTO ware(name) VALUES(hex(zeroblob(100000)))");
    }
    EXPECT_GT(QFile(file()).size(), qint64(8) * 16384);
}

}  // namespace
