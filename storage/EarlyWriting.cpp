#include "storage/EarlyWriting.h"

#include <QtCore/QDir>
#include <QtCore/QFile>

#include <fcntl.h>
#include <sys/stat.h>

#include <algorithm>
#include <chrono>
#include <system_error>

namespace plotix {

namespace {

/// A disk writes some megabytes in this time.
constexpr auto kBetween = std::chrono::milliseconds(3);

bool isSame(const struct stat& one, const struct stat& other)
{
    return one.st_dev == other.st_dev && one.st_ino == other.st_ino;
}

bool isOpenFor(int descriptor, const struct stat& file)
{
    struct stat status {};
    if (::fstat(descriptor, &status) != 0 || !isSame(status, file))
        return false;
#ifdef O_PATH
    return (::fcntl(descriptor, F_GETFL) & O_PATH) == 0;  // such a one only keeps the place of a file
#else
    return true;
#endif
}

/// Those that are open already: to close one of our own would give up every lock that SQLite holds on the file.
std::vector<int> openDescriptors(const QString& file)
{
    const QStringList all = QDir(QStringLiteral("/proc/self/fd"))
                                .entryList(QDir::NoDotAndDotDot | QDir::AllEntries | QDir::System, QDir::NoSort);
    std::vector<int> found;
    for (const char* suffix : {"", "-wal"}) {
        struct stat wanted {};
        if (::stat(QFile::encodeName(file + QLatin1String(suffix)).constData(), &wanted) != 0)
            continue;
        const auto open =
            std::find_if(all.begin(), all.end(), [&](const QString& each) { return isOpenFor(each.toInt(), wanted); });
        if (open != all.end())
            found.push_back(open->toInt());
    }
    return found;
}

void beginToWrite(int descriptor)
{
#ifdef __linux__
    // Without waiting, so that what goes wrong is left for the commit's own wait to be told.
    sync_file_range(descriptor, 0, 0, SYNC_FILE_RANGE_WRITE);
#else
    static_cast<void>(descriptor);
#endif
}

}  // namespace

EarlyWriting::EarlyWriting(const QString& file) : m_files(openDescriptors(file))
{
    try {
        if (!m_files.empty())
            m_thread = std::thread([this] { work(); });
    } catch (const std::system_error&) {  // then the commit waits longer
    }
}

EarlyWriting::~EarlyWriting()
{
    {
        const std::lock_guard lock(m_mutex);
        m_isEnding = true;
    }
    m_ended.notify_all();
    if (m_thread.joinable())
        m_thread.join();
}

void EarlyWriting::work()
{
    std::unique_lock lock(m_mutex);
    while (!m_ended.wait_for(lock, kBetween, [this] { return m_isEnding; })) {
        lock.unlock();
        for (const int file : m_files)
            beginToWrite(file);
        lock.lock();
    }
}

}  // namespace plotix
