#include "hostapp/exchange/ImportPlan.h"

#include "base/ReportableError.h"
#include "hostapp/core/Units.h"
#include "hostapp/exchange/ImportText.h"
#include "plugins/PlotixPlugIn/host/KTVConverter.h"

#include <algorithm>
#include <map>
#include <set>

namespace plotix {

namespace {

std::size_t requiredColumn(const QString& text, const QString& option, const TableShape& shape)
{
    if (const std::optional<std::size_t> column = columnNamed(text, shape))
        return *column;
    throw ReportableError(ImportText::tr("%1 names the column “%2”, which is not there (columns: %3)")
                              .arg(option, text, shape.headers.join(QStringLiteral(", "))));
}

using ByField = std::map<std::size_t, QString>;

ByField byField(const ImportOptions::ByColumn& texts, const QString& option, const TableShape& shape)
{
    ByField fields;
    for (const auto& [column, text] : texts)
        fields[requiredColumn(column, option, shape)] = text;
    return fields;
}

QString knownUnit(const QString& text, const QString& column)
{
    if (text.trimmed().isEmpty())
        return {};
    const std::optional<QString> unit = Units::shared()->normalise(text.trimmed());
    if (!unit)
        throw ReportableError(
            ImportText::tr("“%1”, given with --unit for the column “%2”, is no unit that is known; write "
                           "it like °C, hPa, m/s, % or mph")
                .arg(text, column));
    return *unit;
}

std::vector<std::size_t> wantedFields(const ImportPlan& plan, const ImportOptions& options)
{
    std::vector<std::size_t> fields;
    for (const QString& column : options.only)
        fields.push_back(requiredColumn(column, QStringLiteral("--only"), plan.shape));
    if (options.only.isEmpty())
        for (std::size_t field = 0; field < plan.shape.fields(); ++field)
            if (plan.shape.rowNumbers != field)
                fields.push_back(field);
    std::erase(fields, plan.time.field);
    std::set<std::size_t> seen;
    std::erase_if(fields, [&](std::size_t field) { return !seen.insert(field).second; });
    return fields;
}

/// Two columns must not meet in one property: the later one gets a number.
void makeNamesUnique(std::vector<ImportPlan::Column>& columns)
{
    std::set<QString> keys;
    for (ImportPlan::Column& column : columns) {
        if (camelCaseString(column.name).isEmpty())
            column.name = QStringLiteral("Column %1").arg(column.field + 1);
        const QString name = column.name;
        for (int number = 2; !keys.insert(camelCaseString(column.name)).second; ++number)
            column.name = QStringLiteral("%1 %2").arg(name).arg(number);
    }
}

void planColumns(ImportPlan& plan, const ImportOptions& options)
{
    const ByField units = byField(options.units, QStringLiteral("--unit"), plan.shape);
    const ByField names = byField(options.names, QStringLiteral("--name"), plan.shape);
    for (const std::size_t field : wantedFields(plan, options)) {
        const QString header = plan.shape.headers[static_cast<qsizetype>(field)];
        const HeaderText text = splitHeader(header);
        const auto unit = units.find(field);
        const auto name = names.find(field);
        plan.columns.push_back({field, header, name == names.end() ? text.name : name->second.trimmed(),
                                unit == units.end() ? text.unit : knownUnit(unit->second, header)});
    }
    makeNamesUnique(plan.columns);
}

}  // namespace

ImportPlan planImport(const TextSample& sample, const ImportOptions& options)
{
    ImportPlan plan;
    plan.format = sample.format;
    plan.shape = shapeOf(sample);
    plan.headerLine = plan.shape.hasHeader ? sample.rows.front().line : 0;
    std::optional<std::size_t> time;
    if (!options.timeColumn.isEmpty())
        time = requiredColumn(options.timeColumn, ImportText::tr("--time"), plan.shape);
    plan.time = timeColumnOf(sample, plan.shape, time);
    if (plan.time.needsDateOrder && options.dateOrder != DateOrder::Detect) {
        plan.time.needsDateOrder = false;
        plan.time.layout = options.dateOrder == DateOrder::DayFirst ? TimeLayout::DayFirst : TimeLayout::MonthFirst;
    }
    for (const auto& [column, value] : options.where) {
        const std::size_t field = requiredColumn(column, ImportText::tr("--where"), plan.shape);
        plan.conditions.push_back({field, plan.shape.headers[static_cast<qsizetype>(field)], value, value.toStdString(),
                                   value.toLatin1().toStdString()});
    }
    planColumns(plan, options);
    return plan;
}

}  // namespace plotix
