#include "hostapp/exchange/tables/TableShape.h"

#include "hostapp/core/Units.h"
#include "hostapp/exchange/DecodedText.h"
#include "hostapp/exchange/NumberText.h"
#include "hostapp/exchange/TimeWords.h"
#include "hostapp/exchange/tables/CellUnits.h"
#include "hostapp/exchange/tables/HeaderRows.h"

#include <QtCore/QHash>
#include <QtCore/QRegularExpression>

#include <algorithm>
#include <charconv>
#include <iterator>

namespace plotix {

namespace {

using What = ImportFinding::What;
using Row = TableSample::Row;
using Rows = std::vector<Row>;

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

bool areAlwaysEmpty(std::span<const Row> rows, std::size_t begin, std::size_t end)
{
    bool areEmpty = true;
    for (std::size_t field = begin; field < end; ++field)
        areEmpty = areEmpty && isAlwaysEmpty(rows, field);
    return areEmpty;
}

/// Matches a header that lacks the names of columns.
void matchShortHeader(TableShape& shape, std::span<const Row> rows, std::size_t found)
{
    const qsizetype named = shape.headers.size();
    const auto expected = static_cast<std::size_t>(named);
    if (found == expected + 1 && countsRows(rows, 0)) {
        shape.notes.push_back(
            {.what = What::HeaderLacksRowNumbers, .columns = shape.headers, .found = found, .expected = expected});
        shape.headers.prepend(QString());
        shape.rowNumbers = 0;
    } else if (areAlwaysEmpty(rows, expected, found)) {
        while (shape.headers.size() < static_cast<qsizetype>(found))
            shape.headers.append(QString());
        shape.notes.push_back({.what = What::HeaderLacksEmptyLast, .found = found, .expected = expected});
    } else {
        const bool lacksOne = found == expected + 1;
        throw ImportFailure({.what = lacksOne ? What::HeaderTooShort : What::HeaderDoesNotMatch,
                             .line = rows.front().line,
                             .found = found,
                             .expected = expected});
    }
}

/// Rows may be shorter than the header where some are as long, or where what the header has more is empty.
void matchLongHeader(TableShape& shape, std::span<const Row> all, std::size_t usual)
{
    const bool someAreLong =
        std::any_of(all.begin(), all.end(), [&shape](const Row& row) { return row.fields.size() >= shape.fields(); });
    while (!someAreLong && shape.fields() > usual && shape.headers.back().isEmpty())
        shape.headers.removeLast();
    if (!someAreLong && shape.fields() != usual)
        throw ImportFailure(
            {.what = What::HeaderDoesNotMatch, .line = all.front().line, .found = usual, .expected = shape.fields()});
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

/// "Supply" over three columns called "Min", "Max", "Avg" belongs to each of their names.
void addGroups(TableShape& shape, const Row& groups)
{
    const QStringList names = shape.headers;
    QHash<QString, int> counts;
    for (const QString& name : names)
        ++counts[name];
    QString group;
    for (qsizetype column = 0; column < shape.headers.size(); ++column) {
        const auto field = static_cast<std::size_t>(column);
        const QString own = field < groups.fields.size() ? decodedText(groups.fields[field]).simplified() : QString();
        group = own.isEmpty() ? group : own;
        if (!group.isEmpty() && !names[column].isEmpty() && counts.value(names[column]) > 1)
            shape.headers[column] = group + QLatin1Char(' ') + names[column];
    }
}

QString withoutBrackets(const std::string& field)
{
    QString text = decodedText(field).simplified();
    static const QRegularExpression inBrackets(QStringLiteral("^[\\[(](.*)[\\])]$"));
    const QRegularExpressionMatch match = inBrackets.match(text);
    return match.hasMatch() ? match.captured(1).trimmed() : text;
}

void splitTitles(TableShape& shape, const Row* units)
{
    QStringList unknown;
    for (qsizetype column = 0; column < shape.headers.size(); ++column) {
        ColumnHeader title = splitHeader(shape.headers[column]);
        const auto field = static_cast<std::size_t>(column);
        if (units != nullptr && title.unit.isEmpty() && field < units->fields.size()) {
            const QString text = withoutBrackets(units->fields[field]);
            title.unit = Units::shared()->normalise(text).value_or(QString());
            const bool isOfTime = hasWord(title.name, "time|date|zeit|datum|heure|jour") ||
                                  hasWord(text, "^(?:[ydmhst:./\\- ]+|TS|RN|yr|mo|mn|dy|hr|min|sec)$");
            if (title.unit.isEmpty() && text.size() > 1 && !isOfTime)
                unknown << text;
        }
        shape.titles.push_back(title);
    }
    if (!unknown.isEmpty())
        shape.notes.push_back({.what = What::UnitsNotKnown, .line = units->line, .columns = unknown});
}

bool isMoney(const QString& unit)
{
    return hasWord(unit, "^(?:€|\\$|£|EUR|USD|GBP|CHF|ct)(?:/\\w+)?$");
}

/// The unit that stands in most cells of a column, which may have others too; nothing where most have none.
std::string unitInCells(std::span<const Row> rows, std::size_t field)
{
    std::vector<std::pair<std::string, std::size_t>> units;  // in the order of the file
    std::size_t with = 0, without = 0;
    for (const Row& row : rows) {
        if (field >= row.fields.size() || isMissing(row.fields[field]))
            continue;
        const NumberWithUnit split = splitUnitOff(row.fields[field]);
        const auto same = [&split](const auto& unit) { return unit.first == split.unit; };
        const auto found = std::find_if(units.begin(), units.end(), same);
        if (found != units.end())
            ++found->second;
        else if (isUnitOfCell(split.unit) || isMoney(decodedText(split.unit)))
            units.emplace_back(split.unit, 1);
        else
            ++without;
    }
    const auto isRarer = [](const auto& one, const auto& other) { return one.second < other.second; };
    for (const auto& unit : units)
        with += unit.second;
    const auto most = std::max_element(units.begin(), units.end(), isRarer);
    return most != units.end() && with > without * 3 ? most->first : std::string();
}

void findUnitsInCells(TableShape& shape, std::span<const Row> rows)
{
    for (std::size_t field = 0; field < shape.fields(); ++field) {
        shape.units.push_back(unitInCells(rows, field));
        if (!shape.units.back().empty() && shape.titles[field].unit.isEmpty())
            shape.titles[field].unit = Units::shared()->normalise(decodedText(shape.units.back())).value_or(QString());
    }
}

/// "Time zone: UTC" and the like in the lines above the table, in one cell or two.
QString zoneAbove(const TableSample& sample, std::size_t end)
{
    static const QRegularExpression key(QStringLiteral("time ?zone|zeitzone|fuseau|utc.?offset"),
                                        QRegularExpression::CaseInsensitiveOption);
    for (std::size_t index = 0; index < end; ++index) {
        QStringList cells;
        for (const std::string& field : sample.rows[index].fields)
            cells << decodedText(field);
        const QString line = cells.join(QLatin1Char(' ')).simplified();
        const QRegularExpressionMatch match = key.match(line);
        if (match.hasMatch() && match.capturedStart() < 12)
            return zoneIn(line.mid(match.capturedEnd()).remove(QLatin1Char(':')).simplified() + QLatin1Char(' '));
    }
    return {};
}

Rows rowsOfLength(std::span<const Row> rows, std::size_t length)
{
    Rows usual;
    std::copy_if(rows.begin(), rows.end(), std::back_inserter(usual),
                 [&](const Row& row) { return row.fields.size() == length; });
    return usual;
}

void takeHeader(TableShape& shape, const TableSample& sample, const HeaderRows& found, std::size_t usual)
{
    const std::span<const Row> rows = dataRows(sample, shape);
    const Rows usualRows = rowsOfLength(rows, usual);  // a stray row must not decide
    shape.headerFields = sample.rows[*found.header].fields;
    std::vector<std::string> fields = uncommented(shape.headerFields);
    const bool isMarkApart = fields.front() == "#" && fields.size() == usual + 1;  // "# time temp"
    if (isMarkApart)
        fields.erase(fields.begin());
    for (const std::string& field : fields)
        shape.headers << decodedText(field).simplified();
    if (usual > shape.fields())
        matchShortHeader(shape, usualRows, usual);
    else if (usual < shape.fields())
        matchLongHeader(shape, rows, usual);
    if (found.groups)
        addGroups(shape, sample.rows[*found.groups]);
    const std::size_t named = 1 + (found.units ? 1 : 0) + (found.groups ? 1 : 0);
    if (found.firstRow > named)
        shape.notes.push_back({.what = What::LinesAboveTable, .found = found.firstRow - named});
    if (found.units)
        shape.notes.push_back({.what = What::UnitsBelowHeader, .line = sample.rows[*found.units].line});
    nameUnnamedColumns(shape, usualRows);
}

}  // namespace

std::span<const Row> dataRows(const TableSample& sample, const TableShape& shape)
{
    return std::span(sample.rows).subspan(shape.firstRow);
}

TableShape shapeOf(const TableSample& sample)
{
    if (sample.rows.empty())
        throw ImportFailure({.what = What::EmptyFile});
    const HeaderRows found = findHeaderRows(sample);
    TableShape shape;
    shape.firstRow = found.firstRow;
    const std::span<const Row> rows = dataRows(sample, shape);
    if (rows.empty())
        throw ImportFailure({.what = What::NoRowsBelowHeader});
    const std::size_t usual = usualLength(rows);
    shape.hasHeader = found.header.has_value();
    if (shape.hasHeader) {
        takeHeader(shape, sample, found, usual);
    } else {
        shape.headers.resize(static_cast<qsizetype>(usual));
        shape.notes.push_back({.what = What::ColumnsHaveNoNames, .found = usual});
        nameUnnamedColumns(shape, rowsOfLength(rows, usual));
    }
    splitTitles(shape, found.units ? &sample.rows[*found.units] : nullptr);
    findUnitsInCells(shape, rows);
    shape.statedZone = zoneAbove(sample, found.header.value_or(found.firstRow));
    return shape;
}

std::vector<SourceColumn> columnsOf(const TableShape& shape)
{
    std::vector<SourceColumn> columns;
    for (const ColumnHeader& title : shape.titles)
        columns.push_back({shape.headers[static_cast<qsizetype>(columns.size())], title.name, title.unit,
                           shape.rowNumbers != columns.size()});
    return columns;
}

QString zoneIn(const QString& text)
{
    static const QRegularExpression offset(QStringLiteral("(?:UTC|GMT)\\s*([+-]\\s*\\d{1,2}(?::?\\d{2})?)"),
                                           QRegularExpression::CaseInsensitiveOption);
    static const QRegularExpression place(QStringLiteral("\\b((?:Europe|America|Asia|Africa|Australia|Pacific|Atlantic|"
                                                         "Indian|Etc)/[A-Za-z_+\\-0-9/]+)"));
    static const QRegularExpression bare(QStringLiteral("(?:^|\\s)([+-]\\d{1,2}:?\\d{2}|[+-]\\d{1,2})\\s*$"));
    static const QRegularExpression word(QStringLiteral("(?<![A-Za-z])([A-Z]{2,5}|utc|gmt)(?![A-Za-z])"));
    if (const auto match = place.match(text); match.hasMatch())
        return match.captured(1);
    if (const auto match = offset.match(text); match.hasMatch())
        return QStringLiteral("UTC") + match.captured(1).remove(QLatin1Char(' '));
    if (text.contains(QStringLiteral("CET/CEST")) || text.contains(QStringLiteral("MEZ/MESZ")) ||
        text.contains(QStringLiteral("ME(S)Z")))
        return QStringLiteral("Europe/Berlin");
    for (auto matches = word.globalMatch(text); matches.hasNext();) {
        const QByteArray name = matches.next().captured(1).toUpper().toLatin1();
        const std::optional<LeadingWord> zone = zoneAt(std::string_view(name.constData(), std::size_t(name.size())));
        if (!zone)
            continue;
        const int minutes = std::abs(zone->value) / 60;
        return QStringLiteral("UTC%1%2:%3")
            .arg(zone->value < 0 ? QLatin1Char('-') : QLatin1Char('+'))
            .arg(minutes / 60, 2, 10, QLatin1Char('0'))
            .arg(minutes % 60, 2, 10, QLatin1Char('0'));
    }
    const auto match = bare.match(text);
    return match.hasMatch() ? match.captured(1) : QString();
}

}  // namespace plotix
