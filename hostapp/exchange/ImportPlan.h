#pragma once

#include "hostapp/exchange/ImportOptions.h"
#include "hostapp/exchange/RowSource.h"

#include <string>
#include <string_view>
#include <vector>

/// What is to be taken from each row of a file: the user's options matched with the file's columns, whatever the
/// format.
///
/// A value; any thread. Making one throws ImportFailure for options that name no column or no unit.
namespace plotix {

struct ImportPlan {
    struct Column {
        std::size_t field = 0;
        QString header;  ///< as in the file
        QString name;    ///< of the property; unique among the columns, also as a key
        QString unit;    ///< empty: none
    };

    /// A row counts only if the field is one of the texts: the same text in both encodings a file can have.
    struct Condition {
        std::size_t field = 0;
        std::string utf8, latin1;

        bool holds(std::string_view text) const { return text == utf8 || text == latin1; }
    };

    std::size_t timeField = 0;
    QString timeHeader;
    QString timeZone;                         ///< of times without one; empty: the user's
    DateOrder dateOrder = DateOrder::Detect;  ///< of ambiguous dates
    std::vector<Column> columns;
    std::vector<Condition> conditions;
};

/// The column that the options name as the time; nothing where they name none.
std::optional<std::size_t> namedTimeColumn(const std::vector<SourceColumn>& columns, const ImportOptions& options);

ImportPlan planImport(const std::vector<SourceColumn>& columns, std::size_t timeField, const ImportOptions& options);

/// Finds a column as people write it: its header, its name without the unit, either whatever the case, or its key.
std::optional<std::size_t> columnNamed(const QString& text, const std::vector<SourceColumn>& columns);

QStringList headersOf(const std::vector<SourceColumn>& columns);

}  // namespace plotix
