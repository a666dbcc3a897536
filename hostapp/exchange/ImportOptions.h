#pragma once

#include <QtCore/QString>
#include <QtCore/QStringList>

#include <utility>
#include <vector>

/// How a file is to be read: what the user says where the file leaves it open. Values; any thread.
namespace plotix {

enum class DateOrder { Detect, DayFirst, MonthFirst };

struct ImportOptions {
    using ByColumn = std::vector<std::pair<QString, QString>>;  ///< column → text

    QString agentName;                        ///< empty: the file's base name
    QString timeColumn;                       ///< empty: detected
    QString timeZone;                         ///< of times without a zone: IANA name or ±hh:mm; empty: the user's
    DateOrder dateOrder = DateOrder::Detect;  ///< of dates such as 3/4/2015; Detect refuses what stays ambiguous
    ByColumn where;                           ///< only rows in which each of these columns has exactly this text
    QStringList only;                         ///< only these columns; empty: every column with a number
    ByColumn units;                           ///< overrides the unit in the header
    ByColumn names;                           ///< overrides the name in the header
    bool replace = false;                     ///< stored values may be replaced by others; else that is refused
    bool skipBadRows = false;                 ///< count rows that do not parse instead of stopping
};

}  // namespace plotix
