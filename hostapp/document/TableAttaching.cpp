#include "hostapp/document/TableAttaching.h"

#include "base/ReportableError.h"
#include "hostapp/core/Units.h"
#include "hostapp/document/SiteTransaction.h"

#include <algorithm>

namespace plotix {

namespace {

using Column = TableServer::Column;

QStringList namesOf(const std::vector<Column>& columns, std::initializer_list<Column::Kind> kinds)
{
    QStringList names;
    for (const Column& each : columns)
        if (std::find(kinds.begin(), kinds.end(), each.kind) != kinds.end())
            names << each.name;
    return names;
}

QString listed(const QStringList& names)
{
    return names.isEmpty() ? QStringLiteral("none") : names.join(QStringLiteral(", "));
}

void requireColumn(const std::vector<Column>& columns, const QString& name, const QString& table,
                   std::initializer_list<Column::Kind> kinds)
{
    const QStringList suitable = namesOf(columns, kinds);
    if (!suitable.contains(name))
        throw ReportableError(QStringLiteral("“%1” is no column of “%2” that can be read so; there are %3.")
                                  .arg(name, table, listed(suitable)));
}

QString onlyTime(const std::vector<Column>& columns, const QString& table)
{
    const QStringList times = namesOf(columns, {Column::Kind::Time});
    if (times.size() == 1)
        return times.front();
    throw ReportableError(QStringLiteral("Say which column of “%1” is the time (--time): %2.")
                              .arg(table, times.isEmpty() ? QStringLiteral("none has dates; numbers are %1")
                                                                .arg(listed(namesOf(columns, {Column::Kind::Number})))
                                                          : QStringLiteral("%1 have dates").arg(listed(times))));
}

QString onlyTable(TableServer& server)
{
    const QStringList tables = server.tables();
    if (tables.size() == 1)
        return tables.front();
    throw ReportableError(
        QStringLiteral("Say which table of %1 (--table): there are %2.").arg(server.title(), listed(tables)));
}

}  // namespace

TableChoice completed(TableServer& server, TableChoice choice)
{
    using Kind = Column::Kind;
    if (choice.table.isEmpty())
        choice.table = onlyTable(server);
    const std::vector<Column> columns = server.columns(choice.table);
    if (columns.empty())
        throw ReportableError(QStringLiteral("There is no table “%1” in %2; there are %3.")
                                  .arg(choice.table, server.title(), listed(server.tables())));
    if (choice.timeColumn.isEmpty())
        choice.timeColumn = onlyTime(columns, choice.table);
    requireColumn(columns, choice.timeColumn, choice.table, {Kind::Time, Kind::Number});
    QStringList numbers = namesOf(columns, {Kind::Number});
    numbers.removeAll(choice.timeColumn);
    if (!choice.nameColumn.isEmpty()) {
        requireColumn(columns, choice.nameColumn, choice.table, {Kind::Text, Kind::Number});
        numbers.removeAll(choice.nameColumn);
        if (choice.valueColumn.isEmpty() && numbers.size() == 1)
            choice.valueColumn = numbers.front();
        if (choice.valueColumn.isEmpty())
            throw ReportableError(QStringLiteral("Say which column of “%1” has the values (--value): %2.")
                                      .arg(choice.table, listed(numbers)));
        requireColumn(columns, choice.valueColumn, choice.table, {Kind::Number});
        if (choice.values.isEmpty()) {
            choice.values = server.names(choice.table, choice.nameColumn, kMostNames + 1);
            if (choice.values.size() > kMostNames)
                throw ReportableError(QStringLiteral("“%1” has more than %2 names: say which are wanted (--values).")
                                          .arg(choice.table)
                                          .arg(kMostNames));
        }
    } else if (!choice.valueColumn.isEmpty()) {
        throw ReportableError(QStringLiteral("Say also which column of “%1” has the names (--name): %2.")
                                  .arg(choice.table, listed(namesOf(columns, {Kind::Text}))));
    } else if (choice.values.isEmpty()) {
        choice.values = numbers;
    }
    if (choice.nameColumn.isEmpty())
        for (const QString& value : choice.values)
            requireColumn(columns, value, choice.table, {Kind::Number});
    if (choice.values.isEmpty())
        throw ReportableError(QStringLiteral("“%1” has no values that are numbers.").arg(choice.table));
    choice.values.removeDuplicates();
    for (const auto& [value, unit] : choice.units)
        if (!choice.values.contains(value))
            throw ReportableError(
                QStringLiteral("“%1”, which has a unit, is none of the values: %2.").arg(value, listed(choice.values)));
    if (choice.agent.trimmed().isEmpty())
        choice.agent = choice.table;
    choice.address = server.address();
    return choice;
}

void attachTable(const QString& site, const TableChoice& choice)
{
    SiteTransaction transaction(site);
    const RowId agent = transaction.addAgent(choice.agent.trimmed());
    AttachedTable table{
        choice.address, choice.table, choice.timeColumn, choice.timeUnit, choice.nameColumn, choice.valueColumn, {}};
    for (const QString& value : choice.values) {
        const auto unit = choice.units.find(value);
        const QString said = unit == choice.units.end() ? QString() : unit->second;
        const SiteTransaction::Property property =
            transaction.findOrCreateProperty(agent, value, Units::shared()->normalise(said).value_or(said));
        // Names that differ in spelling alone would be one property.
        if (!table.columns.emplace(property.id, value).second)
            throw ReportableError(QStringLiteral("“%1” and “%2” are the same name: leave one of them out.")
                                      .arg(table.columns[property.id], value));
    }
    transaction.attach(agent, table);
    transaction.commit();
}

}  // namespace plotix
