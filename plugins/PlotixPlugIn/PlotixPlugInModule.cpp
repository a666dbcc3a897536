#include "plugins/PlotixPlugIn/PlotixPlugInModule.h"

#include "plugins/PlotixPlugIn/KTVPlotixPlugIn.h"
#include "plugins/PlotixPlugIn/KTVPlotixToolbarPlugIn.h"

namespace {

const QString kTrendClassName = QStringLiteral("KTVPlotixPlugIn");
const QString kToolbarClassName = QStringLiteral("KTVPlotixToolbarPlugIn");

}  // namespace

void KTVPlotixPlugInClass::graph(KTVAgentPtr agent, plotix::OptionalDate fromDate, plotix::OptionalDate toDate,
                                 QVariant properties, QString title, QSizeF size, QObject* target, QByteArray selector)
{
    std::optional<QStringList> names;
    if (properties.isValid())
        names = properties.toStringList();
    KTVPlotixPlugIn::graph(agent, fromDate, toDate, names, title, size, target, selector);
}

QStringList PlotixPlugInModule::classNames() const
{
    return {kTrendClassName, kToolbarClassName};
}

KTVPlugInPtr PlotixPlugInModule::instantiate(const QString& className, const Arguments& arguments)
{
    if (className == kToolbarClassName)
        return KTVPlotixToolbarPlugIn::initWithAgent(arguments.agent, arguments.siteWindowController);
    if (className != kTrendClassName)
        return nullptr;
    return KTVPlotixPlugIn::initWithAgent(arguments.agent, arguments.siteWindowController, arguments.tables,
                                          arguments.fromDate, arguments.toDate);
}

KTVPlugInPtr PlotixPlugInModule::instantiate(const QString& className, KTVDecoder& decoder)
{
    if (className == kToolbarClassName)
        return KTVPlotixToolbarPlugIn::initWithCoder(decoder);
    return className == kTrendClassName ? KTVPlotixPlugIn::initWithCoder(decoder) : nullptr;
}

QObject* PlotixPlugInModule::classObject(const QString& className)
{
    return className == kTrendClassName ? &m_trendClass : nullptr;
}
