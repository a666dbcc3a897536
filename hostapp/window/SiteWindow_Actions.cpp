// What the menus of a site window do.
//
// Operations of the trend itself are sent by name to the selected plug-in. An action that cannot act is greyed, with
// the reason as its tool tip; nothing is hidden.

#include "hostapp/window/SiteWindow.h"

#include "base/ReportableError.h"
#include "hostapp/print/ReportPrinter.h"
#include "hostapp/site/NewTrend.h"
#include "hostapp/site/PlugInOperations.h"
#include "hostapp/window/AppearanceMenu.h"
#include "hostapp/window/DesktopUserInterface.h"
#include "hostapp/window/EmptyStateView.h"
#include "hostapp/window/LiveControls.h"
#include "hostapp/window/PropertyListModel.h"
#include "hostapp/window/PropertyListView.h"
#include "hostapp/window/Regions.h"
#include "hostapp/window/ReportChoice.h"
#include "hostapp/window/SiteDetailsDialog.h"
#include "hostapp/window/SiteEditor.h"
#include "hostapp/window/TrendOutputs.h"
#include "hostapp/window/importing/ImportSequence.h"
#include "records/store/RecordStore.h"

#include <QtCore/QFile>
#include <QtGui/QKeyEvent>
#include <QtWidgets/QAbstractSpinBox>
#include <QtWidgets/QApplication>
#include <QtWidgets/QFileDialog>
#include <QtWidgets/QLineEdit>
#include <QtWidgets/QListView>
#include <QtWidgets/QMessageBox>
#include <QtWidgets/QPushButton>
#include <QtWidgets/QStackedWidget>
#include <QtWidgets/QStatusBar>

#include <algorithm>

