#pragma once

#include <QtCore/QString>

#include <optional>

/// Whether a file took the name of one that a program still has open as a database.
///
/// The log and its index beside the file are then the former file's: opening the new one would read, and closing it
/// write, the former one's pages in it. Free function; any thread.
namespace plotix {

/// The process that has the former file open; nothing when there is none, or the system does not tell.
std::optional<qint64> holderOfFormerFile(const QString& file);

}  // namespace plotix
