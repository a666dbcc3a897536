// Construction, archive, view setup, teardown, description.
//
// Rules of this room:
//  1. All construction defaults live in the longest variant. Absent tables stay absent; decoding yields an empty list.
//  2. The view's setup has a fixed order: the first fetch starts before the column layout is restored and before the
//     sharing button is told when to act. The base's setup is not called, and no graph is built here.
//  3. Off screen nothing may ask for `view()`: it would load the view, press Return, and fetch a second time.

#include "plugins/PlotixPlugIn/KTVPlotixPlugIn.h"

#include "plugins/PlotixPlugIn/HeadingPlace.h"
#include "plugins/PlotixPlugIn/PlugInBundle.h"
#include "plugins/PlotixPlugIn/TrendAccess.h"
#include "plugins/PlotixPlugIn/TrendRootView.h"
#include "plugins/PlotixPlugIn/host/KTVHelpManager.h"
#include "plugins/PlotixPlugIn/host/KTVHostServices.h"
#include "plugins/PlotixPlugIn/host/KTVUserInterface.h"
#include "plugins/PlotixPlugIn/reading/ReadSpans.h"
#include "plugins/PlotixPlugIn/reading/TrendReader.h"
#include "plugins/PlotixPlugIn/reading/trend/TableFigures.h"
#include "ui_KTVPlotixPlugIn.h"

namespace {

void encodePlotRange(KTVEncoder& encoder, const CPTPlotRange& range)
{
    encoder.encodeObject(QStringLiteral("plotRangeForY"), [&range](plotix::KeyedEncoder& object) {
        object.encodeValue(QStringLiteral("location"), range.location);
        object.encodeValue(QStringLiteral("length"), range.length);
    });
}

CPTPlotRange decodePlotRange(const KTVDecoder& decoder)
{
    CPTPlotRange range;
    decoder.decodeObject(QStringLiteral("plotRangeForY"), [&range](plotix::KeyedDecoder& object) {
        range.location = object.decodeValue(QStringLiteral("location")).toDouble();
        range.length = object.decodeValue(QStringLiteral("length")).toDouble();
    });
    return range;
}

KTVDataClusterViewController::Pointer decodeDateController(const KTVDecoder& decoder)
{
    KTVDataClusterViewController::Pointer controller;
    decoder.decodeObject(QStringLiteral("dataClusterViewController"), [&controller](plotix::KeyedDecoder& object) {
        controller = KTVDataClusterViewController::initWithCoder(object);
    });
    return controller ? controller : KTVDataClusterViewController::make();
}

/// Makes Tab go from each to the next. The date panel joins the view last, yet stands first in it.
void orderTabStops(const std::vector<QWidget*>& stops)
{
    for (std::size_t index = 1; index < stops.size(); ++index)
        QWidget::setTabOrder(stops[index - 1], stops[index]);
}

}  // namespace

KTVPlotixPlugIn::KTVPlotixPlugIn()
    : m_readSpans(std::make_unique<plotix::ReadSpans>([this]() -> std::optional<plotix::TimeSpan> {
          const QVariantList dates = m_dataCluster ? shownRange() : QVariantList();
          return dates.isEmpty() ? std::nullopt
                                 : std::optional(plotix::TimeSpan{dates[0].toDouble(), dates[1].toDouble()});
      }))
{
    m_access = std::make_unique<TrendAccess>(*this);
    m_reader = std::make_unique<plotix::TrendReader>(*m_access);
    plugInBundle::registerResources();
}

QObject* KTVPlotixPlugIn::readSpans() const
{
    return m_readSpans.get();
}

KTVPlotixPlugIn::Ptr KTVPlotixPlugIn::initWithAgent(KTVAgentPtr agent, KTVSiteWindowController* siteWindowController)
{
    return initWithAgent(std::move(agent), siteWindowController, std::nullopt);
}

KTVPlotixPlugIn::Ptr KTVPlotixPlugIn::initWithAgent(KTVAgentPtr agent, KTVSiteWindowController* siteWindowController,
                                                    const Tables& tables)
{
    return initWithAgent(std::move(agent), siteWindowController, tables, std::nullopt, std::nullopt);
}

