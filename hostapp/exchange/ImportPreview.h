#pragma once

#include "hostapp/exchange/ImportOptions.h"
#include "hostapp/exchange/RowSource.h"

#include <optional>
#include <vector>

/// What an import would take from a file, before anything is stored: for a person who looks whether it was understood.
///
/// Values; any thread. Made from the first rows, except where only the whole file tells something, such as the order of
/// day and month: that takes as long as reading it, so a window asks on a worker thread. Memory stays that of the first
/// rows also then.
namespace plotix {

struct ImportPreview {
    /// A column of the file, or one for a quantity that rows name.
    struct Column {
        enum class Use { Time, Taken, LeftOut };
        enum class Reason {
            None,
            NotAskedFor,    ///< by `only`, or by `leaveOut`
            CountsRows,     ///< or is a time that was not chosen, or names what other columns measure
            NoNumbers,      ///< not a single one in the rows looked at
            HardlyNumbers,  ///< texts with a few numbers among them
            JudgesValues    ///< says which values of others are bad
        };
        QString header;  ///< as in the file: what options name the column by
        QString name, unit;
        Use use = Use::Taken;
        Reason reason = Reason::None;      ///< why it is left out
        std::size_t numbers = 0, bad = 0;  ///< cells in the rows looked at
        std::optional<ImportFinding> firstBad{};
        std::size_t marked = 0;  ///< of the numbers: marked as bad
        QString quality{};       ///< the headers of the columns that judge its values, with commas
        QStringList judges{};    ///< of a column of quality: the headers of those it judges
    };

    /// Values by the columns that are taken, in their order; nothing for a gap.
    struct Row {
        double time = 0;  ///< seconds since 1970-01-01 UTC
        std::vector<std::optional<double>> values;
        std::vector<bool> marked;  ///< by the same columns: the value is marked as bad
    };

    std::vector<Column> columns;  ///< empty when the file could not be read at all
    std::vector<Row> rows;        ///< the first ones, in the file's order; at most kPreviewRows
    std::size_t rowsLookedAt = 0;
    bool isWhole = false;  ///< these were all rows
    QString timeZone;      ///< of times without one; empty: the user's
    bool zoneIsFromFile = false;
    SourceForm form;                       ///< the guesses; each has its field in ImportOptions
    std::optional<ImportFinding> problem;  ///< why the import would be refused; `optionOf` says which option settles it
    std::vector<ImportFinding> notes;      ///< what was decided

    static constexpr std::size_t kPreviewRows = 20;
};

/// Whether the import would certainly be refused, and not only if the rest of the file were like the first rows.
bool isRefused(const ImportPreview& preview);

/// Of a source that has just been opened, or an error of opening it. See `previewOf` in formats/FileExchange.h.
ImportPreview previewRows(RowSource& source, const ImportOptions& options);

}  // namespace plotix
