#include "storage/FormerFile.h"

#include <QtCore/QFile>
#include <QtCore/QThread>

#include <mutex>
#include <set>
#include <sys/stat.h>
#include <utility>

namespace plotix {

namespace {

using Number = std::pair<quint64, quint64>;  // of the device, and on it

std::optional<Number> numberOf(const QString& file)
{
    struct stat status {};
    if (::stat(file.toLocal8Bit().constData(), &status) != 0)
        return std::nullopt;
    return Number(status.st_dev, status.st_ino);
}

std::optional<OpenInPlace::Numbers> numbersOf(const QString& file)
{
    const std::optional<Number> index = numberOf(file + QStringLiteral("-shm")), database = numberOf(file);
    if (!index || !database)
        return std::nullopt;
    return OpenInPlace::Numbers{database->first, database->second, index->first, index->second};
}

/// What this process has open.
struct OpenFiles {
    std::mutex mutex;
    std::multiset<OpenInPlace::Numbers> numbers;

    static OpenFiles& all()
    {
        static OpenFiles& files = *new OpenFiles;  // databases may be closed while static objects are destroyed
        return files;
    }
    bool has(const OpenInPlace::Numbers& wanted)
    {
        const std::lock_guard lock(mutex);
        return numbers.contains(wanted);
    }
};

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
    const std::optional<OpenInPlace::Numbers> numbers = numbersOf(file);
    QFile list(QStringLiteral("/proc/locks"));
    if (!numbers || OpenFiles::all().has(*numbers) || !list.open(QIODevice::ReadOnly))
        return std::nullopt;
    const QList<QByteArray> lines = list.readAll().split('\n');
    const std::set<qint64> ofDatabase = lockHolders(lines, (*numbers)[1]);
    for (const qint64 process : lockHolders(lines, (*numbers)[3]))
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

OpenInPlace::OpenInPlace(const QString& file) : m_numbers(numbersOf(file))
{
    if (!m_numbers)
        return;
    const std::lock_guard lock(OpenFiles::all().mutex);
    OpenFiles::all().numbers.insert(*m_numbers);
}

OpenInPlace::~OpenInPlace()
{
    if (!m_numbers)
        return;
    const std::lock_guard lock(OpenFiles::all().mutex);
    OpenFiles::all().numbers.erase(OpenFiles::all().numbers.find(*m_numbers));
}

}  // namespace plotix
