// Showing a range again and again while records arrive.
//
// Rules of this room:
//  1. Nothing is asked of the user and nothing flickers: the date panel stays as it is while the records come, without
//     its busy state, so that dates can be typed meanwhile. Its dates move in the same task that shows the records.
//  2. The range shown is the one asked for, also where the records do not reach its ends.
//  3. Whoever moved the dates while the records were on their way keeps them: such an answer comes too late.
//     Where only the records are read and the ranges stay, an answer comes too late only for dates that were chosen
//     meanwhile and are not drawn yet; else what was read is shown where it belongs.
//  4. Modifier keys mean nothing here: a Shift held for something else must not stop a followed trend.
//  5. An answer that is no good is passed over: the next one comes soon, and Refresh says what is wrong.

#include "plugins/PlotixPlugIn/KTVPlotixPlugIn.h"

#include "plugins/PlotixPlugIn/reading/ReadSpans.h"
#include "plugins/PlotixPlugIn/reading/TrendReader.h"

#include <QtCore/QScopedValueRollback>

#include <cmath>

namespace {

QVariantList rangeOf(const plotix::OptionalDate& from, const plotix::OptionalDate& to)
{
    return from && to ? QVariantList{from->seconds, to->seconds} : QVariantList();
}

/// Whether the dates were chosen or typed and the graph does not show them yet.
bool areDatesAhead(const QVariantMap& spans, const QVariantList& dates)
{
    constexpr double kSameMoment = 0.01;  // seconds
    const QVariantList drawn = spans.value(QStringLiteral("drawn")).toList();
    if (!spans.value(QStringLiteral("datesLead")).toBool() || dates.size() != 2 || drawn.size() != 2)
        return false;
    return std::abs(dates[0].toDouble() - drawn[0].toDouble()) > kSameMoment ||
           std::abs(dates[1].toDouble() - drawn[1].toDouble()) > kSameMoment;
}

}  // namespace

void KTVPlotixPlugIn::showRange(double fromSeconds, double toSeconds)
{
    if (!(fromSeconds <= toSeconds))
        return;
    fetchRecords(plotix::Date{fromSeconds}, plotix::Date{toSeconds},
                 [fromSeconds, toSeconds, shownBefore = shownRange()](KTVPlotixPlugIn& plugIn,
                                                                      const KTVRecordDictionaryPtr& records,
                                                                      const std::optional<KTVError>& error) {
                     if (records && !error && plugIn.shownRange() == shownBefore)
                         plugIn.showRecordsInRange(records, {fromSeconds, toSeconds - fromSeconds});
                 });
}

void KTVPlotixPlugIn::readRange(double fromSeconds, double toSeconds)
{
    if (!(fromSeconds <= toSeconds))
        return;
    const plotix::Date from{fromSeconds}, to{toSeconds};
    fetchRecords(from, to,
                 [from, to](KTVPlotixPlugIn& plugIn, const KTVRecordDictionaryPtr& records,
                            const std::optional<KTVError>& error) {
                     if (records && !error && !areDatesAhead(plugIn.m_readSpans->spans(), plugIn.shownRange()))
                         plugIn.showRecordsBeneath(records, from, to);
                 });
}

// The fit shows all records and moves the dates; both ranges are put back before anybody sees it.
void KTVPlotixPlugIn::showRecordsBeneath(const KTVRecordDictionaryPtr& records, const OptionalDate& from,
                                         const OptionalDate& to)
{
    const QScopedValueRollback showing(m_rangeBeingShown, true);
    const bool hadGraph = m_graph != nullptr;
    const CPTPlotRange x = hadGraph ? m_graph->plotSpace().xRange() : CPTPlotRange();
    const CPTPlotRange y = hadGraph ? m_graph->plotSpace().yRange() : CPTPlotRange();
    const QVariantMap ranges = m_reader->ranges();
    doValidDataSource(records, {});
    tellShown(*records, from, to);
    if (!hadGraph)
        return;
    m_reader->setRanges(ranges);
    m_graph->defaultPlotSpace()->setXRange(x);
    m_graph->defaultPlotSpace()->setYRange(y);
}

void KTVPlotixPlugIn::showRecordsInRange(const KTVRecordDictionaryPtr& records, const CPTPlotRange& range)
{
    const QScopedValueRollback showing(m_rangeBeingShown, true);
    doValidDataSource(records, {});
    // The fit has just shown the records there are; this proposal moves the dates on to the range that was asked for.
    if (m_graph)
        m_graph->defaultPlotSpace()->setXRange(range);
    tellShown(*records, plotix::Date{range.location}, plotix::Date{range.end()});
}

QVariantList KTVPlotixPlugIn::shownRange() const
{
    return rangeOf(m_dataCluster->fromDateValue(), m_dataCluster->toDateValue());
}

// Lets whoever follows the trend tell a refresh, whose records move the dates, from dates that the user moved.
QVariantList KTVPlotixPlugIn::refreshedRange() const
{
    return rangeOf(m_refreshedFrom, m_refreshedTo);
}