KTVPlotixPlugIn::Ptr KTVPlotixPlugIn::initWithAgent(KTVAgentPtr agent, KTVSiteWindowController* siteWindowController,
                                                    const Tables& tables, const OptionalDate& fromDate,
                                                    const OptionalDate& toDate)
{
    const Ptr plugIn(new KTVPlotixPlugIn);
    if (!plugIn->KTVPlugIn::initWithAgent(std::move(agent), siteWindowController))
        return nullptr;
    plugIn->initCommon();
    plugIn->m_properties = tables;
    plugIn->m_dataCluster = KTVDataClusterViewController::make();
    plugIn->m_propertyDetailsShowing = true;
    plugIn->m_dataCluster->setDelegate(plugIn.get());
    plugIn->m_fromDate = fromDate;
    plugIn->m_toDate = toDate;
    return plugIn;
}

KTVPlotixPlugIn::Ptr KTVPlotixPlugIn::initWithCoder(KTVDecoder& decoder)
{
    const Ptr plugIn(new KTVPlotixPlugIn);
    if (!plugIn->KTVPlugIn::initWithCoder(decoder))
        return nullptr;
    plugIn->initCommon();
    plugIn->decodeFields(decoder);
    return plugIn;
}

void KTVPlotixPlugIn::initCommon()
{
    if (!m_infoTableArray)
        m_infoTableArray = std::make_shared<InfoTableArray>();
    m_deletionArray.clear();
}

void KTVPlotixPlugIn::encodeWithCoder(KTVEncoder& encoder) const
{
    KTVPlugIn::encodeWithCoder(encoder);
    encoder.encodeProperties(QStringLiteral("tables"), m_properties.value_or(KTVPropertyList()));
    encoder.encodeObject(QStringLiteral("dataClusterViewController"), [this](plotix::KeyedEncoder& object) {
        const bool forgets = m_reading.forgetsRefusedRange.value_or(false);
        m_dataCluster->encodeWithCoder(object, forgets ? KTVDataClusterViewController::RefusedRange::Forgotten
                                                       : KTVDataClusterViewController::RefusedRange::Stored);
    });
    encoder.encodeBool(QStringLiteral("propertyDetailsShowing"), m_propertyDetailsShowing);
    if (m_plotRangeForY)
        encodePlotRange(encoder, *m_plotRangeForY);
    encoder.encodeValue(QStringLiteral("infoTableArray"), variantListFromInfoTableArray(*m_infoTableArray));

    if (const QVariantMap options = reading(); !options.isEmpty())
        encoder.encodeValue(QStringLiteral("reading"), options);

    // With the view loaded, the table's own layout is archived; without it, the one read from the archive.
    if (m_infoTable)
        encoder.encodeValue(QStringLiteral("tableColumns"), m_infoTable->dictionaryForAutosavingLayout());
    else if (m_tableColumns)
        encoder.encodeValue(QStringLiteral("tableColumns"), *m_tableColumns);
}

void KTVPlotixPlugIn::decodeFields(KTVDecoder& decoder)
{
    m_properties = decoder.decodeProperties(QStringLiteral("tables")).value_or(KTVPropertyList());
    m_dataCluster = decodeDateController(decoder);
    m_propertyDetailsShowing = decoder.decodeBool(QStringLiteral("propertyDetailsShowing"));
    m_plotRangeForY = decodePlotRange(decoder);
    m_infoTableArray = infoTableArrayFromVariantList(decoder.decodeValue(QStringLiteral("infoTableArray")).toList());
    m_dataCluster->setDelegate(this);
    const QVariantMap chosen = decoder.decodeValue(QStringLiteral("reading")).toMap();
    m_reading = plotix::mergedReadingOptions({}, chosen);
    m_reader->choose(chosen);
    if (decoder.containsKey(QStringLiteral("tableColumns")))
        m_tableColumns = decoder.decodeValue(QStringLiteral("tableColumns")).toMap();
}

QWidget* KTVPlotixPlugIn::loadView()
{
    auto* rootView = new TrendRootView;
    Ui::KTVPlotixPlugIn ui;
    ui.setupUi(rootView);
    m_hostView = ui.hostView;
    m_dataClusterHostView = ui.dataClusterHostView;
    m_dragDropView = ui.dragDropView;
    m_infoTable = ui.infoTable;
    m_propertyDetailsView = ui.propertyDetailsView;
    m_propertyDetailsDisclosureButton = ui.propertyDetailsDisclosureButton;
    m_propertyDetailsTextField = ui.propertyDetailsTextField;
    m_sharingButton = ui.sharingButton;
    m_infoTableArrayController = std::make_unique<InfoTableArrayController>();
    m_infoTableArrayController->setContent(m_infoTableArray);
    connectInfoTable();
    connectActions();
    applyReading();
    arrangement();  // takes the frames of the interface description, before any resize
    connect(rootView, &TrendRootView::resized, this, &KTVPlotixPlugIn::rootViewDidResize);
    return rootView;
}

