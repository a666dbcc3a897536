#include "storage/Database.h"

#include "base/ReportableError.h"
#include "storage/EarlyWriting.h"
#include "storage/RowFunction.h"

#include <QtCore/QFileInfo>
#include <QtCore/QUrl>

#include <sqlite3.h>
#include <sys/stat.h>
#include <unistd.h>

#include <new>
#include <utility>

namespace plotix {

namespace {

constexpr int kPatience = 3000;  // milliseconds a writer waits for another

QString quoted(const QString& file)
{
    return QStringLiteral("“%1”").arg(QFileInfo(file).fileName());
}

QString uriOf(const QString& file, const char* parameters)
{
    const QByteArray path = QUrl::toPercentEncoding(QFileInfo(file).absoluteFilePath(), "/");
    return QStringLiteral("file:%1%2").arg(QString::fromLatin1(path), QString::fromLatin1(parameters));
}

void requireReadableFile(const QString& file)
{
    const QFileInfo info(file);
    if (info.isDir())
        throw ReportableError(QStringLiteral("%1 is a folder: give the name of a .plotix file.").arg(quoted(file)));
    if (!info.exists())
        throw ReportableError(QStringLiteral("%1 does not exist: check the name and the folder.").arg(quoted(file)));
    if (::access(file.toLocal8Bit().constData(), R_OK) != 0)
        throw ReportableError(
            QStringLiteral("%1 cannot be read: you lack the permission; ask its owner for it.").arg(quoted(file)));
    if (info.size() == 0)
        throw ReportableError(QStringLiteral("%1 is empty, not a Plotix site: choose another file.").arg(quoted(file)));
}

/// A file without any write permission is not written even by a user who could override that.
bool allowsWriting(const QString& file)
{
    struct stat status {};
    const QByteArray path = file.toLocal8Bit();
    if (::stat(path.constData(), &status) != 0 || (status.st_mode & 0222) == 0)
        return false;
    const QByteArray folder = QFileInfo(file).absolutePath().toLocal8Bit();
    return ::access(path.constData(), W_OK) == 0 && ::access(folder.constData(), W_OK) == 0;
}

bool hasUnmergedLog(const QString& file)
{
    return QFileInfo(file + QStringLiteral("-wal")).size() > 0;
}

/// The tables and the identity appear together, in the file itself; only then does the write-ahead log begin, so that
/// whoever looks at the first page sees all or nothing.
QByteArray creation(const DatabaseSchema& schema, const QByteArray& firstRows)
{
    QByteArray sql = "PRAGMA page_size=" + QByteArray::number(schema.pageSize) + ";BEGIN IMMEDIATE;";
    for (const SchemaPart& part : schema.parts)
        sql += part.create;
    return sql + "PRAGMA application_id=" + QByteArray::number(schema.applicationId) +
           ";PRAGMA user_version=" + QByteArray::number(schema.version) + ";" + firstRows +
           ";COMMIT;PRAGMA journal_mode=WAL;";
}

}  // namespace

void Database::create(const QString& file, const DatabaseSchema& schema, const QByteArray& firstRows)
{
    const QFileInfo info(file);
    if (info.exists())
        throw ReportableError(QStringLiteral("%1 exists already: choose another name.").arg(quoted(file)));
    if (!QFileInfo(info.absolutePath()).isDir())
        throw ReportableError(QStringLiteral("The folder of %1 does not exist: make it first.").arg(quoted(file)));
    sqlite3* handle = nullptr;
    const int opened = sqlite3_open_v2(QFileInfo(file).absoluteFilePath().toUtf8().constData(), &handle,
                                       SQLITE_OPEN_READWRITE | SQLITE_OPEN_CREATE, nullptr);
    const std::unique_ptr<sqlite3, int (*)(sqlite3*)> owner(handle, &sqlite3_close_v2);
    const QByteArray sql = creation(schema, firstRows);
    if (opened != SQLITE_OK || sqlite3_exec(handle, sql.constData(), nullptr, nullptr, nullptr) != SQLITE_OK) {
        const QString reason = QString::fromUtf8(sqlite3_errmsg(handle));
        sqlite3_exec(handle, "ROLLBACK", nullptr, nullptr, nullptr);
        if (opened == SQLITE_OK && QFileInfo(file).size() == 0)
            ::unlink(file.toLocal8Bit().constData());
        throw ReportableError(
            QStringLiteral("%1 cannot be created (%2): check the folder's permissions and free space.")
                .arg(quoted(file), reason));
    }
}

Database::Database(const QString& file, DatabaseSchema schema, Access access)
    : m_file(QFileInfo(file).absoluteFilePath()), m_opened(m_file), m_schema(std::move(schema))
{
    try {
        requireReadableFile(m_file);
        // The first check leaves no trace: no lock, no log, nothing created beside the file.
        inspect(uriOf(m_file, "?mode=ro&immutable=1"));
        if (holderOfFormerFile(m_file))
            throw ReportableError(QStringLiteral("%1 took the place of a file that a program still has open: end that "
                                                 "program first, then open this one.")
                                      .arg(quoted(m_file)));
        const bool isToRead = access == Access::ReadOnly || access == Access::AtRest;
        const bool writable = !isToRead && allowsWriting(m_file);
        if (access == Access::ReadWrite && !writable)
            throw ReportableError(
                QStringLiteral("%1 is read-only: make the file and its folder writable, or work on a copy.")
                    .arg(quoted(m_file)));
        m_readOnly = !writable;
        const bool isStill = access == Access::AtRest || !allowsWriting(m_file);
        const bool frozen = m_readOnly && isStill && !hasUnmergedLog(m_file);
        open(m_readOnly ? SQLITE_OPEN_READONLY : SQLITE_OPEN_READWRITE, uriOf(m_file, frozen ? "?mode=ro&immutable=1"
                                                                                      : m_readOnly ? "?mode=ro"
                                                                                                   : "?mode=rw"));
        requireInPlace();  // else the connection may have the file that came later
        const bool isWithoutSpace = access != Access::ReadWrite && lacksSpace();
        if (isWithoutSpace)
            openWithoutSpace();
        checkTables(checkHeader());
        if (access == Access::ReadWrite)
            upgrade();
        execute("PRAGMA synchronous=NORMAL");
        execute("PRAGMA cache_size=-65536");
        // Never mapped: a file that somebody cuts short meanwhile would end the program by a signal.
        execute("PRAGMA mmap_size=0");
        if (!frozen && !isWithoutSpace && m_opened.place() == OpenedFile::Place::Same)
            m_inPlace.emplace(m_file);
    } catch (...) {
        m_begin.reset();
        m_commit.reset();
        // Closing merges the log into the file, which may be neither's.
        if (m_handle && m_opened.place() != OpenedFile::Place::Same)
            sqlite3_db_config(m_handle, SQLITE_DBCONFIG_NO_CKPT_ON_CLOSE, 1, nullptr);
        sqlite3_close_v2(m_handle);
        throw;
    }
}

Database::~Database()
{
    m_begin.reset();
    m_commit.reset();
    m_inPlace.reset();
    mergeLogIntoOwnFile();
    sqlite3_close_v2(m_handle);
}

void Database::open(int flags, const QString& uri)
{
    const int result =
        sqlite3_open_v2(uri.toUtf8().constData(), &m_handle, flags | SQLITE_OPEN_URI | SQLITE_OPEN_NOMUTEX, nullptr);
    if (result != SQLITE_OK)
        fail(result);
    sqlite3_extended_result_codes(m_handle, 1);
    if (const int added = addRowFunction(m_handle); added != SQLITE_OK)
        fail(added);
    setPatience(kPatience);
}

void Database::inspect(const QString& uri)
{
    open(SQLITE_OPEN_READONLY, uri);
    // Without a lock this may read the file while its log is being merged, when its first page can name more pages than
    // are on disk. Real damage shows again under a lock.
    const int looked = sqlite3_exec(m_handle, "PRAGMA application_id", nullptr, nullptr, nullptr);
    if ((looked & 0xFF) != SQLITE_CORRUPT)
        checkHeader();
    sqlite3_close_v2(m_handle);
    m_handle = nullptr;
}

int Database::checkHeader()
{
    Statement application(*this, "PRAGMA application_id");
    if (!application.step() || application.integer(0) != m_schema.applicationId)
        throw ReportableError(
            QStringLiteral("%1 belongs to another program, it is not a Plotix site: choose another file.")
                .arg(quoted(m_file)));
    Statement version(*this, "PRAGMA user_version");
    version.step();
    if (version.integer(0) > m_schema.version)
        throw ReportableError(
            QStringLiteral("%1 was made by a newer Plotix (format %2, this one reads up to %3): update "
                           "Plotix to open it.")
                .arg(quoted(m_file))
                .arg(version.integer(0))
                .arg(m_schema.version));
    if (version.integer(0) < 1)
        failAsDamaged(QStringLiteral("no format number"));
    return static_cast<int>(version.integer(0));
}

void Database::checkTables(int version)
{
    Statement table(*this, "SELECT 1 FROM sqlite_schema WHERE type = 'table' AND name = ?");
    for (const SchemaPart& part : m_schema.parts)
        for (const SchemaPart::Table& wanted : part.tables) {
            if (wanted.since > version)
                continue;
            table.bind(1, QString::fromLatin1(wanted.name));
            if (!table.step())
                failAsDamaged(QStringLiteral("the table “%1” is missing").arg(QLatin1String(wanted.name)));
            table.reset();
        }
}

void Database::upgrade()
{
    if (checkHeader() == m_schema.version)
        return;
    beginWriting();
    // Another program may have upgraded it meanwhile.
    for (int version = checkHeader() + 1; version <= m_schema.version; ++version) {
        for (const SchemaPart& part : m_schema.parts)
            for (const SchemaPart::Step& step : part.steps)
                if (step.to == version)
                    execute(step.sql);
        execute(("PRAGMA user_version=" + QByteArray::number(version)).constData());
    }
    commit();
}

void Database::execute(const char* sql)
{
    const int result = sqlite3_exec(m_handle, sql, nullptr, nullptr, nullptr);
    if (result != SQLITE_OK)
        fail(result);
}

qint64 Database::lastInsertedRow() const
{
    return sqlite3_last_insert_rowid(m_handle);
}

void Database::setPatience(int milliseconds)
{
    sqlite3_busy_timeout(m_handle, milliseconds);
}

void Database::beginWriting()
{
    if (m_readOnly)
        fail(SQLITE_READONLY);
    if (!m_begin)
        m_begin = std::make_unique<Statement>(*this, "BEGIN IMMEDIATE");
    requireInPlace();
    m_begin->run();
}

void Database::commit()
{
    if (!m_commit)
        m_commit = std::make_unique<Statement>(*this, "COMMIT");
    requireInPlace();
    {
        // Beside the work of packing it would only take time from that.
        const std::unique_ptr<EarlyWriting> early = std::exchange(m_isMuch, false) ? writingEarly() : nullptr;
        m_commit->run();
    }
    requireInPlace();
}

/// Null where there is no room for it.
std::unique_ptr<EarlyWriting> Database::writingEarly() const
{
    try {
        // By the name that SQLite found, which may be at the end of a link.
        const char* file = sqlite3_db_filename(m_handle, "main");
        return std::make_unique<EarlyWriting>(QString::fromUtf8(file), QString::fromUtf8(sqlite3_filename_wal(file)));
    } catch (const std::bad_alloc&) {
        return nullptr;
    }
}

void Database::expectMuch()
{
    m_isMuch = isWriting();
}

unsigned Database::dataVersion() const
{
    unsigned version = 0;
    sqlite3_file_control(m_handle, "main", SQLITE_FCNTL_DATA_VERSION, &version);
    return version;
}

bool Database::isWriting() const
{
    return m_handle && sqlite3_get_autocommit(m_handle) == 0;
}

void Database::rollBack() noexcept
{
    m_isMuch = false;
    if (isWriting())
        sqlite3_exec(m_handle, "ROLLBACK", nullptr, nullptr, nullptr);
}

void Database::fail(int resultCode) const
{
    const QString name = quoted(m_file);
    switch (resultCode & 0xFF) {
    case SQLITE_BUSY:
    case SQLITE_LOCKED:
        throw ReportableError(
            QStringLiteral("%1 is being written by another program: wait until it is done and try again.").arg(name));
    case SQLITE_READONLY:
        throw ReportableError(
            QStringLiteral("%1 is read-only: make the file and its folder writable, or work on a copy.").arg(name));
    case SQLITE_NOTADB:
        throw ReportableError(QStringLiteral("%1 is not a Plotix site: choose another file.").arg(name));
    case SQLITE_CORRUPT: failAsDamaged(QString::fromUtf8(sqlite3_errmsg(m_handle)));
    case SQLITE_FULL:
        throw ReportableError(QStringLiteral("There is no space left for %1: free some and try again.").arg(name));
    case SQLITE_CANTOPEN:
    case SQLITE_PERM:
        throw ReportableError(QStringLiteral("%1 cannot be opened: check its permissions and its folder's.").arg(name));
    default: failForSystem();
    }
}

void Database::failAsDamaged(const QString& detail) const
{
    throw ReportableError(QStringLiteral("%1 is damaged (%2): restore it from a copy.").arg(quoted(m_file), detail));
}

}  // namespace plotix
