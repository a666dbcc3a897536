#include "records/sqlite/ReaderMark.h"

#include <QtCore/QByteArray>

#include <fcntl.h>
#include <sys/stat.h>
#include <unistd.h>

namespace plotix {

namespace {

QByteArray pathFor(const QString& site)
{
    return (site + QStringLiteral("-readers")).toLocal8Bit();
}

/// Bytes [first, last] of the file, which is empty: the lock of each byte stands for a state.
struct flock bytes(short kind, qint64 first, qint64 last)
{
    struct flock lock {};
    lock.l_type = kind;
    lock.l_whence = SEEK_SET;
    lock.l_start = first;
    lock.l_len = last - first + 1;
    return lock;
}

/// To wherever the file may ever end.
struct flock allBytes(short kind, qint64 first = 0)
{
    struct flock lock = bytes(kind, first, first);
    lock.l_len = 0;
    return lock;
}

// Of the open file, not of the process: two readers in one process have two.
bool acquire(int descriptor, struct flock lock, int command = F_OFD_SETLK)
{
    return ::fcntl(descriptor, command, &lock) == 0;
}

}  // namespace

std::unique_ptr<ReaderMark> ReaderMark::on(const QString& site)
{
    const QByteArray path = pathFor(site);
    for (;;) {
        int descriptor = ::open(path.constData(), O_RDWR | O_CREAT | O_CLOEXEC, 0666);
        if (descriptor < 0)
            descriptor = ::open(path.constData(), O_RDONLY | O_CLOEXEC);
        if (descriptor < 0)
            return nullptr;
        if (!acquire(descriptor, allBytes(F_RDLCK), F_OFD_SETLKW)) {
            ::close(descriptor);
            return nullptr;
        }
        std::unique_ptr<ReaderMark> mark(new ReaderMark(path, descriptor));
        if (mark->isInPlace())
            return mark;  // else the last one before took the file away meanwhile
    }
}

/// The last one takes the file away, while nobody else can have a mark in it.
ReaderMark::~ReaderMark()
{
    if (acquire(m_descriptor, allBytes(F_WRLCK)) && isInPlace())
        ::unlink(m_path.constData());
    ::close(m_descriptor);
}

void ReaderMark::settle(qint64 lastChunk)
{
    if (lastChunk > 0)
        acquire(m_descriptor, bytes(F_UNLCK, 0, lastChunk - 1));
    acquire(m_descriptor, allBytes(F_UNLCK, lastChunk + 1));
}

bool ReaderMark::isInPlace() const
{
    struct stat mine {
    }, named{};
    return ::fstat(m_descriptor, &mine) == 0 && ::stat(m_path.constData(), &named) == 0 &&
           mine.st_dev == named.st_dev && mine.st_ino == named.st_ino;
}

ReaderMarks::ReaderMarks(const QString& site) : m_descriptor(::open(pathFor(site).constData(), O_RDONLY | O_CLOEXEC)) {}

ReaderMarks::~ReaderMarks()
{
    if (m_descriptor >= 0)
        ::close(m_descriptor);
}

bool ReaderMarks::areAnyIn(qint64 first, qint64 last) const
{
    if (m_descriptor < 0)
        return false;
    struct flock lock = bytes(F_WRLCK, first, last);
    return ::fcntl(m_descriptor, F_OFD_GETLK, &lock) == 0 && lock.l_type != F_UNLCK;
}

}  // namespace plotix
