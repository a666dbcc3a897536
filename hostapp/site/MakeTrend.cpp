#include "hostapp/site/MakeTrend.h"

#include "base/ReportableError.h"
#include "hostapp/site/ModuleNames.h"
#include "hostapp/site/PlugInStore.h"
#include "hostapp/site/TrendReading.h"

namespace plotix {

KTVPlugInPtr makeTrend(KTVPlugInModule& module, const TrendRequest& trend,
                       KTVSiteWindowController* siteWindowController)
{
    const KTVPlugInModule::Arguments arguments{trend.agent, siteWindowController, trend.properties, trend.from,
                                               trend.to};
    KTVPlugInPtr plugIn = module.instantiate(QString::fromLatin1(kTrendClass), arguments);
    if (plugIn)
        plugIn->setTitle(trend.title);
    chooseReadingOfNew(plugIn.get());
    chooseLookOfNew(plugIn.get(), trend.look);
    return plugIn;
}

KTVPlugInPtr requireTrend(KTVPlugInModule& module, const TrendRequest& trend)
{
    KTVPlugInPtr plugIn = makeTrend(module, trend);
    if (!plugIn)
        throw ReportableError(QStringLiteral("The plug-in module makes no trend view; install Plotix again."));
    return plugIn;
}

void storeTrend(KTVPlugInModule& module, const TrendRequest& trend)
{
    const KTVPlugInPtr plugIn = requireTrend(module, trend);
    plugIn->view();  // the dates given at construction reach the archive through the loaded view
    // Stored before the records arrive, because those would move the dates to where the records begin and end.
    PlugInStore(trend.document, &module).store(*plugIn);
}

}  // namespace plotix
