#pragma once

#include <QtGui/QAction>
#include <QtGui/QActionGroup>

class QMainWindow;
class QMenu;
class QMenuBar;
class QUndoStack;

/// The menus of a site window: what stands in them, under which keys. Main thread only.
namespace plotix {

/// Every action of the menus; the window *owns* them and connects what they do.
struct SiteActions {
    QAction* openSite = nullptr;
    QAction* openFromServer = nullptr;
    QAction* newSite = nullptr;
    QAction* import = nullptr;
    QAction* siteDetails = nullptr;
    QAction* recordComputer = nullptr;
    QAction* exportRecords = nullptr;
    QAction* exportPicture = nullptr;
    QAction* exportReport = nullptr;
    QAction* saveCase = nullptr;
    QMenu* ownForms = nullptr;  ///< what the view itself writes:
    QAction* exportPNG = nullptr;
    QAction* exportPDF = nullptr;
    QAction* classicReport = nullptr;  ///< checkable: reports, and printing
    QAction* print = nullptr;
    QAction* serveOnWeb = nullptr;
    QAction *copyPicture = nullptr, *copyRecords = nullptr, *copyLink = nullptr, *copyMarkedLink = nullptr;
    QAction* copyWebAddress = nullptr;
    QMenu* openRecent = nullptr;
    QAction* close = nullptr;
    QAction* quit = nullptr;
    QAction* undo = nullptr;
    QAction* redo = nullptr;
    QAction* copy = nullptr;
    QAction* undoImport = nullptr;
    QMenu* view = nullptr;
    QAction* newComputed = nullptr;
    QAction* notes = nullptr;
    QAction* refresh = nullptr;
    QAction* fit = nullptr;
    QAction* follow = nullptr;
    QActionGroup* followSpans = nullptr;  ///< one an entry of kFollowSpans, whose name is its data
    QAction* breakLines = nullptr;
    QAction* readingEnd = nullptr;  ///< before this one stand the actions of the trend in front
    QAction* zoomTimeOnly = nullptr;
    QAction* zoomValuesOnly = nullptr;
    QAction* nextRegion = nullptr;
    QAction* previousRegion = nullptr;
    QMenu* appearance = nullptr;
    QAction* newTrend = nullptr;
    QAction* renameTrend = nullptr;
    QAction* openInWindow = nullptr;
    QAction* bringBack = nullptr;
    QAction* moveUp = nullptr;
    QAction* moveDown = nullptr;
    QAction* deleteTrend = nullptr;
    QMenu* windows = nullptr;
    QAction* minimise = nullptr;
    QAction* bringAllToFront = nullptr;
    QAction* help = nullptr;
    QAction* gettingStarted = nullptr;
    QAction* about = nullptr;
};

/// Fills the window's menu bar. Undo and Redo are the stack's own actions.
SiteActions buildSiteMenus(QMainWindow* window, QUndoStack* undoStack);

/// Fills the menu bar of a window that shows one trend with the actions that make sense there. They stay the site
/// window's: they act on the trend of the window in front.
/// `reading`: what that trend itself offers.
void buildTrendWindowMenus(QMenuBar* bar, const SiteActions& actions, const QList<QAction*>& reading);

/// Shows what the trend in front offers, in place of what another one offered.
void showReadingActions(QMenu* menu, QAction* before, const QList<QAction*>& actions);

/// Enables the action, or greys it with the reason as its tool tip. An empty reason enables.
void setUnavailableReason(QAction* action, const QString& reason);

}  // namespace plotix
