#include "hostapp/app/StoredReport.h"

#include "base/ReportableError.h"
#include "hostapp/print/ReportPrinter.h"
#include "hostapp/site/PlugInOperations.h"
#include "hostapp/site/WaitForRecords.h"
#include "hostapp/window/SiteWindowController.h"

namespace plotix {

namespace {

QString listedTitles(const std::vector<KTVPlugInPtr>& views)
{
    QStringList titles;
    for (const KTVPlugInPtr& view : views)
        titles << titleOf(*view);
    return titles.isEmpty() ? QStringLiteral("none") : titles.join(QStringLiteral(", "));
}

KTVPlugInPtr viewTitled(const std::vector<KTVPlugInPtr>& views, const QString& title)
{
    if (title.isEmpty() && views.size() == 1)
        return views.front();
    for (const Qt::CaseSensitivity sensitivity : {Qt::CaseSensitive, Qt::CaseInsensitive})
        for (const KTVPlugInPtr& view : views)
            if (titleOf(*view).compare(title, sensitivity) == 0)
                return view;
    if (title.isEmpty())
        throw ReportableError(QStringLiteral("choose a view with --view; there is: %1").arg(listedTitles(views)));
    throw ReportableError(QStringLiteral("there is no view “%1”; there is: %2").arg(title, listedTitles(views)));
}

}  // namespace

QByteArray pdfOfStoredReport(const ReportRequest& request, KTVPlugInModule* module)
{
    if (request.paper)
        KTVPrintInfo::sharedPrintInfo()->setPaperSize(paperSize(*request.paper));
    // The views ask the site window for the site's name; they are not listed in it, which would store them again.
    SiteWindowController controller(request.document, module);
    std::vector<KTVPlugInPtr> views = PlugInStore(request.document, module).load(&controller);
    std::erase_if(views, [](const KTVPlugInPtr& view) { return !hasReport(view.get()); });
    const KTVPlugInPtr view = viewTitled(views, request.view);
    view->view();  // loading the view starts the fetch
    for (const auto& agent : request.document->agents())
        requireRecords(*agent);
    return ReportPrinter(view, graphForPaper).pdf();
}

}  // namespace plotix
