#include "hostapp/exchange/formats/spreadsheet/SheetRows.h"

#include "hostapp/exchange/NumberText.h"

#include <algorithm>

namespace plotix {

namespace {

constexpr std::size_t kMostColumns = 16'384;  // a sheet has no more

/// The column of "AB12", from 0; nothing for other texts.
std::optional<std::size_t> columnOf(QStringView reference)
{
    std::size_t column = 0;
    for (const QChar character : reference) {
        const char16_t letter = character.unicode();
        if (letter < u'A' || letter > u'Z')
            break;
        column = column * 26 + (letter - u'A') + 1;
        if (column > kMostColumns)
            return {};
    }
    return column == 0 ? std::nullopt : std::optional(column - 1);
}

/// A number of a cell has a point before its decimals, also where texts in the sheet have commas: the exponent says so.
std::string numberText(const QString& value)
{
    std::string text = value.toStdString();
    if (markIn(text) == MarkIn::EitherPoint)
        text += "e0";
    return text;
}

}  // namespace

SheetRows::SheetRows(const Archive& archive, const Workbook& workbook, const QString& part)
    : m_workbook(workbook), m_part(archive.open(part)), m_xml(m_part.get())
{
}

bool SheetRows::next(TextRecord& record)
{
    while (m_part && !m_xml.atEnd()) {
        if (m_xml.readNext() != QXmlStreamReader::StartElement || m_xml.name() != QLatin1String("row"))
            continue;
        readRow();
        if (!m_hasCells)
            continue;
        record.line = m_line;
        record.fields.assign(m_cells.begin(), m_cells.end());
        return true;
    }
    if (m_xml.hasError())
        throw ImportFailure({.what = ImportFinding::What::BrokenArchive, .text = m_xml.errorString()});
    return false;
}

void SheetRows::readRow()
{
    const auto number = m_xml.attributes().value(QLatin1String("r"));
    m_line = number.isEmpty() ? m_line + 1 : number.toLongLong();
    m_cells.assign(m_width, {});
    m_column = 0;
    m_hasCells = false;
    while (!m_xml.atEnd()) {
        m_xml.readNext();
        if (m_xml.isEndElement() && m_xml.name() == QLatin1String("row"))
            return;
        if (m_xml.isStartElement() && m_xml.name() == QLatin1String("c"))
            readCell();
    }
}

void SheetRows::readCell()
{
    const QXmlStreamAttributes attributes = m_xml.attributes();
    m_column = columnOf(attributes.value(QLatin1String("r"))).value_or(m_column);
    const QString kind = attributes.value(QLatin1String("t")).toString();
    const auto style = static_cast<std::size_t>(attributes.value(QLatin1String("s")).toUInt());
    QString value;
    while (!m_xml.atEnd()) {
        m_xml.readNext();
        if (m_xml.isEndElement() && m_xml.name() == QLatin1String("c"))
            break;
        if (!m_xml.isStartElement())
            continue;
        if (m_xml.name() == QLatin1String("v") || m_xml.name() == QLatin1String("t"))
            value += m_xml.readElementText();
        else if (m_xml.name() == QLatin1String("f") || m_xml.name() == QLatin1String("rPh"))
            m_xml.skipCurrentElement();
    }
    if (m_column < kMostColumns && !value.isEmpty()) {
        if (m_column >= m_cells.size())
            m_cells.resize(m_column + 1);
        m_cells[m_column] = cellText(kind, style, value);
        m_width = std::max(m_width, m_cells.size());
        m_hasCells = true;
    }
    ++m_column;
}

std::string SheetRows::cellText(const QString& kind, std::size_t style, const QString& value) const
{
    if (kind == QLatin1String("s"))
        return QString::fromStdString(m_workbook.sharedText(value.toULongLong())).trimmed().toStdString();
    if (kind == QLatin1String("b"))
        return value == QLatin1String("1") ? "TRUE" : "FALSE";
    if (!kind.isEmpty() && kind != QLatin1String("n"))
        return value.trimmed().toStdString();
    const CellFormat format = m_workbook.format(style);
    bool isNumber = false;
    const double number = value.toDouble(&isNumber);
    constexpr double kLastDay = 2'958'466;  // 9999-12-31
    if (format == CellFormat::Number || !isNumber || !(number >= 0 && number < kLastDay))
        return numberText(value);
    return m_workbook.dateText(number, format);
}

}  // namespace plotix
