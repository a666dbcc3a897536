#include "plugins/PlotixPlugIn/TrendAccess.h"

#include "plugins/PlotixPlugIn/KTVPlotixPlugIn.h"
#include "plugins/PlotixPlugIn/host/KTVRecordColumn.h"
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

QStringList TrendAccess::propertyNames() const
{
    QStringList names;
    for (const KTVPropertyPtr& property : m_plugIn.m_properties.value_or(KTVPropertyList()))
        names << property->propertyName();
    return names;
}

std::vector<plotix::ReadLine> TrendAccess::lines() const
{
    std::vector<plotix::ReadLine> lines;
    if (!m_plugIn.m_graph)
        return lines;
    for (const CPTScatterPlotPtr& plot : m_plugIn.m_graph->allPlots()) {
        if (plot->delegate() != &m_plugIn)
            continue;  // somebody else's, such as a comparison
        plotix::ReadLine line;
        line.key = line.name = plot->identifier();
        line.color = plot->dataLineStyle().color;
        line.isShown = !plot->isHidden();
        for (const KTVPropertyPtr& property : m_plugIn.m_properties.value_or(KTVPropertyList()))
            if (property->propertyName() == line.key)
                line.name = property->name();
        const auto column = m_plugIn.m_plotData ? m_plugIn.m_plotData->columnForKey(line.key) : nullptr;
        if (column) {
            line.unit = column->unit();
            line.unitSymbol = column->unitSymbol();
        }
        lines.push_back(std::move(line));
    }
    return lines;
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

void TrendAccess::showTimes(const plotix::TimeSpan& times)
{
    const QScopedValueRollback showing(m_plugIn.m_rangeBeingShown, true);
    if (m_plugIn.m_graph)
        m_plugIn.m_graph->defaultPlotSpace()->setXRange({times.from, times.to - times.from});
}

void TrendAccess::showValues(CPTXYPlotSpace& space, const CPTPlotRange& values)
{
    const QScopedValueRollback showing(m_plugIn.m_rangeBeingShown, true);
    space.setYRange(values);
}

bool TrendAccess::movesByItself() const
{
    return m_plugIn.m_rangeBeingShown;
}

void TrendAccess::readDates(const plotix::TimeSpan& dates)
{
    m_plugIn.m_dataCluster->updateDates(plotix::Date{dates.from}, plotix::Date{dates.to});
    m_plugIn.refreshPlot();
}

void TrendAccess::fit()
{
    const QScopedValueRollback showing(m_plugIn.m_rangeBeingShown, true);
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
