// What a connection does where the disk gives it nothing.
//
// Reading a file with a log needs the log's index beside it, some 32 KB that a full disk does not give. A file whose
// log is empty is whole in itself and read as one that never changes; else the index is kept in memory, which is
// possible while no other program has the file open.

#include "base/ReportableError.h"
#include "storage/Database.h"

#include <QtCore/QFileInfo>
#include <QtCore/QUrl>

#include <sqlite3.h>

#include <cerrno>
#include <cstring>

namespace plotix {

namespace {

QByteArray uriWith(const QString& file, const char* parameters)
{
    return "file:" + QUrl::toPercentEncoding(file, "/") + parameters;
}

bool isForSpace(int error)
{
    return error == ENOSPC || error == EDQUOT || error == EFBIG;
}

}  // namespace

bool Database::lacksSpace()
{
    const int result = sqlite3_exec(m_handle, "SELECT count(*) FROM sqlite_schema", nullptr, nullptr, nullptr);
    return (result & 0xFF) == SQLITE_FULL || sqlite3_extended_errcode(m_handle) == SQLITE_IOERR_SHMSIZE ||
           ((result & 0xFF) == SQLITE_IOERR && isForSpace(sqlite3_system_errno(m_handle)));
}

void Database::openWithoutSpace()
{
    sqlite3_close_v2(m_handle);
    m_handle = nullptr;
    m_readOnly = true;
    const bool hasLog = QFileInfo(m_file + QStringLiteral("-wal")).size() > 0;
    open(hasLog ? SQLITE_OPEN_READWRITE : SQLITE_OPEN_READONLY,
         QString::fromLatin1(uriWith(m_file, hasLog ? "?mode=rw" : "?mode=ro&immutable=1")));
    if (hasLog)
        execute("PRAGMA locking_mode=EXCLUSIVE");
    requireInPlace();
}

void Database::failForSystem() const
{
    const QString name = QStringLiteral("“%1”").arg(QFileInfo(m_file).fileName());
    const int error = sqlite3_system_errno(m_handle);
    if (isForSpace(error))
        throw ReportableError(QStringLiteral("There is no space left for %1: free some and try again.").arg(name));
    QString reason = QString::fromUtf8(sqlite3_errmsg(m_handle));
    if (error != 0)
        reason += QStringLiteral(": ") + QString::fromLocal8Bit(std::strerror(error));
    throw ReportableError(QStringLiteral("%1 cannot be used (%2): check the disk and try again.").arg(name, reason));
}

}  // namespace plotix
