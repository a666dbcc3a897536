#include "storage/EarlyWriting.h"

#include "base/ReportableError.h"
#include "tests/storage/DatabaseFixture.h"

#include <QtCore/QDeadlineTimer>
#include <QtCore/QFile>
#include <QtCore/QThread>

#include <fcntl.h>
#include <unistd.h>

#include <cstdint>

namespace {

using plotix::EarlyWriting;

constexpr long kCachestat = 451;  // on every processor; older headers do not name it

class EarlyWritingTest : public DatabaseFixture {
protected:
    /// Some megabytes, which stay in the system's memory: nobody waits for the disk before the log is merged.
    static void fill(plotix::Database& database)
    {
        database.execute("PRAGMA wal_autocheckpoint=0");
        database.beginWriting();
        for (int i = 0; i < 8; ++i)
            database.execute("INSERT INTO ware(name) VALUES(hex(randomblob(500000)))");
    }

    /// Bytes of the log that are in the system's memory alone; -1 where it does not tell.
    qint64 unwritten() const
    {
        struct Range {
            std::uint64_t from = 0, length = 0;
        } range;
        struct Pages {
            std::uint64_t cached = 0, dirty = 0, beingWritten = 0, evicted = 0, lately = 0;
        } pages;
        QFile opened(log());
        if (opened.open(QIODevice::ReadOnly) && ::syscall(kCachestat, opened.handle(), &range, &pages, 0) == 0)
            return static_cast<qint64>(pages.dirty) * ::sysconf(_SC_PAGESIZE);
        return -1;
    }
    QString log() const { return file() + QStringLiteral("-wal"); }
    /// Whether another program would see the lock by which SQLite says that a connection is open.
    bool isLockedForOthers() const
    {
        const int opened = ::open(QFile::encodeName(file()).constData(), O_RDWR);
        struct flock lock {};
        lock.l_type = F_WRLCK;
        lock.l_start = 0x40000002;
        lock.l_len = 510;
        const bool isAsked = ::fcntl(opened, F_OFD_GETLK, &lock) == 0;
        ::close(opened);  // which gives the lock up: the last thing the test does
        return isAsked && lock.l_type == F_RDLCK;
    }
    bool isWrittenSoon() const
    {
        const QDeadlineTimer patience(20000);  // the system itself begins after thirty seconds
        while (unwritten() > 0 && !patience.hasExpired())
            QThread::msleep(1);
        return unwritten() == 0;
    }
};

TEST_F(EarlyWritingTest, ALogIsWrittenBeforeAnybodyWaitsForIt)
{
    plotix::Database database = opened();
    fill(database);
    database.commit();
    if (unwritten() <= 0)
        GTEST_SKIP() << "This system does not tell what it has written, or keeps files in memory alone.";
    const EarlyWriting early(file(), log());
    EXPECT_TRUE(isWrittenSoon());
}

TEST_F(EarlyWritingTest, TheLocksOfItsConnectionStay)
{
    plotix::Database database = opened();
    fill(database);
    {
        const EarlyWriting early(file(), log());
    }
    EXPECT_TRUE(isLockedForOthers());
}

TEST_F(EarlyWritingTest, ACommitThatExpectsMuchStoresTheSame)
{
    plotix::Database database = opened();
    fill(database);
    database.expectMuch();
    database.commit();
    EXPECT_EQ(wares(), 8);
}

TEST_F(EarlyWritingTest, AFileThatNobodyHasOpenIsLeftAlone)
{
    const EarlyWriting early(folder.filePath("none.db"), folder.filePath("none.db-wal"));
    EXPECT_FALSE(QFile::exists(folder.filePath("none.db")));
}

}  // namespace
