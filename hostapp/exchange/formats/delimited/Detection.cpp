#include "hostapp/exchange/formats/delimited/Detection.h"

#include "hostapp/exchange/NumberText.h"

#include <QtCore/QBuffer>

#include <algorithm>

namespace plotix {

namespace {

using What = ImportFinding::What;
using Row = TableSample::Row;

std::vector<Row> cutRows(const QByteArray& beginning, const TextFormat& format, bool isWhole)
{
    QByteArray bytes = beginning;
    QBuffer buffer(&bytes);
    buffer.open(QIODevice::ReadOnly);
    TextReader reader(buffer, format);
    std::vector<Row> rows;
    TextRecord record;
    try {
        while (rows.size() <= kSampleRows && reader.next(record)) {
            auto& row = rows.emplace_back();
            row.line = record.line;
            row.fields.assign(record.fields.begin(), record.fields.end());
        }
    } catch (const ImportFailure&) {  // a quoted field that the sample cut in two
        if (isWhole)
            throw;
        return rows;
    }
    if ((!isWhole && rows.size() > 1) || rows.size() > kSampleRows)
        rows.pop_back();
    return rows;
}

/// "21,5 °C"
bool isNumberWithUnit(std::string_view field)
{
    constexpr std::size_t kLongestUnit = 8;  // bytes
    const NumberWithUnit split = splitUnitOff(field);
    return !split.unit.empty() && split.unit.size() <= kLongestUnit && kindOf(split.number) == CellKind::Number &&
           split.unit.find_first_of("0123456789,;.") == std::string_view::npos;
}

/// How well a delimiter explains the rows: by many values, then by many rows of one length (the header is one), then by
/// few texts (pieces of numbers), then by many fields.
struct Score {
    std::size_t values = 0, rows = 0, texts = 0, usual = 0;
    std::size_t rowsWithValues = 0;

    bool isBetterThan(const Score& other) const
    {
        if (values != other.values)
            return values > other.values;
        if (rows != other.rows)
            return rows > other.rows;
        return texts != other.texts ? texts < other.texts : usual > other.usual;
    }
    /// Two values a row are enough to believe in a delimiter: a time and what was measured.
    bool isConvincing() const { return usual > 1 && values * 2 >= rowsWithValues * 3; }
};

Score scoreOf(const std::vector<Row>& rows)
{
    const std::size_t usual = usualLength(std::span(rows).subspan(rows.size() > 1 ? 1 : 0));
    if (usual < 2)
        return {};
    Score score{.usual = usual};
    for (const Row& row : rows) {
        if (row.fields.size() != usual)
            continue;
        ++score.rows;
        const std::size_t before = score.values;
        for (const std::string& field : row.fields) {
            const CellKind kind = kindOf(field);
            const bool isText = kind == CellKind::Text && !isNumberWithUnit(field);
            score.values += isText || kind == CellKind::Gap ? 0 : 1;
            score.texts += isText ? 1 : 0;
        }
        score.rowsWithValues += score.values > before ? 1 : 0;
    }
    return score;
}

void refuseOtherFiles(const QByteArray& beginning)
{
    if (beginning.startsWith("\xD0\xCF\x11\xE0"))
        throw ImportFailure({.what = What::OldSpreadsheet});
    if (beginning.contains('\0'))
        throw ImportFailure({.what = What::NotText});
}

/// ";" of a first line `sep=;`, as spreadsheets write and read it.
std::optional<char> statedDelimiter(const QByteArray& beginning)
{
    QByteArray line = beginning.left(16);
    if (line.startsWith("\xEF\xBB\xBF"))
        line.remove(0, 3);
    line.replace("\"", "");
    const bool isStated = line.size() > 5 && line.left(4).toLower() == "sep=" && (line[5] == '\r' || line[5] == '\n');
    return isStated ? std::optional(line[4]) : std::nullopt;
}

/// The delimiter that the user says.
TextFormat saidFormat(const QString& said, char lineBreak)
{
    const QString text = said.compare(QLatin1String("tab"), Qt::CaseInsensitive) == 0 ? QStringLiteral("\t") : said;
    const bool areBlanks = said.compare(QLatin1String("blank"), Qt::CaseInsensitive) == 0;
    if (areBlanks || (text.trimmed().isEmpty() && text != QStringLiteral("\t")))
        return {' ', lineBreak, 1};
    const char character = text.front().toLatin1();
    if (text.size() != 1 || character == '"' || character == '\n' || character == '\r' || character == '\0')
        throw ImportFailure({.what = What::UnusableDelimiter, .text = said});
    return {character, lineBreak};
}

}  // namespace

TextSample takeSample(const QByteArray& beginning, bool isWhole, const QString& said)
{
    refuseOtherFiles(beginning);
    const char lineBreak = !beginning.contains('\n') && beginning.contains('\r') ? '\r' : '\n';
    std::vector<TextFormat> formats;
    const std::optional<char> stated = statedDelimiter(beginning);
    if (!said.isEmpty())
        formats = {saidFormat(said, lineBreak)};
    else if (stated)
        formats = {{*stated, lineBreak}};
    else
        for (const char delimiter : kDelimiters)
            formats.push_back({delimiter, lineBreak});
    if (formats.size() > 1)
        formats.insert(formats.end(), {{' ', lineBreak, 2}, {' ', lineBreak, 1}});

    TextSample best;
    Score bestScore;
    for (const TextFormat& format : formats) {
        if (format.fewestBlanks > 0 && best.format.fewestBlanks == 0 && bestScore.isConvincing())
            break;
        std::vector<Row> rows = cutRows(beginning, format, isWhole);
        const Score score = scoreOf(rows);
        const bool cutsNames = best.format.fewestBlanks > format.fewestBlanks && score.rows < bestScore.rows;
        if (&format == &formats.front() || (!cutsNames && score.isBetterThan(bestScore))) {
            best = {{std::move(rows), format.delimiter}, format};
            bestScore = score;
        }
    }
    if (stated && !best.rows.empty())
        best.rows.front().fields.assign(1, {});  // so that it is no name of a column
    return best;
}

}  // namespace plotix
