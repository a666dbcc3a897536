// What a connection does once its file is no longer where it was opened.
//
// SQLite finds the log by the file's name. When another file takes that name, the log that lies beside it belongs to
// the file before, and whoever opens the new one would read the old one's pages from it. So:
//  1. Nothing is written while the name leads elsewhere, and nothing counts as written that went there meanwhile.
//  2. The log is merged into the file it belongs to, which the connection still has open, and emptied.

#include "base/ReportableError.h"
#include "storage/Database.h"

#include <QtCore/QFile>
#include <QtCore/QFileInfo>

#include <sqlite3.h>

namespace plotix {

namespace {

QString quotedName(const QString& file)
{
    return QStringLiteral("“%1”").arg(QFileInfo(file).fileName());
}

/// Copies all pages as this connection sees them; an empty text, or why it failed.
QString copyPages(sqlite3* from, const QString& to)
{
    sqlite3* copy = nullptr;
    QString problem;
    if (sqlite3_open_v2(to.toUtf8().constData(), &copy, SQLITE_OPEN_READWRITE | SQLITE_OPEN_CREATE, nullptr) ==
        SQLITE_OK) {
        sqlite3_backup* const backup = sqlite3_backup_init(copy, "main", from, "main");
        if (backup)
            sqlite3_backup_step(backup, -1);
        sqlite3_backup_finish(backup);
    }
    if (sqlite3_errcode(copy) != SQLITE_OK)
        problem = QString::fromUtf8(sqlite3_errmsg(copy));
    sqlite3_close_v2(copy);
    return problem;
}

}  // namespace

void Database::requireInPlace() const
{
    switch (m_opened.place()) {
    case OpenedFile::Place::Same: return;
    case OpenedFile::Place::Gone:
        throw ReportableError(QStringLiteral("%1 does not exist any more: put it back; until then nothing is stored.")
                                  .arg(quotedName(m_file)));
    case OpenedFile::Place::Replaced: throw FileReplaced(replacedMessage());
    }
}

QString Database::replacedMessage() const
{
    return QStringLiteral("%1 was replaced by another file while it was open: nothing more is written to it.")
        .arg(quotedName(m_file));
}

void Database::mergeLogIntoOwnFile() noexcept
{
    if (m_readOnly || m_opened.place() == OpenedFile::Place::Same)
        return;
    rollBack();
    sqlite3_wal_checkpoint_v2(m_handle, "main", SQLITE_CHECKPOINT_TRUNCATE, nullptr, nullptr);
}

QString Database::keepReplaced()
{
    if (m_opened.hasName())
        return QStringLiteral("What was stored before is in the file that was there, wherever it was moved.");
    const QFileInfo info(m_file);
    const QString name =
        QStringLiteral("%1-replaced-%2.%3").arg(info.completeBaseName()).arg(m_opened.number()).arg(info.suffix());
    const QString kept = info.absolutePath() + QLatin1Char('/') + name;
    const QString unfinished = kept + QStringLiteral(".part");
    QFile::remove(unfinished);
    QString problem = copyPages(m_handle, unfinished);
    // A later copy holds all that an earlier one does.
    if (problem.isEmpty() && ::rename(unfinished.toLocal8Bit().constData(), kept.toLocal8Bit().constData()) != 0)
        problem = QStringLiteral("it cannot be given its name");
    if (problem.isEmpty())
        return QStringLiteral("What was stored before is kept in “%1”.").arg(name);
    QFile::remove(unfinished);
    return QStringLiteral("What was stored before could not be copied to “%1” (%2).").arg(name, problem);
}

}  // namespace plotix
