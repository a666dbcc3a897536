#include "storage/Database.h"

#include "base/ReportableError.h"
#include "tests/records/sqlite/ArchiveFixture.h"

#include <QtCore/QDir>
#include <QtCore/QFile>

#include <sqlite3.h>

namespace {

using plotix::Database;
using plotix::ReportableError;

class DatabaseTest : public ArchiveFixture {
protected:
    void open(Database::Access access = Database::Access::BestAvailable) { Database(path, access); }

    /// The message, or "(opened)".
    std::string messageOf(Database::Access access = Database::Access::BestAvailable)
    {
        try {
            open(access);
        } catch (const ReportableError& error) {
            return error.what();
        }
        return "(opened)";
    }
    void expectRefused(const char* words, Database::Access access = Database::Access::BestAvailable)
    {
        const QByteArray before = bytes();
        const QStringList beside = QDir(folder.path()).entryList(QDir::Files);
        const std::string message = messageOf(access);
        EXPECT_NE(message.find(words), std::string::npos) << message;
        EXPECT_EQ(message.find('\n'), std::string::npos);
        EXPECT_EQ(bytes(), before);
        EXPECT_EQ(QDir(folder.path()).entryList(QDir::Files), beside);
    }
    QByteArray bytes() const
    {
        QFile content(path);
        return content.open(QIODevice::ReadOnly) ? content.readAll() : QByteArray();
    }
    void write(const QByteArray& content)
    {
        path = folder.filePath("other.plotix");
        QFile file(path);
        ASSERT_TRUE(file.open(QIODevice::WriteOnly));
        file.write(content);
    }

    QString path = file();
};

TEST_F(DatabaseTest, AFreshSiteIsOneFileInWalMode)
{
    EXPECT_EQ(QDir(folder.path()).entryList(QDir::Files), QStringList{"site.plotix"});
    Database database(path, Database::Access::ReadWrite);
    plotix::Statement mode(database, "PRAGMA journal_mode");
    ASSERT_TRUE(mode.step());
    EXPECT_EQ(mode.text(0), "wal");
}

TEST_F(DatabaseTest, CreatingOverSomethingIsRefused)
{
    EXPECT_THROW(Database::create(path, "Site"), ReportableError);
    EXPECT_THROW(Database::create(folder.filePath("nowhere/site.plotix"), "Site"), ReportableError);
}

TEST_F(DatabaseTest, NamesWithQuotesAndOddPathsWork)
{
    path = folder.filePath("O'Hara %20 ?#ä.plotix");
    Database::create(path, "O'Hara");
    Database database(path, Database::Access::ReadWrite);
    plotix::Statement name(database, "SELECT name FROM site");
    ASSERT_TRUE(name.step());
    EXPECT_EQ(name.text(0), "O'Hara");
}

TEST_F(DatabaseTest, AMissingFile)
{
    path = folder.filePath("missing.plotix");
    expectRefused("does not exist");
}

TEST_F(DatabaseTest, AFolder)
{
    path = folder.path();
    expectRefused("is a folder");
}

TEST_F(DatabaseTest, AnEmptyFile)
{
    write({});
    expectRefused("is empty");
}

TEST_F(DatabaseTest, AFileThatIsNoDatabase)
{
    write(QByteArray("time,temperature\n").repeated(1000));
    expectRefused("not a Plotix site");
}

TEST_F(DatabaseTest, ADatabaseOfAnotherProgram)
{
    path = folder.filePath("other.db");
    sqlite3* handle = nullptr;
    sqlite3_open(path.toUtf8().constData(), &handle);
    sqlite3_exec(handle, "PRAGMA journal_mode=WAL; CREATE TABLE t(x)", nullptr, nullptr, nullptr);
    sqlite3_close(handle);
    expectRefused("another program");
}

TEST_F(DatabaseTest, ANewerFormat)
{
    run("PRAGMA user_version = 3");
    expectRefused("newer Plotix");
}

TEST_F(DatabaseTest, AMissingTable)
{
    run("DROP TABLE segment");
    const std::string message = messageOf();
    EXPECT_NE(message.find("damaged"), std::string::npos) << message;
}

TEST_F(DatabaseTest, AFileCutShort)
{
    const QByteArray whole = bytes();
    write(whole.left(whole.size() / 3));
    expectRefused("damaged");
}

TEST_F(DatabaseTest, AFirstPageOfGarbage)
{
    QByteArray damaged = bytes();
    damaged.replace(100, 4000, QByteArray(4000, '\x5A'));
    write(damaged);
    expectRefused("damaged");
}

TEST_F(DatabaseTest, AReadOnlyFileMayBeLookedAtAndStaysAsItIs)
{
    store(ramp(air, 0, 10));
    QFile::setPermissions(path, QFile::ReadOwner);
    const QByteArray before = bytes();
    EXPECT_EQ(messageOf(), "(opened)");
    EXPECT_TRUE(Database(path, Database::Access::BestAvailable).isReadOnly());
    EXPECT_EQ(times().size(), 10U);
    EXPECT_EQ(bytes(), before);
    EXPECT_EQ(QDir(folder.path()).entryList(QDir::Files), QStringList{"site.plotix"});
    expectRefused("read-only", Database::Access::ReadWrite);
    EXPECT_THROW(plotix::RecordWriter{path}, ReportableError);
}

TEST_F(DatabaseTest, WritingToADatabaseOpenForReadingIsRefused)
{
    Database database(path, Database::Access::ReadOnly);
    EXPECT_THROW(database.beginWriting(), ReportableError);
}

TEST_F(DatabaseTest, ALockedFileSaysSoAfterItsPatience)
{
    Database writer(path, Database::Access::ReadWrite);
    writer.beginWriting();
    Database second(path, Database::Access::ReadWrite);
    second.setPatience(10);
    try {
        second.beginWriting();
        FAIL() << "two writers";
    } catch (const ReportableError& error) {
        EXPECT_NE(std::string(error.what()).find("being written by another program"), std::string::npos);
    }
}

TEST_F(DatabaseTest, ATransactionThatIsDroppedLeavesTheOldState)
{
    store(ramp(air, 0, 10));
    plotix::RecordReader reader(path);
    {
        Database writer(path, Database::Access::ReadWrite);
        writer.beginWriting();
        writer.execute("DELETE FROM chunk");
    }
    EXPECT_EQ(reader.summary(agent).records, 10U);
}

}  // namespace
