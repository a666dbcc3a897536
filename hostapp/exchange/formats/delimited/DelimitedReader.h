#pragma once

#include "hostapp/exchange/InputFile.h"
#include "hostapp/exchange/RowSource.h"
#include "hostapp/exchange/formats/delimited/PlainRows.h"

#include <memory>

namespace plotix {

/// Delimited text as a source of rows: looks at the beginning, then reads the rows, by the fast path (`PlainRows`) when
/// a row is plain numbers, else by the slow one, which also finds errors.
///
/// When day and month cannot be told apart, all dates are read once before the rows.
class DelimitedReader : public RowSource {
public:
    /// Throws ImportFailure for a file that is not a table.
    explicit DelimitedReader(std::unique_ptr<InputFile> file);

    const std::vector<SourceColumn>& columns() const override { return m_columns; }
    std::size_t chooseTimeColumn(std::optional<std::size_t> named) override;
    void begin(const ImportPlan& plan) override;
    bool read(ImportTable& table) override;
    qint64 bytesRead() const override { return m_text->bytesRead(); }
    qint64 bytesInAll() const override { return m_file->size(); }
    const std::vector<ImportFinding>& notes() const override { return m_shape.notes; }

private:
    bool readDates();
    bool readRows(ImportTable& table);
    void addRow(ImportTable& table);
    bool conditionsHold() const;
    void decideDateOrder();
    void startAtFirstRow();
    ImportFinding wrongLength() const;

    std::unique_ptr<InputFile> m_file;
    TextSample m_sample;
    TableShape m_shape;
    std::vector<SourceColumn> m_columns;
    TimeColumn m_time;

    // From `begin` on:
    const ImportPlan* m_plan = nullptr;  // borrowed
    DateOrderEvidence m_dates;
    std::unique_ptr<TextReader> m_text;
    TextRecord m_record;
    std::unique_ptr<TimeColumnReader> m_times;  // once day and month are decided
    std::unique_ptr<PlainRows> m_plain;         // borrows the times' reader
    DecimalMark m_mark = DecimalMark::Unknown;  // as known from the rows so far
};

}  // namespace plotix
