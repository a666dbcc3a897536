#include "records/tables/TableStatements.h"

#include "base/ReportableError.h"

#include <algorithm>

namespace plotix {

namespace {

using Column = TableServer::Column;

// Names that no column of anybody's has: in some dialects a name given in a statement hides a column.
constexpr const char* kTime = "plotix_time";
constexpr const char* kFirst = "plotix_first";
constexpr double kMostSeconds = 1e300;  // what is beyond it, or NaN, is no time

Column columnNamed(const QString& name, const std::vector<Column>& columns, const AttachedTable& table,
                   std::initializer_list<Column::Kind> kinds)
{
    const auto found =
        std::find_if(columns.begin(), columns.end(), [&](const Column& each) { return each.name == name; });
    if (found == columns.end())
        throw ReportableError(
            QStringLiteral("The table “%1” has no column “%2” any more: attach it again.").arg(table.table, name));
    if (std::find(kinds.begin(), kinds.end(), found->kind) == kinds.end())
        throw ReportableError(QStringLiteral("The column “%1” of “%2” is of the type %3, which cannot be read as %4: "
                                             "choose another one.")
                                  .arg(name, table.table, found->type,
                                       *kinds.begin() == Column::Kind::Time     ? QStringLiteral("times")
                                       : *kinds.begin() == Column::Kind::Number ? QStringLiteral("numbers")
                                                                                : QStringLiteral("names")));
    return *found;
}

std::string aggregate(const char* function, const std::string& of)
{
    std::string text = function;
    text += '(';
    text += of;
    return text += ')';
}

std::string withAnd(const std::vector<std::string>& conditions)
{
    std::string all;
    for (const std::string& each : conditions)
        all = both(all, each);
    return all;
}

}  // namespace

TableStatements::TableStatements(std::shared_ptr<const TableDatabase> database, AttachedTable table,
                                 const std::vector<Column>& columns, bool isUnique)
    : m_database(std::move(database)),
      m_table(std::move(table)),
      m_isUnique(isUnique && !m_table.isLong()),
      m_name(m_database->tableName(m_table.table))
{
    using Kind = Column::Kind;
    if (columns.empty())
        throw ReportableError(
            QStringLiteral("There is no table “%1” in %2 any more.").arg(m_table.table, m_database->title()));
    m_time = columnNamed(m_table.timeColumn, columns, m_table, {Kind::Time, Kind::Number});
    m_seconds = m_database->seconds(m_database->name(m_time.name), m_time.type, m_table.timeUnit);
    if (m_table.isLong()) {
        m_texts = columnNamed(m_table.nameColumn, columns, m_table, {Kind::Text, Kind::Number});
        m_value = columnNamed(m_table.valueColumn, columns, m_table, {Kind::Number});
        return;
    }
    for (const auto& [property, column] : m_table.columns)
        m_columns[property] = columnNamed(column, columns, m_table, {Kind::Number});
}

std::string TableStatements::valueName(std::size_t place)
{
    std::string name = "plotix_value_";
    return name += std::to_string(place);
}

std::string TableStatements::nameIn(Properties properties) const
{
    std::string list;
    const auto add = [&](const QString& name) {
        list += list.empty() ? "" : ", ";
        list += m_database->text(name);
    };
    if (properties.empty())
        for (const auto& [property, name] : m_table.columns)
            add(name);
    for (const RowId property : properties)
        if (const auto found = m_table.columns.find(property); found != m_table.columns.end())
            add(found->second);
    if (list.empty())
        return "1 = 0";
    return m_database->nameText(m_texts) + " IN (" + list + ')';
}

std::string TableStatements::condition(Properties properties, const Range& range) const
{
    const double from = std::clamp(range.from.value_or(-kMostSeconds), -kMostSeconds, kMostSeconds);
    const double to = std::clamp(range.to.value_or(kMostSeconds), -kMostSeconds, kMostSeconds);
    return withAnd({m_database->about(m_time, m_table.timeUnit, range.from, range.to),
                    m_seconds + " >= " + m_database->literal(from), m_seconds + " <= " + m_database->literal(to),
                    m_table.isLong() ? nameIn(properties) : std::string()});
}

std::string TableStatements::valueOf(RowId property) const
{
    if (!m_table.isLong()) {
        const auto found = m_columns.find(property);
        return found == m_columns.end() ? m_database->nothing() : m_database->orNull(m_database->number(found->second));
    }
    const auto found = m_table.columns.find(property);
    if (found == m_table.columns.end())
        return m_database->nothing();
    std::string value = "CASE WHEN ";
    value += m_database->nameText(m_texts) + " = " + m_database->text(found->second);
    value += " THEN " + m_database->orNull(m_database->number(m_value));
    return value += " ELSE " + m_database->nothing() + " END";
}

std::string TableStatements::rows(Properties properties, const Range& range) const
{
    std::string statement = "SELECT " + m_database->orNaN(m_seconds) + " AS ";
    statement += kTime;
    if (m_table.isLong()) {
        // Where it is only one, the condition has told already.
        std::string place = "0";
        if (properties.size() > 1) {
            place = "CASE";
            for (std::size_t i = 0; i < properties.size(); ++i)
                if (const auto found = m_table.columns.find(properties[i]); found != m_table.columns.end()) {
                    place += " WHEN " + m_database->nameText(m_texts) + " = " + m_database->text(found->second);
                    place += " THEN " + std::to_string(i);
                }
            place += " ELSE -1 END";
        }
        statement +=
            ", " + m_database->orNaN(m_database->real(place)) + " AS plotix_place, " + m_database->number(m_value);
        statement += " AS plotix_value";
    } else {
        for (std::size_t i = 0; i < properties.size(); ++i) {
            const auto found = m_columns.find(properties[i]);
            statement += ", ";
            statement +=
                found == m_columns.end() ? m_database->orNaN(m_database->nothing()) : m_database->number(found->second);
            statement += " AS " + valueName(i);
        }
    }
    statement += " FROM " + m_name + " WHERE " + condition(properties, range);
    return statement += " ORDER BY " + m_database->name(m_time.name);
}

/// One row a record. Every statement but the quickest is about this.
std::string TableStatements::records(Properties properties, const Range& range) const
{
    std::string statement = "SELECT " + m_seconds + " AS ";
    statement += kTime;
    for (std::size_t i = 0; i < properties.size(); ++i) {
        const std::string value = valueOf(properties[i]);
        statement += ", " + (m_isUnique ? value : aggregate("max", value)) + " AS " + valueName(i);
    }
    statement += " FROM " + m_name + " WHERE " + condition(properties, range);
    if (m_isUnique)
        return statement;
    statement += " GROUP BY ";
    return statement += kTime;
}

std::string TableStatements::anyRow() const
{
    std::string statement = "SELECT " + m_database->real("count(*)") + " FROM (SELECT 1 FROM " + m_name;
    if (m_table.isLong())
        statement += " WHERE " + nameIn({});
    return statement += " LIMIT 1) plotix_rows";
}

std::string TableStatements::quickExtent() const
{
    const std::string column = m_database->name(m_time.name);
    std::string statement = "SELECT ";
    statement += m_database->orNaN(m_database->seconds("min(" + column + ')', m_time.type, m_table.timeUnit)) + ", ";
    statement += m_database->orNaN(m_database->seconds("max(" + column + ')', m_time.type, m_table.timeUnit));
    statement += " FROM " + m_name;
    if (m_table.isLong())
        statement += " WHERE " + nameIn({});
    return statement;
}

std::string TableStatements::extent(Properties properties, const Range& range) const
{
    const std::string time = kTime;
    std::string statement = "SELECT " + m_database->real("count(*)") + ", ";
    statement += m_database->orNaN("min(" + time + ')') + ", " + m_database->orNaN("max(" + time + ')');
    return statement += " FROM (" + records(m_table.isLong() ? properties : Properties(), range) + ") plotix_records";
}

std::string TableStatements::countUpTo(std::size_t most, const Range& range) const
{
    std::string statement = "SELECT " + m_database->real("count(*)") + " FROM (SELECT 1 FROM " + m_name;
    statement += " WHERE " + condition({}, range) + " LIMIT " + std::to_string(most);
    return statement += ") plotix_rows";
}

std::string TableStatements::stretches(Properties properties, const Range& range, const Stretches& of,
                                       First first) const
{
    const std::string time = kTime;
    std::string statement = "SELECT " + m_database->orNaN("min(" + time + ')') + " AS ";
    statement += kFirst;
    statement += ", " + m_database->orNaN("max(" + time + ')') + " AS plotix_last, ";
    statement += m_database->real("count(*)") + " AS plotix_count";
    for (std::size_t i = 0; i < properties.size(); ++i) {
        const std::string value = valueName(i);
        statement += ", " + m_database->real("count(" + value + ')') + " AS " + value + "_count";
        for (const char* figure : {"min", "max", "sum"})
            statement += ", " + m_database->orNaN(aggregate(figure, value)) + " AS " + value + '_' + figure;
        if (first == First::Wanted)
            statement += ", " + m_database->atFirst(value, time) + " AS " + value + "_first";
    }
    statement += " FROM (" + records(properties, range) + ") plotix_records GROUP BY floor((" + time + " - (";
    statement += m_database->literal(of.start) + ")) / " + m_database->literal(of.seconds) + ") ORDER BY ";
    return statement += kFirst;
}

std::string TableStatements::statistics(RowId property, const Range& range) const
{
    const std::string value = valueName(0);
    std::string statement = "SELECT " + m_database->real("count(" + value + ')');
    for (const char* figure : {"min", "max", "sum"})
        statement += ", " + m_database->orNaN(aggregate(figure, value));
    return statement += " FROM (" + records({&property, 1}, range) + ") plotix_records";
}

}  // namespace plotix
