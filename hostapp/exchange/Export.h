#pragma once

#include "records/store/RecordColumns.h"

#include <QtCore/QIODevice>
#include <QtCore/QString>
#include <QtCore/QTimeZone>

#include <functional>
#include <optional>
#include <stdexcept>
#include <vector>

/// What a file format is given to write: records of one agent, and a progress handler.
///
/// Values; any one thread.
namespace plotix {

/// How records are written, for whom they are meant. The default is read back to the same bits.
struct ExportForm {
    enum class Clock { Utc, Local };  ///< local: the user's, with its distance from UTC
    Clock clock = Clock::Utc;
    QTimeZone zone = {};     ///< of local times, instead of the user's; invalid: that
    char delimiter = ',';    ///< of text
    char decimalSign = '.';  ///< of text; other than the delimiter
    /// Names that a spreadsheet would take for formulas get an apostrophe before them; absent: as is usual for the
    /// format, which is in a spreadsheet's file, and not in text.
    std::optional<bool> guardsFormulas = {};
    /// Beside each column of values one that says of each whether it is good, and numbers that are not valid are
    /// written too, so that an import reads back both. Without it values that are not valid are left empty.
    bool withQualities = false;
};

/// What stands in a column of quality: "Good", "Bad" for a number that is not valid; nothing beside an empty cell.
const char* qualityText(bool isValid, double value);

/// Its header: an import knows by it which column it is about.
QString qualityHeader(const QString& name);

/// By the clocks of a zone: UTC, or another one with its distance from UTC; an invalid one is the user's.
void setClock(ExportForm& form, const QTimeZone& zone);

struct ExportedRecords {
    struct Column {
        QString name;
        QString unit;  ///< of the values; empty: none
    };
    std::vector<Column> columns;   ///< one for each of the records', in their order
    const RecordColumns& records;  ///< borrowed; written page by page
    ExportForm form = {};
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
