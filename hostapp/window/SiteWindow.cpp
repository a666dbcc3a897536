#include "hostapp/window/SiteWindow.h"

#include "base/ReportableError.h"
#include "hostapp/document/ArchiveManager.h"
#include "hostapp/window/AnnotationAsking.h"
#include "hostapp/window/DesktopUserInterface.h"
#include "hostapp/window/EmptyStateView.h"
#include "hostapp/window/ListRowDelegate.h"
#include "hostapp/window/LiveControls.h"
#include "hostapp/window/PlugInToolbar.h"
#include "hostapp/window/PropertyHistory.h"
#include "hostapp/window/PropertyListModel.h"
#include "hostapp/window/PropertyListView.h"
#include "hostapp/window/RecordingIndicator.h"
#include "hostapp/window/Regions.h"
#include "hostapp/window/SiteDrops.h"
#include "hostapp/window/SiteEditor.h"
#include "hostapp/window/TrendHistory.h"
#include "hostapp/window/TrendKeys.h"
#include "hostapp/window/TrendOutputs.h"
#include "hostapp/window/WebAddressBar.h"
#include "hostapp/window/WebSwitch.h"
#include "hostapp/window/importing/ImportSequence.h"

#include <QtCore/QDeadlineTimer>
#include <QtCore/QFileInfo>
#include <QtWidgets/QApplication>
#include <QtWidgets/QLabel>
#include <QtWidgets/QListView>
#include <QtWidgets/QSplitter>
#include <QtWidgets/QStackedWidget>
#include <QtWidgets/QStatusBar>
#include <QtWidgets/QVBoxLayout>

