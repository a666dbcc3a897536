#pragma once

#include <QtCore/QString>
#include <QtCore/QStringList>

#include <utility>
#include <vector>

/// How a file is to be read: what the user says where the file leaves it open. Values; any thread.
namespace plotix {

enum class DateOrder { Detect, DayFirst, MonthFirst, YearFirst };

/// The mark before the decimals of numbers such as 1.234.
enum class DecimalSign { Detect, Point, Comma };

/// Whether each quantity has a column of its own, or each row names its quantity beside one value.
enum class Arrangement { Detect, Columns, Names };

/// What becomes of rows at one time with different values.
enum class RowsAtOneTime {
    Refuse,  ///< when there are many of them; of a few the last is kept, and counted
    KeepLast,
};

struct ImportOptions {
    using ByColumn = std::vector<std::pair<QString, QString>>;  ///< column → text

    QString agentName;                        ///< empty: the file's base name
    QString timeColumn;                       ///< empty: detected; "Date+Time": these together
    QString timeZone;                         ///< of times without a zone: IANA name or ±hh:mm; empty: the file's or,
                                              ///< where it says nothing, the user's
    DateOrder dateOrder = DateOrder::Detect;  ///< of dates such as 3/4/2015; Detect refuses what stays ambiguous
    DecimalSign decimal = DecimalSign::Detect;  ///< Detect refuses what stays ambiguous
    QString delimiter;                          ///< of text: one character, " " for runs of blanks; empty: detected
    QString sheet;                              ///< of a spreadsheet: its name; empty: the first with measurements
    Arrangement arrangement = Arrangement::Detect;
    RowsAtOneTime rowsAtOneTime = RowsAtOneTime::Refuse;
    ByColumn where;               ///< only rows in which each of these columns has exactly this text
    QStringList only;             ///< only these columns; empty: every column with a number,
    QStringList also;             ///< these too, such as one that counts the rows,
    QStringList leaveOut;         ///< and not these
    ByColumn units;               ///< overrides the unit in the header
    ByColumn names;               ///< overrides the name in the header
    bool replace = false;         ///< stored values may be replaced by others; else that is refused
    bool keepAllNumbers = false;  ///< -999 and the like are values too; else gaps where all others are far above
    bool skipBadRows = false;     ///< pass over rows without a time however many they are, and count them
    ByColumn quality;            ///< column of quality → the column of values it judges, "*" for all; else recognised
    QStringList badWords;        ///< in columns of quality, whatever the case; empty: the known ones. Others are good
    bool ignoreQuality = false;  ///< take every value as good, whatever stands beside it

    bool operator==(const ImportOptions&) const = default;
};

/// The import option that a finding is about.
enum class ImportOption {
    TimeColumn,
    Where,
    Only,
    Unit,
    Name,
    None,
    TimeZone,
    DateOrder,
    Decimal,
    Delimiter,
    Sheet,
    Arrangement,
    RowsAtOneTime,
    BadRows,
    Quality,
    BadWords
};

}  // namespace plotix
