#include "plugins/PlotixPlugIn/reading/statistics/FigureColumns.h"

#include "plugins/PlotixPlugIn/reading/trend/ReadingPart.h"

#include <algorithm>

namespace plotix {

namespace {

using enum Figure;
using enum TableFigures::Kind;

constexpr FigureColumn kColumns[] = {
    {MinimumTime, "minimumTime", QT_TRANSLATE_NOOP("Plotix", "Time of Mi&nimum"), Time, 150},
    {MaximumTime, "maximumTime", QT_TRANSLATE_NOOP("Plotix", "Time of Ma&ximum"), Time, 150},
    {TimeWeightedMean, "timeWeightedMean", QT_TRANSLATE_NOOP("Plotix", "Time-&Weighted"), Number, 110},
    {Percentile, "median", QT_TRANSLATE_NOOP("Plotix", "&Median"), Number, 90, 0.5},
    {Deviation, "deviation", QT_TRANSLATE_NOOP("Plotix", "Std. &Deviation"), Number, 110},
    {Range, "range", QT_TRANSLATE_NOOP("Plotix", "&Range"), Number, 90},
    {First, "first", QT_TRANSLATE_NOOP("Plotix", "&First"), Number, 90},
    {Last, "last", QT_TRANSLATE_NOOP("Plotix", "&Last"), Number, 90},
    {Sum, "sum", QT_TRANSLATE_NOOP("Plotix", "&Sum"), Number, 100},
    {Integral, "integral", QT_TRANSLATE_NOOP("Plotix", "&Integral"), Number, 120},
    {Percentile, "percentile5", QT_TRANSLATE_NOOP("Plotix", "&5th Percentile"), Number, 110, 0.05},
    {Percentile, "percentile25", QT_TRANSLATE_NOOP("Plotix", "&25th Percentile"), Number, 110, 0.25},
    {Percentile, "percentile75", QT_TRANSLATE_NOOP("Plotix", "&75th Percentile"), Number, 110, 0.75},
    {Percentile, "percentile95", QT_TRANSLATE_NOOP("Plotix", "&95th Percentile"), Number, 110, 0.95},
    {Coverage, "coverage", QT_TRANSLATE_NOOP("Plotix", "&Coverage"), Share, 120},
    {Gaps, "gaps", QT_TRANSLATE_NOOP("Plotix", "&Gaps"), Number, 70},
    {AboveHigh, "aboveLimit", QT_TRANSLATE_NOOP("Plotix", "Time &Above Limit"), Number, 130},
    {BelowLow, "belowLimit", QT_TRANSLATE_NOOP("Plotix", "Time &Below Limit"), Number, 130},
    {Crossings, "crossings", QT_TRANSLATE_NOOP("Plotix", "Cr&ossings"), Number, 90},
    {Now, "now", QT_TRANSLATE_NOOP("Plotix", "Latest &Value"), Number, 100},
    {Age, "age", QT_TRANSLATE_NOOP("Plotix", "Ag&e"), Number, 90},
};

}  // namespace

std::span<const FigureColumn> figureColumns()
{
    return kColumns;
}

QString titleOf(const FigureColumn& column)
{
    return localizedText(column.item).remove(u'&');
}

const FigureColumn* figureColumn(const QString& identifier)
{
    const auto found = std::ranges::find_if(
        kColumns, [&](const FigureColumn& column) { return identifier == QLatin1String(column.identifier); });
    return found == std::end(kColumns) ? nullptr : &*found;
}

}  // namespace plotix
