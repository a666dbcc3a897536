#include "storage/OpenedFile.h"

#include <fcntl.h>
#include <sys/stat.h>
#include <unistd.h>

namespace plotix {

namespace {

/// A descriptor of the path alone: closing one of any other kind would drop the process's locks on the file.
int openPath(const QByteArray& path)
{
    return ::open(path.constData(), O_PATH | O_CLOEXEC);
}

}  // namespace

OpenedFile::OpenedFile(const QString& path) : m_path(path.toLocal8Bit())
{
    hold();
}

void OpenedFile::hold() const
{
    m_descriptor = openPath(m_path);
    struct stat status {};
    if (m_descriptor >= 0 && ::fstat(m_descriptor, &status) == 0)
        m_identity = {status.st_dev, status.st_ino};
}

OpenedFile::~OpenedFile()
{
    if (m_descriptor >= 0)
        ::close(m_descriptor);
}

OpenedFile::Place OpenedFile::place() const
{
    if (m_descriptor < 0)
        hold();
    struct stat there {};
    if (!m_identity || ::stat(m_path.constData(), &there) != 0)
        return Place::Gone;
    return *m_identity == Identity(there.st_dev, there.st_ino) ? Place::Same : Place::Replaced;
}

bool OpenedFile::hasName() const
{
    struct stat status {};
    return m_descriptor >= 0 && ::fstat(m_descriptor, &status) == 0 && status.st_nlink > 0;
}

quint64 OpenedFile::number() const
{
    return m_identity ? m_identity->second : 0;
}

bool OpenedFile::isSameAs(const OpenedFile& other) const
{
    return m_identity && m_identity == other.m_identity;
}

}  // namespace plotix
