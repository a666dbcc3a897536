#include "storage/FormerFile.h"

#include <QtCore/QFile>
#include <QtCore/QThread>

#include <set>
#include <sys/stat.h>

namespace plotix {

namespace {

std::optional<quint64> numberOf(const QString& file)
{
    struct stat status {};
    if (::stat(file.toLocal8Bit().constData(), &status) != 0)
        return std::nullopt;
    return status.st_ino;
}

/// The processes that lock the file. A line of the system's list reads
/// "1: POSIX  ADVISORY  READ 4711 fd:01:131077 128 128".
std::set<qint64> lockHolders(const QList<QByteArray>& lines, quint64 number)
{
    constexpr int kProcess = 4, kFile = 5;
    std::set<qint64> holders;
    const QByteArray ending = ':' + QByteArray::number(number);
    for (const QByteArray& line : lines) {
        const QList<QByteArray> words = line.simplified().split(' ');
        if (words.size() > kFile && words[kFile].endsWith(ending))
            holders.insert(words[kProcess].toLongLong());
    }
    return holders;
}

/// As the system's list is now, which may lack a lock when others come and go while it is read.
std::optional<qint64> holderSeen(const QString& file)
{
    const std::optional<quint64> index = numberOf(file + QStringLiteral("-shm")), database = numberOf(file);
    QFile list(QStringLiteral("/proc/locks"));
    if (!index || !database || !list.open(QIODevice::ReadOnly))
        return std::nullopt;
    const QList<QByteArray> lines = list.readAll().split('\n');
    const std::set<qint64> ofDatabase = lockHolders(lines, *database);
    for (const qint64 process : lockHolders(lines, *index))
        if (process > 0 && !ofDatabase.contains(process))
            return process;
    return std::nullopt;
}

}  // namespace

// Whoever has a database with a log open locks the file first and then the log's index, for as long as it is open. One
// that holds a former file does so at every look; one that has just opened or closed this file may seem to at one.
std::optional<qint64> holderOfFormerFile(const QString& file)
{
    constexpr int kLooks = 5;
    constexpr unsigned long kBetweenLooks = 20;  // milliseconds
    const std::optional<qint64> holder = holderSeen(file);
    for (int look = 1; holder && look < kLooks; ++look) {
        QThread::msleep(kBetweenLooks);
        if (holderSeen(file) != holder)
            return std::nullopt;
    }
    return holder;
}

}  // namespace plotix
