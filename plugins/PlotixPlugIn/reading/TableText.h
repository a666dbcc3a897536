#pragma once

#include <QtCore/QString>
#include <QtCore/QStringList>
#include <QtGui/QColor>

#include <vector>

/// A table on its way to the clipboard, as other programs take it. Values and free functions; any thread.
namespace plotix {

struct TableText {
    struct Column {
        QString title;
        bool isNumbers = false;  ///< these stand at the right
        bool isColor = false;    ///< its cells hold "#rrggbb"; text alone has no such column
    };
    QStringList heading;  ///< lines above the table, such as what it is of
    std::vector<Column> columns;
    std::vector<QStringList> rows;  ///< a cell for each column
};

/// The heading, a line for the titles and one for each row, cells separated by tabs. A tab or line break in a cell
/// becomes a blank.
QString tabSeparatedText(const TableText& table);

/// The same as an HTML document with one table. Cells are shown as they are, whatever stands in them.
QString htmlText(const TableText& table);

}  // namespace plotix
