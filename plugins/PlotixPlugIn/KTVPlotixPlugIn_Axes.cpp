// Tick intervals, label formats, the fit.
//
// Rules of this room:
//  1. The time ticks follow the date panel's dates, not the plot space, and are chosen anew, with a new formatter, on
//     every accepted change of the x range.
//  2. On the rebuild that makes the graph the fit leaves the y axis alone: interval 20 and the default labels stay
//     until the next rebuild or the first zoom. Only the ranges and `plotRangeForY` take effect.
//  3. A stored `plotRangeForY` is overwritten by the next fit and never put back on the plot space.

#include "plugins/PlotixPlugIn/KTVPlotixPlugIn.h"

#include "plotkit/model/CPTTickFormatters.h"
#include "plugins/PlotixPlugIn/TrendAccess.h"
#include "plugins/PlotixPlugIn/logic/TimeTicks.h"
#include "plugins/PlotixPlugIn/logic/ValueTicks.h"
#include "plugins/PlotixPlugIn/reading/ReadableAxes.h"
#include "plugins/PlotixPlugIn/reading/TrendReader.h"

#include <QtCore/QScopedValueRollback>

namespace {

constexpr double kFirstValueInterval = 20;
constexpr float kValueAxisOrthogonalPosition = 86'400;  // without effect while the constraint holds the axis

}  // namespace

void KTVPlotixPlugIn::adjustXAxis()
{
    CPTXYAxisSet* axisSet = hostedAxisSet();
    if (!axisSet)
        return;
    const double from = m_dataCluster->fromDateValue().value_or(plotix::Date()).seconds;
    const double to = m_dataCluster->toDateValue().value_or(plotix::Date()).seconds;
    const plotix::TimeTickRow& row = plotix::timeTicksForSpan(to - from);
    CPTXYAxis& axis = *axisSet->firstAxis();
    const CPTClock clock = m_access->clock();
    if (m_reading.hasReadableLabels())
        return plotix::makeTimeAxisReadable(axis, clock);
    axis.setMajorIntervalLength(row.majorInterval);
    axis.setMinorTicksPerInterval(row.minorTicks);
    axis.setTickThinning(CPTTickThinning::ClockTimes);
    axis.setLabelingOrigin(plotix::labelingOriginForLocalMidnight(from, clock.zone));
    const QString pattern = patternByClock(QString::fromLatin1(row.labelPattern), clock.hours);
    axis.setLabelFormatter(std::make_shared<const CPTTimeFormatter>(pattern, plotix::Date(), clock.zone));
}

void KTVPlotixPlugIn::adjustYAxis()
{
    CPTXYAxis& axis = *m_graph->axisSet()->lastAxis();
    axis.setMajorIntervalLength(kFirstValueInterval);
    axis.setMinorTicksPerInterval(1);
    axis.setAxisConstraints(CPTConstraints{0.0});
    axis.setOrthogonalPosition(static_cast<double>(kValueAxisOrthogonalPosition));
}

void KTVPlotixPlugIn::adjustYAxisWithRange(const CPTPlotRange& range)
{
    if (m_graph)
        m_graph->axisSet()->yAxis()->setMajorIntervalLength(computeOptimalMajorIntervalForRangeWithSpan(range.length));
}

double KTVPlotixPlugIn::computeOptimalMajorIntervalForRangeWithSpan(double span) const
{
    return plotix::majorIntervalForValueSpan(span);
}

double KTVPlotixPlugIn::computeOptimalMajorIntervalForDomainWithTimeSpan(double span) const
{
    return plotix::majorIntervalForTimeSpan(span);
}

double KTVPlotixPlugIn::computeOptimalMinorIntervalForDomainWithTimeSpan(double span) const
{
    return plotix::minorIntervalForTimeSpan(span);
}

void KTVPlotixPlugIn::fitPlots(Rebuild rebuild)
{
    {
        const QScopedValueRollback<bool> firstFit(m_firstFitUnderWay, rebuild == Rebuild::First);
        m_graph->defaultPlotSpace()->scaleToFitPlots(m_graph->plotsToFit(m_graph->plotSpace()));
    }
    m_reader->tell(&plotix::ReadingPart::fitted);
    m_plotRangeForY = m_graph->defaultPlotSpace()->yRange();
    if (rebuild == Rebuild::First || (m_reading.hasReadableLabels() && hostedAxisSet()))
        return;
    CPTXYAxis& axis = *m_graph->axisSet()->lastAxis();
    axis.setMajorIntervalLength(computeOptimalMajorIntervalForRangeWithSpan(m_plotRangeForY->length));
    const plotix::ValueLabelFormat format = plotix::valueLabelFormatForSpan(m_plotRangeForY->length);
    axis.setLabelFormatter(
        std::make_shared<const CPTNumberFormatter>(QString::fromLatin1(format.pattern), format.minimumFractionDigits));
}
