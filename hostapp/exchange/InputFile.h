#pragma once

#include <QtCore/QBuffer>
#include <QtCore/QFile>

#include <memory>

namespace plotix {

/// A file's bytes, unpacked where they are compressed (gzip) and as UTF-8 where they are UTF-16; they can be read from
/// the beginning any number of times. What comes through a pipe is kept in memory.
///
/// *Owned* by the row source that reads it; one thread.
class InputFile {
public:
    /// Throws ImportFailure when the file cannot be read, and for folders and devices, which have no end.
    explicit InputFile(const QString& path);

    const QString& path() const { return m_path; }
    /// Borrowed until the next call.
    QIODevice& fromBeginning();
    qint64 size() const { return m_size; }  ///< about how many bytes there are to read

private:
    QIODevice& raw();
    void readPipe();
    void findLayers();

    QString m_path;
    QFile m_file;
    QBuffer m_memory;
    bool m_isPacked = false;
    enum class Wide { No, LittleEndian, BigEndian } m_wide = Wide::No;
    std::unique_ptr<QIODevice> m_unpacked;  // reads the file
    std::unique_ptr<QIODevice> m_narrow;    // reads the one above, or the file
    qint64 m_size = 0;
};

}  // namespace plotix
