#include "hostapp/exchange/InputFile.h"

#include "hostapp/exchange/ImportFinding.h"
#include "hostapp/exchange/UnpackedBytes.h"

#include <QtCore/QFileInfo>

#include <algorithm>
#include <sys/stat.h>
#include <unistd.h>

namespace plotix {

namespace {

using What = ImportFinding::What;

constexpr qint64 kLongestLine = qint64{1} << 24;  // bytes of a pipe without the end of a line

/// A device gives bytes without end; a terminal ends when its user says so.
bool isFile(int descriptor)
{
    struct stat status {};
    if (fstat(descriptor, &status) != 0)
        return true;
    const bool isDevice = S_ISCHR(status.st_mode) || S_ISBLK(status.st_mode);
    return !S_ISDIR(status.st_mode) && (!isDevice || isatty(descriptor) == 1);
}

/// Text in two bytes a character has a mark in front, or its every other byte is 0.
bool hasZeros(const QByteArray& beginning, qsizetype first)
{
    qsizetype zeros = 0;
    for (qsizetype index = first; index < beginning.size(); index += 2)
        zeros += beginning[index] == '\0' ? 1 : 0;
    return zeros * 10 > beginning.size() * 4;
}

}  // namespace

InputFile::InputFile(const QString& path) : m_path(path), m_file(path)
{
    if (QFileInfo(path).isDir())
        throw ImportFailure({.what = What::Folder});
    if (!m_file.open(QIODevice::ReadOnly))
        throw ImportFailure({.what = What::CannotBeOpened, .text = m_file.errorString()});
    if (!isFile(m_file.handle()))
        throw ImportFailure({.what = What::NotAFile});
    if (m_file.isSequential())
        readPipe();
    m_size = raw().size();
    findLayers();
}

void InputFile::readPipe()
{
    QByteArray bytes;
    qsizetype lineBegan = 0;
    for (;;) {
        const QByteArray more = m_file.read(1 << 20);
        if (more.isEmpty())
            break;
        const qsizetype end = more.lastIndexOf('\n');
        lineBegan = end < 0 ? lineBegan : bytes.size() + end;
        bytes += more;
        const bool isPacked = bytes.startsWith("\x1F\x8B") || bytes.startsWith("PK");
        if (!isPacked && bytes.size() - lineBegan > kLongestLine)
            throw ImportFailure({.what = What::LineTooLong, .line = 1 + bytes.count('\n')});
    }
    m_memory.setData(bytes);
    m_memory.open(QIODevice::ReadOnly);
}

QIODevice& InputFile::raw()
{
    return m_memory.isOpen() ? static_cast<QIODevice&>(m_memory) : m_file;
}

void InputFile::findLayers()
{
    m_isPacked = raw().peek(2) == "\x1F\x8B";
    if (m_isPacked)
        m_size = std::max(m_size, unpackedSize(raw()));
    const QByteArray beginning = fromBeginning().read(1024);
    if (beginning.startsWith("\xFF\xFE") || hasZeros(beginning, 1))
        m_wide = Wide::LittleEndian;
    else if (beginning.startsWith("\xFE\xFF") || hasZeros(beginning, 0))
        m_wide = Wide::BigEndian;
    const bool isNothing = beginning.count('\0') == beginning.size();  // zeros only are no text
    if (isNothing || beginning.startsWith("PK"))
        m_wide = Wide::No;
}

QIODevice& InputFile::fromBeginning()
{
    m_narrow.reset();
    m_unpacked.reset();
    raw().seek(0);
    QIODevice* device = &raw();
    if (m_isPacked) {
        m_unpacked = unpackedBytes(*device);
        device = m_unpacked.get();
    }
    if (m_wide != Wide::No) {
        m_narrow = narrowBytes(*device, m_wide == Wide::BigEndian);
        device = m_narrow.get();
    }
    return *device;
}

}  // namespace plotix
