// Fetching records, and what happens with the answer.
//
// Rules of this room:
//  1. Every change of the plotted range or of the property set ends in `acquirePlotFromDate`. It never refuses a second
//     fetch while one runs; the last answer to arrive wins, and cancelling stops nothing.
//  2. Every fetch goes through `askArchive`, and whatever is shown afterwards through `fetchRecords`, the following of
//     records too. The completion handler runs on any thread and does one thing there: it posts a task to the main
//     queue, also when it is called at once and on the main thread. What the parts of the reading show beside the
//     records is read before these are shown.
//  3. The task holds the records and the error strongly and an ordinary view weakly. The weak reference becomes a
//     strong one only on the main thread, so that the destructor runs nowhere else.
//  4. An off-screen object has nobody to keep it, so its pending fetch does (OffscreenLife below).

#include "plugins/PlotixPlugIn/KTVPlotixPlugIn.h"

#include "base/MainQueue.h"
#include "plugins/PlotixPlugIn/host/KTVHostServices.h"
#include "plugins/PlotixPlugIn/host/KTVUserInterface.h"
#include "plugins/PlotixPlugIn/reading/ReadSpans.h"
#include "plugins/PlotixPlugIn/reading/TrendReader.h"

namespace {

/// Keeps an off-screen plug-in until its rebuild has run. Only the main thread touches what it holds: the handler that
/// carries it may be destroyed on the archive's thread, and then posts the deletion instead of doing it there.
struct OffscreenLife {
    std::shared_ptr<KTVPlotixPlugIn> plugIn;
};

std::shared_ptr<OffscreenLife> keepUntilRebuilt(std::shared_ptr<KTVPlotixPlugIn> plugIn)
{
    return {new OffscreenLife{std::move(plugIn)},
            [](OffscreenLife* life) { plotix::MainQueue::main().async([life] { delete life; }); }};
}

std::optional<plotix::TimeSpan> spanOf(const plotix::OptionalDate& from, const plotix::OptionalDate& to)
{
    return from && to ? std::optional(plotix::TimeSpan{from->seconds, to->seconds}) : std::nullopt;
}

/// Where a sheet goes: the window the view is shown in; none for a view in no window, and for none at all.
QWidget* windowOfView(QWidget* view)
{
    return view && (view->parentWidget() || view->isVisible()) ? view->window() : nullptr;
}

}  // namespace

void KTVPlotixPlugIn::acquirePlotFromDate(const OptionalDate& fromDate, const OptionalDate& toDate)
{
    m_plotReady = false;
    if (plotix::isEarlierThanDate(toDate, fromDate)) {
        refuseDateRange();
        return;
    }
    m_refreshedFrom = fromDate;
    m_refreshedTo = toDate;
    m_dataCluster->setFromDateValue(fromDate);
    m_dataCluster->setToDateValue(toDate);
    m_dataCluster->refreshStarted(this);
    requestRecords(fromDate, toDate);
}

// The busy state ends before the sheet opens; the pickers keep the dates that were refused.
void KTVPlotixPlugIn::refuseDateRange()
{
    m_dataCluster->refreshComplete(this);
    if (!isViewLoaded() && m_completionTarget)
        return;
    const KTVAlert alert{
        QStringLiteral(QT_TRANSLATE_NOOP("Plotix", "Illegal Date Range")),
        QStringLiteral(QT_TRANSLATE_NOOP("Plotix", "The \"from\" date must be less than the \"to\" date.")),
        KTVAlert::Style::Critical};
    KTVHostServices::installed().userInterface->beginSheet(alert, isViewLoaded() ? windowOfView(view()) : nullptr,
                                                           [] {});
}

void KTVPlotixPlugIn::requestRecords(const OptionalDate& fromDate, const OptionalDate& toDate)
{
    fetchRecords(fromDate, toDate,
                 [fromDate, toDate](KTVPlotixPlugIn& plugIn, const KTVRecordDictionaryPtr& records,
                                    const std::optional<KTVError>& error) {
                     plugIn.doValidDataSource(records, error);
                     if (records && !error)
                         plugIn.tellShown(*records, fromDate, toDate);
                 });
}

