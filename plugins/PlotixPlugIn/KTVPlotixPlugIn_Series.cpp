// Records to series and plots.
//
// Rules of this room:
//  1. `plotData` is the record dictionary exactly as received; series are made from it anew on every rebuild.
//  2. Plots follow the record dictionary's keys, in its order; a property without a key gets no plot, a key without a
//     point neither. A plot's colour is that of the key's first snapshot, unless property colours were chosen.
//  3. x is shared with the record dictionary and stays double; y is narrowed to a float. No object is made per sample.
//  4. The graph is built once, on the first rebuild; `binders` being absent says that it is not built yet.

#include "plugins/PlotixPlugIn/KTVPlotixPlugIn.h"

#include "plugins/PlotixPlugIn/host/KTVRecordColumn.h"
#include "plugins/PlotixPlugIn/reading/LineGaps.h"
#include "plugins/PlotixPlugIn/reading/TrendReader.h"
#include "plugins/PlotixPlugIn/reading/values/RecordSeries.h"

namespace {

constexpr std::size_t kFewestTimes = 2;

std::size_t timeCount(const KTVRecordDictionary& records)
{
    return records.time() ? records.time()->size() : 0;
}

/// The colour the first snapshot carries; absent, as an invalid colour, without one.
QColor firstColor(const KTVRecordColumn& column)
{
    if (column.size() == 0)
        return {};
    const KTVPropertyPtr first = column.snapshotAt(0);
    return first ? first->color() : QColor();
}

}  // namespace

void KTVPlotixPlugIn::updatePlotData(const KTVRecordDictionaryPtr& newRecords)
{
    if (!newRecords)
        return;
    const KTVRecordDictionaryPtr records = newRecords;
    m_plotData = records;
    m_colorNameDictionary.emplace();
    const SeriesDictionary series = buildSeries(*records);

    const Rebuild rebuild = m_binders ? Rebuild::Later : Rebuild::First;
    if (rebuild == Rebuild::First)
        buildGraph();
    else
        m_binders->clear();
    const std::vector<CPTScatterPlotPtr> oldPlots = m_graph->allPlots();
    for (const CPTScatterPlotPtr& plot : oldPlots)
        m_graph->removePlot(plot);
    if (addPlots(*records, series) > 0) {
        plotix::breakLinesAtGaps(*m_graph, m_reading);
        m_reader->tell(&plotix::ReadingPart::plotsReplaced);
        fitPlots(rebuild);
    }
    updateRangeNotice();

    showDataMessages(*records);
    if (m_completionTarget)
        sendImageToCompletionTarget();
}

// The records are gone through once, however many properties there are; only `acceptDates` is sent once for each.
KTVPlotixPlugIn::SeriesDictionary KTVPlotixPlugIn::buildSeries(const KTVRecordDictionary& records)
{
    SeriesDictionary series;
    const KTVPropertyList properties = m_properties.value_or(KTVPropertyList());
    if (timeCount(records) < kFewestTimes) {
        for (const KTVPropertyPtr& property : properties)
            series[property->propertyName()] = CPTPointSeries::origin();
        return series;
    }
    for (std::size_t sent = 0; sent < properties.size(); ++sent)
        m_dataCluster->acceptDates(this);
    if (properties.empty())
        return series;
    return plotix::seriesOfRecords(records);
}

std::size_t KTVPlotixPlugIn::addPlots(const KTVRecordDictionary& records, const SeriesDictionary& series)
{
    std::size_t added = 0;
    for (const auto& [key, column] : records.columns()) {
        const auto points = series.find(key);
        if (points == series.end() || points->second->count() == 0)
            continue;
        const auto binder = std::make_shared<CPTSeriesController>(points->second);
        (*m_binders)[key] = binder;
        addPlot(key, lineColor(key, *column), binder);
        ++added;
    }
    return added;
}

QColor KTVPlotixPlugIn::lineColor(const QString& key, const KTVRecordColumn& column) const
{
    if (m_reading.hasPropertyColors() && m_properties)
        for (const KTVPropertyPtr& property : *m_properties)
            if (property->propertyName() == key)
                return property->color();
    return firstColor(column);
}

// Without enough times the refresh ends here; otherwise when a plot reports that it was drawn. Times without a plot
// therefore leave the busy state until the user ends it.
void KTVPlotixPlugIn::showDataMessages(const KTVRecordDictionary& records)
{
    if (timeCount(records) >= kFewestTimes) {
        removeMessageOverlay();
        return;
    }
    showMessage(records.time() ? QStringLiteral(QT_TRANSLATE_NOOP("Plotix", "No Data Available for Date Range"))
                               : QStringLiteral(QT_TRANSLATE_NOOP("Plotix", "No Properties Available to Plot")));
    didFinishDrawing();
}
