#include "storage/OpenedFile.h"

#include <fcntl.h>
#include <optional>
#include <sys/stat.h>
#include <unistd.h>

namespace plotix {

namespace {

/// A descriptor of the path alone: closing one of any other kind would drop the process's locks on the file.
int openPath(const QByteArray& path)
{
    return ::open(path.constData(), O_PATH | O_CLOEXEC);
}

std::optional<struct stat> statusOf(int descriptor)
{
    struct stat status {};
    if (descriptor < 0 || ::fstat(descriptor, &status) != 0)
        return std::nullopt;
    return status;
}

bool isSame(const struct stat& one, const struct stat& other)
{
    return one.st_dev == other.st_dev && one.st_ino == other.st_ino;
}

}  // namespace

OpenedFile::OpenedFile(const QString& path) : m_path(path.toLocal8Bit()), m_descriptor(openPath(m_path)) {}

OpenedFile::~OpenedFile()
{
    if (m_descriptor >= 0)
        ::close(m_descriptor);
}

OpenedFile::Place OpenedFile::place() const
{
    if (m_descriptor < 0)
        m_descriptor = openPath(m_path);
    const std::optional<struct stat> held = statusOf(m_descriptor);
    struct stat there {};
    if (!held || ::stat(m_path.constData(), &there) != 0)
        return Place::Gone;
    return isSame(*held, there) ? Place::Same : Place::Replaced;
}

bool OpenedFile::hasName() const
{
    const std::optional<struct stat> held = statusOf(m_descriptor);
    return held && held->st_nlink > 0;
}

quint64 OpenedFile::number() const
{
    const std::optional<struct stat> held = statusOf(m_descriptor);
    return held ? held->st_ino : 0;
}

bool OpenedFile::isSameAs(const OpenedFile& other) const
{
    const std::optional<struct stat> mine = statusOf(m_descriptor), others = statusOf(other.m_descriptor);
    return mine && others && isSame(*mine, *others);
}

}  // namespace plotix