void KTVPlotixPlugIn::fetchRecords(const OptionalDate& fromDate, const OptionalDate& toDate, RecordsHandler handler)
{
    const std::optional<plotix::TimeSpan> span = spanOf(fromDate, toDate);
    const bool isAsked = askArchive(
        m_properties, fromDate, toDate, [](double, bool*) {},
        [span, handler = std::move(handler)](KTVPlotixPlugIn& plugIn, const KTVRecordDictionaryPtr& records,
                                             const std::optional<KTVError>& error) {
            // Whoever waits for the records also waits for what is shown beside them.
            const auto show = [&plugIn, span, handler, records, error] {
                if (span)
                    plugIn.m_readSpans->recordsAnswered(*span);
                handler(plugIn, records, error);
            };
            if (span && records && !error)
                plugIn.m_reader->readBeside({*span, records}, show);
            else
                show();
        });
    if (isAsked && span)
        m_readSpans->recordsAsked(*span);
}

bool KTVPlotixPlugIn::askArchive(const Tables& properties, const OptionalDate& fromDate, const OptionalDate& toDate,
                                 KTVArchiveManager::ProgressHandler progress, RecordsHandler handler)
{
    const std::weak_ptr<KTVPlotixPlugIn> weakPlugIn = std::static_pointer_cast<KTVPlotixPlugIn>(shared_from_this());
    const std::shared_ptr<OffscreenLife> life = m_completionTarget ? keepUntilRebuilt(weakPlugIn.lock()) : nullptr;
    KTVArchiveManager* archiveManager = agent() ? agent()->archiveManager() : nullptr;
    if (!archiveManager)
        return false;
    archiveManager->fetchRecordsForProperties(
        properties, fromDate, toDate, kMaximumSamplesUnlimited, std::move(progress),
        [weakPlugIn, life, handler = std::move(handler)](const KTVRecordDictionaryPtr& records, double,
                                                         const std::optional<KTVError>& error) {
            plotix::MainQueue::main().async([weakPlugIn, life, handler, records, error] {
                if (const Ptr plugIn = weakPlugIn.lock())
                    handler(*plugIn, records, error);
                if (life)
                    life->plugIn.reset();
            });
        });
    return true;
}

void KTVPlotixPlugIn::tellShown(const KTVRecordDictionary& records, const OptionalDate& from, const OptionalDate& to)
{
    std::optional<plotix::TimeSpan> held;
    if (records.time() && records.time()->size() > 0)
        held = plotix::TimeSpan{records.time()->front(), records.time()->back()};
    if (const std::optional<plotix::TimeSpan> span = spanOf(from, to))
        m_readSpans->recordsShown(*span, held);
}

void KTVPlotixPlugIn::doValidDataSource(const KTVRecordDictionaryPtr& records, const std::optional<KTVError>& error)
{
    m_lacksAnswer = !records;
    if (!records) {
        // The alert is modal, and the busy state stays: only a drawing or the user ends it.
        KTVHostServices::installed().userInterface->runModal(
            {QStringLiteral(QT_TRANSLATE_NOOP("Plotix", "Database Access Error")),
             QStringLiteral(QT_TRANSLATE_NOOP("Plotix", "Returned object was malformed."))});
        m_dataCluster->restorePreviousDate();
        return;
    }
    if (error) {
        showMessage(QStringLiteral(QT_TRANSLATE_NOOP("Plotix", "No Properties Available to Plot")));
        m_dataCluster->restorePreviousDate();
    } else {
        removeMessageOverlay();
    }
    updatePlotData(records);
    updateInfoTable();
}

void KTVPlotixPlugIn::refreshPlot()
{
    acquirePlotFromDate(m_dataCluster->fromDateValue(), m_dataCluster->toDateValue());
}

void KTVPlotixPlugIn::refresh(QObject* /*sender*/)
{
    refreshPlot();
}

void KTVPlotixPlugIn::cancel(QObject* /*sender*/)
{
    // Ends the busy state only: the fetch goes on, and its late answer replaces the plot.
    m_reader->tell(&plotix::ReadingPart::readingCancelled);
    didFinishDrawing();
}

void KTVPlotixPlugIn::dateChanged(QObject* /*sender*/)
{
    // A date edit alone never fetches; a host may, when it hears of it.
    m_readSpans->datesChosen();
}

void KTVPlotixPlugIn::showMessage(const QString& message)
{
    if (m_messageViewController)
        m_messageViewController->centerOnView(m_hostView, message);
}

void KTVPlotixPlugIn::removeMessageOverlay()
{
    if (m_messageViewController)
        removeFromSuperview(m_messageViewController->view());
}
