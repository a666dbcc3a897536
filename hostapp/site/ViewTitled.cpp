#include "hostapp/site/ViewTitled.h"

#include "base/ReportableError.h"
#include "hostapp/site/PlugInOperations.h"

#include <QtCore/QStringList>

namespace plotix {

namespace {

QString listedTitles(const std::vector<KTVPlugInPtr>& views)
{
    QStringList titles;
    for (const KTVPlugInPtr& view : views)
        titles << titleOf(*view);
    return titles.join(QStringLiteral(", "));
}

}  // namespace

KTVPlugInPtr viewTitled(const std::vector<KTVPlugInPtr>& views, const QString& title, const QString& option)
{
    if (views.empty())
        throw ReportableError(QStringLiteral("the site has no trend; plotix open makes one"));
    if (title.isEmpty() && views.size() == 1)
        return views.front();
    for (const Qt::CaseSensitivity sensitivity : {Qt::CaseSensitive, Qt::CaseInsensitive})
        for (const KTVPlugInPtr& view : views)
            if (titleOf(*view).compare(title, sensitivity) == 0)
                return view;
    if (title.isEmpty())
        throw ReportableError(QStringLiteral("choose a view with %1; there is: %2").arg(option, listedTitles(views)));
    throw ReportableError(QStringLiteral("there is no view “%1”; there is: %2").arg(title, listedTitles(views)));
}

}  // namespace plotix
