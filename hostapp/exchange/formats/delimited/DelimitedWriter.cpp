#include "hostapp/exchange/formats/delimited/DelimitedWriter.h"

#include "hostapp/exchange/ColumnHeader.h"
#include "hostapp/exchange/ExactText.h"
#include "hostapp/exchange/ExportClock.h"
#include "hostapp/exchange/ExportedRows.h"

#include <algorithm>
#include <cmath>
#include <string>

namespace plotix {

namespace {

constexpr std::size_t kBytesBetweenWrites = 1 << 20;
constexpr std::size_t kRowsBetweenReports = 8192;

std::string quotedWhereNeeded(const QString& text, char delimiter)
{
    const bool isPlain = !text.contains(QLatin1Char(delimiter)) && !text.contains(QLatin1Char('"')) &&
                         !text.contains(QLatin1Char('\n')) && !text.contains(QLatin1Char('\r'));
    return (isPlain
                ? text
                : QLatin1Char('"') + QString(text).replace(QLatin1Char('"'), QStringLiteral("\"\"")) + QLatin1Char('"'))
        .toStdString();
}

/// One file on its way out.
class DelimitedWriter {
public:
    DelimitedWriter(QIODevice& device, const ExportedRecords& records);

    void write(const ExportProgress& progress);

private:
    void appendHeader();
    void appendRow(std::size_t row);
    void appendNumber(double number);
    void flush();

    QIODevice& m_device;               // borrowed
    const ExportedRecords& m_records;  // borrowed
    ExportedRows m_rows;
    ExportClock m_clock;
    bool m_hasCalendarTimes;
    std::string m_text;
};

DelimitedWriter::DelimitedWriter(QIODevice& device, const ExportedRecords& records)
    : m_device(device),
      m_records(records),
      m_rows(records.records),
      m_clock(records.form.clock, records.form.zone),
      m_hasCalendarTimes(m_rows.haveCalendarTimes())
{
}

void DelimitedWriter::write(const ExportProgress& progress)
{
    const std::size_t rows = m_rows.count();
    appendHeader();
    for (std::size_t row = 0; row < rows; ++row) {
        appendRow(row);
        if (m_text.size() >= kBytesBetweenWrites)
            flush();
        const double fraction = static_cast<double>(row) / static_cast<double>(rows);
        if (row % kRowsBetweenReports == 0 && progress && !progress(fraction))
            throw ExportCancelled();
    }
    flush();
}

void DelimitedWriter::appendHeader()
{
    const ExportForm& form = m_records.form;
    m_text = m_hasCalendarTimes ? "time" : "time (s)";
    const auto append = [&](const QString& name) {
        m_text += form.delimiter + quotedWhereNeeded(cellName(name, form.guardsFormulas == true), form.delimiter);
    };
    for (const ExportedRecords::Column& column : m_records.columns) {
        append(joinedHeader({column.name, column.unit}));
        if (form.withQualities)
            append(qualityHeader(column.name));
    }
    m_text += '\n';
}

void DelimitedWriter::appendRow(std::size_t row)
{
    m_rows.moveTo(row);
    if (m_hasCalendarTimes)
        m_text += m_clock.text(m_rows.time());
    else
        appendNumber(m_rows.time());
    for (std::size_t column = 0; column < m_rows.columns(); ++column) {
        const auto [value, isValid] = m_rows.cell(column);
        m_text += m_records.form.delimiter;
        if ((isValid || m_records.form.withQualities) && !std::isnan(value))
            appendNumber(value);
        if (m_records.form.withQualities)
            (m_text += m_records.form.delimiter) += qualityText(isValid, value);
    }
    m_text += '\n';
}

void DelimitedWriter::appendNumber(double number)
{
    std::string text = exactNumber(number);
    std::replace(text.begin(), text.end(), '.', m_records.form.decimalSign);
    m_text += text;
}

void DelimitedWriter::flush()
{
    const auto size = static_cast<qint64>(m_text.size());
    if (m_device.write(m_text.data(), size) != size)
        throw ExportFailure(m_device.errorString());
    m_text.clear();
}

}  // namespace

void writeDelimited(QIODevice& device, const ExportedRecords& records, const ExportProgress& progress)
{
    DelimitedWriter(device, records).write(progress);
}

}  // namespace plotix
