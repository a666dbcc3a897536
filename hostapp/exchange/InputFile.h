#pragma once

#include <QtCore/QBuffer>
#include <QtCore/QFile>

namespace plotix {

/// A file that can be read from its beginning any number of times; what comes through a pipe is kept in memory.
///
/// *Owned* by the row source that reads it; one thread.
class InputFile {
public:
    /// Throws ImportFailure when the file cannot be read.
    explicit InputFile(const QString& path);

    const QString& path() const { return m_path; }
    QIODevice& fromBeginning();
    qint64 size() const { return m_size; }  ///< bytes

private:
    QString m_path;
    QFile m_file;
    QBuffer m_memory;
    qint64 m_size = 0;
};

}  // namespace plotix
