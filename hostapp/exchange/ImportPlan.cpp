#include "hostapp/exchange/ImportPlan.h"

#include "hostapp/core/Units.h"
#include "hostapp/exchange/ColumnHeader.h"
#include "plugins/PlotixPlugIn/host/KTVConverter.h"

#include <algorithm>
#include <array>
#include <functional>
#include <map>
#include <set>

namespace plotix {

namespace {

using What = ImportFinding::What;
using Columns = std::vector<SourceColumn>;

std::size_t requiredColumn(const QString& text, ImportOption option, const Columns& columns)
{
    if (const std::optional<std::size_t> column = columnNamed(text, columns))
        return *column;
    throw ImportFailure({.what = What::UnknownColumn, .text = text, .columns = headersOf(columns), .option = option});
}

using ByField = std::map<std::size_t, QString>;

ByField byField(const ImportOptions::ByColumn& texts, ImportOption option, const Columns& columns)
{
    ByField fields;
    for (const auto& [column, text] : texts)
        fields[requiredColumn(column, option, columns)] = text;
    return fields;
}

QString knownUnit(const QString& text, const QString& column)
{
    if (text.trimmed().isEmpty())
        return {};
    const std::optional<QString> unit = Units::shared()->normalise(text.trimmed());
    if (!unit)
        throw ImportFailure({.what = What::UnknownUnit, .column = column, .text = text});
    return *unit;
}

std::set<std::size_t> fieldsOf(const QStringList& names, const Columns& columns)
{
    std::set<std::size_t> fields;
    for (const QString& name : names)
        fields.insert(requiredColumn(name, ImportOption::Only, columns));
    return fields;
}

std::set<std::size_t> qualitiesNamed(const Columns& columns, const ImportOptions& options)
{
    std::set<std::size_t> fields;
    for (const auto& [quality, value] : options.quality)
        fields.insert(requiredColumn(quality, ImportOption::Quality, columns));
    return options.ignoreQuality ? std::set<std::size_t>() : fields;
}

bool standsForAll(const QString& value)
{
    return value.trimmed().isEmpty() || value.trimmed() == QLatin1String("*");
}

/// The columns of quality that judge a column: those that the user named for it, else those recognised.
std::vector<std::size_t> qualitiesOf(std::size_t field, const Columns& columns, const ImportOptions& options)
{
    const SourceColumn& column = columns[field];
    std::vector<std::size_t> named;
    for (const auto& [quality, value] : options.quality) {
        const std::size_t own = requiredColumn(quality, ImportOption::Quality, columns);
        const std::optional<std::size_t> judged =
            standsForAll(value) ? std::nullopt : std::optional(requiredColumn(value, ImportOption::Quality, columns));
        if (own != field && (!judged || judged == field || judged == column.valuesIn))
            named.push_back(own);
    }
    if (options.ignoreQuality)
        return {};
    return named.empty() ? column.qualities : named;
}

/// Adds the columns of quality to the plan, each once, and says which of them judge its column.
void planQualities(ImportPlan& plan, ImportPlan::Column& planned, const Columns& columns, const ImportOptions& options)
{
    const std::set<std::size_t> named = qualitiesNamed(columns, options);
    for (const std::size_t field : qualitiesOf(planned.field, columns, options)) {
        const auto isIt = [field](const ImportPlan::Quality& quality) { return quality.field == field; };
        const auto found = std::find_if(plan.qualities.begin(), plan.qualities.end(), isIt);
        planned.qualities.push_back(static_cast<std::size_t>(found - plan.qualities.begin()));
        if (found == plan.qualities.end())
            plan.qualities.push_back({field, columns[field].header, named.contains(field)});
    }
}

std::vector<std::size_t> wantedFields(const Columns& columns, std::size_t timeField, const ImportOptions& options)
{
    std::vector<std::size_t> fields;
    for (const QString& column : options.only)
        fields.push_back(requiredColumn(column, ImportOption::Only, columns));
    const std::set<std::size_t> also = fieldsOf(options.also, columns);
    const std::set<std::size_t> leftOut = fieldsOf(options.leaveOut, columns);
    const std::set<std::size_t> qualities = qualitiesNamed(columns, options);
    if (options.only.isEmpty())
        for (std::size_t field = 0; field < columns.size(); ++field)
            if (((columns[field].isMeasurement && !qualities.contains(field)) || also.contains(field)) &&
                !columns[field].isTime)
                fields.push_back(field);
    std::erase(fields, timeField);
    std::erase_if(fields, [&](std::size_t field) { return leftOut.contains(field); });
    std::set<std::size_t> seen;
    std::erase_if(fields, [&](std::size_t field) { return !seen.insert(field).second; });
    return fields;
}

/// Two columns must not become one property: the later one gets a number. The next number of each name is remembered,
/// so that thousands of equal names take no longer than others.
void makeNamesUnique(std::vector<ImportPlan::Column>& columns)
{
    std::set<QString> keys;
    std::map<QString, int> numbers;
    for (ImportPlan::Column& column : columns) {
        if (camelCaseString(column.name).isEmpty())
            column.name = QStringLiteral("Column %1").arg(column.field + 1);
        const QString name = column.name;
        for (int& number = numbers.try_emplace(name, 2).first->second;
             !keys.insert(camelCaseString(column.name)).second; ++number)
            column.name = QStringLiteral("%1 %2").arg(name).arg(number);
    }
}

void planColumns(ImportPlan& plan, const Columns& columns, const ImportOptions& options)
{
    const ByField units = byField(options.units, ImportOption::Unit, columns);
    const ByField names = byField(options.names, ImportOption::Name, columns);
    const std::set<std::size_t> also = fieldsOf(options.also, columns);
    for (const std::size_t field : wantedFields(columns, plan.timeField, options)) {
        const SourceColumn& column = columns[field];
        const auto unit = units.find(field);
        const auto name = names.find(field);
        plan.columns.push_back({field, column.header, name == names.end() ? column.name : name->second.trimmed(),
                                unit == units.end() ? column.unit : knownUnit(unit->second, column.header),
                                !options.only.isEmpty() || also.contains(field)});
        planQualities(plan, plan.columns.back(), columns, options);
    }
    makeNamesUnique(plan.columns);
}

}  // namespace

QStringList ImportPlan::headersOfQuality(const Column& column) const
{
    QStringList headers;
    for (const std::size_t quality : column.qualities)
        headers << qualities[quality].header;
    return headers;
}

QStringList headersOf(const Columns& columns)
{
    QStringList headers;
    for (const SourceColumn& column : columns)
        headers << column.header;
    return headers;
}

std::optional<std::size_t> columnNamed(const QString& text, const Columns& columns)
{
    using Reading = std::function<QString(const SourceColumn&)>;
    const std::array<Reading, 5> readings = {
        [](const SourceColumn& column) { return column.header; },
        [](const SourceColumn& column) { return column.name; },
        [](const SourceColumn& column) { return column.header.toCaseFolded(); },
        [](const SourceColumn& column) { return column.name.toCaseFolded(); },
        [](const SourceColumn& column) { return camelCaseString(column.name); },
    };
    const ColumnHeader split = splitHeader(text.simplified());
    const SourceColumn asked{text.simplified(), split.name, split.unit};
    for (const Reading& reading : readings)
        for (std::size_t column = 0; column < columns.size(); ++column)
            if (!text.isEmpty() && reading(columns[column]) == reading(asked))
                return column;
    for (std::size_t column = 0; column < columns.size(); ++column)
        if (text == QStringLiteral("Column %1").arg(column + 1))
            return column;
    return {};
}

std::vector<std::size_t> namedTimeColumns(const Columns& columns, const ImportOptions& options)
{
    if (options.timeColumn.isEmpty())
        return {};
    if (const std::optional<std::size_t> column = columnNamed(options.timeColumn, columns))
        return {*column};
    std::vector<std::size_t> parts;
    const QStringList names = options.timeColumn.split(QLatin1Char('+'));
    for (const QString& name : names)
        if (const std::optional<std::size_t> column = columnNamed(name.trimmed(), columns))
            parts.push_back(*column);
    const bool isJoined = names.size() > 1 && parts.size() == static_cast<std::size_t>(names.size());
    return isJoined ? parts : std::vector{requiredColumn(options.timeColumn, ImportOption::TimeColumn, columns)};
}

std::vector<ImportPlan::Condition> conditionsOf(const Columns& columns, const ImportOptions& options)
{
    std::vector<ImportPlan::Condition> conditions;
    for (const auto& [column, value] : options.where)
        conditions.push_back({requiredColumn(column, ImportOption::Where, columns), value.toStdString(),
                              value.toLatin1().toStdString()});
    return conditions;
}

ImportPlan planImport(const Columns& columns, std::size_t timeField, const ImportOptions& options,
                      const QString& statedZone)
{
    ImportPlan plan;
    plan.timeField = timeField;
    plan.timeHeader = columns[timeField].header;
    plan.timeZone = options.timeZone.trimmed().isEmpty() ? statedZone : options.timeZone;
    plan.dateOrder = options.dateOrder;
    plan.decimal = options.decimal;
    plan.skipsBadRows = options.skipBadRows;
    plan.keepsAllNumbers = options.keepAllNumbers;
    plan.rowsAtOneTime = options.rowsAtOneTime;
    plan.badWords = options.badWords;
    plan.conditions = conditionsOf(columns, options);
    planColumns(plan, columns, options);
    return plan;
}

ImportPlan planImport(RowSource& source, const ImportOptions& options)
{
    const std::size_t time = source.chooseTimeColumn(namedTimeColumns(source.columns(), options));
    return planImport(source.columns(), time, options, source.statedTimeZone());
}

}  // namespace plotix