namespace plotix {

namespace {
constexpr int kToldTime = 10'000;  // milliseconds

/// Properties of one name are wanted beside each other, in the trend of the first source: then those of the others are
/// taken out and answered.
std::vector<std::shared_ptr<SiteProperty>> takenBesideTheFirst(std::vector<PropertyListModel::Ticked>& wanted)
{
    std::vector<std::shared_ptr<SiteProperty>> others;
    if (wanted.size() < 2)
        return others;
    const KTVPropertyList& first = wanted.front().properties;
    const auto isOfOneName = [&first](const KTVPropertyPtr& property) {
        return std::any_of(first.begin(), first.end(),
                           [&](const KTVPropertyPtr& each) { return each->name() == property->name(); });
    };
    bool areTogether = true;
    for (auto each = wanted.begin() + 1; each != wanted.end(); ++each) {
        areTogether = areTogether && std::any_of(each->properties.begin(), each->properties.end(), isOfOneName);
        for (const KTVPropertyPtr& property : each->properties)
            others.push_back(std::dynamic_pointer_cast<SiteProperty>(property));
    }
    if (!areTogether)
        return {};
    wanted.resize(1);
    return others;
}

bool isTextField(const QWidget* widget)
{
    return qobject_cast<const QLineEdit*>(widget) || qobject_cast<const QAbstractSpinBox*>(widget);
}

TrendSpan spanFrom(const std::optional<std::pair<double, double>>& range)
{
    return range ? TrendSpan(std::pair(Date{range->first}, Date{range->second})) : std::nullopt;
}

constexpr auto kSiteFilter = QT_TRANSLATE_NOOP("plotix::SiteWindow", "Plotix sites (*.plotix)");
}  // namespace

void SiteWindow::makeOutputs()
{
    m_outputs = std::make_unique<TrendOutputs>(TrendOutputs::Surroundings{
        *m_controller, *m_services.userInterface, [this] { return windowInFront(); }, [this] { return trendInFront(); },
        [this] { return m_actions.classicReport->isChecked(); }});
    TrendOutputs* const outputs = m_outputs.get();
    connect(outputs, &TrendOutputs::told, this, &SiteWindow::tell);
    connect(m_actions.exportRecords, &QAction::triggered, outputs, &TrendOutputs::exportRecords);
    connect(m_actions.copyPicture, &QAction::triggered, outputs, &TrendOutputs::copyPicture);
    connect(m_actions.copyRecords, &QAction::triggered, outputs, &TrendOutputs::copyRecords);
    connect(m_actions.copyLink, &QAction::triggered, outputs, &TrendOutputs::copyLink);
    connect(m_actions.copyMarkedLink, &QAction::triggered, outputs, &TrendOutputs::copyMarkedLink);
    connect(m_actions.exportPicture, &QAction::triggered, outputs, &TrendOutputs::exportPicture);
    connect(m_actions.exportPNG, &QAction::triggered, outputs, [outputs] { outputs->exportGraph("exportToPNG"); });
    connect(m_actions.exportPDF, &QAction::triggered, outputs, [outputs] { outputs->exportGraph("exportToPDF"); });
    connect(m_actions.exportReport, &QAction::triggered, outputs, &TrendOutputs::exportReport);
    connect(m_actions.print, &QAction::triggered, outputs, &TrendOutputs::printReport);
    connect(m_actions.saveCase, &QAction::triggered, outputs, &TrendOutputs::saveCase);
}

void SiteWindow::connectFileActions()
{
    connect(m_actions.openSite, &QAction::triggered, this, &SiteWindow::askForSite);
    connect(m_actions.openFromServer, &QAction::triggered, this, [this] { openFromServer({}); });
    connect(m_actions.newSite, &QAction::triggered, this, &SiteWindow::askForNewSite);
    connect(m_actions.siteDetails, &QAction::triggered, this, &SiteWindow::askForSiteDetails);
    makeOutputs();
    m_actions.classicReport->setChecked(wantsClassicReport());
    connect(m_actions.classicReport, &QAction::toggled, this, &rememberClassicReport);
    connect(m_actions.close, &QAction::triggered, this, &QWidget::close);
    connect(m_actions.quit, &QAction::triggered, qApp, [] { closeAllSites(Closing::Asked); });
}

void SiteWindow::connectOtherActions()
{
    connect(m_actions.copy, &QAction::triggered, this, &SiteWindow::copy);
    connect(m_actions.refresh, &QAction::triggered, this,
            [this] { sendAction(trendInFront().get(), "refresh", this); });
    connect(m_actions.fit, &QAction::triggered, this, [this] { sendAction(trendInFront().get(), "fitAll", this); });
    connect(m_actions.zoomTimeOnly, &QAction::toggled, this, &SiteWindow::holdModifiers);
    connect(m_actions.zoomValuesOnly, &QAction::toggled, this, &SiteWindow::holdModifiers);
    connect(m_actions.nextRegion, &QAction::triggered, this,
            [this] { focusRegion(*windowInFront(), RegionStep::Next); });
    connect(m_actions.previousRegion, &QAction::triggered, this,
            [this] { focusRegion(*windowInFront(), RegionStep::Previous); });
    fillAppearanceMenu(m_actions.appearance);
    connect(m_actions.newTrend, &QAction::triggered, this, &SiteWindow::newTrend);
    connect(m_actions.help, &QAction::triggered, this,
            [this] { m_services.helpManager->openHelpAnchor(helpAnchor()); });
    connect(m_actions.gettingStarted, &QAction::triggered, this,
            [this] { m_services.helpManager->openHelpAnchor(QStringLiteral("start")); });
    connect(m_actions.about, &QAction::triggered, this, [this] {
        QMessageBox::about(
            this, tr("About Plotix"),
            tr("<h3>Plotix %1</h3><p>Trends of measured properties.</p>").arg(QApplication::applicationVersion()));
    });
}

QString SiteWindow::helpAnchor()
{
    if (windowInFront() != this)
        return QStringLiteral("trend");
    const QWidget* focus = focusWidget();
    if (focus == m_propertyView)
        return QStringLiteral("properties");
    if (m_stack->currentWidget() == m_emptyState)
        return QStringLiteral("start");
    return QStringLiteral("trend");
}

void SiteWindow::updateActions()
{
    const KTVPlugInPtr plugIn = trendInFront();
    const bool readOnly = m_controller->siteDocument()->isReadOnly();
    const QString noTrend = plugIn ? QString() : tr("Select a trend first.");
    const auto needs = [&](const char* action) {
        return respondsToAction(plugIn.get(), action) || !noTrend.isEmpty() ? noTrend : tr("This view cannot do that.");
    };
    setUnavailableReason(m_actions.exportRecords,
                         m_controller->siteDocument()->agents().empty()
                             ? tr("There is nothing to export yet: import or record something first.")
                             : QString());
    setUnavailableReason(m_actions.exportPicture, noTrend);
    setUnavailableReason(m_actions.saveCase, noTrend);
    setUnavailableReason(m_actions.copyPicture, noTrend);
    setUnavailableReason(m_actions.copyLink, noTrend);
    setUnavailableReason(m_actions.copyRecords, noTrend);
    setUnavailableReason(m_actions.copyMarkedLink, noTrend);
    setUnavailableReason(m_actions.exportPNG, needs("exportToPNG"));
    setUnavailableReason(m_actions.exportPDF, needs("exportToPDF"));
    const QString noReport = !plugIn || hasReport(plugIn.get()) ? noTrend : tr("This view has no report.");
    setUnavailableReason(m_actions.exportReport, noReport);
    setUnavailableReason(m_actions.print, noReport);
    setUnavailableReason(m_actions.refresh, needs("refresh"));
    setUnavailableReason(m_actions.fit, needs("fitAll"));
    showReadingActions(m_actions.view, m_actions.readingEnd, readingActions(selectedPlugIn().get()));
    updateTrendActions(selectedPlugIn() ? QString() : tr("Select a trend first."));
    updateEditingActions();
    if (m_live)  // not while the window is made or destroyed
        m_live->update(noTrend);
    setUnavailableReason(m_actions.newTrend,
                         m_properties->ticked().empty() ? tr("Tick properties in the list first.") : QString());
    QString noImport = readOnly ? tr("This site may only be looked at.") : QString();
    if (m_importing && m_importing->isRunning())
        noImport = tr("An import is running.");
    setUnavailableReason(m_actions.import, noImport);
    setUnavailableReason(m_actions.siteDetails, readOnly ? tr("This site may only be looked at.") : QString());
}

void SiteWindow::askForSite()
{
    const QStringList filters{tr("Sites and figures (*.plotix *.png *.pdf *.svg)"), tr(kSiteFilter),
                              tr("Figures (*.png *.pdf *.svg)")};
    const QString path = QFileDialog::getOpenFileName(this, tr("Open"), {}, filters.join(QStringLiteral(";;")));
    if (!path.isEmpty() && !openFigure(path))
        emit openSiteRequested(path);
}

void SiteWindow::askForNewSite()
{
    QFileDialog dialog(this, tr("New Site"), {}, tr(kSiteFilter));
    dialog.setAcceptMode(QFileDialog::AcceptSave);
    dialog.setDefaultSuffix(QStringLiteral("plotix"));
    // A site holds years of records: one is never written over by choosing its name for a new one.
    dialog.setOption(QFileDialog::DontConfirmOverwrite);
    if (dialog.exec() != QDialog::Accepted || dialog.selectedFiles().isEmpty())
        return;
    const QString ending = QStringLiteral(".plotix");
    const QString path = dialog.selectedFiles().first();
    emit newSiteRequested(path.endsWith(ending, Qt::CaseInsensitive) ? path : path + ending);
}

void SiteWindow::askForSiteDetails()
{
    SiteDocument& document = *m_controller->siteDocument();
    const QString name = document.siteName(), location = document.siteLocation();
    const QTimeZone zone = document.zone();
    SiteDetailsDialog dialog(name, location, zone, this);
    if (dialog.exec() != QDialog::Accepted)
        return;
    try {
        document.catchUp();  // what others changed while the dialog was open
        const auto chosen = [this](const QString& typed, const QString& before, const QString& theirs) {
            if (typed != before && theirs != before && theirs != typed)
                statusBar()->showMessage(
                    tr("Another program had changed “%1” to “%2” meanwhile; “%3” stands.").arg(before, theirs, typed));
            return typed == before ? theirs : typed;
        };
        document.setSite(chosen(dialog.name(), name, document.siteName()),
                         chosen(dialog.location(), location, document.siteLocation()));
        if (dialog.zone() != zone)
            document.setZone(dialog.zone());
    } catch (const ReportableError& error) {
        showAlert(tr("Name and location are not stored"), error.message());
    }
}

void SiteWindow::newTrend()
{
    std::vector<PropertyListModel::Ticked> wanted = m_properties->ticked();
    const auto& agents = m_controller->siteDocument()->agents();
    if (wanted.empty() && !agents.empty())
        wanted.push_back({agents.front(), agents.front()->properties().objects()});
    const std::vector<std::shared_ptr<SiteProperty>> others = takenBesideTheFirst(wanted);
    const KTVPlugInPtr beside = selectedPlugIn();
    const TrendSpan shown = spanFrom(shownRange(beside.get()));
    const QVariantMap chosen = reading(beside.get()).value_or(QVariantMap());
    for (const auto& [agent, properties] : wanted) {
        try {
            const auto extent = m_controller->siteDocument()->records()->extent(agent->id());
            const auto last = extent ? std::optional(extent->last) : std::nullopt;
            const TrendSpan records = extent ? spanFrom(std::pair(extent->first, extent->last)) : std::nullopt;
            m_controller->newTrend(agent, planBeside(planChosenTrend(properties, last), shown, chosen, records));
        } catch (const ReportableError& error) {
            showAlert(tr("The trend could not be made"), error.message());
            return;
        }
    }
    m_properties->untickAll();
    if (!others.empty())
        m_editor->addToTrend(selectedPlugIn(), others);
}

/// The key belongs to whatever has the focus, such as a text field or a list; elsewhere a trend copies its table.
void SiteWindow::copy()
{
    QWidget* focus = QApplication::focusWidget();
    const KTVPlugInPtr trend = trendInFront();
    const bool isInTrend = focus && trend && trend->isViewLoaded() && trend->view()->isAncestorOf(focus);
    if (focus && (!isInTrend || isTextField(focus))) {
        QKeyEvent press(QEvent::KeyPress, Qt::Key_C, Qt::ControlModifier);
        QApplication::sendEvent(focus, &press);
        if (press.isAccepted())
            return;
    }
    sendAction(trend.get(), "copyTable", this);
}

void SiteWindow::holdModifiers()
{
    Qt::KeyboardModifiers held;
    held.setFlag(Qt::AltModifier, m_actions.zoomTimeOnly->isChecked());
    held.setFlag(Qt::ShiftModifier, m_actions.zoomValuesOnly->isChecked());
    m_services.userInterface->setHeldModifiers(this, held);
    // Their menus have the same two items.
    for (const auto& separate : m_controller->siteDocument()->windowControllers())
        m_services.userInterface->setHeldModifiers(separate->window(), held);
}

void SiteWindow::tell(const QString& message)
{
    statusBar()->showMessage(message, kToldTime);
}

void SiteWindow::showAlert(const QString& message, const QString& text, KTVAlert::Style style,
                           std::function<void()> dismissed)
{
    m_services.userInterface->beginSheet({message, text, style}, windowInFront(), std::move(dismissed));
}

}  // namespace plotix
