#include "hostapp/exchange/formats/spreadsheet/Workbook.h"

#include "hostapp/exchange/ImportFinding.h"

#include <QtCore/QDateTime>
#include <QtCore/QHash>
#include <QtCore/QRegularExpression>
#include <QtCore/QTimeZone>
#include <QtCore/QXmlStreamReader>

#include <cmath>

namespace plotix {

namespace {

using What = ImportFinding::What;

constexpr qint64 kMillisecondsOfDay = 86'400'000;
const QString kWorkbook = QStringLiteral("xl/workbook.xml");

/// What the numbers below 164 mean; they have no codes in the file.
CellFormat builtInFormat(int id)
{
    const bool isDate = (id >= 14 && id <= 17) || (id >= 27 && id <= 31) || id == 36 || (id >= 50 && id <= 58);
    if (isDate)
        return CellFormat::Date;
    if (id == 22)
        return CellFormat::DateAndTime;
    const bool isTime = (id >= 18 && id <= 21) || (id >= 32 && id <= 35) || id == 45 || id == 47;
    return isTime ? CellFormat::TimeOfDay : CellFormat::Number;
}

void refuseErrors(const QXmlStreamReader& xml)
{
    if (xml.hasError())
        throw ImportFailure({.what = What::BrokenArchive, .text = xml.errorString()});
}

/// The parts that the workbook names, by the names it has for them.
QHash<QString, QString> relations(const Archive& archive)
{
    QHash<QString, QString> targets;
    const std::unique_ptr<QIODevice> part = archive.open(QStringLiteral("xl/_rels/workbook.xml.rels"));
    QXmlStreamReader xml(part.get());
    while (part && !xml.atEnd())
        if (xml.readNext() == QXmlStreamReader::StartElement && xml.name() == QLatin1String("Relationship")) {
            const QString target = xml.attributes().value(QLatin1String("Target")).toString();
            const bool isAbsolute = target.startsWith(QLatin1Char('/'));
            targets[xml.attributes().value(QLatin1String("Id")).toString()] =
                isAbsolute ? target.mid(1) : QStringLiteral("xl/") + target;
        }
    return targets;
}

/// A document of another kind, which is an archive too, rather than files that somebody packed.
bool isDocument(const Archive& archive)
{
    return archive.has(QStringLiteral("mimetype")) || archive.has(QStringLiteral("[Content_Types].xml")) ||
           archive.has(QStringLiteral("Index/Document.iwa"));
}

}  // namespace

CellFormat cellFormatOf(const QString& code)
{
    static const QRegularExpression noise(
        QStringLiteral("\"[^\"]*\"|\\\\.|_.|\\[(?!h+\\]|m+\\]|s+\\])[^\\]]*\\]|AM/PM|A/P"),
        QRegularExpression::CaseInsensitiveOption);
    QString plain = code.section(QLatin1Char(';'), 0, 0);
    if (plain.compare(QLatin1String("General"), Qt::CaseInsensitive) == 0)
        return CellFormat::Number;
    plain.remove(noise);
    const bool isDuration = plain.contains(QLatin1Char('['));  // [h]:mm counts on beyond a day
    const bool hasDate =
        plain.contains(QLatin1Char('y'), Qt::CaseInsensitive) || plain.contains(QLatin1Char('d'), Qt::CaseInsensitive);
    const bool hasTime =
        plain.contains(QLatin1Char('h'), Qt::CaseInsensitive) || plain.contains(QLatin1Char('s'), Qt::CaseInsensitive);
    if (isDuration && !hasDate)
        return CellFormat::Number;
    if (hasDate)
        return hasTime ? CellFormat::DateAndTime : CellFormat::Date;
    return hasTime ? CellFormat::TimeOfDay : CellFormat::Number;
}

Workbook::Workbook(const Archive& archive)
{
    if (!archive.has(kWorkbook))
        throw ImportFailure({.what = isDocument(archive) ? What::NotText : What::PackedFiles});
    readSheets(archive);
    readTexts(archive);
    readFormats(archive);
}

void Workbook::readSheets(const Archive& archive)
{
    const QHash<QString, QString> targets = relations(archive);
    const std::unique_ptr<QIODevice> part = archive.open(kWorkbook);
    QXmlStreamReader xml(part.get());
    while (!xml.atEnd()) {
        if (xml.readNext() != QXmlStreamReader::StartElement)
            continue;
        const QXmlStreamAttributes attributes = xml.attributes();
        if (xml.name() == QLatin1String("workbookPr")) {
            const auto from = attributes.value(QLatin1String("date1904"));
            m_from1904 = from == QLatin1String("1") || from == QLatin1String("true");
        } else if (xml.name() == QLatin1String("sheet")) {
            QString id;
            for (const QXmlStreamAttribute& attribute : attributes)
                if (attribute.name() == QLatin1String("id"))
                    id = attribute.value().toString();
            const QString fallback = QStringLiteral("xl/worksheets/sheet%1.xml").arg(m_sheets.size() + 1);
            const Sheet sheet{attributes.value(QLatin1String("name")).toString(), targets.value(id, fallback)};
            if (archive.has(sheet.part))
                m_sheets.push_back(sheet);
        }
    }
    refuseErrors(xml);
}

/// A text may be in pieces of different looks; how it is pronounced does not belong to it.
void Workbook::readTexts(const Archive& archive)
{
    const std::unique_ptr<QIODevice> part = archive.open(QStringLiteral("xl/sharedStrings.xml"));
    if (!part)
        return;
    QXmlStreamReader xml(part.get());
    while (!xml.atEnd()) {
        if (xml.readNext() != QXmlStreamReader::StartElement)
            continue;
        if (xml.name() == QLatin1String("si"))
            m_texts.emplace_back();
        else if (xml.name() == QLatin1String("rPh"))
            xml.skipCurrentElement();
        else if (xml.name() == QLatin1String("t") && !m_texts.empty())
            m_texts.back() += xml.readElementText().toStdString();
    }
    refuseErrors(xml);
}

void Workbook::readFormats(const Archive& archive)
{
    const std::unique_ptr<QIODevice> part = archive.open(QStringLiteral("xl/styles.xml"));
    if (!part)
        return;
    QHash<int, CellFormat> codes;
    bool areCells = false;
    QXmlStreamReader xml(part.get());
    while (!xml.atEnd()) {
        xml.readNext();
        if (xml.name() == QLatin1String("cellXfs"))
            areCells = xml.isStartElement();
        if (!xml.isStartElement())
            continue;
        const QXmlStreamAttributes attributes = xml.attributes();
        const int id = attributes.value(QLatin1String("numFmtId")).toInt();
        if (xml.name() == QLatin1String("numFmt"))
            codes[id] = cellFormatOf(attributes.value(QLatin1String("formatCode")).toString());
        else if (areCells && xml.name() == QLatin1String("xf"))
            m_formats.push_back(codes.value(id, builtInFormat(id)));
    }
    refuseErrors(xml);
}

QStringList Workbook::sheetNames() const
{
    QStringList names;
    for (const Sheet& sheet : m_sheets)
        names << sheet.name;
    return names;
}

const std::string& Workbook::sharedText(std::size_t index) const
{
    static const std::string nothing;
    return index < m_texts.size() ? m_texts[index] : nothing;
}

CellFormat Workbook::format(std::size_t style) const
{
    return style < m_formats.size() ? m_formats[style] : CellFormat::Number;
}

/// To the millisecond, which is what a number of days can tell. The spreadsheets' calendar has a 29 February 1900; the
/// days before it count from one day later.
std::string Workbook::dateText(double days, CellFormat format) const
{
    const qint64 all = std::llround(days * static_cast<double>(kMillisecondsOfDay));
    const bool hasFraction = all % 1000 != 0;
    if (format == CellFormat::TimeOfDay && all < kMillisecondsOfDay) {
        const QTime time = QTime::fromMSecsSinceStartOfDay(static_cast<int>(all));
        return time.toString(hasFraction ? QStringLiteral("HH:mm:ss.zzz") : QStringLiteral("HH:mm:ss")).toStdString();
    }
    const QDate first = m_from1904 ? QDate(1904, 1, 1) : days < 60 ? QDate(1899, 12, 31) : QDate(1899, 12, 30);
    const QDateTime moment = QDateTime(first, QTime(0, 0), QTimeZone::utc()).addMSecs(all);
    const bool isDateOnly = all % kMillisecondsOfDay == 0 && format == CellFormat::Date;
    return moment
        .toString(isDateOnly    ? QStringLiteral("yyyy-MM-dd")
                  : hasFraction ? QStringLiteral("yyyy-MM-dd HH:mm:ss.zzz")
                                : QStringLiteral("yyyy-MM-dd HH:mm:ss"))
        .toStdString();
}

}  // namespace plotix
