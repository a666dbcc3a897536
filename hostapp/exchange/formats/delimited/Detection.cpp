#include "hostapp/exchange/formats/delimited/Detection.h"

#include "hostapp/exchange/NumberText.h"

#include <QtCore/QBuffer>

#include <algorithm>
#include <map>

namespace plotix {

namespace {

using What = ImportFinding::What;

std::vector<TextSample::Row> cutRows(const QByteArray& beginning, const TextFormat& format, bool isWhole)
{
    QByteArray bytes = beginning;
    QBuffer buffer(&bytes);
    buffer.open(QIODevice::ReadOnly);
    TextReader reader(buffer, format);
    std::vector<TextSample::Row> rows;
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

/// How well a delimiter explains the rows: first by the number of values, then of fields.
std::pair<std::size_t, std::size_t> scoreOf(const std::vector<TextSample::Row>& rows)
{
    const std::size_t usual = usualLength(std::span(rows).subspan(rows.size() > 1 ? 1 : 0));
    if (usual < 2)
        return {0, 0};
    std::size_t values = 0;
    for (const TextSample::Row& row : rows)
        if (row.fields.size() == usual)
            values += static_cast<std::size_t>(std::count_if(row.fields.begin(), row.fields.end(), readsAsValue));
    return {values, usual};
}

void refuseWideCharacters(const QByteArray& beginning)
{
    if (beginning.startsWith("\xFF\xFE") || beginning.startsWith("\xFE\xFF") || beginning.contains('\0'))
        throw ImportFailure({.what = What::WideCharacters});
}

}  // namespace

bool readsAsValue(std::string_view field)
{
    DecimalMark mark = DecimalMark::Unknown;
    double value = 0;
    return readNumber(field, mark, value) == FieldKind::Number || splitDateAndTime(field).has_value();
}

std::size_t usualLength(std::span<const TextSample::Row> rows)
{
    std::map<std::size_t, std::size_t> counts;
    for (const TextSample::Row& row : rows)
        ++counts[row.fields.size()];
    std::size_t usual = 0, most = 0;
    for (const auto& [length, count] : counts)
        if (count >= most) {
            usual = length;
            most = count;
        }
    return usual;
}

TextSample takeSample(const QByteArray& beginning, bool isWhole)
{
    refuseWideCharacters(beginning);
    TextSample best;
    const bool hasOnlyReturns = !beginning.contains('\n') && beginning.contains('\r');
    std::pair<std::size_t, std::size_t> bestScore{0, 0};
    for (const char delimiter : kDelimiters) {
        const TextFormat format{delimiter, hasOnlyReturns ? '\r' : '\n'};
        std::vector<TextSample::Row> rows = cutRows(beginning, format, isWhole);
        const auto score = scoreOf(rows);
        if (delimiter == kDelimiters.front() || score > bestScore) {
            best = {format, std::move(rows)};
            bestScore = score;
        }
    }
    return best;
}

TimeLayout decidedLayout(const DateOrderEvidence& evidence)
{
    if (evidence.dayFirst && evidence.monthFirst)
        throw ImportFailure({.what = What::DateOrderContradicts});
    if (evidence.dayFirst)
        return TimeLayout::DayFirst;
    if (evidence.monthFirst)
        return TimeLayout::MonthFirst;
    if (evidence.dots)
        return TimeLayout::DayFirst;
    throw ImportFailure({.what = What::DateOrderUnknown});
}

}  // namespace plotix
