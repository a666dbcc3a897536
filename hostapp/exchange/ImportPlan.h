#pragma once

#include "hostapp/exchange/Detection.h"
#include "hostapp/exchange/ImportOptions.h"

#include <string>
#include <vector>

/// What is to be taken from each row of a file: the user's options matched with the columns there are.
///
/// A value; any thread. Making one throws ReportableError for options that name no column or no unit.
namespace plotix {

struct ImportPlan {
    struct Column {
        std::size_t field = 0;
        QString header;  ///< as it stands
        QString name;    ///< of the property; unique among the columns, also as a key
        QString unit;    ///< empty: none
    };

    /// The row counts only where the field is one of the texts: the same text in both encodings a file can have.
    struct Condition {
        std::size_t field = 0;
        QString header, value;
        std::string utf8, latin1;

        bool holds(std::string_view text) const { return text == utf8 || text == latin1; }
    };

    TextFormat format;
    TableShape shape;
    TimeColumn time;
    qint64 headerLine = 0;  ///< 0: none
    std::vector<Column> columns;
    std::vector<Condition> conditions;

    const QString& timeHeader() const { return shape.headers[static_cast<qsizetype>(time.field)]; }
};

ImportPlan planImport(const TextSample& sample, const ImportOptions& options);

}  // namespace plotix
