#include "hostapp/exchange/Detection.h"

#include "base/ReportableError.h"
#include "hostapp/core/Units.h"
#include "hostapp/exchange/ImportText.h"
#include "hostapp/exchange/NumberText.h"
#include "plugins/PlotixPlugIn/host/KTVConverter.h"

#include <QtCore/QRegularExpression>

#include <algorithm>
#include <array>
#include <charconv>
#include <functional>
#include <iterator>

namespace plotix {

namespace {

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

QString listed(const QStringList& headers)
{
    return headers.join(QStringLiteral(", "));
}

/// Matches a header that lacks the name of one column.
void matchShortHeader(TableShape& shape, std::span<const Row> rows)
{
    const qsizetype named = shape.headers.size();
    const QString counts = ImportText::tr("The header names %1 columns and the rows have %2").arg(named).arg(named + 1);
    if (countsRows(rows, 0)) {
        shape.headers.prepend(QString());
        shape.rowNumbers = 0;
        shape.notes << ImportText::tr("%1: the first column, which has no name, counts the rows and is left out; the "
                                      "names (%2) belong to columns 2 to %3.")
                           .arg(counts, listed(shape.headers.mid(1)))
                           .arg(named + 1);
    } else if (isAlwaysEmpty(rows, static_cast<std::size_t>(named))) {
        shape.headers.append(QString());
        shape.notes << ImportText::tr("%1: the last column is always empty and is left out.").arg(counts);
    } else {
        throw ReportableError(
            ImportText::tr("line %1: the header names %2 columns and the rows have %3, and the extra column neither "
                           "counts the rows nor is empty; complete the header")
                .arg(rows.front().line)
                .arg(named)
                .arg(named + 1));
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
            shape.notes << ImportText::tr("The first column has no name; it counts the rows and is left out.");
        }
        shape.headers[column] = QStringLiteral("Column %1").arg(column + 1);
    }
}

}  // namespace

TableShape shapeOf(const TextSample& sample)
{
    if (sample.rows.empty())
        throw ReportableError(ImportText::tr("the file is empty"));
    TableShape shape;
    shape.hasHeader = beginsWithHeader(sample);
    std::vector<Row> usualRows;  // a stray row must not decide; it is reported when its turn comes
    const std::span<const Row> rows = dataRows(sample, shape.hasHeader);
    if (rows.empty())
        throw ReportableError(ImportText::tr("the file has a header and no rows"));
    const std::size_t usual = usualLength(rows);
    std::copy_if(rows.begin(), rows.end(), std::back_inserter(usualRows),
                 [&](const Row& row) { return row.fields.size() == usual; });
    if (!shape.hasHeader) {
        shape.headers.resize(static_cast<qsizetype>(usual));
        shape.notes
            << ImportText::tr("The file has no header; its columns are called Column 1 to Column %1.").arg(usual);
        nameUnnamedColumns(shape, usualRows);
        return shape;
    }
    for (const std::string& field : sample.rows.front().fields)
        shape.headers << decodedText(field).simplified();
    if (usual == shape.fields() + 1)
        matchShortHeader(shape, usualRows);
    else if (usual != shape.fields())
        throw ReportableError(ImportText::tr("line %1: the row has %2 columns where the header names %3")
                                  .arg(usualRows.front().line)
                                  .arg(usual)
                                  .arg(shape.fields()));
    nameUnnamedColumns(shape, usualRows);
    return shape;
}

HeaderText splitHeader(const QString& header)
{
    static const QRegularExpression bracketed(QStringLiteral("^(.*\\S)\\s*(?:\\(([^()]*)\\)|\\[([^\\[\\]]*)\\])$"));
    const QRegularExpressionMatch match = bracketed.match(header.trimmed());
    if (!match.hasMatch())
        return {header.trimmed(), {}};
    const QString inside = (match.captured(2) + match.captured(3)).trimmed();
    if (inside.isEmpty())
        return {match.captured(1), {}};
    const std::optional<QString> unit = Units::shared()->normalise(inside);
    if (!unit)
        return {header.trimmed(), {}};
    return {match.captured(1), *unit};
}

std::optional<std::size_t> columnNamed(const QString& text, const TableShape& shape)
{
    using Reading = std::function<QString(const QString&)>;
    const std::array<Reading, 5> readings = {
        [](const QString& header) { return header; },
        [](const QString& header) { return splitHeader(header).name; },
        [](const QString& header) { return header.toCaseFolded(); },
        [](const QString& header) { return splitHeader(header).name.toCaseFolded(); },
        [](const QString& header) { return camelCaseString(splitHeader(header).name); },
    };
    for (const Reading& reading : readings)
        for (qsizetype column = 0; column < shape.headers.size(); ++column)
            if (!text.isEmpty() && reading(shape.headers[column]) == reading(text.simplified()))
                return static_cast<std::size_t>(column);
    return {};
}

}  // namespace plotix
