#include "storage/Database.h"

#include "base/ReportableError.h"
#include "tests/storage/DatabaseFixture.h"

#include <QtCore/QDir>
#include <QtCore/QFile>

#include <sqlite3.h>
#include <sys/resource.h>

#include <csignal>

namespace {

using plotix::Database;
using plotix::ReportableError;
using plotix::Statement;

class DatabaseTest : public DatabaseFixture {
protected:
    void open(Database::Access access = Database::Access::BestAvailable) { Database(path, schema(), access); }

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

TEST_F(DatabaseTest, AFreshDatabaseIsOneFileInWalMode)
{
    EXPECT_EQ(QDir(folder.path()).entryList(QDir::Files), QStringList{"shop.db"});
    Database database(path, schema(), Database::Access::ReadWrite);
    plotix::Statement mode(database, "PRAGMA journal_mode");
    ASSERT_TRUE(mode.step());
    EXPECT_EQ(mode.text(0), "wal");
}

TEST_F(DatabaseTest, CreatingOverSomethingIsRefused)
{
    EXPECT_THROW(Database::create(path, schema()), ReportableError);
    EXPECT_THROW(Database::create(folder.filePath("nowhere/shop.db"), schema()), ReportableError);
}

TEST_F(DatabaseTest, ARowThatCannotBeMadeLeavesNoFile)
{
    path = folder.filePath("other.db");
    EXPECT_THROW(Database::create(path, schema(), "INSERT INTO nothing VALUES(1)"), ReportableError);
    EXPECT_FALSE(QFile::exists(path));
}

TEST_F(DatabaseTest, OddPathsWork)
{
    path = folder.filePath("O'Hara %20 ?#ä.db");
    Database::create(path, schema(), "INSERT INTO shop VALUES(1, 'O''Hara')");
    Database database(path, schema(), Database::Access::ReadWrite);
    plotix::Statement name(database, "SELECT name FROM shop");
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
    run("PRAGMA user_version = 4");
    expectRefused("newer Plotix");
}

TEST_F(DatabaseTest, AMissingTable)
{
    run("DROP TABLE ware");
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
    addWares(10);
    QFile::setPermissions(path, QFile::ReadOwner);
    const QByteArray before = bytes();
    EXPECT_EQ(messageOf(), "(opened)");
    EXPECT_TRUE(Database(path, schema(), Database::Access::BestAvailable).isReadOnly());
    EXPECT_EQ(wares(), 10);
    EXPECT_EQ(bytes(), before);
    EXPECT_EQ(QDir(folder.path()).entryList(QDir::Files), QStringList{"shop.db"});
    expectRefused("read-only", Database::Access::ReadWrite);
}

/// While it lives, no file of this process grows: writing ends as on a full disk.
class FullDisk {
public:
    FullDisk() : m_handler(std::signal(SIGXFSZ, SIG_IGN))
    {
        ::getrlimit(RLIMIT_FSIZE, &m_before);
        const rlimit none{0, m_before.rlim_max};
        ::setrlimit(RLIMIT_FSIZE, &none);
    }
    ~FullDisk()
    {
        ::setrlimit(RLIMIT_FSIZE, &m_before);
        std::signal(SIGXFSZ, m_handler);
    }

private:
    void (*m_handler)(int);
    rlimit m_before{};
};

TEST_F(DatabaseTest, AFullDiskDoesNotForbidReading)
{
    addWares(3);
    const FullDisk full;
    Database database = opened(Access::BestAvailable);
    EXPECT_TRUE(database.isReadOnly());
    Statement count(database, "SELECT count(*) FROM ware");
    ASSERT_TRUE(count.step());
    EXPECT_EQ(count.integer(0), 3);
}

TEST_F(DatabaseTest, AFullDiskIsNamedWhereSomethingIsWritten)
{
    const FullDisk full;
    try {
        Database database = opened(Access::ReadWrite);
        database.beginWriting();
        FAIL() << "written";
    } catch (const ReportableError& error) {
        EXPECT_TRUE(error.message().contains("no space left")) << error.message().toStdString();
    }
}

TEST_F(DatabaseTest, AFileCutShortWhileItIsOpenIsAnError)
{
    addWares(20'000);
    Database database = opened(Access::ReadOnly);
    database.execute("BEGIN");
    ASSERT_TRUE(Statement(database, "SELECT max(id) FROM ware").step());
    ASSERT_TRUE(QFile::resize(file(), 16384));
    EXPECT_THROW(
        {
            Statement count(database, "SELECT sum(length(name)) FROM ware");
            count.step();
        },
        ReportableError);
}

TEST_F(DatabaseTest, WritingToADatabaseOpenForReadingIsRefused)
{
    Database database(path, schema(), Database::Access::ReadOnly);
    EXPECT_THROW(database.beginWriting(), ReportableError);
}

TEST_F(DatabaseTest, ALockedFileSaysSoAfterItsPatience)
{
    Database writer(path, schema(), Database::Access::ReadWrite);
    writer.beginWriting();
    Database second(path, schema(), Database::Access::ReadWrite);
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
    addWares(10);
    {
        Database writer(path, schema(), Database::Access::ReadWrite);
        writer.beginWriting();
        writer.execute("DELETE FROM ware");
    }
    EXPECT_EQ(wares(), 10);
}

}  // namespace
