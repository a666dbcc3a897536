// Printing the selected view's report, and saving it as a PDF.
//
// Writing a report in the view's own form leaves the graph of the view at the size it has on paper; the view on screen
// is laid out again as soon as it is written.

#include "hostapp/window/SiteWindow.h"

#include "base/ReportableError.h"
#include "hostapp/site/ViewReport.h"
#include "hostapp/window/DesktopUserInterface.h"
#include "hostapp/window/OutputWords.h"

#include <QtPrintSupport/QPrintPreviewDialog>
#include <QtPrintSupport/QPrinter>

namespace plotix {

namespace {

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

ReportForm chosenForm(const QAction& classic)
{
    return classic.isChecked() ? ReportForm::Classic : ReportForm::Page;
}

}  // namespace

void SiteWindow::printReport()
{
    const KTVPlugInPtr plugIn = trendInFront();
    const ViewReport report(plugIn, chosenForm(*m_actions.classicReport));
    QPrinter printer(QPrinter::HighResolution);
    printer.setDocName(titleOf(*plugIn));
    offerPaper(printer);
    QPrintPreviewDialog preview(&printer, windowInFront());
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
        showAlert(tr("The report could not be printed"), failure);
}

void SiteWindow::exportReport()
{
    const KTVPlugInPtr plugIn = trendInFront();
    const auto path = m_services.userInterface->runSavePanel({QStringLiteral("pdf")});
    if (!path)
        return;
    try {
        writeOutput(FileKind::Pdf, *path, ViewReport(plugIn, chosenForm(*m_actions.classicReport)).pdf());
    } catch (const OutputFailure& failure) {
        showAlert(tr("The report could not be saved"), outputText(failure.problem()));
    } catch (const ReportableError& error) {
        showAlert(tr("The report could not be saved"), error.message());
    }
    layOutAgain(plugIn->view());
}

}  // namespace plotix
