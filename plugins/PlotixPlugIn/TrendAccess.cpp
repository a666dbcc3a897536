#include "plugins/PlotixPlugIn/TrendAccess.h"

#include "plugins/PlotixPlugIn/KTVPlotixPlugIn.h"
#include "plugins/PlotixPlugIn/host/KTVRecordColumn.h"
#include "plugins/PlotixPlugIn/reading/LineGaps.h"
#include "plugins/PlotixPlugIn/reading/ReadSpans.h"
#include "plugins/PlotixPlugIn/reading/TrendReader.h"

#include <QtCore/QScopedValueRollback>

CPTXYGraphPtr TrendAccess::graph() const
{
    return m_plugIn.m_graph;
}

KTVRecordDictionaryPtr TrendAccess::records() const
{
    return m_plugIn.m_plotData;
}

KTVAnnotations* TrendAccess::annotations() const
{
    const auto* annotated = dynamic_cast<const KTVAnnotatedAgent*>(m_plugIn.agent().get());
    return annotated ? annotated->annotations() : nullptr;
}

/// Asked for once for the records of a fetch.
const std::vector<KTVAmendment>& TrendAccess::amendmentsOf(const QString& key) const
{
    const KTVRecordDictionaryPtr& records = m_plugIn.m_plotData;
    if (!records || m_amended.lock() != records) {
        m_amendments.clear();
        m_amended = records;
    }
    const auto [found, isNew] = m_amendments.try_emplace(key);
    const auto* agent = dynamic_cast<const KTVAmendedAgent*>(m_plugIn.agent().get());
    if (isNew && agent && records && records->time() && records->time()->size() > 0) {
        found->second = agent->amendmentsOf(key, records->time()->front(), records->time()->back());
    }
    return found->second;
}

QStringList TrendAccess::propertyNames() const
{
    QStringList names;
    for (const KTVPropertyPtr& property : m_plugIn.m_properties.value_or(KTVPropertyList()))
        names << property->propertyName();
    return names;
}

plotix::ReadLine TrendAccess::ownLine(const CPTScatterPlot& plot) const
{
    plotix::ReadLine line;
    line.key = line.name = plot.identifier();
    line.color = plot.dataLineStyle().color;
    line.isShown = !plot.isHidden();
    for (const KTVPropertyPtr& property : m_plugIn.m_properties.value_or(KTVPropertyList()))
        if (property->propertyName() == line.key)
            line.name = property->name();
    const auto column = m_plugIn.m_plotData ? m_plugIn.m_plotData->columnForKey(line.key) : nullptr;
    if (column) {
        line.unit = column->unit();
        line.unitSymbol = column->unitSymbol();
    }
    return line;
}

std::vector<plotix::ReadLine> TrendAccess::lines() const
{
    std::vector<plotix::ReadLine> lines;
    if (!m_plugIn.m_graph)
        return lines;
    for (const CPTScatterPlotPtr& plot : m_plugIn.m_graph->allPlots()) {
        if (plot->delegate() != &m_plugIn)
            continue;  // an added one
        lines.push_back(ownLine(*plot));
        const plotix::ReadLine own = lines.back();
        for (const plotix::AddedLine& added : m_added) {
            if (added.line.comparedKey != own.key || m_plugIn.m_graph->plotWithIdentifier(added.line.key) != added.plot)
                continue;
            plotix::ReadLine line = added.line;
            line.unit = own.unit;
            line.unitSymbol = own.unitSymbol;
            line.color = added.plot->dataLineStyle().color;
            line.isShown = own.isShown;
            lines.push_back(std::move(line));
        }
    }
    return lines;
}

KTVRecordDictionaryPtr TrendAccess::recordsOf(const QString& key) const
{
    for (const plotix::AddedLine& added : m_added)
        if (added.line.key == key)
            return added.records;
    return m_plugIn.m_plotData;
}

// After the trend's own plots, as their keys shall come; lines that are fainter and narrower hide nothing.
void TrendAccess::setAddedLines(std::vector<plotix::AddedLine> lines)
{
    const CPTXYGraphPtr graph = m_plugIn.m_graph;
    if (!graph || (lines.empty() && m_added.empty()))
        return;
    for (const plotix::AddedLine& added : m_added)
        graph->removePlot(added.plot);
    m_added = std::move(lines);
    for (const plotix::AddedLine& added : m_added)
        graph->addPlot(added.plot);
    plotix::breakLinesAtGaps(*graph, m_plugIn.m_reading);
    m_plugIn.m_reader->tell(&plotix::ReadingPart::plotsReplaced);
    m_plugIn.updateRangeNotice();
}

