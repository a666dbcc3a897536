#pragma once

#include "hostapp/exchange/ImportOptions.h"

#include <QtCore/QString>
#include <QtCore/QStringList>

#include <stdexcept>
#include <string_view>
#include <vector>

/// What an import finds out about a file: what is wrong with it or with one of its rows, and what was decided about it.
///
/// Values, no sentences: the window and the command line word them, each with its own names for what the user can say.
/// Any thread.
namespace plotix {

struct ImportFinding {
    enum class What {
        // The file cannot be read.
        CannotBeOpened,  ///< text: the system's words
        ReadingFailed,   ///< text: the system's words
        NotAFile,        ///< a device
        Folder,
        NotATable,          ///< text: what it is, such as "JSON"
        NotText,            ///< neither text nor a spreadsheet that can be read
        PackedFiles,        ///< an archive of files, of which each may be one of measurements
        OldSpreadsheet,     ///< a spreadsheet in its program's former, binary form
        UnclosedQuotation,  ///< line
        LineTooLong,        ///< line: no end within what a line may have
        BrokenArchive,      ///< text: the library's words; a compressed file or a spreadsheet is damaged
        NoSuchSheet,        ///< text: the sheet named, columns: the sheets there are

        // The file is no table of measurements.
        EmptyFile,
        NoRowsBelowHeader,
        HeaderTooShort,      ///< line, found: columns of the rows, expected: columns of the header
        HeaderDoesNotMatch,  ///< line, found, expected
        NoTimeColumn,        ///< columns
        NoTimesInColumn,     ///< column, columns
        NumbersAreNoTimes,   ///< column, text: "s", "ms", "us" or "ns", which they do not count from 1970
        NoNumbers,           ///< column: the time, columns
        NoRowRead,           ///< causes: the first bad row
        NoRowWanted,         ///< none has the texts asked for
        DateOrderUnknown,
        DateOrderContradicts,
        DecimalMarkUnknown,  ///< text: a number that may be meant either way; line, column
        ManyDevices,         ///< column: of their names, text: the first, found: how many; their rows alternate
        ManyRowsAtOneTime,   ///< found: rows in all, expected: of them at the time of another one with other values,
                             ///< columns: those that may tell such rows apart, text: one in the first of them
        TimesNotInZone,      ///< text: the offset of the clocks that may be meant, causes: the first NotInZone
        TooManyBadRows,      ///< found: bad rows, expected: rows in all, causes: the first
        AnotherHeader,       ///< line: a header with other names begins another table
        NoNameColumn,        ///< no column names the quantity of each row

        // What the user said does not fit the file or the site.
        UnknownColumn,      ///< option, text: the column named, columns
        UnknownUnit,        ///< column, text: the unit
        UnitsDisagree,      ///< column, text: the unit in its cells, archivedUnit: the one of its header, or said
        UnknownTimeZone,    ///< text
        UnusableTimeZone,   ///< text
        UnusableDelimiter,  ///< text
        IncompatibleUnits,  ///< column, text: its unit, archivedUnit
        QualityHasNoWords,  ///< column: named as one of quality, text: the first in it, which says nothing
        WouldReplace,       ///< found: stored values that would become others, expected: their properties

        // A row is bad.
        RowUnlikeHeader,  ///< line, text: of the row, found, expected: columns
        RowUnlikeOthers,  ///< the same, where the file has no header
        NoTime,           ///< line, column, text
        NoNumber,         ///< line, column, text
        NotInZone,        ///< line, column, text: a time that no clock showed, columns: in this zone

        // Nothing is wrong; this was decided.
        ColumnsHaveNoNames,     ///< found: columns
        RowNumbersHaveNoName,   ///< the first column is left out
        HeaderLacksRowNumbers,  ///< found, expected, columns: those named; the first column is left out
        HeaderLacksEmptyLast,   ///< found, expected; the last column is left out
        DatesHaveDayFirst,
        DatesHaveMonthFirst,
        DatesHaveYearFirst,  ///< of two digits
        TimesAreJoined,      ///< columns
        ZoneFromFile,        ///< text: the zone as the file states it
        TimesAreNumbers,     ///< column, text: "s", "ms", "us", "ns", "digits", "days"
        LinesAboveTable,     ///< found: lines in front of the header
        UnitsBelowHeader,    ///< line
        UnitsNotKnown,       ///< line, columns: the texts that stand there for units
        RowsNameQuantities,  ///< column: of names, text: of values, found: how many names
        RowsAreDays,         ///< found: columns called by times of day, text, column: the first and the last
        SheetChosen,         ///< text, columns: the sheets there are
        StatesAreNumbers,    ///< column, text: a word that became 1 or 0
        NumbersAreGaps,      ///< column, text: the number, found
        HeadersRepeated,     ///< found
        CommentsPassedOver,  ///< found
        LinesBelowTable,     ///< line: the first, found, text: of it
        ShortRows,           ///< line: the first, found
        QualityRecognised,   ///< columns: those of quality, found: how many values a row they judge, text: the value of
                             ///< a single one; empty: all of the row
        QualityNotSure,      ///< column: has words of quality, and text: another one; not taken for one of quality
        QualityNotAssigned,  ///< column: of quality, and it is open which values it judges
        QualityWordsUnknown,  ///< column, line, text: the first unknown, found: how many; their values count as good
    };

    What what{};
    qint64 line = 0;           ///< from 1; 0: no single one
    QString column{};          ///< its header
    QString text{};            ///< as in the file, in one line and not too long
    QStringList columns{};     ///< the headers there are
    std::size_t found = 0;     ///< columns of a row
    std::size_t expected = 0;  ///< columns it should have
    ImportOption option{};
    QString archivedUnit{};               ///< of the property there is; may be empty
    std::vector<ImportFinding> causes{};  ///< at most one

    bool operator==(const ImportFinding&) const = default;
};

/// The option that settles what stopped an import; None where no option does.
ImportOption optionOf(const ImportFinding& finding);

/// A text from the file as findings show it: in one line, shortened when it is long.
QString textForFinding(std::string_view bytes);

/// Thrown when a file cannot be imported; nothing is stored then.
class ImportFailure : public std::runtime_error {
public:
    explicit ImportFailure(ImportFinding finding);
    const ImportFinding& finding() const { return m_finding; }

private:
    ImportFinding m_finding;
};

/// Thrown when the progress handler cancelled; everything is as it was.
class ImportCancelled : public std::runtime_error {
public:
    ImportCancelled() : std::runtime_error("the import was cancelled") {}
};

}  // namespace plotix
