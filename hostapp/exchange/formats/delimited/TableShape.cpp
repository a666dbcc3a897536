#include "hostapp/exchange/formats/delimited/Detection.h"

#include "hostapp/exchange/ColumnHeader.h"
#include "hostapp/exchange/DecodedText.h"
#include "hostapp/exchange/NumberText.h"

#include <algorithm>
#include <charconv>
#include <iterator>

namespace plotix {

namespace {

using What = ImportFinding::What;
using Row = TextSample::Row;

/// The rows below the header.
std::span<const Row> dataRows(const TextSample& sample, bool hasHeader)
{
    return std::span(sample.rows).subspan(hasHeader ? 1 : 0);
}

bool anyValueInColumn(std::span<const Row> rows, std::size_t field)
{
    return std::any_of(rows.begin(), rows.end(),
                       [&](const Row& row) { return field < row.fields.size() && readsAsValue(row.fields[field]); });
}

/// A header has no date in it and stands over at least one column of numbers or times with a text.
bool beginsWithHeader(const TextSample& sample)
{
    const std::vector<std::string>& first = sample.rows.front().fields;
    if (std::any_of(first.begin(), first.end(), [](const auto& field) { return splitDateAndTime(field).has_value(); }))
        return false;
    const std::span<const Row> rest = std::span(sample.rows).subspan(1);
    if (rest.empty())
        return std::none_of(first.begin(), first.end(), readsAsValue);
    const std::size_t extra = rest.front().fields.size() > first.size() ? 1 : 0;  // an unnamed column in front
    for (std::size_t field = 0; field < first.size(); ++field)
        if (!isMissing(first[field]) && !readsAsValue(first[field]) &&
            (anyValueInColumn(rest, field) || anyValueInColumn(rest, field + extra)))
            return true;
    return false;
}

bool countsRows(std::span<const Row> rows, std::size_t field)
{
    long long previous = 0;
    for (std::size_t index = 0; index < rows.size(); ++index) {
        const std::string& text = rows[index].fields[field];
        long long number = 0;
        const auto [stopped, error] = std::from_chars(text.data(), text.data() + text.size(), number);
        if (!isWholeNumber(text) || error != std::errc() || stopped != text.data() + text.size())
            return false;
        if (index > 0 && number <= previous)
            return false;
        previous = number;
    }
    return !rows.empty();
}

bool isAlwaysEmpty(std::span<const Row> rows, std::size_t field)
{
    return !rows.empty() &&
           std::all_of(rows.begin(), rows.end(), [&](const Row& row) { return row.fields[field].empty(); });
}

/// Matches a header that lacks the name of one column.
void matchShortHeader(TableShape& shape, std::span<const Row> rows)
{
    const qsizetype named = shape.headers.size();
    const auto expected = static_cast<std::size_t>(named);
    const std::size_t found = expected + 1;
    if (countsRows(rows, 0)) {
        shape.notes.push_back(
            {.what = What::HeaderLacksRowNumbers, .columns = shape.headers, .found = found, .expected = expected});
        shape.headers.prepend(QString());
        shape.rowNumbers = 0;
    } else if (isAlwaysEmpty(rows, expected)) {
        shape.headers.append(QString());
        shape.notes.push_back({.what = What::HeaderLacksEmptyLast, .found = found, .expected = expected});
    } else {
        throw ImportFailure(
            {.what = What::HeaderTooShort, .line = rows.front().line, .found = found, .expected = expected});
    }
}

void nameUnnamedColumns(TableShape& shape, std::span<const Row> rows)
{
    for (qsizetype column = 0; column < shape.headers.size(); ++column) {
        if (!shape.headers[column].isEmpty())
            continue;
        const auto field = static_cast<std::size_t>(column);
        const bool rowsHaveIt =
            std::all_of(rows.begin(), rows.end(), [&](const Row& row) { return row.fields.size() > field; });
        if (shape.hasHeader && column == 0 && !shape.rowNumbers && rowsHaveIt && countsRows(rows, 0)) {
            shape.rowNumbers = 0;
            shape.notes.push_back({.what = What::RowNumbersHaveNoName});
        }
        shape.headers[column] = QStringLiteral("Column %1").arg(column + 1);
    }
}

}  // namespace

TableShape shapeOf(const TextSample& sample)
{
    if (sample.rows.empty())
        throw ImportFailure({.what = What::EmptyFile});
    TableShape shape;
    shape.hasHeader = beginsWithHeader(sample);
    std::vector<Row> usualRows;  // a stray row must not decide; it is reported when its turn comes
    const std::span<const Row> rows = dataRows(sample, shape.hasHeader);
    if (rows.empty())
        throw ImportFailure({.what = What::NoRowsBelowHeader});
    const std::size_t usual = usualLength(rows);
    std::copy_if(rows.begin(), rows.end(), std::back_inserter(usualRows),
                 [&](const Row& row) { return row.fields.size() == usual; });
    if (!shape.hasHeader) {
        shape.headers.resize(static_cast<qsizetype>(usual));
        shape.notes.push_back({.what = What::ColumnsHaveNoNames, .found = usual});
        nameUnnamedColumns(shape, usualRows);
        return shape;
    }
    for (const std::string& field : sample.rows.front().fields)
        shape.headers << decodedText(field).simplified();
    if (usual == shape.fields() + 1)
        matchShortHeader(shape, usualRows);
    else if (usual != shape.fields())
        throw ImportFailure({.what = What::HeaderDoesNotMatch,
                             .line = usualRows.front().line,
                             .found = usual,
                             .expected = shape.fields()});
    nameUnnamedColumns(shape, usualRows);
    return shape;
}

std::vector<SourceColumn> columnsOf(const TableShape& shape)
{
    std::vector<SourceColumn> columns;
    for (const QString& header : shape.headers) {
        const ColumnHeader split = splitHeader(header);
        columns.push_back({header, split.name, split.unit, shape.rowNumbers != columns.size()});
    }
    return columns;
}

}  // namespace plotix
