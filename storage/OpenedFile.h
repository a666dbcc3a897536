#pragma once

#include <QtCore/QString>

#include <optional>
#include <utility>

/// The file that a path named when it was opened, so that one that takes its name later is told from it.
///
/// It holds the file without reading or locking it; while it does, the system gives its number to no other file. What
/// else the process has open of the file keeps its locks when this is closed. *Owned* by whoever opens the file; any
/// one thread.
namespace plotix {

class OpenedFile {
public:
    enum class Place {
        Same,     ///< the path names this file
        Gone,     ///< it names none
        Replaced  ///< it names another one
    };

    /// A path that names nothing is watched from the first `place` on that finds a file there.
    explicit OpenedFile(const QString& path);
    ~OpenedFile();
    OpenedFile(const OpenedFile&) = delete;
    OpenedFile& operator=(const OpenedFile&) = delete;

    /// Looks at the path now.
    Place place() const;

    /// Whether a path in some folder still leads to the file. False: it ends with the last program that has it open.
    bool hasName() const;

    /// What the system numbers the file by; 0 when none was ever there.
    quint64 number() const;

    /// True when both hold the same file.
    bool isSameAs(const OpenedFile& other) const;

private:
    using Identity = std::pair<quint64, quint64>;  ///< device and number, which stay while the descriptor is open
    void hold() const;

    const QByteArray m_path;
    mutable int m_descriptor = -1;
    mutable std::optional<Identity> m_identity;
};

}  // namespace plotix
