#include "hostapp/exchange/formats/spreadsheet/SheetText.h"

#include "hostapp/exchange/ColumnHeader.h"
#include "hostapp/exchange/ExactText.h"

#include <algorithm>
#include <cmath>
#include <cstring>

namespace plotix {

namespace {

constexpr qint64 kPiece = 1 << 16;  // bytes made at a time
constexpr double kDay = 86'400;
constexpr double kDaysTo1970 = 25'569;       // of the spreadsheets' calendar
constexpr double kFirstSafeDay = 61;         // 1900-03-01: before it that calendar has a day too many
constexpr double kDayAfterLast = 2'958'466;  // 10000-01-01
constexpr auto kDateStyle = "1";             // of styles.xml

QString lettersOf(std::size_t column)
{
    QString letters;
    for (std::size_t left = column + 1; left > 0; left = (left - 1) / 26)
        letters.prepend(QChar(u'A' + static_cast<int>((left - 1) % 26)));
    return letters;
}

}  // namespace

SheetText::SheetText(const ExportedRecords& records, std::size_t first, std::size_t last)
    : m_records(records),
      m_rows(records.records),
      m_first(first),
      m_last(last),
      m_next(first),
      m_clock(records.form.clock, records.form.zone)
{
    const std::size_t each = records.form.withQualities ? 2 : 1;
    for (std::size_t column = 0; column <= records.columns.size() * each; ++column)
        m_letters.push_back(lettersOf(column));
}

void SheetText::rewind()
{
    m_next = m_first;
    m_line = 0;
    m_isEnded = false;
    m_made.close();
    m_made.setData({});
    m_made.open(QIODevice::WriteOnly);
    m_taken = 0;
    m_xml = std::make_unique<QXmlStreamWriter>(&m_made);
    begin();
}

std::size_t SheetText::read(char* data, std::size_t length)
{
    std::size_t given = 0;
    while (given < length) {
        if (m_taken == m_made.data().size()) {
            if (m_isEnded)
                break;
            m_made.buffer().clear();
            m_made.seek(0);
            m_taken = 0;
            while (m_next < m_last && m_made.size() < kPiece)
                appendRecord(m_next++);
            if (m_next == m_last)
                end();
        }
        const auto size = std::min(length - given, static_cast<std::size_t>(m_made.data().size() - m_taken));
        std::memcpy(data + given, m_made.data().constData() + m_taken, size);
        m_taken += static_cast<qint64>(size);
        given += size;
    }
    return given;
}

void SheetText::begin()
{
    m_xml->writeStartDocument(QStringLiteral("1.0"), true);
    m_xml->writeStartElement(QStringLiteral("worksheet"));
    m_xml->writeDefaultNamespace(QStringLiteral("http://schemas.openxmlformats.org/spreadsheetml/2006/main"));
    m_xml->writeStartElement(QStringLiteral("sheetViews"));
    m_xml->writeStartElement(QStringLiteral("sheetView"));
    m_xml->writeAttribute(QStringLiteral("workbookViewId"), QStringLiteral("0"));
    m_xml->writeEmptyElement(QStringLiteral("pane"));
    m_xml->writeAttribute(QStringLiteral("ySplit"), QStringLiteral("1"));
    m_xml->writeAttribute(QStringLiteral("topLeftCell"), QStringLiteral("A2"));
    m_xml->writeAttribute(QStringLiteral("activePane"), QStringLiteral("bottomLeft"));
    m_xml->writeAttribute(QStringLiteral("state"), QStringLiteral("frozen"));
    m_xml->writeEndElement();
    m_xml->writeEndElement();
    m_xml->writeStartElement(QStringLiteral("cols"));
    m_xml->writeEmptyElement(QStringLiteral("col"));
    m_xml->writeAttribute(QStringLiteral("min"), QStringLiteral("1"));
    m_xml->writeAttribute(QStringLiteral("max"), QStringLiteral("1"));
    m_xml->writeAttribute(QStringLiteral("width"), QStringLiteral("22"));
    m_xml->writeAttribute(QStringLiteral("customWidth"), QStringLiteral("1"));
    m_xml->writeEndElement();
    m_xml->writeStartElement(QStringLiteral("sheetData"));
    appendNames();
}

void SheetText::end()
{
    m_xml->writeEndDocument();
    m_isEnded = true;
}

void SheetText::appendNames()
{
    ++m_line;
    m_column = 0;
    m_xml->writeStartElement(QStringLiteral("row"));
    appendText(QString::fromStdString(m_clock.name()));
    const auto append = [this](const QString& name) {
        appendText(cellName(name, m_records.form.guardsFormulas.value_or(true)));
    };
    for (const ExportedRecords::Column& column : m_records.columns) {
        append(joinedHeader({column.name, column.unit}));
        if (m_records.form.withQualities)
            append(qualityHeader(column.name));
    }
    m_xml->writeEndElement();
}

void SheetText::appendRecord(std::size_t row)
{
    ++m_line;
    m_column = 0;
    m_xml->writeStartElement(QStringLiteral("row"));
    m_rows.moveTo(row);
    appendTime(m_rows.time());
    for (std::size_t column = 0; column < m_rows.columns(); ++column) {
        const auto [value, isValid] = m_rows.cell(column);
        if (std::isnan(value) || !(isValid || m_records.form.withQualities))
            ++m_column;
        else if (std::isinf(value))
            appendText(QString::fromStdString(exactNumber(value)));
        else
            appendNumber(value, nullptr);
        if (m_records.form.withQualities)
            appendQuality(isValid, value);
    }
    m_xml->writeEndElement();
}

void SheetText::appendQuality(bool isValid, double value)
{
    if (const QLatin1String text(qualityText(isValid, value)); !text.isEmpty())
        appendText(text);
    else
        ++m_column;
}

void SheetText::appendTime(double seconds)
{
    const double days = (seconds + m_clock.offset(seconds)) / kDay + kDaysTo1970;
    if (days >= kFirstSafeDay && days < kDayAfterLast)
        appendNumber(days, kDateStyle);
    else
        appendText(QString::fromStdString(hasCalendarText(seconds) ? m_clock.text(seconds) : exactNumber(seconds)));
}

void SheetText::beginCell()
{
    m_xml->writeStartElement(QStringLiteral("c"));
    m_xml->writeAttribute(QStringLiteral("r"), m_letters[m_column++] + QString::number(m_line));
}

void SheetText::appendText(const QString& text)
{
    beginCell();
    m_xml->writeAttribute(QStringLiteral("t"), QStringLiteral("inlineStr"));
    m_xml->writeStartElement(QStringLiteral("is"));
    m_xml->writeTextElement(QStringLiteral("t"), text);
    m_xml->writeEndElement();
    m_xml->writeEndElement();
}

void SheetText::appendNumber(double number, const char* style)
{
    beginCell();
    if (style)
        m_xml->writeAttribute(QStringLiteral("s"), QLatin1String(style));
    m_xml->writeTextElement(QStringLiteral("v"), QString::fromStdString(exactNumber(number)));
    m_xml->writeEndElement();
}

}  // namespace plotix
