// Zoom and pan: what the plot space's proposals become.
//
// Rules of this room:
//  1. The modifier keys are read at the moment of asking; they apply to the fit after a rebuild as well, but not to a
//     range that the host shows by itself: nobody holds a key for that one.
//  2. Only an unchanged proposal is followed: a clamped or refused one moves no date and re-ticks no axis.
//  3. Moving the date panel never fetches.

#include "plugins/PlotixPlugIn/KTVPlotixPlugIn.h"

#include "plugins/PlotixPlugIn/host/KTVHostServices.h"
#include "plugins/PlotixPlugIn/host/KTVUserInterface.h"
#include "plugins/PlotixPlugIn/logic/RangePolicy.h"
#include "plugins/PlotixPlugIn/reading/ReadSpans.h"
#include "plugins/PlotixPlugIn/reading/TrendReader.h"

bool KTVPlotixPlugIn::plotSpaceShouldScaleBy(CPTXYPlotSpace* /*space*/, double /*factor*/, QPointF /*aboutPoint*/)
{
    return true;
}

CPTPlotRange KTVPlotixPlugIn::plotSpaceWillChangePlotRangeTo(CPTXYPlotSpace* space, const CPTPlotRange& range,
                                                             CPTCoordinate coordinate)
{
    const Qt::KeyboardModifiers flags = m_rangeBeingShown ? Qt::KeyboardModifiers(Qt::NoModifier)
                                                          : KTVHostServices::installed().userInterface->modifierFlags();
    const CPTPlotRange& current = coordinate == CPTCoordinate::Y ? space->yRange() : space->xRange();
    const plotix::RangeVerdict verdict =
        plotix::judgeRange(range, current, coordinate,
                           {.option = flags.testFlag(Qt::AltModifier), .shift = flags.testFlag(Qt::ShiftModifier)},
                           m_reading.hasUnlimitedValues() ? plotix::ValueLimits::Lifted : plotix::ValueLimits::Kept);
    if (verdict.accepted && coordinate == CPTCoordinate::X) {
        m_dataCluster->setFromDateValue(plotix::Date{range.location});
        m_dataCluster->setToDateValue(plotix::Date{range.end()});
        adjustXAxis();
    } else if (verdict.accepted && !m_firstFitUnderWay) {
        adjustYAxisWithRange(range);
    }
    return verdict.range;
}

void KTVPlotixPlugIn::plotSpaceDidChangePlotRangeForCoordinate(CPTXYPlotSpace* /*space*/, CPTCoordinate coordinate)
{
    if (coordinate == CPTCoordinate::X)
        m_readSpans->drawnSpanSet();
    else
        updateRangeNotice();
    m_reader->tell(&plotix::ReadingPart::rangeSet, coordinate);
}

bool KTVPlotixPlugIn::plotSpaceShouldHandlePointingDeviceUpEvent(CPTXYPlotSpace* /*space*/, QPointF /*atPoint*/)
{
    return true;
}

bool KTVPlotixPlugIn::plotSpaceShouldHandlePointingDeviceCancelledEvent(CPTXYPlotSpace* /*space*/)
{
    return true;
}

void KTVPlotixPlugIn::windowDidEndLiveResize(QObject* /*notification*/) {}

void KTVPlotixPlugIn::fitAll(QObject* /*sender*/)
{
    if (m_graph)
        m_graph->defaultPlotSpace()->scaleToFitPlots(m_graph->allPlots());
    m_reader->tell(&plotix::ReadingPart::fitted);
}
