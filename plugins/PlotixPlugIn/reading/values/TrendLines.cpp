#include "plugins/PlotixPlugIn/reading/values/TrendLines.h"

#include "plugins/PlotixPlugIn/reading/trend/ReadingPart.h"

#include <cmath>

namespace plotix {

namespace {

/// As the part that draws what is missing has chosen it.
double latenessTold(const ReadTrend& trend)
{
    const ReadingPart* part = trend.part(QStringLiteral("missing"));
    return part ? part->chosen().value(QStringLiteral("lateBy")).toDouble() : 0;
}

}  // namespace

const std::vector<TrendLine>& TrendLines::shown()
{
    const CPTXYGraphPtr graph = m_trend.graph();
    const double lateBy = graph ? latenessTold(m_trend) : m_lateBy;  // without a graph the parts may still be made
    if (!m_isKnown || !graph || graph->allPlots() != m_plots || lateBy != m_lateBy) {
        m_lateBy = lateBy;
        find();
    }
    const KTVAnnotations* annotations = m_trend.annotations();
    for (TrendLine& each : m_lines) {  // what options, and the host, change at any time
        each.records.longestJoin = each.plot->gapThreshold();
        const QString& owner = each.line.isCompared() ? each.line.comparedKey : each.line.key;
        each.limits = annotations ? annotations->limitsOf(owner) : std::vector<KTVLimit>();
    }
    return m_lines;
}

void TrendLines::find()
{
    m_lines.clear();
    m_plots.clear();
    const CPTXYGraphPtr graph = m_trend.graph();
    if (!graph)
        return;
    m_isKnown = true;
    m_plots = graph->allPlots();
    for (ReadLine& line : m_trend.lines()) {
        const CPTScatterPlotPtr plot = graph->plotWithIdentifier(line.key);
        if (!line.isShown || !plot || !plot->series())
            continue;
        const KTVRecordDictionaryPtr records = m_trend.recordsOf(line.key);
        LineRecords found =
            lineRecords(plot->valueSeries(), records ? records->columnForKey(line.key) : nullptr, plot->gapThreshold());
        AmendedRecords amendments;
        if (!line.isCompared() && m_amended == Amended::Told)
            amendments = AmendedRecords(lateByMoreThan(m_lateBy, m_trend.amendmentsOf(line.key)));
        m_lines.push_back({std::move(line), plot, std::move(found), {}, std::move(amendments)});
    }
}

double timeOfRecordNear(const std::vector<TrendLine>& lines, double time, double reach)
{
    double nearest = time;
    double distance = reach;
    for (const TrendLine& each : lines) {
        const OptionalLineRecord record = nearestRecord(each.records, time);
        if (!record || std::abs(record->time - time) > distance)
            continue;
        nearest = record->time;
        distance = std::abs(record->time - time);
    }
    return nearest;
}

}  // namespace plotix