namespace plotix {

namespace {
constexpr int kStoreInterval = 2000;  // milliseconds between looks for changes to store
}  // namespace

SiteWindow::SiteWindow(std::shared_ptr<SiteDocument> document, const WindowServices& services)
    : m_controller(std::make_unique<SiteWindowController>(std::move(document), services.module)),
      m_memory(m_controller->siteDocument()),
      m_services(services),
      m_properties(std::make_unique<PropertyListModel>(m_controller->siteDocument()))
{
    setObjectName(QStringLiteral("siteWindow"));
    m_controller->setWindow(this);
    const int unreadable = m_controller->loadPlugIns();
    m_actions = buildSiteMenus(this, &m_undoStack);
    buildLayout();
    addToolBar(Qt::TopToolBarArea, new PlugInToolbar(*m_controller, this));
    connectLists();
    connectFileActions();
    connectOtherActions();
    connectTrendActions();
    makeEditor();
    connectImporting();
    connectWindowActions();
    makeLiveControls();
    makeWebSwitch();
    m_trendKeys = std::make_unique<TrendKeys>([this] { return trendInFront(); });
    restoreWindow();
    m_storeTimer.start(kStoreInterval);
    if (unreadable > 0)
        statusBar()->showMessage(tr("%n trend(s) of this site cannot be read by this version.", nullptr, unreadable));
}

SiteWindow::~SiteWindow()
{
    m_trendKeys.reset();
    m_web->stop();  // before anything of the window ends: browsers' requests ask its plug-ins
    m_storeTimer.stop();
    m_importing.reset();
    m_live.reset();
    m_drops.reset();
    // The plug-ins take their views out of the stack, so they are released while it still exists.
    disconnect(m_trendList->selectionModel(), nullptr, this, nullptr);
    disconnect(qApp, nullptr, this, nullptr);
    m_controller->disconnect();
    disconnect(&m_controller->follower(), nullptr, this, nullptr);
    m_trendList->setModel(nullptr);
    m_propertyView->setModel(nullptr);
    m_trendHistory.reset();
    m_undoStack.clear();
    m_annotationAsking.reset();
    m_editor.reset();
    m_propertyHistory.reset();
    m_controller.reset();
}

QWidget* SiteWindow::makeSection(const QString& title, QWidget* content)
{
    auto* section = new QWidget(this);
    auto* label = new QLabel(title, section);
    QFont small = label->font();
    small.setBold(true);
    small.setPointSizeF(small.pointSizeF() * 0.9);
    label->setFont(small);
    label->setForegroundRole(QPalette::PlaceholderText);
    label->setContentsMargins(10, 8, 10, 4);
    label->setBuddy(content);
    auto* column = new QVBoxLayout(section);
    column->setContentsMargins(0, 0, 0, 0);
    column->setSpacing(0);
    column->addWidget(label);
    column->addWidget(content);
    return section;
}

void SiteWindow::buildLayout()
{
    m_trendList = new QListView(this);
    m_trendList->setObjectName(QStringLiteral("trendList"));
    m_trendList->setAccessibleName(tr("Trends"));
    m_trendList->setProperty(kRegionProperty, kTrendListRegion);
    m_trendList->setFrameShape(QFrame::NoFrame);
    m_trendList->setIconSize({18, 18});
    m_trendList->setItemDelegate(new ListRowDelegate(m_trendList));
    m_trendList->setEditTriggers(QAbstractItemView::EditKeyPressed | QAbstractItemView::DoubleClicked);
    m_trendList->setDragDropMode(QAbstractItemView::InternalMove);
    m_trendList->setDefaultDropAction(Qt::MoveAction);
    m_trendList->setDragDropOverwriteMode(false);
    m_trendList->setModel(&m_controller->sourceList());
    m_trendList->setContextMenuPolicy(Qt::ActionsContextMenu);
    m_trendList->addActions({m_actions.renameTrend, m_actions.openInWindow, m_actions.bringBack, m_actions.moveUp,
                             m_actions.moveDown, m_actions.deleteTrend});
    m_propertyView = new PropertyListView(this);
    m_propertyView->setProperty(kRegionProperty, kPropertyListRegion);
    m_propertyView->setPropertyListModel(m_properties.get());
    connect(m_propertyView, &PropertyListView::trendWanted, this, &SiteWindow::newTrend);
    m_lists = new QSplitter(Qt::Vertical, this);
    m_lists->addWidget(makeSection(tr("T&RENDS"), m_trendList));
    m_lists->addWidget(makeSection(tr("&PROPERTIES"), m_propertyView));
    m_emptyState = new EmptyStateView(this);
    connect(m_emptyState, &EmptyStateView::pressed, this, &SiteWindow::emptyStateButtonPressed);
    m_stack = new QStackedWidget(this);
    m_stack->addWidget(m_emptyState);
    m_columns = new QSplitter(Qt::Horizontal, this);
    m_columns->addWidget(m_lists);
    m_columns->addWidget(m_stack);
    m_columns->setStretchFactor(1, 1);
    for (QSplitter* splitter : {m_columns, m_lists}) {
        splitter->setHandleWidth(1);
        splitter->setChildrenCollapsible(false);
    }
    m_lists->setMinimumWidth(140);
    m_columns->setSizes({240, 1040});
    m_lists->setSizes({260, 400});
    setCentralWidget(m_columns);
    statusBar()->setSizeGripEnabled(false);
    statusBar()->hide();
    connect(statusBar(), &QStatusBar::messageChanged, this, &SiteWindow::showStatusBarIfNeeded);
}

void SiteWindow::makeWebSwitch()
{
    auto* address = new WebAddressBar(this);
    statusBar()->addPermanentWidget(address);  // which shows it; the switch hides it again
    m_web = std::make_unique<WebSwitch>(*m_controller, m_services.webServing, m_actions, address);
    connect(m_web.get(), &WebSwitch::addressShown, this, &SiteWindow::showStatusBarIfNeeded);
    connect(m_web.get(), &WebSwitch::failed, this,
            [this](const QString& message, const QString& text) { showAlert(message, text); });
    showStatusBarIfNeeded();
}

void SiteWindow::makeLiveControls()
{
    m_live = std::make_unique<LiveControls>(
        LiveControls::Surroundings{*m_controller, m_actions, [this] { return trendInFront(); }, this});
    statusBar()->addPermanentWidget(m_live->indicator());
    m_live->indicator()->hide();  // adding it to the status bar has shown it
    connect(m_live.get(), &LiveControls::switched, this, &SiteWindow::showStatusBarIfNeeded);
    connect(m_live.get(), &LiveControls::followingChanged, this, &SiteWindow::updateActions);
    connect(m_live.get(), &LiveControls::told, this,
            [this](const QString& message) { statusBar()->showMessage(message); });
    connect(m_live.get(), &LiveControls::failed, this,
            [this](const QString& message, const QString& text) { showAlert(message, text); });
    m_live->beginAgain();
}

void SiteWindow::showStatusBarIfNeeded()
{
    statusBar()->setVisible(!statusBar()->currentMessage().isEmpty() || (m_web && m_web->isOn()) ||
                            (m_live && m_live->isRecording()));
}

void SiteWindow::connectLists()
{
    connect(m_trendList->selectionModel(), &QItemSelectionModel::currentChanged, this, [this] {
        showSelection();
        storeNow();
    });
    connect(&m_controller->sourceList(), &QAbstractItemModel::rowsRemoved, this, &SiteWindow::showSelection);
    connect(&m_controller->sourceList(), &QAbstractItemModel::dataChanged, this, &SiteWindow::updateActions);
    connect(m_controller.get(), &SiteWindowController::selectionRequested, this, &SiteWindow::selectPlugIn);
    connect(m_controller.get(), &SiteWindowController::separateWindowChanged, this, &SiteWindow::showSelection);
    connect(m_properties.get(), &PropertyListModel::tickedChanged, this, &SiteWindow::updateActions);
    const auto storingFailed = [this](const QString& message) {
        if (message == m_lastStoringFailure)  // the same failure every two seconds is shown once
            return;
        m_lastStoringFailure = message;
        showAlert(tr("Changes could not be saved"), message);
    };
    connect(m_controller.get(), &SiteWindowController::storingFailed, this, storingFailed);
    connect(m_controller.get(), &SiteWindowController::changedByOthers, this,
            [this](const QString& message) { statusBar()->showMessage(message); });
    SiteDocument* document = m_controller->siteDocument().get();
    connect(document, &SiteDocument::changeNotStored, this, storingFailed);
    connect(document, &SiteDocument::recordsNotRead, this,
            [this, last = QString(), quiet = QDeadlineTimer()](const QString& message, RecordFailure failure) mutable {
                if (failure == RecordFailure::Unreadable) {
                    statusBar()->showMessage(message);  // the trend has shown an alert already; this is the reason
                    return;
                }
                // Several trends, or a followed one, may fail in the same way: shown once a minute.
                if (message == last && !quiet.hasExpired())
                    return;
                last = message;
                quiet.setRemainingTime(std::chrono::minutes(1));
                showAlert(failure == RecordFailure::NotComputed   ? tr("A property could not be computed")
                          : failure == RecordFailure::NotUnpacked ? tr("Some records could not be read")
                                                                  : tr("The records could not be shown"),
                          message);
            });
    const auto showName = [this, document] {
        setWindowTitle((document->isReadOnly() ? tr("%1 (may only be looked at) – Plotix") : tr("%1 – Plotix"))
                           .arg(document->siteName()));
        setWindowFilePath(document->path());
    };
    connect(document, &SiteDocument::siteChanged, this, showName);
    connect(document, &SiteDocument::replaced, this, [this, showName](const QString& message) {
        showName();
        updateActions();
        showAlert(tr("The site's file was replaced"), message);
    });
    connect(document, &SiteDocument::agentsChanged, this, &SiteWindow::showSelection);
    connect(&m_storeTimer, &QTimer::timeout, this, &SiteWindow::storeNow);
    showName();
}

KTVPlugInPtr SiteWindow::selectedPlugIn() const
{
    return m_controller->sourceList().plugInAt(m_trendList->currentIndex().row());
}

void SiteWindow::selectPlugIn(const KTVPlugInPtr& plugIn)
{
    SourceListModel& list = m_controller->sourceList();
    m_trendList->setCurrentIndex(list.index(list.rowOf(plugIn.get())));
}

void SiteWindow::showSelection()
{
    const KTVPlugInPtr plugIn = selectedPlugIn();
    if (plugIn && !m_controller->separateWindowOf(plugIn.get()))
        showPlugInView(plugIn);
    else
        showEmptyState();
    updateActions();
}

void SiteWindow::showPlugInView(const KTVPlugInPtr& plugIn)
{
    QWidget* view = plugIn->view();
    if (view->actions().isEmpty())  // a plug-in shows them in a menu of its own
        view->addActions(
            {m_actions.refresh, m_actions.fit, m_actions.follow, m_actions.exportPicture, m_actions.print});
    if (m_stack->indexOf(view) < 0)
        m_stack->addWidget(view);
    m_stack->setCurrentWidget(view);
}

void SiteWindow::showEmptyState()
{
    const SiteDocument& document = *m_controller->siteDocument();
    const KTVPlugInPtr plugIn = selectedPlugIn();
    m_emptyStateActions.clear();
    m_stack->setCurrentWidget(m_emptyState);
    if (plugIn) {
        m_emptyStateActions = {[this] { openInSeparateWindow(); }, [this] { bringBack(); }};
        m_emptyState->show(titleOf(*plugIn), tr("This trend is shown in a window of its own."),
                           {tr("Show Window"), tr("Bring It Back")});
    } else if (document.agents().empty()) {
        m_emptyStateActions = {[this] { askAndImportAll({QString()}); }};
        m_emptyState->show(tr("This site has no measurements yet"),
                           tr("Import a text file with a column of times and columns of numbers, or drop one here."),
                           {tr("Import…")});
    } else if (m_controller->sourceList().rowCount() == 0) {
        m_emptyStateActions = {[this] { newTrend(); }, [this] { askAndImportAll({QString()}); }};
        m_emptyState->show(tr("This site has no trend yet"),
                           tr("Tick properties in the list at the left and press New Trend, or import more "
                              "measurements. Without ticks the trend shows every property."),
                           {tr("New Trend"), tr("Import…")});
    } else {
        m_emptyState->show(tr("No trend selected"), tr("Select a trend in the list at the left."), {});
    }
}

void SiteWindow::emptyStateButtonPressed(int button)
{
    // Copied, because the action may rebuild the list it is in; and posted, because it may rebuild the button.
    const auto action = m_emptyStateActions.at(static_cast<std::size_t>(button));
    QTimer::singleShot(0, this, action);
}

}  // namespace plotix
