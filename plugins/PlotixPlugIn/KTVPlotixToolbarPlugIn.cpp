// Construction, archive, description, toolbar item.
//
// Rules of this room:
//  1. The decoded date controller is always replaced: the sheet of a reopened document begins with today.
//  2. The title typed last is never kept: the archived one is what the plug-in was made with.
//  3. Decoding never fails on a missing key; an absent title is an empty one.

#include "plugins/PlotixPlugIn/KTVPlotixToolbarPlugIn.h"

#include "plugins/PlotixPlugIn/PlugInBundle.h"
#include "plugins/PlotixPlugIn/logic/WebText.h"

namespace {

// Stored: never change.
const QString kDateControllerKey = QStringLiteral("dataClusterViewController");
const QString kLastUsedTitleKey = QStringLiteral("lastUsedTitle");
const QString kOpenInSeparateWindowKey = QStringLiteral("openInSeparateWindow");

}  // namespace

KTVPlotixToolbarPlugIn::KTVPlotixToolbarPlugIn()
{
    plugInBundle::registerResources();
}

KTVPlotixToolbarPlugIn::Ptr KTVPlotixToolbarPlugIn::initWithAgent(KTVAgentPtr agent,
                                                                  KTVSiteWindowController* siteWindowController)
{
    const Ptr plugIn(new KTVPlotixToolbarPlugIn);
    if (!plugIn->KTVPlugIn::initWithAgent(std::move(agent), siteWindowController))
        return nullptr;
    plugIn->m_lastUsedTitle = QStringLiteral("Plotix");
    plugIn->initCommon();
    return plugIn;
}

KTVPlotixToolbarPlugIn::Ptr KTVPlotixToolbarPlugIn::initWithCoder(KTVDecoder& decoder)
{
    const Ptr plugIn(new KTVPlotixToolbarPlugIn);
    if (!plugIn->KTVPlugIn::initWithCoder(decoder))
        return nullptr;
    plugIn->decodeFields(decoder);
    plugIn->initCommon();
    return plugIn;
}

void KTVPlotixToolbarPlugIn::decodeFields(const KTVDecoder& decoder)
{
    m_lastUsedTitle = decoder.decodeValue(kLastUsedTitleKey).toString();
    decoder.decodeObject(kDateControllerKey, [this](plotix::KeyedDecoder& object) {
        m_dataCluster = KTVDataClusterViewController::initWithCoder(object);
    });
    m_openInSeparateWindow = decoder.decodeBool(kOpenInSeparateWindowKey);
}

void KTVPlotixToolbarPlugIn::initCommon()
{
    // Replaces a decoded panel too: otherwise a site opened tomorrow would offer today's dates for a new view.
    m_dataCluster = KTVDataClusterViewController::make();
    m_desiredTitle = m_lastUsedTitle;
}

void KTVPlotixToolbarPlugIn::encodeWithCoder(KTVEncoder& encoder) const
{
    KTVPlugIn::encodeWithCoder(encoder);
    encoder.encodeObject(kDateControllerKey,
                         [this](plotix::KeyedEncoder& object) { m_dataCluster->encodeWithCoder(object); });
    encoder.encodeValue(kLastUsedTitleKey, m_lastUsedTitle);
    encoder.encodeBool(kOpenInSeparateWindowKey, m_openInSeparateWindow);
}

KTVPlotixToolbarPlugIn::~KTVPlotixToolbarPlugIn()
{
    m_dataCluster.reset();
    delete m_configurationWindow;
    unloadView();
}

QString KTVPlotixToolbarPlugIn::name() const
{
    return plugInBundle::name();
}

QString KTVPlotixToolbarPlugIn::textDescription() const
{
    return plugInBundle::textDescription();
}

std::optional<QString> KTVPlotixToolbarPlugIn::htmlDescription() const
{
    return plotix::plugInHtmlDescription(bundleShortVersion(), bundleVersion());
}

QIcon KTVPlotixToolbarPlugIn::icon() const
{
    return plugInBundle::icon();
}

QString KTVPlotixToolbarPlugIn::bundleIdentifier() const
{
    return QString::fromLatin1(plugInBundle::kIdentifier);
}

int KTVPlotixToolbarPlugIn::bundleVersion() const
{
    return plugInBundle::kVersion;
}

std::optional<QString> KTVPlotixToolbarPlugIn::bundleShortVersion() const
{
    return QString::fromLatin1(plugInBundle::kShortVersion);
}

QAction* KTVPlotixToolbarPlugIn::toolbarItem()
{
    auto* item = new QAction(icon(), name());
    item->setObjectName(bundleIdentifier());
    connect(item, &QAction::triggered, this, [this, item] { toolbarItemAction(item); });
    return item;
}

void KTVPlotixToolbarPlugIn::toolbarItemAction(QObject* /*sender*/)
{
    showPlotixSetupWindow();
}
