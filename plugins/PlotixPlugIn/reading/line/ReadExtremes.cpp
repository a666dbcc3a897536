#include "plugins/PlotixPlugIn/reading/line/ReadExtremes.h"

#include "plotkit/model/CPTSeriesIndex.h"
#include "plugins/PlotixPlugIn/reading/line/LineReadout.h"
#include "plugins/PlotixPlugIn/reading/trend/ReadingPart.h"

#include <algorithm>
#include <cmath>

namespace plotix {

namespace {

constexpr double kSamePlace = 2;  // points: a record so near is that of the time

using MinMax = CPTSeriesIndex::MinMax;

/// Empty where times run backwards.
MinMax valuesWithin(const CPTPointSeries& series, const CPTPlotRange& times)
{
    constexpr MinMax kNone{1, 0};
    if (!series.isXSorted())
        return kNone;
    const std::size_t first = series.elementFrom(times.minLimit());
    return series.index().minMax(first, std::max(first, series.elementAfter(times.maxLimit())));
}

/// Empty: it is neither.
QString extremeText(const CPTPointSeries& series, std::size_t element, const CPTPlotRange& times)
{
    const float value = series.y().valueAt(element);
    if (const auto extent = series.extent(); extent && extent->minY < extent->maxY) {
        if (value >= extent->maxY)
            return localizedText(QT_TRANSLATE_NOOP("Plotix", "maximum"));
        if (value <= extent->minY)
            return localizedText(QT_TRANSLATE_NOOP("Plotix", "minimum"));
    }
    const MinMax seen = valuesWithin(series, times);
    if (!(seen.min < seen.max))
        return {};
    if (value >= seen.max)
        return localizedText(QT_TRANSLATE_NOOP("Plotix", "maximum in view"));
    return value <= seen.min ? localizedText(QT_TRANSLATE_NOOP("Plotix", "minimum in view")) : QString();
}

}  // namespace

void noteExtremes(Readout& readout, const std::vector<TrendLine>& lines, double time,
                  const plotkit::GraphGeometry& geometry)
{
    const double reach = kSamePlace * secondsPerPoint(geometry);
    const CPTPlotRange& shown = geometry.graph.plotSpace().xRange();
    for (std::size_t index = 0; index < std::min(lines.size(), readout.rows.size()); ++index) {
        const LineRecords& records = lines[index].records;
        const OptionalLineRecord record = readingAt(records, time, reach).record;
        if (!record || std::abs(record->time - time) > reach)
            continue;
        readout.rows[index].extreme = extremeText(*records.series, record->element, shown);
    }
}

}  // namespace plotix
