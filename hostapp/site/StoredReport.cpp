#include "hostapp/site/StoredReport.h"

#include "base/ReportableError.h"
#include "hostapp/print/ReportPrinter.h"
#include "hostapp/site/PlugInOperations.h"
#include "hostapp/site/ViewTitled.h"
#include "hostapp/site/WaitForRecords.h"
#include "hostapp/site/WorkingSite.h"

namespace plotix {

namespace {

std::vector<KTVPlugInPtr> printableViews(const WorkingSite& site)
{
    std::vector<KTVPlugInPtr> views;
    for (const KTVSourceListItemPtr& item : site.sourceList().items())
        if (hasReport(item->representedObject().get()))
            views.push_back(item->representedObject());
    return views;
}

/// Columns that the view does not know are refused, before its records are read.
void chooseStatistics(KTVPlugIn* view, const QVariantMap& wanted)
{
    if (wanted.isEmpty())
        return;
    const QStringList known = figureColumns(view);
    for (const QString& column : wanted.value(QStringLiteral("columns")).toStringList())
        if (!known.contains(column))
            throw ReportableError(QStringLiteral("the table has no column “%1”; there is: %2")
                                      .arg(column, known.join(QStringLiteral(", "))));
    const QString name = QStringLiteral("statistics");
    QVariantMap choices = reading(view).value_or(QVariantMap()).value(name).toMap();
    choices.insert(wanted);
    setReading(view, {{name, choices}});
}

void chooseClock(KTVPlugIn* view, const QVariantMap& wanted)
{
    if (wanted.isEmpty())
        return;
    const QString name = QStringLiteral("clock");
    QVariantMap choices = reading(view).value_or(QVariantMap()).value(name).toMap();
    choices.insert(wanted);
    setReading(view, {{name, choices}});
}

}  // namespace

QByteArray pdfOfStoredReport(const ReportRequest& request, KTVPlugInModule* module)
{
    if (request.paper)
        KTVPrintInfo::sharedPrintInfo()->setPaperSize(paperSize(*request.paper));
    WorkingSite site(request.document, module, WorkingSite::Use::Elsewhere);
    site.loadPlugIns();
    const KTVPlugInPtr view = viewTitled(printableViews(site), request.view, QStringLiteral("--view"));
    chooseStatistics(view.get(), request.statistics);
    chooseClock(view.get(), request.clock);
    view->view();  // loading the view starts the fetch
    site.requireRecords();
    site.settle(*view, Wanted::Exact);
    const QByteArray pdf = ViewReport(view, request.form).pdf();
    for (const auto& agent : request.document->agents())
        requireUnpacked(*agent);
    return pdf;
}

}  // namespace plotix
