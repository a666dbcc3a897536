#pragma once

#include "hostapp/exchange/RowSource.h"
#include "hostapp/exchange/TimeText.h"
#include "hostapp/exchange/formats/delimited/TextReader.h"

#include <QtCore/QStringList>

#include <optional>
#include <span>
#include <string>
#include <string_view>
#include <vector>

/// What the beginning of a text file says about the rest: delimiter, header, columns, and which of them is the time.
///
/// Pure: bytes in, decisions out; any thread. Throws ImportFailure for a file that is not a table.
namespace plotix {

/// The first records of a file, kept whole.
struct TextSample {
    struct Row {
        qint64 line = 0;
        std::vector<std::string> fields;
    };
    TextFormat format;
    std::vector<Row> rows;  ///< at most kSampleRows
};

/// What may stand between two fields. Of these, times and numbers may contain the comma.
inline constexpr std::string_view kDelimiters = ",;\t|";

inline constexpr qsizetype kSampleBytes = 1 << 16;
inline constexpr std::size_t kSampleRows = 400;

/// Chooses line break and delimiter (comma, semicolon, tab or vertical bar): the delimiter under which the most fields
/// read as numbers, times or missing values in rows of one length. `isWhole` says that the bytes are the whole file;
/// otherwise the last record may be cut off and is dropped.
TextSample takeSample(const QByteArray& beginning, bool isWhole);

/// Whether a field reads as a number or a time.
bool readsAsValue(std::string_view field);

/// The most frequent number of fields in a row; of equally frequent ones the largest; 0 without rows.
std::size_t usualLength(std::span<const TextSample::Row> rows);

/// The columns of a file.
struct TableShape {
    bool hasHeader = false;
    QStringList headers;                    ///< one per field of a row; "Column 3" where the file names none
    std::optional<std::size_t> rowNumbers;  ///< the unnamed column that only counts the rows
    std::vector<ImportFinding> notes;       ///< how the columns were matched, when that is not obvious

    std::size_t fields() const { return static_cast<std::size_t>(headers.size()); }
};

/// A header one field shorter than the rows is accepted when the rows' first field only counts them, or their last one
/// is always empty; any other difference in length throws.
TableShape shapeOf(const TextSample& sample);

/// The columns for the importer, with the units split off the headers.
std::vector<SourceColumn> columnsOf(const TableShape& shape);

/// The time column and how it is written; day and month may be undecided still.
struct TimeColumn {
    std::size_t field = 0;
    TimeLayout layout = TimeLayout::YearFirst;
    bool needsDateOrder = false;  ///< the order of day and month must come from the whole file
};

/// With `named` that column, else the first whose sample reads as times, columns called time or date before others;
/// plain numbers count as times only under such a name. Throws ImportFailure that names the columns there are.
TimeColumn timeColumnOf(const TextSample& sample, const TableShape& shape, std::optional<std::size_t> named);

/// Day or month first, judged by all dates of the file; throws ImportFailure when they leave it open or disagree.
TimeLayout decidedLayout(const DateOrderEvidence& evidence);

}  // namespace plotix
