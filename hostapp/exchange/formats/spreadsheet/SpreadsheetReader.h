#pragma once

#include "hostapp/exchange/InputFile.h"
#include "hostapp/exchange/formats/spreadsheet/SheetRows.h"
#include "hostapp/exchange/tables/TableReader.h"

namespace plotix {

/// A sheet of an .xlsx file as a source of rows: the one that is named, else the first that is a table with times.
class SpreadsheetReader : public TableReader {
public:
    /// Throws ImportFailure for a file without such a sheet.
    SpreadsheetReader(std::unique_ptr<InputFile> file, const ImportOptions& options);

    qint64 bytesRead() const override { return m_rows ? m_rows->bytesRead() : 0; }
    qint64 bytesInAll() const override { return m_size; }
    SourceForm form() const override;

protected:
    bool next(TextRecord& record) override;
    void rewind() override;

private:
    TableSample sampleOf(const QString& part) const;
    bool isTable(const TableSample& sample, const ImportOptions& options) const;
    void chooseSheet(const ImportOptions& options);

    Archive m_archive;
    Workbook m_workbook;
    Workbook::Sheet m_sheet;
    qint64 m_size = 0;
    std::unique_ptr<SheetRows> m_rows;
};

/// Whether these are the first bytes of a zip file.
bool isZip(QByteArrayView beginning);

}  // namespace plotix
