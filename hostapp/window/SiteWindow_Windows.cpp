// The sites opened lately, and the program's other windows.
//
// Both menus are filled when they open: what they list changes without the window's knowledge.

#include "hostapp/site/PlugInOperations.h"
#include "hostapp/window/SiteWindow.h"

#include "base/ReportableError.h"
#include "hostapp/document/DeskFile.h"
#include "hostapp/window/OpenServerDialog.h"
#include "hostapp/window/RecentSites.h"
#include "plugins/PlotixPlugIn/host/PlainToolTip.h"

#include <QtCore/QFileInfo>
#include <QtGui/QWindow>
#include <QtWidgets/QApplication>
#include <QtWidgets/QMenu>
#include <QtWidgets/QMenuBar>

namespace plotix {

namespace {

template <class Window>
std::vector<Window*> openWindows()
{
    std::vector<Window*> windows;
    for (QWidget* widget : QApplication::topLevelWidgets())
        if (auto* window = qobject_cast<Window*>(widget); window && window->isVisible())
            windows.push_back(window);
    std::sort(windows.begin(), windows.end(),
              [](const Window* left, const Window* right) { return left->windowTitle() < right->windowTitle(); });
    return windows;
}

void bringForward(QWidget* window)
{
    window->setWindowState(window->windowState() & ~Qt::WindowMinimized);
    window->show();
    window->raise();
    window->activateWindow();
}

/// Of a site on a server; a file that cannot be read says so when it is opened.
std::optional<QString> addressOf(const QString& path)
{
    try {
        return addressOfDeskFile(path);
    } catch (const ReportableError&) {
        return std::nullopt;
    }
}

/// Ampersands in a name are no mnemonics.
QString menuText(QString text)
{
    return text.replace(QLatin1Char('&'), QLatin1String("&&"));
}

}  // namespace

void SiteWindow::connectWindowActions()
{
    connect(m_actions.openRecent, &QMenu::aboutToShow, this, &SiteWindow::fillRecentMenu);
    connect(m_actions.windows, &QMenu::aboutToShow, this, &SiteWindow::fillWindowMenu);
    connect(m_actions.minimise, &QAction::triggered, this, &QWidget::showMinimized);
    connect(m_actions.bringAllToFront, &QAction::triggered, this, [this] {
        for (SiteWindow* window : openWindows<SiteWindow>())
            window->raise();
        for (SeparateWindow* window : openWindows<SeparateWindow>())
            window->raise();
        bringForward(this);
    });
    fillRecentMenu();
    connect(m_controller.get(), &SiteWindowController::separateWindowChanged, this, &SiteWindow::equipSeparateWindow);
    connect(qApp, &QGuiApplication::focusWindowChanged, this, &SiteWindow::updateActions);
}

void SiteWindow::equipSeparateWindow(const KTVPlugInPtr& plugIn)
{
    SeparateWindow* window = m_controller->separateWindowOf(plugIn.get());
    if (window && window->menuBar()->actions().isEmpty())
        buildTrendWindowMenus(window->menuBar(), m_actions, readingActions(plugIn.get()));
    holdModifiers();
}

KTVPlugInPtr SiteWindow::trendInFront() const
{
    for (QWidget* window = QApplication::activeWindow(); window; window = window->parentWidget())
        if (const auto* separate = qobject_cast<SeparateWindow*>(window))
            if (const KTVPlugInPtr plugIn = separate->contentViewController();
                m_controller->separateWindowOf(plugIn.get()) == separate)
                return plugIn;
    return selectedPlugIn();
}

QWidget* SiteWindow::windowInFront()
{
    QWidget* separate = m_controller->separateWindowOf(trendInFront().get());
    return separate && separate->isActiveWindow() ? separate : this;
}

void SiteWindow::openFromServer(const QString& address)
{
    const QString file = siteFileFromServer(address, this);
    if (!file.isEmpty())
        emit openSiteRequested(file);
}

void SiteWindow::fillRecentMenu()
{
    QMenu* menu = m_actions.openRecent;
    menu->clear();
    for (const QString& path : recentSites()) {
        const std::optional<QString> address = addressOf(path);
        QAction* action = menu->addAction(menuText(QFileInfo(path).completeBaseName()));
        action->setToolTip(plainToolTip(address.value_or(path)));
        if (address) {
            action->setText(menuText(address->section(QStringLiteral("//"), 1)));
            connect(action, &QAction::triggered, this, [this, address] { openFromServer(*address); });
            continue;
        }
        connect(action, &QAction::triggered, this, [this, path] { emit openSiteRequested(path); });
    }
    if (menu->isEmpty()) {
        setUnavailableReason(menu->addAction(tr("&No Recent Sites")), tr("Sites you open are listed here."));
        return;
    }
    menu->addSeparator();
    connect(menu->addAction(tr("Clear Menu")), &QAction::triggered, this, &forgetRecentSites);
}

void SiteWindow::fillWindowMenu()
{
    QMenu* menu = m_actions.windows;
    const QList<QAction*> before = menu->actions();
    for (QAction* action : before.mid(before.indexOf(m_actions.bringAllToFront) + 1))
        delete action;
    menu->addSeparator();
    const auto list = [this, menu](QWidget* window) {
        QAction* action = menu->addAction(menuText(window->windowTitle()));
        action->setCheckable(true);
        action->setChecked(window == this);
        connect(action, &QAction::triggered, window, [window] { bringForward(window); });
    };
    for (SiteWindow* window : openWindows<SiteWindow>())
        list(window);
    for (SeparateWindow* window : openWindows<SeparateWindow>())
        list(window);
}

void closeAllSites(Closing closing)
{
    for (SiteWindow* window : openWindows<SiteWindow>()) {
        if (closing == Closing::Ordered)
            window->closeAsOrdered();
        else if (!window->close())
            return;
    }
    QApplication::closeAllWindows();
}

}  // namespace plotix
