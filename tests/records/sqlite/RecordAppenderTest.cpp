#include "base/ReportableError.h"
#include "storage/LogCheckpointer.h"
#include "tests/records/sqlite/ArchiveFixture.h"

#include <QtCore/QDir>
#include <QtCore/QFile>

namespace {

using plotix::ReportableError;

class RecordAppenderTest : public ArchiveFixture {
protected:
    void append(double time, double value) { appender->append(agent, block({time}, {column(air, {value})})); }

    /// One record of twelve properties at `time`.
    plotix::RecordBlock wideRecord(double time)
    {
        std::vector<plotix::RecordBlock::Column> columns;
        for (const plotix::RowId property : wide)
            columns.push_back(column(property, {time + static_cast<double>(property)}));
        return block({time}, columns);
    }

    std::unique_ptr<plotix::RecordAppender> appender = opened()->appender();
    std::vector<plotix::RowId> wide;
};

TEST(RecordAppenderEndTest, TheSiteIsOneFileWhenTheLastConnectionIsClosed)
{
    SqliteFile file;
    {
        const auto appender = file.opened()->appender();
        appender->append(file.addAgent("a"), {plotix::SharedArray<double>::fromVector({1.0}), {}});
        EXPECT_GT(QDir(file.folder.path()).entryList(QDir::Files).size(), 1);
    }
    EXPECT_EQ(QDir(file.folder.path()).entryList(QDir::Files), QStringList{"site.plotix"});
}

TEST_F(RecordAppenderTest, RecordsOneByOneFillWholeChunks)
{
    constexpr int kCount = 16384 + 3;
    for (int second = 0; second < kCount; ++second)
        append(second, second);
    EXPECT_EQ(ask("SELECT max(n) FROM chunk"), 16384);
    EXPECT_LE(ask("SELECT count(*) FROM chunk"), 3);
    EXPECT_EQ(times().size(), static_cast<std::size_t>(kCount));
}

TEST_F(RecordAppenderTest, TheLogBeginsAnewWhileRecordsGoOnComing)
{
    constexpr int kCommits = 6 * plotix::LogCheckpointer::kPages;
    for (int second = 0; second < kCommits; ++second)
        append(second, second);
    EXPECT_LT(QFile(file() + "-wal").size(), qint64(kCommits) * 16384);
    EXPECT_EQ(times().size(), static_cast<std::size_t>(kCommits));
}

/// Bytes this process has handed to the system so far.
qint64 bytesWritten()
{
    QFile account("/proc/self/io");
    if (!account.open(QIODevice::ReadOnly))
        return -1;
    for (const QByteArray& line : account.readAll().split('\n'))
        if (line.startsWith("wchar:"))
            return line.mid(6).trimmed().toLongLong();
    return -1;
}

/// Counts instead of clocks: what a record costs in bytes, log and merges of the log included, decides whether
/// recording for years is cheap.
TEST_F(RecordAppenderTest, ARecordOfTwelvePropertiesWritesLittleMoreThanAPage)
{
    constexpr int kRecords = 4096;
    constexpr qint64 kPage = 16384;
    for (int property = 0; property < 12; ++property)
        wide.push_back(addProperty(agent, QStringLiteral("p%1").arg(property)));
    const qint64 before = bytesWritten();
    if (before < 0)
        GTEST_SKIP() << "this system keeps no account of bytes written";
    for (int second = 0; second < kRecords; ++second)
        appender->append(agent, wideRecord(second));
    EXPECT_LT((bytesWritten() - before) / kRecords, 2 * kPage);
}

}  // namespace
