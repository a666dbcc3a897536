#pragma once

#include "hostapp/exchange/ExportClock.h"
#include "hostapp/exchange/ExportedRows.h"

#include <QtCore/QBuffer>
#include <QtCore/QXmlStreamWriter>

#include <memory>

/// One sheet of records as XML, made piece by piece as somebody reads it. Internal to writing spreadsheets. *Borrows*
/// the records; one thread.
namespace plotix {

class SheetText {
public:
    /// Rows [first, last) of the records.
    SheetText(const ExportedRecords& records, std::size_t first, std::size_t last);

    void rewind();
    std::size_t read(char* data, std::size_t length);  ///< fewer than asked for, or 0, at the end
    std::size_t rowsDone() const { return m_next - m_first; }

private:
    void begin();
    void end();
    void appendNames();
    void appendRecord(std::size_t row);
    void appendQuality(bool isValid, double value);
    void appendTime(double seconds);
    void appendText(const QString& text);
    void appendNumber(double number, const char* style);
    void beginCell();

    const ExportedRecords& m_records;
    ExportedRows m_rows;
    std::size_t m_first, m_last, m_next;
    ExportClock m_clock;
    std::vector<QString> m_letters;  // of the columns
    QBuffer m_made;
    qint64 m_taken = 0;
    std::unique_ptr<QXmlStreamWriter> m_xml;
    std::size_t m_line = 0, m_column = 0;  // of the cell to come; lines count from 1
    bool m_isEnded = false;
};

}  // namespace plotix
