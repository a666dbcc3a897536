#include "hostapp/window/SiteActions.h"

#include "hostapp/site/TrendFollower.h"

#include <QtCore/QCoreApplication>
#include <QtGui/QUndoStack>
#include <QtWidgets/QMainWindow>
#include <QtWidgets/QMenu>
#include <QtWidgets/QMenuBar>

namespace plotix {

namespace {

class SiteMenus {
    Q_DECLARE_TR_FUNCTIONS(SiteMenus)
};

QMenu* addMenu(QMenuBar* bar, const QString& title)
{
    QMenu* menu = bar->addMenu(title);
    menu->setToolTipsVisible(true);
    return menu;
}

QMenu* addMenu(QMainWindow* window, const QString& title)
{
    return addMenu(window->menuBar(), title);
}

QAction* addAction(QMenu* menu, const QString& text, const QKeySequence& keys = {})
{
    QAction* action = menu->addAction(text);
    action->setShortcut(keys);
    return action;
}

void buildOwnFormsMenu(QMenu* above, SiteActions& actions)
{
    actions.ownForms = above->addMenu(SiteMenus::tr("In the &View's Own Form"));
    actions.ownForms->setToolTipsVisible(true);
    actions.exportPNG = addAction(actions.ownForms, SiteMenus::tr("Graph as &PNG…"));
    actions.exportPDF = addAction(actions.ownForms, SiteMenus::tr("Graph as P&DF…"));
    actions.classicReport = addAction(actions.ownForms, SiteMenus::tr("&Reports and Printing"));
    actions.classicReport->setCheckable(true);
}

void buildFileMenu(QMainWindow* window, SiteActions& actions)
{
    QMenu* menu = addMenu(window, SiteMenus::tr("&File"));
    actions.newSite = addAction(menu, SiteMenus::tr("&New Site…"), QKeySequence(Qt::CTRL | Qt::SHIFT | Qt::Key_N));
    actions.openSite = addAction(menu, SiteMenus::tr("&Open…"), QKeySequence::Open);
    actions.openSite->setToolTip(SiteMenus::tr("A site, or a figure that tells what it shows."));
    actions.openFromServer = addAction(menu, SiteMenus::tr("Open &from Server…"));
    actions.openFromServer->setToolTip(SiteMenus::tr("A site whose records many people share."));
    actions.openRecent = menu->addMenu(SiteMenus::tr("Open &Recent"));
    actions.openRecent->setToolTipsVisible(true);
    menu->addSeparator();
    actions.import = addAction(menu, SiteMenus::tr("&Import…"), QKeySequence(Qt::CTRL | Qt::Key_I));
    actions.recordComputer = addAction(menu, SiteMenus::tr("Record This Comp&uter"));
    actions.recordComputer->setCheckable(true);
    actions.siteDetails = addAction(menu, SiteMenus::tr("Na&me and Location…"));
    menu->addSeparator();
    actions.exportRecords = addAction(menu, SiteMenus::tr("E&xport Records…"));
    actions.exportPicture =
        addAction(menu, SiteMenus::tr("&Export Picture…"), QKeySequence(Qt::CTRL | Qt::SHIFT | Qt::Key_E));
    actions.exportReport = addAction(menu, SiteMenus::tr("Expor&t Report as PDF…"));
    buildOwnFormsMenu(menu, actions);
    actions.saveCase = addAction(menu, SiteMenus::tr("&Save as Case…"), QKeySequence(Qt::CTRL | Qt::SHIFT | Qt::Key_S));
    actions.saveCase->setToolTip(
        SiteMenus::tr("The trend with its records and notes as a site of its own, to send to somebody."));
    menu->addSeparator();
    actions.print = addAction(menu, SiteMenus::tr("&Print…"), QKeySequence::Print);
    menu->addSeparator();
    actions.serveOnWeb = addAction(menu, SiteMenus::tr("Serve on the &Web"));
    actions.serveOnWeb->setCheckable(true);
    actions.serveOnWeb->setToolTip(SiteMenus::tr("Browsers on this machine see the trends."));
    actions.copyWebAddress = addAction(menu, SiteMenus::tr("Copy Web &Address"));
    menu->addSeparator();
    actions.close = addAction(menu, SiteMenus::tr("&Close"), QKeySequence(Qt::CTRL | Qt::Key_W));
    actions.quit = addAction(menu, SiteMenus::tr("&Quit"), QKeySequence(Qt::CTRL | Qt::Key_Q));
    actions.quit->setMenuRole(QAction::QuitRole);
}

void buildEditMenu(QMainWindow* window, QUndoStack* undoStack, SiteActions& actions)
{
    QMenu* menu = addMenu(window, SiteMenus::tr("&Edit"));
    actions.undo = undoStack->createUndoAction(window, SiteMenus::tr("&Undo"));
    actions.undo->setShortcut(QKeySequence::Undo);
    actions.redo = undoStack->createRedoAction(window, SiteMenus::tr("&Redo"));
    actions.redo->setShortcut(QKeySequence(Qt::CTRL | Qt::SHIFT | Qt::Key_Z));
    menu->addActions({actions.undo, actions.redo});
    menu->addSeparator();
    actions.copy = addAction(menu, SiteMenus::tr("&Copy"), QKeySequence::Copy);
    actions.copy->setToolTip(SiteMenus::tr("What is selected; of a trend its table, as text and for spreadsheets."));
    actions.copyPicture =
        addAction(menu, SiteMenus::tr("Copy &Picture"), QKeySequence(Qt::CTRL | Qt::SHIFT | Qt::Key_C));
    actions.copyRecords = addAction(menu, SiteMenus::tr("Copy Recor&ds"));
    actions.copyRecords->setToolTip(SiteMenus::tr("Those of the lines and the span shown, as rows for a spreadsheet."));
    actions.copyLink = addAction(menu, SiteMenus::tr("Copy &Link"));
    actions.copyLink->setToolTip(
        SiteMenus::tr("A line of text that names site, trend and span; “plotix open LINK” shows them."));
    actions.copyMarkedLink = addAction(menu, SiteMenus::tr("Copy Link to &A – B"));
    menu->addSeparator();
    actions.undoImport = addAction(menu, SiteMenus::tr("Undo &Import…"));
    actions.undoImport->setToolTip(SiteMenus::tr("Takes back what the last import added and replaced."));
    actions.newComputed = addAction(menu, SiteMenus::tr("&New Computed Property…"));
    actions.newComputed->setToolTip(
        SiteMenus::tr("A property that is worked out from others, such as their difference."));
    actions.notes = addAction(menu, SiteMenus::tr("N&otes…"), QKeySequence(Qt::CTRL | Qt::ALT | Qt::Key_N));
    actions.notes->setToolTip(SiteMenus::tr("What was written about times and spans of this site."));
}

QString titleOf(FollowSpan span)
{
    switch (span) {
    case FollowSpan::PresentLength: break;
    case FollowSpan::LastHour: return SiteMenus::tr("Last &Hour");
    case FollowSpan::LastDay: return SiteMenus::tr("Last &Day");
    case FollowSpan::Today: return SiteMenus::tr("&Today");
    case FollowSpan::All: return SiteMenus::tr("&All Records");
    }
    return SiteMenus::tr("&Present Length");
}

void buildFollowMenu(QMainWindow* window, QMenu* above, SiteActions& actions)
{
    QMenu* menu = above->addMenu(SiteMenus::tr("Follow &Span"));
    menu->setToolTipsVisible(true);
    actions.followSpans = new QActionGroup(window);
    actions.followSpans->setExclusionPolicy(QActionGroup::ExclusionPolicy::ExclusiveOptional);
    for (const FollowSpan span : kFollowSpans) {
        QAction* action = menu->addAction(titleOf(span));
        action->setCheckable(true);
        action->setData(followSpanName(span));
        actions.followSpans->addAction(action);
    }
}

void buildViewMenu(QMainWindow* window, SiteActions& actions)
{
    QMenu* menu = actions.view = addMenu(window, SiteMenus::tr("&View"));
    actions.refresh = addAction(menu, SiteMenus::tr("&Refresh"), QKeySequence(Qt::Key_F5));
    actions.fit = addAction(menu, SiteMenus::tr("&Fit"), QKeySequence(Qt::CTRL | Qt::Key_0));
    actions.follow = addAction(menu, SiteMenus::tr("F&ollow"), QKeySequence(Qt::CTRL | Qt::Key_L));
    actions.follow->setCheckable(true);
    buildFollowMenu(window, menu, actions);
    actions.breakLines = addAction(menu, SiteMenus::tr("&Break Lines at Gaps"));
    actions.breakLines->setCheckable(true);
    actions.breakLines->setToolTip(SiteMenus::tr("No line where nothing was recorded; a choice of this trend."));
    menu->addSeparator();
    actions.readingEnd = menu->addSeparator();
    // Each stands for a held key, and only one key counts at a time: at most one action is on.
    auto* group = new QActionGroup(window);
    group->setExclusionPolicy(QActionGroup::ExclusionPolicy::ExclusiveOptional);
    actions.zoomTimeOnly = addAction(menu, SiteMenus::tr("Zoom Time Onl&y"), QKeySequence(Qt::CTRL | Qt::Key_T));
    actions.zoomValuesOnly =
        addAction(menu, SiteMenus::tr("Zoom Val&ues Only"), QKeySequence(Qt::CTRL | Qt::SHIFT | Qt::Key_T));
    for (QAction* action : {actions.zoomTimeOnly, actions.zoomValuesOnly}) {
        action->setCheckable(true);
        group->addAction(action);
    }
    menu->addSeparator();
    actions.nextRegion = addAction(menu, SiteMenus::tr("&Next Region"), QKeySequence(Qt::Key_F6));
    actions.previousRegion = addAction(menu, SiteMenus::tr("&Previous Region"), QKeySequence(Qt::SHIFT | Qt::Key_F6));
    menu->addSeparator();
    actions.appearance = menu->addMenu(SiteMenus::tr("&Appearance"));
    actions.zoomTimeOnly->setToolTip(SiteMenus::tr("As if Alt were held down: values stay as they are."));
    actions.zoomValuesOnly->setToolTip(SiteMenus::tr("As if Shift were held down: time stays as it is."));
}

void buildTrendMenu(QMainWindow* window, SiteActions& actions)
{
    QMenu* menu = addMenu(window, SiteMenus::tr("&Trend"));
    actions.newTrend = addAction(menu, SiteMenus::tr("&New Trend from Ticked Properties"), QKeySequence::New);
    menu->addSeparator();
    actions.renameTrend = addAction(menu, SiteMenus::tr("&Rename Trend"), QKeySequence(Qt::Key_F2));
    actions.openInWindow =
        addAction(menu, SiteMenus::tr("&Open in Separate Window"), QKeySequence(Qt::CTRL | Qt::SHIFT | Qt::Key_O));
    actions.bringBack = addAction(menu, SiteMenus::tr("&Bring Back into Site Window"));
    menu->addSeparator();
    actions.moveUp = addAction(menu, SiteMenus::tr("Move &Up"), QKeySequence(Qt::ALT | Qt::Key_Up));
    actions.moveDown = addAction(menu, SiteMenus::tr("Move Do&wn"), QKeySequence(Qt::ALT | Qt::Key_Down));
    menu->addSeparator();
    actions.deleteTrend = addAction(menu, SiteMenus::tr("&Delete Trend"), QKeySequence(Qt::Key_Delete));
    // These keys mean other things elsewhere, such as taking a property out of a trend's table.
    for (QAction* action : {actions.moveUp, actions.moveDown, actions.deleteTrend})
        action->setShortcutContext(Qt::WidgetShortcut);
}

void buildWindowMenu(QMainWindow* window, SiteActions& actions)
{
    actions.windows = addMenu(window, SiteMenus::tr("&Window"));
    actions.minimise = addAction(actions.windows, SiteMenus::tr("Mi&nimize"), QKeySequence(Qt::CTRL | Qt::Key_M));
    actions.bringAllToFront = addAction(actions.windows, SiteMenus::tr("Bring &All to Front"));
}

void buildHelpMenu(QMainWindow* window, SiteActions& actions)
{
    QMenu* menu = addMenu(window, SiteMenus::tr("&Help"));
    actions.help = addAction(menu, SiteMenus::tr("&Plotix Help"), QKeySequence(Qt::Key_F1));
    actions.gettingStarted = addAction(menu, SiteMenus::tr("&Getting Started"));
    menu->addSeparator();
    actions.about = addAction(menu, SiteMenus::tr("&About Plotix"));
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

void showReadingActions(QMenu* menu, QAction* before, const QList<QAction*>& actions)
{
    const QVariant shown = menu->property("reading");
    for (QAction* action : menu->actions())  // those of a trend that has gone have gone with it
        if (shown.value<QList<QAction*>>().contains(action) && !actions.contains(action))
            menu->removeAction(action);
    menu->insertActions(before, actions);
    menu->setProperty("reading", QVariant::fromValue(actions));
}

void buildTrendWindowMenus(QMenuBar* bar, const SiteActions& actions, const QList<QAction*>& reading)
{
    addMenu(bar, SiteMenus::tr("&File"))
        ->addActions({actions.exportPicture, actions.exportReport, actions.ownForms->menuAction(), actions.saveCase,
                      actions.print});
    addMenu(bar, SiteMenus::tr("&Edit"))
        ->addActions(
            {actions.undo, actions.redo, actions.copy, actions.copyPicture, actions.copyRecords, actions.copyLink});
    QMenu* view = addMenu(bar, SiteMenus::tr("&View"));
    view->addActions({actions.refresh, actions.fit, actions.follow});
    view->addSeparator();
    view->addActions(reading);
    view->addSeparator();
    view->addActions({actions.zoomTimeOnly, actions.zoomValuesOnly, actions.nextRegion, actions.previousRegion});
    bar->addMenu(actions.windows);
    addMenu(bar, SiteMenus::tr("&Help"))->addActions({actions.help, actions.gettingStarted});
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
