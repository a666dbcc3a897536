#include "plugins/PlotixPlugIn/reading/statistics/StatisticsChoices.h"

#include "plugins/PlotixPlugIn/reading/statistics/FigureColumns.h"

#include <cmath>

namespace plotix {

namespace {

// Stored: never change.
const QString kOver = QStringLiteral("over");
const QString kVisible = QStringLiteral("visible");
const QString kMarked = QStringLiteral("marked");
const QString kColumnsChosen = QStringLiteral("columns");
const QString kOffered = QStringLiteral("offered");
const QString kLimits = QStringLiteral("limits");
const QString kHigh = QStringLiteral("high");
const QString kLow = QStringLiteral("low");
const QString kHighUnit = QStringLiteral("highUnit");
const QString kLowUnit = QStringLiteral("lowUnit");

void put(QVariantMap& limits, const std::map<QString, ChosenLimit>& chosen, const QString& name, const QString& unit)
{
    for (const auto& [key, limit] : chosen) {
        QVariantMap line = limits.value(key).toMap();
        line.insert(name, limit.value);
        line.insert(unit, limit.unit);
        limits.insert(key, line);
    }
}

std::map<QString, ChosenLimit> limitsFrom(const QVariantMap& limits, const QString& name, const QString& unit)
{
    std::map<QString, ChosenLimit> chosen;
    for (auto line = limits.begin(); line != limits.end(); ++line) {
        const QVariantMap stored = line.value().toMap();
        bool isNumber = false;
        const double value = stored.value(name).toDouble(&isNumber);
        if (isNumber && std::isfinite(value))
            chosen[line.key()] = {value, stored.value(unit).toString()};
    }
    return chosen;
}

}  // namespace

QVariantMap mapFromChoices(const StatisticsChoices& choices)
{
    QVariantMap map;
    if (choices.over != StatisticsOver::Fetched)
        map.insert(kOver, choices.over == StatisticsOver::Visible ? kVisible : kMarked);
    if (!choices.columns.isEmpty())
        map.insert(kColumnsChosen, choices.columns);
    if (choices.isOffered)
        map.insert(kOffered, true);
    QVariantMap limits;
    put(limits, choices.highLimits, kHigh, kHighUnit);
    put(limits, choices.lowLimits, kLow, kLowUnit);
    if (!limits.isEmpty())
        map.insert(kLimits, limits);
    return map;
}

StatisticsChoices choicesFromMap(const QVariantMap& map)
{
    StatisticsChoices choices;
    const QString over = map.value(kOver).toString();
    choices.over = over == kVisible  ? StatisticsOver::Visible
                   : over == kMarked ? StatisticsOver::Marked
                                     : StatisticsOver::Fetched;
    const QStringList named = map.value(kColumnsChosen).toStringList();
    for (const FigureColumn& column : figureColumns())
        if (named.contains(QLatin1String(column.identifier)))
            choices.columns << QString::fromLatin1(column.identifier);
    choices.isOffered = map.value(kOffered).toBool();
    const QVariantMap limits = map.value(kLimits).toMap();
    choices.highLimits = limitsFrom(limits, kHigh, kHighUnit);
    choices.lowLimits = limitsFrom(limits, kLow, kLowUnit);
    return choices;
}

}  // namespace plotix
