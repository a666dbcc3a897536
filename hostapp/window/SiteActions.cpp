#include "hostapp/window/SiteActions.h"

#include <QtGui/QActionGroup>
#include <QtGui/QUndoStack>
#include <QtWidgets/QMainWindow>
#include <QtWidgets/QMenu>
#include <QtWidgets/QMenuBar>

namespace plotix {

namespace {

QMenu* addMenu(QMainWindow* window, const QString& title)
{
    QMenu* menu = window->menuBar()->addMenu(title);
    menu->setToolTipsVisible(true);
    return menu;
}

QAction* addAction(QMenu* menu, const QString& text, const QKeySequence& keys = {})
{
    QAction* action = menu->addAction(text);
    action->setShortcut(keys);
    return action;
}

void buildFileMenu(QMainWindow* window, SiteActions& actions)
{
    QMenu* menu = addMenu(window, QMainWindow::tr("&File"));
    actions.newSite = addAction(menu, QMainWindow::tr("&New Site…"), QKeySequence(Qt::CTRL | Qt::SHIFT | Qt::Key_N));
    actions.openSite = addAction(menu, QMainWindow::tr("&Open Site…"), QKeySequence::Open);
    actions.openRecent = menu->addMenu(QMainWindow::tr("Open &Recent"));
    actions.openRecent->setToolTipsVisible(true);
    menu->addSeparator();
    actions.import = addAction(menu, QMainWindow::tr("&Import…"), QKeySequence(Qt::CTRL | Qt::Key_I));
    actions.recordComputer = addAction(menu, QMainWindow::tr("Record This Comp&uter"));
    actions.recordComputer->setCheckable(true);
    actions.siteDetails = addAction(menu, QMainWindow::tr("Na&me and Location…"));
    menu->addSeparator();
    actions.exportImage =
        addAction(menu, QMainWindow::tr("&Export Image…"), QKeySequence(Qt::CTRL | Qt::SHIFT | Qt::Key_E));
    actions.exportPNG = addAction(menu, QMainWindow::tr("Export &Graph as PNG…"));
    actions.exportPDF = addAction(menu, QMainWindow::tr("Export Graph as P&DF…"));
    actions.exportReport = addAction(menu, QMainWindow::tr("Expor&t Report as PDF…"));
    menu->addSeparator();
    actions.print = addAction(menu, QMainWindow::tr("&Print…"), QKeySequence::Print);
    menu->addSeparator();
    actions.serveOnWeb = addAction(menu, QMainWindow::tr("Serve on the &Web"));
    actions.serveOnWeb->setCheckable(true);
    actions.serveOnWeb->setToolTip(QMainWindow::tr("Browsers on this machine see the trends."));
    actions.copyWebAddress = addAction(menu, QMainWindow::tr("Copy Web &Address"));
    menu->addSeparator();
    actions.close = addAction(menu, QMainWindow::tr("&Close"), QKeySequence(Qt::CTRL | Qt::Key_W));
    actions.quit = addAction(menu, QMainWindow::tr("&Quit"), QKeySequence(Qt::CTRL | Qt::Key_Q));
    actions.quit->setMenuRole(QAction::QuitRole);
}

void buildEditMenu(QMainWindow* window, QUndoStack* undoStack, SiteActions& actions)
{
    QMenu* menu = addMenu(window, QMainWindow::tr("&Edit"));
    actions.undo = undoStack->createUndoAction(window, QMainWindow::tr("&Undo"));
    actions.undo->setShortcut(QKeySequence::Undo);
    actions.redo = undoStack->createRedoAction(window, QMainWindow::tr("&Redo"));
    actions.redo->setShortcut(QKeySequence(Qt::CTRL | Qt::SHIFT | Qt::Key_Z));
    menu->addActions({actions.undo, actions.redo});
}

void buildViewMenu(QMainWindow* window, SiteActions& actions)
{
    QMenu* menu = addMenu(window, QMainWindow::tr("&View"));
    actions.refresh = addAction(menu, QMainWindow::tr("&Refresh"), QKeySequence(Qt::Key_F5));
    actions.fit = addAction(menu, QMainWindow::tr("&Fit"), QKeySequence(Qt::CTRL | Qt::Key_0));
    actions.follow = addAction(menu, QMainWindow::tr("F&ollow"), QKeySequence(Qt::CTRL | Qt::Key_L));
    actions.follow->setCheckable(true);
    menu->addSeparator();
    // Each stands for a key held down, and only one of the keys counts at a time: at most one is on.
    auto* group = new QActionGroup(window);
    group->setExclusionPolicy(QActionGroup::ExclusionPolicy::ExclusiveOptional);
    actions.zoomTimeOnly = addAction(menu, QMainWindow::tr("Zoom &Time Only"), QKeySequence(Qt::CTRL | Qt::Key_T));
    actions.zoomValuesOnly =
        addAction(menu, QMainWindow::tr("Zoom &Values Only"), QKeySequence(Qt::CTRL | Qt::SHIFT | Qt::Key_T));
    for (QAction* action : {actions.zoomTimeOnly, actions.zoomValuesOnly}) {
        action->setCheckable(true);
        group->addAction(action);
    }
    actions.zoomTimeOnly->setToolTip(QMainWindow::tr("As if Alt were held down: values stay as they are."));
    actions.zoomValuesOnly->setToolTip(QMainWindow::tr("As if Shift were held down: time stays as it is."));
}

void buildTrendMenu(QMainWindow* window, SiteActions& actions)
{
    QMenu* menu = addMenu(window, QMainWindow::tr("&Trend"));
    actions.newTrend = addAction(menu, QMainWindow::tr("&New Trend from Ticked Properties"), QKeySequence::New);
    menu->addSeparator();
    actions.renameTrend = addAction(menu, QMainWindow::tr("&Rename Trend"), QKeySequence(Qt::Key_F2));
    actions.openInWindow =
        addAction(menu, QMainWindow::tr("&Open in Separate Window"), QKeySequence(Qt::CTRL | Qt::SHIFT | Qt::Key_O));
    actions.bringBack = addAction(menu, QMainWindow::tr("&Bring Back into Site Window"));
    menu->addSeparator();
    actions.moveUp = addAction(menu, QMainWindow::tr("Move &Up"), QKeySequence(Qt::ALT | Qt::Key_Up));
    actions.moveDown = addAction(menu, QMainWindow::tr("Move Do&wn"), QKeySequence(Qt::ALT | Qt::Key_Down));
    menu->addSeparator();
    actions.deleteTrend = addAction(menu, QMainWindow::tr("&Delete Trend"), QKeySequence(Qt::Key_Delete));
    // These keys mean other things elsewhere, such as taking a property out of a trend's table.
    for (QAction* action : {actions.moveUp, actions.moveDown, actions.deleteTrend})
        action->setShortcutContext(Qt::WidgetShortcut);
}

void buildWindowMenu(QMainWindow* window, SiteActions& actions)
{
    actions.windows = addMenu(window, QMainWindow::tr("&Window"));
    actions.minimise = addAction(actions.windows, QMainWindow::tr("Mi&nimize"), QKeySequence(Qt::CTRL | Qt::Key_M));
    actions.bringAllToFront = addAction(actions.windows, QMainWindow::tr("Bring &All to Front"));
}

void buildHelpMenu(QMainWindow* window, SiteActions& actions)
{
    QMenu* menu = addMenu(window, QMainWindow::tr("&Help"));
    actions.help = addAction(menu, QMainWindow::tr("&Plotix Help"), QKeySequence(Qt::Key_F1));
    actions.gettingStarted = addAction(menu, QMainWindow::tr("&Getting Started"));
    menu->addSeparator();
    actions.about = addAction(menu, QMainWindow::tr("&About Plotix"));
    actions.about->setMenuRole(QAction::AboutRole);
}

}  // namespace

SiteActions buildSiteMenus(QMainWindow* window, QUndoStack* undoStack)
{
    SiteActions actions;
    buildFileMenu(window, actions);
    buildEditMenu(window, undoStack, actions);
    buildViewMenu(window, actions);
    buildTrendMenu(window, actions);
    buildWindowMenu(window, actions);
    buildHelpMenu(window, actions);
    return actions;
}

void setUnavailableReason(QAction* action, const QString& reason)
{
    action->setEnabled(reason.isEmpty());
    if (!reason.isEmpty())
        action->setToolTip(reason);
    else if (!action->isCheckable())
        action->setToolTip({});  // back to the action's own text
}

}  // namespace plotix
