// Storing a site window as it is, and opening it as it was left.
//
// There is no Save: trends and windows are stored every two seconds, after each change of the list, when the window
// closes and when the session or the program is told to end. Storing compares first, so that an idle window writes
// nothing.

#include "hostapp/window/SiteWindow.h"

#include "base/ReportableError.h"
#include "hostapp/core/Defaults.h"
#include "hostapp/window/LiveControls.h"
#include "hostapp/window/SiteEditor.h"

#include <QtCore/QSettings>
#include <QtGui/QCloseEvent>
#include <QtWidgets/QApplication>
#include <QtWidgets/QListView>
#include <QtWidgets/QSplitter>

namespace plotix {

namespace {

// Names in the user's settings: what a site without a memory of its own begins with. Stored: never change.
constexpr auto kGeometryKey = "SiteWindow/geometry";
constexpr auto kColumnsKey = "SiteWindow/columns";
constexpr auto kListsKey = "SiteWindow/lists";

QByteArray storedOr(const QByteArray& stored, const char* key)
{
    return stored.isEmpty() ? QSettings().value(QLatin1String(key)).toByteArray() : stored;
}

}  // namespace

void SiteWindow::restoreWindow()
{
    const WindowState& state = m_memory.state();
    if (!restoreGeometry(storedOr(state.geometry, kGeometryKey)))
        resize(kUsualWindowSize);
    m_columns->restoreState(storedOr(state.columns, kColumnsKey));
    m_lists->restoreState(storedOr(state.lists, kListsKey));
    const SourceListModel& list = m_controller->sourceList();
    int row = 0;
    for (int candidate = 0; candidate < list.rowCount(); ++candidate)
        if (list.plugInAt(candidate)->uniqueIdentifier() == state.selected)
            row = candidate;
    {
        // A trend that is about to get a window of its own must not be loaded here first.
        const QSignalBlocker quiet(m_trendList->selectionModel());
        m_trendList->setCurrentIndex(list.index(row));
    }
    const KTVPlugInPtr selected = selectedPlugIn();
    const bool isOut = selected && std::any_of(state.separate.begin(), state.separate.end(), [&](const auto& trend) {
                           return trend.identifier == selected->uniqueIdentifier();
                       });
    if (isOut)
        showEmptyState();
    else
        showSelection();
    updateActions();
    connect(qApp, &QGuiApplication::commitDataRequest, this, &SiteWindow::storeNow);
}

void SiteWindow::showEvent(QShowEvent* event)
{
    QMainWindow::showEvent(event);
    if (!m_restored)  // posted: the site window is the first to appear
        QTimer::singleShot(0, this, &SiteWindow::reopenSeparateWindows);
}

void SiteWindow::reopenSeparateWindows()
{
    if (m_restored)
        return;
    m_restored = true;
    const SourceListModel& list = m_controller->sourceList();
    for (const SeparateTrend& trend : std::vector<SeparateTrend>(m_memory.state().separate))
        for (int row = 0; row < list.rowCount(); ++row)
            if (const KTVPlugInPtr plugIn = list.plugInAt(row); plugIn->uniqueIdentifier() == trend.identifier)
                m_controller->openInSeparateWindow(plugIn, trend.geometry);
    showSelection();
}

WindowState SiteWindow::currentState() const
{
    WindowState state;
    const SourceListModel& list = m_controller->sourceList();
    for (int row = 0; row < list.rowCount(); ++row)
        state.order << list.plugInAt(row)->uniqueIdentifier();
    state.followed = m_controller->followedTrends();
    state.followSpans = m_controller->followedSpans();
    if (const KTVPlugInPtr selected = selectedPlugIn())
        state.selected = selected->uniqueIdentifier();
    state.separate = m_restored ? m_controller->separateTrends() : m_memory.state().separate;
    // A window that was never shown has no geometry worth storing.
    const bool seen = m_restored;
    state.geometry = seen ? saveGeometry() : m_memory.state().geometry;
    state.columns = seen ? m_columns->saveState() : m_memory.state().columns;
    state.lists = seen ? m_lists->saveState() : m_memory.state().lists;
    return state;
}

void SiteWindow::storeNow()
{
    if (m_editor && m_editor->isEditing())  // it has stored what is on screen, and writes the file now
        return;
    if (m_controller->storesNothing())
        return;
    m_controller->storeAll();
    try {
        m_memory.store(currentState());
    } catch (const ReportableError& error) {
        emit m_controller->storingFailed(error.message());
    }
}

void SiteWindow::closeAsOrdered()
{
    m_asksBeforeClosing = false;
    close();
}

void SiteWindow::closeEvent(QCloseEvent* event)
{
    if (m_editor->isEditing()) {  // as the system orders it; the user cannot reach this window
        event->ignore();
        connect(m_editor.get(), &SiteEditor::ended, this, &QWidget::close,
                static_cast<Qt::ConnectionType>(Qt::QueuedConnection | Qt::SingleShotConnection));
        return;
    }
    if (m_asksBeforeClosing && isVisible() && m_live && !m_live->mayEnd()) {
        event->ignore();
        return;
    }
    storeNow();
    QSettings settings;
    settings.setValue(QLatin1String(kGeometryKey), saveGeometry());
    settings.setValue(QLatin1String(kColumnsKey), m_columns->saveState());
    settings.setValue(QLatin1String(kListsKey), m_lists->saveState());
    // Stored once, before closing: the windows that close now stay stored as open.
    m_storeTimer.stop();
    m_restored = false;
    m_controller->closeSeparateWindows();
    QMainWindow::closeEvent(event);
}

}  // namespace plotix
