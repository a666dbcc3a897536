#include "storage/EarlyWriting.h"

#include <QtCore/QDir>
#include <QtCore/QFile>

#include <fcntl.h>
#include <sys/stat.h>

#include <chrono>
#include <system_error>

namespace plotix {

namespace {

/// A disk writes some megabytes in this time.
constexpr auto kBetween = std::chrono::milliseconds(3);

/// Without waiting, so that what goes wrong is left for the commit's own wait to be told.
void beginToWrite(int descriptor)
{
#ifdef __linux__
    sync_file_range(descriptor, 0, 0, SYNC_FILE_RANGE_WRITE);
#else
    static_cast<void>(descriptor);
#endif
}

bool isOpenAs(int descriptor, dev_t device, ino_t number)
{
    struct stat status {};
    return ::fstat(descriptor, &status) == 0 && status.st_dev == device && status.st_ino == number;
}

bool canWrite(int descriptor)
{
#ifdef O_PATH
    return (::fcntl(descriptor, F_GETFL) & O_PATH) == 0;  // such a one only keeps the place of a file
#else
    return true;
#endif
}

}  // namespace

/// One that is open already: to close one of our own would give up every lock that SQLite holds on the file.
std::optional<EarlyWriting::OpenFile> EarlyWriting::openFile(const QString& file)
{
    struct stat wanted {};
    if (::stat(QFile::encodeName(file).constData(), &wanted) != 0)
        return std::nullopt;
    const QStringList all = QDir(QStringLiteral("/proc/self/fd"))
                                .entryList(QDir::NoDotAndDotDot | QDir::AllEntries | QDir::System, QDir::NoSort);
    for (const QString& each : all)
        if (isOpenAs(each.toInt(), wanted.st_dev, wanted.st_ino) && canWrite(each.toInt()))
            return OpenFile{each.toInt(), wanted.st_dev, wanted.st_ino};
    return std::nullopt;
}

EarlyWriting::EarlyWriting(const QString& file, const QString& log)
{
    for (const QString& each : {file, log})
        if (const std::optional<OpenFile> open = openFile(each))
            m_files.push_back(*open);
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
        for (const OpenFile& file : m_files)
            if (isOpenAs(file.descriptor, file.device, file.number))
                beginToWrite(file.descriptor);
        lock.lock();
    }
}

}  // namespace plotix