void KTVPlotixPlugIn::addTableHeading()
{
    plotix::TableFigures* figures = m_reader->tableFigures();
    if (!figures)
        return;
    QWidget* heading = figures->makeHeading(m_propertyDetailsTextField->parentWidget());
    new HeadingPlace(heading, m_propertyDetailsTextField);  // a child of the label
    QWidget* before = m_propertyDetailsDisclosureButton;
    for (QAbstractButton* button : heading->findChildren<QAbstractButton*>()) {
        QWidget::setTabOrder(before, button);
        before = button;
    }
}

void KTVPlotixPlugIn::connectActions()
{
    QAbstractButton* disclosure = m_propertyDetailsDisclosureButton;
    connect(disclosure, &QAbstractButton::clicked, this,
            [this, disclosure] { propertyDetailsDisclosureButtonAction(disclosure); });
    if (auto* arrow = qobject_cast<QToolButton*>(disclosure))
        connect(arrow, &QToolButton::toggled, arrow,
                [arrow](bool shown) { arrow->setArrowType(shown ? Qt::DownArrow : Qt::RightArrow); });
}

void KTVPlotixPlugIn::viewDidLoad()
{
    m_hostView->setKeyDelegate(this);
    m_messageViewController = KTVMessageViewController::create();
    m_dragDropView->setDelegate(this);
    addObservers(agent());
    m_propertyDetailsDisclosureButton->setChecked(m_propertyDetailsShowing);
    if (!m_propertyDetailsShowing)
        hidePropertyDetailsView();
    m_dataClusterHostView->layout()->addWidget(m_dataCluster->view());
    orderTabStops({m_dragDropView, m_dataCluster->fromDate(), m_dataCluster->toDate(),
                   m_dataCluster->quickDatePopupButton(), m_dataCluster->refreshButton(), m_sharingButton, m_hostView});
    if (m_fromDate)
        m_dataCluster->setFromDateValue(m_fromDate);
    if (m_toDate)
        m_dataCluster->setToDateValue(m_toDate);
    m_dataCluster->returnKeyPressed(nullptr);
    m_infoTable->adjustLayoutForAutosavedDictionary(m_tableColumns.value_or(QVariantMap()));
    m_reader->viewLoaded();
    connectLooks();
    addTableHeading();
    // On the press and not on the release, so that the picker opens while the button is held.
    connect(m_sharingButton, &QAbstractButton::pressed, this, [this] { sharingButtonClicked(m_sharingButton); });
}

// The order is part of the contract: overlay and date panel are taken out of their superviews first, and the observers
// are removed while properties and agent still exist.
KTVPlotixPlugIn::~KTVPlotixPlugIn()
{
    m_imageSize.clear();
    m_graphTitle.clear();
    removeMessageOverlay();
    m_messageViewController.reset();
    if (m_dataCluster) {
        m_dataCluster->setDelegate(nullptr);
        removeFromSuperview(m_dataCluster->view());
    }
    m_dataCluster.reset();
    m_toDate.reset();
    m_fromDate.reset();
    removeObservers(agent());
    releaseGraph();
    m_reader.reset();
    m_plotRangeForY.reset();
    m_binders.reset();
    m_colorNameDictionary.reset();
    if (m_hostView)
        m_hostView->setKeyDelegate(nullptr);
    unloadView();
    m_infoTableArrayController.reset();
    m_infoTableArray.reset();
    m_deletionArray.clear();
    m_properties.reset();
}

QString KTVPlotixPlugIn::name() const
{
    return plugInBundle::name();
}

QString KTVPlotixPlugIn::textDescription() const
{
    return plugInBundle::textDescription();
}

QIcon KTVPlotixPlugIn::icon() const
{
    return plugInBundle::icon();
}

QString KTVPlotixPlugIn::bundleIdentifier() const
{
    return QString::fromLatin1(plugInBundle::kIdentifier);
}

int KTVPlotixPlugIn::bundleVersion() const
{
    return plugInBundle::kVersion;
}

std::optional<QString> KTVPlotixPlugIn::bundleShortVersion() const
{
    return QString::fromLatin1(plugInBundle::kShortVersion);
}

std::optional<QString> KTVPlotixPlugIn::group() const
{
    return QStringLiteral("Plotix");
}

void KTVPlotixPlugIn::helpButtonAction(QObject* /*sender*/)
{
    KTVHelpManager::sharedHelpManager()->openHelpAnchor(QStringLiteral("trend"));
}