void TrendAccess::readBeside(const QStringList& keys, const plotix::TimeSpan& span,
                             const std::shared_ptr<plotix::RecordsRead>& read,
                             std::function<void(const KTVRecordDictionaryPtr& records)> done)
{
    KTVPropertyList properties;
    for (const KTVPropertyPtr& property : m_plugIn.m_properties.value_or(KTVPropertyList()))
        if (keys.isEmpty() || keys.contains(property->propertyName()))
            properties.push_back(property);
    const auto stopWhenAsked = [read](double, bool* stop) { *stop = read->isStopped; };
    const bool isAsked = m_plugIn.askArchive(properties, plotix::Date{span.from}, plotix::Date{span.to}, stopWhenAsked,
                                             [done](KTVPlotixPlugIn&, const KTVRecordDictionaryPtr& records,
                                                    const std::optional<KTVError>&) { done(records); });
    if (!isAsked)
        done(nullptr);
}

void TrendAccess::setBusy(bool isBusy)
{
    if (isBusy)
        m_plugIn.m_dataCluster->refreshStarted(&m_plugIn);
    else
        m_plugIn.m_dataCluster->refreshComplete(&m_plugIn);
}

void TrendAccess::setClock(const CPTClock& clock)
{
    if (m_clock == clock)
        return;
    m_clock = clock;
    m_plugIn.m_dataCluster->setClock(clock);
    m_plugIn.adjustXAxis();
    m_plugIn.m_reader->tell(&plotix::ReadingPart::clockSet);
}

KTVSiteClock* TrendAccess::siteClock() const
{
    const auto* zoned = dynamic_cast<const KTVZonedAgent*>(m_plugIn.agent().get());
    return zoned ? zoned->siteClock() : nullptr;
}

CPTGraphHostingView* TrendAccess::graphView() const
{
    return m_plugIn.m_hostView;
}

QWidget* TrendAccess::rootView() const
{
    return m_plugIn.m_dragDropView ? m_plugIn.m_dragDropView->parentWidget() : nullptr;
}

std::optional<plotix::TimeSpan> TrendAccess::dates() const
{
    const auto from = m_plugIn.m_dataCluster->fromDateValue();
    const auto to = m_plugIn.m_dataCluster->toDateValue();
    return from && to ? std::optional(plotix::TimeSpan{from->seconds, to->seconds}) : std::nullopt;
}

std::optional<plotix::TimeSpan> TrendAccess::readSpan() const
{
    return m_plugIn.m_readSpans->readSpan();
}

std::optional<plotix::TimeSpan> TrendAccess::recordedSpan() const
{
    const KTVArchiveManager* archive = m_plugIn.agent() ? m_plugIn.agent()->archiveManager() : nullptr;
    const auto span = archive ? archive->recordedSpan() : std::nullopt;
    return span ? std::optional(plotix::TimeSpan{span->first.seconds, span->last.seconds}) : std::nullopt;
}

void TrendAccess::showTimes(const plotix::TimeSpan& times)
{
    const QScopedValueRollback showing(m_plugIn.m_rangeBeingShown, true);
    const QScopedValueRollback asked(m_isAsked, true);
    if (m_plugIn.m_graph)
        m_plugIn.m_graph->defaultPlotSpace()->setXRange({times.from, times.to - times.from});
}

void TrendAccess::showValues(CPTXYPlotSpace& space, const CPTPlotRange& values)
{
    const QScopedValueRollback showing(m_plugIn.m_rangeBeingShown, true);
    const QScopedValueRollback asked(m_isAsked, true);
    space.setYRange(values);
}

bool TrendAccess::movesByItself() const
{
    return m_plugIn.m_rangeBeingShown && !m_isAsked;
}

bool TrendAccess::heedsKeys() const
{
    return !m_plugIn.m_rangeBeingShown;
}

void TrendAccess::readDates(const plotix::TimeSpan& dates)
{
    m_plugIn.m_dataCluster->updateDates(plotix::Date{dates.from}, plotix::Date{dates.to});
    m_plugIn.refreshPlot();
}

void TrendAccess::fit()
{
    const QScopedValueRollback showing(m_plugIn.m_rangeBeingShown, true);
    const QScopedValueRollback asked(m_isAsked, true);
    m_plugIn.fitAll(nullptr);
}

plotix::ReadingPart* TrendAccess::part(const QString& key) const
{
    return m_plugIn.m_reader->part(key);
}

void TrendAccess::setMarkedSpan(const std::optional<plotix::TimeSpan>& span)
{
    if (m_markedSpan == span)
        return;
    m_markedSpan = span;
    m_plugIn.m_reader->tell(&plotix::ReadingPart::markedSpanSet);
}

void TrendAccess::tellRestyled()
{
    m_plugIn.m_reader->tell(&plotix::ReadingPart::restyled);
}
