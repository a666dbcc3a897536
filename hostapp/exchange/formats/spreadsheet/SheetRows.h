#pragma once

#include "hostapp/exchange/formats/spreadsheet/Workbook.h"
#include "hostapp/exchange/tables/TableSample.h"

#include <QtCore/QXmlStreamReader>

namespace plotix {

/// The rows of one sheet as texts, as a person reads them: dates as dates, numbers with a point, errors as #…, truth as
/// TRUE and FALSE. Rows without a cell are left out. Borrows archive and workbook; one thread.
class SheetRows {
public:
    SheetRows(const Archive& archive, const Workbook& workbook, const QString& part);

    /// False at the end. Rows are as long as the longest one before them.
    bool next(TextRecord& record);
    qint64 bytesRead() const { return m_part ? m_part->pos() : 0; }

private:
    void readRow();
    void readCell();
    std::string cellText(const QString& kind, std::size_t style, const QString& value) const;

    const Workbook& m_workbook;  // borrowed
    std::unique_ptr<QIODevice> m_part;
    QXmlStreamReader m_xml;
    std::vector<std::string> m_cells;  // of the row
    std::size_t m_column = 0;          // of the next cell that does not say its own
    std::size_t m_width = 0;
    qint64 m_line = 0;
    bool m_hasCells = false;
};

}  // namespace plotix
