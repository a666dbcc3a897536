#include "hostapp/exchange/tables/HeaderRows.h"

#include "hostapp/core/Units.h"
#include "hostapp/exchange/DecodedText.h"
#include "hostapp/exchange/NumberText.h"

#include <QtCore/QRegularExpression>
#include <QtCore/QSet>

#include <algorithm>

namespace plotix {

namespace {

using Row = TableSample::Row;
using Kinds = std::vector<std::vector<CellKind>>;

bool isValue(CellKind kind)
{
    return kind == CellKind::Number || kind == CellKind::Date || kind == CellKind::Clock;
}

std::size_t count(const std::vector<CellKind>& row, bool (*wanted)(CellKind))
{
    return static_cast<std::size_t>(std::count_if(row.begin(), row.end(), wanted));
}

std::size_t filledFields(const Row& row)
{
    return static_cast<std::size_t>(
        std::count_if(row.fields.begin(), row.fields.end(), [](const std::string& field) { return !field.empty(); }));
}

/// How often each kind of cell stands in a column.
struct ColumnKinds {
    std::size_t dates = 0, values = 0, texts = 0;

    // Up to three lines of names, units and the like may stand above few rows.
    bool isOfDates() const { return dates > 0 && dates * 2 + 3 >= texts; }
    bool isOfValues() const { return values > 0 && values * 2 + 3 >= texts; }
};

std::vector<ColumnKinds> columnKinds(const Kinds& kinds)
{
    std::vector<ColumnKinds> columns;
    for (const std::vector<CellKind>& row : kinds) {
        columns.resize(std::max(columns.size(), row.size()));
        for (std::size_t field = 0; field < row.size(); ++field) {
            columns[field].dates += row[field] == CellKind::Date ? 1 : 0;
            columns[field].values += isValue(row[field]) ? 1 : 0;
            columns[field].texts += row[field] == CellKind::Text ? 1 : 0;
        }
    }
    return columns;
}

/// The row that begins the measurements: it has a date where most rows have one; without dates, nothing but values
/// where most rows have values.
std::size_t firstRowOf(const TableSample& sample, const Kinds& kinds)
{
    const std::vector<ColumnKinds> columns = columnKinds(kinds);
    const auto dates = std::max_element(columns.begin(), columns.end(), [](const auto& one, const auto& other) {
        return (one.isOfDates() ? one.dates : 0) < (other.isOfDates() ? other.dates : 0);
    });
    const bool hasDates = dates != columns.end() && dates->isOfDates();
    const auto dateField = static_cast<std::size_t>(dates - columns.begin());
    for (std::size_t index = 0; index < sample.rows.size(); ++index) {
        const std::vector<CellKind>& row = kinds[index];
        if (hasDates) {
            if (dateField < row.size() && row[dateField] == CellKind::Date)
                return index;
            continue;
        }
        bool isRow = count(row, isValue) > 0;
        for (std::size_t field = 0; field < row.size() && isRow; ++field)
            isRow = row[field] != CellKind::Text || !columns[field].isOfValues();
        if (isRow)
            return index;
    }
    return sample.rows.size();
}

/// "Avg", "Min", "Smp": how a logger made the values of a column.
bool isAggregation(const std::string& field)
{
    static const QSet<QString> words = {
        QStringLiteral("avg"),    QStringLiteral("min"),   QStringLiteral("max"),  QStringLiteral("smp"),
        QStringLiteral("tot"),    QStringLiteral("std"),   QStringLiteral("sum"),  QStringLiteral("mean"),
        QStringLiteral("med"),    QStringLiteral("wvc"),   QStringLiteral("mw"),   QStringLiteral("mittelwert"),
        QStringLiteral("mittel"), QStringLiteral("summe"), QStringLiteral("last"), QStringLiteral("current")};
    return words.contains(decodedText(field).trimmed().toLower());
}

bool isAggregationRow(const Row& row)
{
    return filledFields(row) > 0 && std::all_of(row.fields.begin(), row.fields.end(), [](const std::string& field) {
               return field.empty() || isAggregation(field);
           });
}

bool isUnit(const std::string& field)
{
    QString text = decodedText(field).trimmed();
    static const QRegularExpression inBrackets(QStringLiteral("^[\\[(](.*)[\\])]$"));
    if (const QRegularExpressionMatch match = inBrackets.match(text); match.hasMatch())
        text = match.captured(1).trimmed();
    return Units::shared()->normalise(text).has_value();
}

bool namesTime(const std::string& field)
{
    static const QRegularExpression words(QStringLiteral("time|date|zeit|datum|heure|jour|tag"),
                                          QRegularExpression::CaseInsensitiveOption);
    static const QRegularExpression pattern(QStringLiteral("^[ydmhst:./\\- ]+$"),
                                            QRegularExpression::CaseInsensitiveOption);
    const QString text = decodedText(field);
    return words.match(text).hasMatch() && !pattern.match(text).hasMatch();
}

/// "yyyy", "mm", "hr": a part of the time, whose name is as short as its unit.
bool isPartOfTime(const std::string& field)
{
    return hasWord(decodedText(field).trimmed(), "^#?(?:y+|yr|m+|mo|mn|d+|dy|h+|hr|s+|min|sec)$");
}

/// Units stand below names: at least a third of them are known, more than above, and none of them names the time.
bool isRowOfUnits(const Row& row, const Row& above)
{
    const auto isOther = [](const std::string& field) { return !isPartOfTime(field) && isUnit(field); };
    const auto units = static_cast<std::size_t>(std::count_if(row.fields.begin(), row.fields.end(), isOther));
    const auto unitsAbove = static_cast<std::size_t>(std::count_if(above.fields.begin(), above.fields.end(), isOther));
    const std::size_t filled =
        filledFields(row) - static_cast<std::size_t>(std::count_if(row.fields.begin(), row.fields.end(), isPartOfTime));
    const bool names = std::any_of(row.fields.begin(), row.fields.end(), namesTime);
    return units > 0 && units * 3 >= filled && units > unitsAbove && !names &&
           filledFields(above) * 2 > filledFields(row);
}

bool hasEqualNames(const Row& row)
{
    QSet<QString> seen;
    return std::any_of(row.fields.begin(), row.fields.end(), [&seen](const std::string& field) {
        const QString name = decodedText(field);
        const bool isSeen = !name.isEmpty() && seen.contains(name);
        seen.insert(name);
        return isSeen;
    });
}

/// Short texts below names, and nothing below that of the time: units, also such as are not known. Names that stand for
/// several columns each, or for some only, are groups above names.
bool isRowBelowNames(const Row& row, const std::vector<CellKind>& kinds, const Row& above,
                     const std::vector<CellKind>& firstRow)
{
    constexpr qsizetype kLongest = 12;
    std::size_t times = 0, texts = 0;
    for (std::size_t field = 0; field < row.fields.size(); ++field) {
        const std::string& text = row.fields[field];
        const bool isNamed = field < above.fields.size() && !above.fields[field].empty();
        const bool isTime = isNamed && ((field < firstRow.size() && firstRow[field] == CellKind::Date) ||
                                        (namesTime(above.fields[field]) && text.empty()));
        times += isTime ? 1 : 0;
        texts += text.empty() ? 0 : 1;
        if (!text.empty() && (isTime || !isNamed || isValue(kinds[field]) || decodedText(text).size() > kLongest))
            return false;
    }
    return times > 0 && texts > 0 && !hasEqualNames(above);
}

/// A header stands over at least half of the columns and has no date in it.
bool canBeHeader(const Row& row, const std::vector<CellKind>& kinds, std::size_t usual)
{
    const bool hasDate = std::find(kinds.begin(), kinds.end(), CellKind::Date) != kinds.end();
    const auto texts = count(kinds, [](CellKind kind) { return kind == CellKind::Text || kind == CellKind::State; });
    const std::size_t filled = filledFields(row);
    const bool isWide = filled * 2 >= usual || row.fields.size() == usual;
    return !hasDate && isWide && (texts > 0 || filled == 0 ? texts > 0 : filled > 1 && filled * 2 >= usual);
}

/// "Max; 21.5; 48": numbers between the header and the rows.
bool isSummary(const std::vector<CellKind>& row, const std::vector<CellKind>& above)
{
    const auto isText = [](CellKind kind) { return kind == CellKind::Text; };
    return count(row, isValue) > 0 && count(row, isValue) >= count(row, isText) && count(above, isValue) == 0 &&
           count(above, isText) > count(row, isText);
}

}  // namespace

std::vector<std::string> uncommented(const std::vector<std::string>& fields)
{
    std::vector<std::string> plain = fields;
    if (plain.empty() || !plain.front().starts_with('#') || plain.front() == "#")
        return plain;
    const std::size_t begin = plain.front().find_first_not_of("# \t");
    plain.front() = begin == std::string::npos ? std::string() : plain.front().substr(begin);
    return plain;
}

HeaderRows findHeaderRows(const TableSample& sample)
{
    Kinds kinds;
    for (const Row& row : sample.rows) {
        std::vector<CellKind>& cells = kinds.emplace_back();
        for (const std::string& field : row.fields)
            cells.push_back(kindOf(field));
    }
    HeaderRows found;
    found.firstRow = firstRowOf(sample, kinds);
    const std::size_t usual = usualLength(std::span(sample.rows).subspan(found.firstRow));
    std::vector<std::size_t> above;  // from the table upwards
    for (std::size_t index = found.firstRow; index-- > 0;)
        if (filledFields(sample.rows[index]) > 0)
            above.push_back(index);
    std::size_t next = 0;
    if (next + 1 < above.size() && isAggregationRow(sample.rows[above[next]]))
        ++next;
    const auto standsBelowNames = [&](std::size_t place) {
        return std::any_of(above.begin() + static_cast<std::ptrdiff_t>(place) + 1, above.end(),
                           [&](std::size_t row) { return isSummary(kinds[above[place]], kinds[row]); });
    };
    while (next + 1 < above.size() && standsBelowNames(next))
        ++next;
    const auto standsForUnits = [&] {
        const Row& row = sample.rows[above[next]];
        const Row& names = sample.rows[above[next + 1]];
        return isRowOfUnits(row, names) || (found.firstRow < kinds.size() &&
                                            isRowBelowNames(row, kinds[above[next]], names, kinds[found.firstRow]));
    };
    if (next + 1 < above.size() && standsForUnits())
        found.units = above[next++];
    if (next >= above.size() || !canBeHeader(sample.rows[above[next]], kinds[above[next]], usual)) {
        found.units.reset();
        return found;
    }
    found.header = above[next];
    const bool hasGroups = next + 1 < above.size() && hasEqualNames(sample.rows[above[next]]) &&
                           sample.rows[above[next + 1]].fields.size() == sample.rows[above[next]].fields.size() &&
                           count(kinds[above[next + 1]], isValue) == 0 &&
                           filledFields(sample.rows[above[next + 1]]) > 1;
    if (hasGroups)
        found.groups = above[next + 1];
    return found;
}

}  // namespace plotix
