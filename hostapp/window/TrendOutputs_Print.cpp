// Printing the selected view's report, and saving it as a PDF.
//
// Writing a report in the view's own form leaves the graph of the view at the size it has on paper; the view on screen
// is laid out again as soon as it is written.

#include "hostapp/window/TrendOutputs.h"

#include "base/ReportableError.h"
#include "hostapp/document/ArchiveManager.h"
#include "hostapp/site/ViewReport.h"
#include "hostapp/window/DesktopUserInterface.h"
#include "hostapp/window/OutputWords.h"

#include <QtCore/QEventLoop>
#include <QtPrintSupport/QPrintPreviewDialog>
#include <QtPrintSupport/QPrinter>
#include <QtWidgets/QProgressDialog>

#include <algorithm>

namespace plotix {

namespace {

constexpr int kUnseenWait = 400;  // milliseconds; a shorter wait needs no word

bool areRecordsThere(const SiteDocument& document)
{
    return std::all_of(document.agents().begin(), document.agents().end(),
                       [](const auto& agent) { return agent->siteArchiveManager()->pendingFetches() == 0; });
}

/// A resize, however small, has the view put its parts back in place.
void layOutAgain(QWidget* view)
{
    const QSize size = view->size();
    view->resize(size + QSize(1, 1));
    view->resize(size);
}

/// The sheet chosen in the printer's dialogs becomes the application's.
void adoptPaper(const QPrinter& printer)
{
    KTVPrintInfo::sharedPrintInfo()->setPaperSize(printer.pageLayout().pageSize().size(QPageSize::Point));
}

void offerPaper(QPrinter& printer)
{
    const QSizeF size = KTVPrintInfo::sharedPrintInfo()->paperSize();
    const QSizeF upright = size.width() > size.height() ? size.transposed() : size;
    printer.setPageSize(QPageSize(upright, QPageSize::Point, QString(), QPageSize::FuzzyMatch));
    // Before the preview measures the sheet; a change later would show the pages in the frame of an upright one.
    printer.setPageOrientation(QPageLayout::Landscape);
}

ReportForm formOf(bool isClassic)
{
    return isClassic ? ReportForm::Classic : ReportForm::Page;
}

}  // namespace

bool TrendOutputs::settle(const KTVPlugInPtr& plugIn, Wanted wanted)
{
    try {
        return m_around.site.settle(*plugIn, wanted, [this] { return waitForRecords(); });
    } catch (const ReportableError& error) {
        alert(tr("The records of these dates are not here"), error.message());
        return false;
    }
}

bool TrendOutputs::waitForRecords()
{
    const SiteDocument& document = *m_around.site.siteDocument();
    QString failure;
    QEventLoop loop;
    for (const auto& agent : document.agents()) {
        const ArchiveManager* archive = agent->siteArchiveManager();
        connect(archive, &ArchiveManager::fetchFailed, &loop, [&](const QString& message) { failure = message; });
        connect(archive, &ArchiveManager::fetchAnswered, &loop, [&] {
            if (areRecordsThere(document))
                loop.quit();
        });
    }
    if (!areRecordsThere(document)) {
        QTimer::singleShot(kUnseenWait, &loop, &QEventLoop::quit);
        loop.exec(QEventLoop::ExcludeUserInputEvents);
    }
    if (!areRecordsThere(document)) {
        QProgressDialog progress(tr("Reading the records of these dates…"), tr("Cancel"), 0, 0,
                                 m_around.windowInFront());
        progress.setWindowModality(Qt::ApplicationModal);
        connect(&progress, &QProgressDialog::canceled, &loop, &QEventLoop::quit);
        progress.show();
        loop.exec();
    }
    if (!failure.isEmpty())
        throw ReportableError(failure);
    return areRecordsThere(document);
}

void TrendOutputs::printReport()
{
    const KTVPlugInPtr plugIn = m_around.trendInFront();
    if (!settle(plugIn, Wanted::Exact))
        return;
    const ViewReport report(plugIn, formOf(m_around.wantsClassicReport()));
    QPrinter printer(QPrinter::HighResolution);
    printer.setDocName(titleOf(*plugIn));
    offerPaper(printer);
    QPrintPreviewDialog preview(&printer, m_around.windowInFront());
    preview.setWindowTitle(tr("Print “%1”").arg(titleOf(*plugIn)));
    QString failure;
    connect(&preview, &QPrintPreviewDialog::paintRequested, this, [&](QPrinter* paper) {
        adoptPaper(*paper);
        try {
            report.print(*paper);
        } catch (const ReportableError& error) {
            failure = error.message();
        }
        layOutAgain(plugIn->view());
    });
    preview.exec();
    if (!failure.isEmpty())
        alert(tr("The report could not be printed"), failure);
}

void TrendOutputs::exportReport()
{
    const KTVPlugInPtr plugIn = m_around.trendInFront();
    if (!settle(plugIn, Wanted::Exact))
        return;
    const auto path = m_around.userInterface.askWhereToSave({QStringLiteral("pdf")}, titleOf(*plugIn));
    if (!path)
        return;
    try {
        writeOutput(FileKind::Pdf, *path, ViewReport(plugIn, formOf(m_around.wantsClassicReport())).pdf());
    } catch (const OutputFailure& failure) {
        alert(tr("The report could not be saved"), outputText(failure.problem()));
    } catch (const ReportableError& error) {
        alert(tr("The report could not be saved"), error.message());
    }
    layOutAgain(plugIn->view());
}

}  // namespace plotix
