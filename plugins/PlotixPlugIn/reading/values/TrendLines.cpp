#include "plugins/PlotixPlugIn/reading/values/TrendLines.h"

namespace plotix {

const std::vector<TrendLine>& TrendLines::shown()
{
    const CPTXYGraphPtr graph = m_trend.graph();
    if (!m_isKnown || !graph || graph->allPlots() != m_plots)
        find();
    for (TrendLine& each : m_lines)  // the option that breaks lines changes it at any time
        each.records.longestJoin = each.plot->gapThreshold();
    return m_lines;
}

void TrendLines::find()
{
    m_lines.clear();
    m_plots.clear();
    const CPTXYGraphPtr graph = m_trend.graph();
    const KTVRecordDictionaryPtr records = m_trend.records();
    if (!graph)
        return;
    m_isKnown = true;
    m_plots = graph->allPlots();
    for (ReadLine& line : m_trend.lines()) {
        const CPTScatterPlotPtr plot = graph->plotWithIdentifier(line.key);
        if (!line.isShown || !plot || !plot->series())
            continue;
        LineRecords found =
            lineRecords(plot->series(), records ? records->columnForKey(line.key) : nullptr, plot->gapThreshold());
        m_lines.push_back({std::move(line), plot, std::move(found)});
    }
}

}  // namespace plotix
