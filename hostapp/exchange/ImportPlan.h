#pragma once

#include "hostapp/exchange/ImportOptions.h"
#include "hostapp/exchange/RowSource.h"

#include <optional>
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
        QString header;                        ///< as in the file
        QString name;                          ///< of the property; unique among the columns, also as a key
        QString unit;                          ///< empty: none
        bool isAskedFor = false;               ///< by name: also a column with hardly any number is taken
        std::vector<std::size_t> qualities{};  ///< those that judge its values, as places in `qualities` below
    };

    /// A column of quality; several columns may share it.
    struct Quality {
        std::size_t field = 0;
        QString header;
        bool isAskedFor = false;  ///< by name, not recognised
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
    std::vector<Quality> qualities;
    QStringList badWords;  ///< in these; empty: the known ones
    std::vector<Condition> conditions;
    DecimalSign decimal = DecimalSign::Detect;
    bool skipsBadRows = false;
    bool keepsAllNumbers = false;
    RowsAtOneTime rowsAtOneTime = RowsAtOneTime::Refuse;
    std::size_t rowsWanted = 0;  ///< a source that collects rows before it adds any may end there; 0: all

    QStringList headersOfQuality(const Column& column) const;  ///< of those that judge it
};

/// The columns that the options name as the time, "Date+Time" being two; none where they name none.
std::vector<std::size_t> namedTimeColumns(const std::vector<SourceColumn>& columns, const ImportOptions& options);

/// Which rows the options ask for.
std::vector<ImportPlan::Condition> conditionsOf(const std::vector<SourceColumn>& columns, const ImportOptions& options);

/// `statedZone` is what the file says about times without a zone; the options come first.
ImportPlan planImport(const std::vector<SourceColumn>& columns, std::size_t timeField, const ImportOptions& options,
                      const QString& statedZone = {});

/// Chooses the source's time column and plans the rest.
ImportPlan planImport(RowSource& source, const ImportOptions& options);

/// Finds a column as people write it: its header, its name without the unit, either whatever the case, its key, or its
/// place as in "Column 3", which tells columns of one header apart.
std::optional<std::size_t> columnNamed(const QString& text, const std::vector<SourceColumn>& columns);

QStringList headersOf(const std::vector<SourceColumn>& columns);

}  // namespace plotix
