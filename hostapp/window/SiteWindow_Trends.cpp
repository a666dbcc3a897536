// What the user does to the list of trends and to the site's properties, and how it is undone.
//
// The list's own editing (typing a title, dragging a row) has happened when its signal arrives; the command pushed then
// finds it done. Deleting goes through its command alone, and asks nothing, since it can be undone.

#include "hostapp/window/SiteWindow.h"

#include "hostapp/window/AnnotationAsking.h"
#include "hostapp/window/DesktopUserInterface.h"
#include "hostapp/window/PropertyHistory.h"
#include "hostapp/window/PropertyListView.h"
#include "hostapp/window/SiteEditor.h"
#include "hostapp/window/TrendCommands.h"
#include "hostapp/window/TrendHistory.h"

#include <QtWidgets/QListView>

namespace plotix {

void SiteWindow::connectTrendActions()
{
    m_undoStack.setUndoLimit(100);  // a deleted trend keeps its records in memory
    m_propertyHistory = std::make_unique<PropertyHistory>(m_controller->siteDocument(), m_undoStack);
    m_trendHistory = std::make_unique<TrendHistory>(
        m_undoStack, [this] { return trendsOnScreen(); },
        [this](const KTVPlugIn* trend) { return m_controller->follower().isFollowing(trend); },
        [this](const QWidget* widget) { return isOurs(widget); });
    connect(&m_undoStack, &QUndoStack::indexChanged, this, &SiteWindow::updateActions);
    connect(m_actions.renameTrend, &QAction::triggered, this,
            [this] { m_trendList->edit(m_trendList->currentIndex()); });
    connect(m_actions.openInWindow, &QAction::triggered, this, &SiteWindow::openInSeparateWindow);
    connect(m_actions.bringBack, &QAction::triggered, this, &SiteWindow::bringBack);
    connect(m_actions.moveUp, &QAction::triggered, this, [this] { moveTrend(-1); });
    connect(m_actions.moveDown, &QAction::triggered, this, [this] { moveTrend(+1); });
    connect(m_actions.deleteTrend, &QAction::triggered, this, [this] {
        if (const KTVPlugInPtr plugIn = selectedPlugIn())
            m_undoStack.push(new DeleteTrendCommand(*m_controller, plugIn));
    });
    SourceListModel* list = &m_controller->sourceList();
    connect(list, &SourceListModel::renamed, this,
            [this](const KTVPlugInPtr& plugIn, const QString& before, const QString& after) {
                m_undoStack.push(new RenameTrendCommand(plugIn, before, after));
            });
    connect(list, &SourceListModel::moved, this, [this](const KTVPlugInPtr& plugIn, int from, int to) {
        m_undoStack.push(new MoveTrendCommand(*m_controller, plugIn, from, to));
    });
    connect(list, &QAbstractItemModel::rowsMoved, this, [this] {
        updateActions();
        storeNow();
    });
}

void SiteWindow::makeEditor()
{
    m_editor = std::make_unique<SiteEditor>(
        SiteEditor::Surroundings{*m_controller, m_undoStack, *m_services.userInterface,
                                 [this] { return windowInFront(); }, [this] { return selectedPlugIn(); }});
    connect(m_editor.get(), &SiteEditor::beginning, this, &SiteWindow::storeNow);
    connect(m_editor.get(), &SiteEditor::ended, this, &SiteWindow::showSelection);
    connect(m_editor.get(), &SiteEditor::told, this, &SiteWindow::tell);
    connect(m_actions.undoImport, &QAction::triggered, m_editor.get(), &SiteEditor::askAndUndoImport);
    connect(m_propertyView, &PropertyListView::renameWanted, m_editor.get(), &SiteEditor::askAndRename);
    connect(m_propertyView, &PropertyListView::mergeWanted, m_editor.get(), &SiteEditor::mergeInto);
    connect(m_propertyView, &PropertyListView::deleteWanted, m_editor.get(), &SiteEditor::remove);
    connect(m_propertyView, &PropertyListView::computeWanted, m_editor.get(), &SiteEditor::askAndCompute);
    connect(m_editor.get(), &SiteEditor::trendChanged, m_trendHistory.get(), &TrendHistory::adopt);
    connect(m_propertyView, &PropertyListView::addToTrendWanted, m_editor.get(),
            [this](const std::shared_ptr<SiteProperty>& property) {
                if (const KTVPlugInPtr trend = selectedPlugIn())
                    m_editor->addToTrend(trend, {property});
                else
                    tell(tr("Select a trend first."));
            });
    connect(m_actions.newComputed, &QAction::triggered, m_editor.get(), [this] {
        if (const auto agent = m_propertyView->currentAgent())
            m_editor->askAndCompute(agent, nullptr);
    });
    m_annotationAsking = std::make_unique<AnnotationAsking>(AnnotationAsking::Surroundings{
        *m_controller, *m_editor, [this] { return windowInFront(); }, [this] { return trendInFront(); }});
    connect(m_actions.notes, &QAction::triggered, m_annotationAsking.get(), &AnnotationAsking::showNotes);
    connect(m_propertyView, &PropertyListView::limitsWanted, m_annotationAsking.get(),
            [this](const std::shared_ptr<SiteAgent>& agent, const std::shared_ptr<SiteProperty>& property) {
                m_annotationAsking->editLimits(*agent, property->propertyName());
            });
    connect(m_propertyView, &PropertyListView::removeShownWanted, m_editor.get(), &SiteEditor::askAndRemoveShown);
}

void SiteWindow::updateEditingActions()
{
    const bool readOnly = m_controller->siteDocument()->isReadOnly();
    setUnavailableReason(m_actions.undoImport, readOnly ? tr("This site may only be looked at.") : QString());
    const QString nothingYet = m_controller->siteDocument()->agents().empty()
                                   ? tr("There is nothing to compute from yet: import or record something first.")
                                   : QString();
    setUnavailableReason(m_actions.newComputed, readOnly ? tr("This site may only be looked at.") : nothingYet);
    m_propertyView->setEditable(!readOnly);
}

std::vector<KTVPlugInPtr> SiteWindow::trendsOnScreen() const
{
    std::vector<KTVPlugInPtr> trends;
    const SourceListModel& list = m_controller->sourceList();
    for (int row = 0; row < list.rowCount(); ++row)
        if (const KTVPlugInPtr plugIn = list.plugInAt(row);
            plugIn->isViewLoaded() && plugIn->view() && plugIn->view()->isVisible())
            trends.push_back(plugIn);
    return trends;
}

bool SiteWindow::isOurs(const QWidget* widget) const
{
    // Menus and dialogs count as well: they belong to the window that opened them.
    for (; widget; widget = widget->parentWidget())
        if (widget == this || qobject_cast<const SeparateWindow*>(widget))
            return true;
    return false;
}

void SiteWindow::updateTrendActions(const QString& noTrend)
{
    const KTVPlugInPtr plugIn = selectedPlugIn();
    const int row = m_trendList->currentIndex().row();
    const int last = m_controller->sourceList().rowCount() - 1;
    const bool isOut = plugIn && m_controller->separateWindowOf(plugIn.get());
    const bool readOnly = m_controller->siteDocument()->isReadOnly();
    const auto offer = [&](QAction* action, bool possible, const QString& otherwise) {
        setUnavailableReason(action, !plugIn || possible ? noTrend : otherwise);
    };
    const auto change = [&](QAction* action, bool possible, const QString& otherwise) {
        offer(action, possible && !readOnly, readOnly ? tr("This site may only be looked at.") : otherwise);
    };
    change(m_actions.renameTrend, plugIn && plugIn->isRenamable(), tr("This view keeps its name."));
    offer(m_actions.openInWindow, plugIn && plugIn->isUndockable(), tr("This view stays in the site window."));
    offer(m_actions.bringBack, isOut, tr("This trend is in the site window."));
    change(m_actions.moveUp, row > 0, tr("This trend is the first one."));
    change(m_actions.moveDown, row < last, tr("This trend is the last one."));
    change(m_actions.deleteTrend, plugIn && plugIn->isDeletable(), tr("This view cannot be deleted."));
    setUnavailableReason(m_actions.undo, m_undoStack.canUndo() ? QString() : tr("There is nothing to undo."));
    setUnavailableReason(m_actions.redo, m_undoStack.canRedo() ? QString() : tr("There is nothing to redo."));
}

void SiteWindow::openInSeparateWindow()
{
    if (const KTVPlugInPtr plugIn = selectedPlugIn())
        m_controller->openInSeparateWindow(m_controller->findSourceListItemWithRepresentedObject(plugIn.get()));
}

void SiteWindow::bringBack()
{
    const KTVPlugInPtr plugIn = selectedPlugIn();
    if (SeparateWindow* window = m_controller->separateWindowOf(plugIn.get()))
        window->close();
}

void SiteWindow::moveTrend(int rows)
{
    SourceListModel& list = m_controller->sourceList();
    const int from = m_trendList->currentIndex().row();
    const KTVPlugInPtr plugIn = list.plugInAt(from);
    if (plugIn && list.plugInAt(from + rows))
        m_undoStack.push(new MoveTrendCommand(*m_controller, plugIn, from, from + rows));
}

}  // namespace plotix
