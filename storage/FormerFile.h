#pragma once

#include <QtCore/QString>

#include <array>
#include <optional>

/// Whether a file took the name of one that a program still has open as a database.
///
/// The log and its index beside the file are then the former file's: opening the new one would read, and closing it
/// write, the former one's pages in it. Free function; any thread.
namespace plotix {

/// The process that has the former file open; nothing when there is none, or the system does not tell. Takes some
/// milliseconds, but for a file that this process has open as it is.
std::optional<qint64> holderOfFormerFile(const QString& file);

/// Says, as long as it lives, that this process has a database open under its own name, log and all: nobody can have a
/// former file of that name and this log. *Owned* by whoever has it open, and made after that.
class OpenInPlace {
public:
    explicit OpenInPlace(const QString& file);
    ~OpenInPlace();
    OpenInPlace(const OpenInPlace&) = delete;
    OpenInPlace& operator=(const OpenInPlace&) = delete;

    /// The file and its log's index, as the system numbers them.
    using Numbers = std::array<quint64, 4>;

private:
    std::optional<Numbers> m_numbers;  // nothing without a log
};

}  // namespace plotix
