#pragma once

#include "records/store/RecordBlock.h"

#include <QtCore/QIODevice>
#include <QtCore/QString>

#include <functional>
#include <stdexcept>
#include <vector>

/// What a file format is given to write: records of one agent, and a progress handler.
///
/// Values; any one thread.
namespace plotix {

struct ExportedRecords {
    struct Column {
        QString name;
        QString unit;  ///< of the block's values; empty: none
    };
    std::vector<Column> columns;  ///< one for each of the block's, in its order
    const RecordBlock& block;     ///< borrowed
};

/// Called with 0…1; answers false to cancel.
using ExportProgress = std::function<bool(double fraction)>;

/// Thrown when the file cannot be written; what was there before is still there.
class ExportFailure : public std::runtime_error {
public:
    explicit ExportFailure(const QString& systemError)
        : std::runtime_error(systemError.toStdString()), m_systemError(systemError)
    {
    }
    const QString& systemError() const { return m_systemError; }

private:
    QString m_systemError;
};

/// Thrown when the progress handler cancelled; what was there before is still there.
class ExportCancelled : public std::runtime_error {
public:
    ExportCancelled() : std::runtime_error("the export was cancelled") {}
};

}  // namespace plotix
