#include "hostapp/site/StoredReport.h"

#include "base/ReportableError.h"
#include "hostapp/print/ReportPrinter.h"
#include "hostapp/site/PlugInOperations.h"
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

QString listedTitles(const std::vector<KTVPlugInPtr>& views)
{
    QStringList titles;
    for (const KTVPlugInPtr& view : views)
        titles << titleOf(*view);
    return titles.join(QStringLiteral(", "));
}

KTVPlugInPtr viewTitled(const std::vector<KTVPlugInPtr>& views, const QString& title)
{
    if (views.empty())
        throw ReportableError(QStringLiteral("the site has no trend to report on; plotix open makes one"));
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
    const KTVPlugInPtr view = viewTitled(printableViews(site), request.view);
    chooseStatistics(view.get(), request.statistics);
    chooseClock(view.get(), request.clock);
    view->view();  // loading the view starts the fetch
    site.requireRecords();
    site.settle(*view, Wanted::Exact);
    return ViewReport(view, request.form).pdf();
}

}  // namespace plotix
