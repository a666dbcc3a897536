#pragma once

#include "hostapp/exchange/InputFile.h"
#include "hostapp/exchange/formats/delimited/PlainRows.h"
#include "hostapp/exchange/tables/TableReader.h"

#include <memory>

namespace plotix {

/// Delimited text as a source of rows: cuts lines into fields, and reads rows of plain numbers by a fast path of their
/// own (`PlainRows`).
class DelimitedReader : public TableReader {
public:
    /// Throws ImportFailure for a file that is not a table.
    DelimitedReader(std::unique_ptr<InputFile> file, const ImportOptions& options);

    qint64 bytesRead() const override { return m_text ? m_text->bytesRead() : 0; }
    qint64 bytesInAll() const override { return m_file->size(); }

protected:
    bool next(TextRecord& record) override { return m_text->next(record); }
    void rewind() override;
    void prepareRows() override;
    bool readRows(ImportTable& table) override;

private:
    std::unique_ptr<InputFile> m_file;
    TextFormat m_format;
    std::unique_ptr<TextReader> m_text;
    TextRecord m_record;
    std::unique_ptr<PlainRows> m_plain;  // borrows the times' reader; null where no row can be plain
};

}  // namespace plotix
