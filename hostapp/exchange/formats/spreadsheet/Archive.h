#pragma once

#include <QtCore/QByteArray>
#include <QtCore/QIODevice>
#include <QtCore/QString>

#include <memory>

namespace plotix {

/// A zip file's parts, to be read one after the other. *Owned* by the reader of a spreadsheet; one thread. What is
/// damaged throws ImportFailure.
class Archive {
public:
    /// Keeps the file's bytes.
    explicit Archive(QByteArray bytes);
    ~Archive();
    Archive(const Archive&) = delete;
    Archive& operator=(const Archive&) = delete;

    bool has(const QString& name) const;
    qint64 size(const QString& name) const;  ///< unpacked, bytes; 0 for a part that is not there

    /// The part as a device that is read once from front to back; borrows the archive. Null for one that is not there.
    std::unique_ptr<QIODevice> open(const QString& name) const;

private:
    struct Impl;
    std::unique_ptr<Impl> m_impl;
};

}  // namespace plotix
