// Cleaning up agents and properties from the property list, and undoing that or an import.
//
// Rules of this room:
//  1. What is on screen is stored before the site's file is edited, so that views keep what was done to them.
//  2. The journal in the file undoes; the undo stack only says which step is meant. A step that is not the last one any
//     more, since another program or an import changed the site, is not undone.

#include "hostapp/window/SiteWindow.h"

#include "base/ReportableError.h"
#include "hostapp/document/SiteEditing.h"
#include "hostapp/site/PlugInOperations.h"
#include "hostapp/window/EditCommand.h"
#include "hostapp/window/PropertyListView.h"

#include <QtCore/QDateTime>
#include <QtCore/QLocale>
#include <QtWidgets/QApplication>
#include <QtWidgets/QInputDialog>
#include <QtWidgets/QMessageBox>

#include <algorithm>

namespace plotix {

void SiteWindow::connectEditing()
{
    connect(m_actions.undoImport, &QAction::triggered, this, &SiteWindow::askAndUndoImport);
    connect(m_propertyView, &PropertyListView::renameWanted, this, &SiteWindow::askAndRename);
    connect(m_propertyView, &PropertyListView::mergeWanted, this, &SiteWindow::mergeInto);
    connect(m_propertyView, &PropertyListView::deleteWanted, this, &SiteWindow::deleteFromSite);
    connect(m_propertyView, &PropertyListView::removeShownWanted, this, &SiteWindow::askAndRemoveShown);
    m_propertyView->setEditable(!m_controller->siteDocument()->isReadOnly());
}

void SiteWindow::updateEditingActions()
{
    const bool readOnly = m_controller->siteDocument()->isReadOnly();
    setUnavailableReason(m_actions.undoImport, readOnly ? tr("This site may only be looked at.") : QString());
    m_propertyView->setEditable(!readOnly);
}

bool SiteWindow::applyEdit(const std::function<void()>& work)
{
    storeNow();
    QString problem;
    QApplication::setOverrideCursor(Qt::WaitCursor);
    try {
        work();
        m_controller->siteDocument()->reload();
        m_controller->takeInChanges();
    } catch (const ReportableError& error) {
        problem = error.message();
    }
    QApplication::restoreOverrideCursor();
    if (!problem.isEmpty())
        showAlert(tr("Nothing was changed"), problem);
    showSelection();
    return problem.isEmpty();
}

void SiteWindow::edit(const QString& text, std::function<EditOutcome()> work)
{
    const auto step = std::make_shared<qint64>(0);
    const auto apply = [this, step, work = std::move(work)] { return applyEdit([&] { *step = work().step; }); };
    if (!apply())
        return;
    const QString site = m_controller->siteDocument()->path();
    m_undoStack.push(new EditCommand(
        text, [apply] { apply(); },
        [this, site, step] {
            applyEdit([&] {
                const std::vector<EditStep> steps = editSteps(site);
                if (steps.empty() || steps.back().id != *step)
                    throw ReportableError(tr("The site was changed since, by an import or another program."));
                undoLastEdit(site);
            });
        }));
}

void SiteWindow::askAndRename(const std::shared_ptr<SiteAgent>& agent, const std::shared_ptr<SiteProperty>& property)
{
    const QString before = property ? property->name() : agent->name();
    bool wanted = false;
    const QString name =
        QInputDialog::getText(this, tr("Rename “%1”").arg(before), tr("Name:"), QLineEdit::Normal, before, &wanted);
    if (wanted && name.trimmed() != before)
        rename(agent, property, name);
}

void SiteWindow::rename(const std::shared_ptr<SiteAgent>& agent, const std::shared_ptr<SiteProperty>& property,
                        const QString& name)
{
    const QString site = m_controller->siteDocument()->path();
    edit(tr("Rename to “%1”").arg(name.trimmed()), [site, agent, property, name] {
        return property ? renameProperty(site, property->description().id, name) : renameAgent(site, agent->id(), name);
    });
}

void SiteWindow::mergeInto(const std::shared_ptr<SiteAgent>& agent, const std::shared_ptr<SiteProperty>& property,
                           qint64 into)
{
    const QString site = m_controller->siteDocument()->path();
    const QString name = property ? property->name() : agent->name();
    const auto left = std::make_shared<std::size_t>(0);
    edit(tr("Merge “%1”").arg(name), [site, agent, property, into, left] {
        const EditOutcome outcome =
            property ? mergeProperties(site, property->description().id, into) : mergeAgents(site, agent->id(), into);
        *left = outcome.conflicts;
        return outcome;
    });
    if (*left > 0)
        showAlert(
            tr("%n value(s) were left out", nullptr, static_cast<int>(*left)),
            tr("Both had different values at the same time; those of the one that stays were kept. Undo brings all "
               "back."),
            KTVAlert::Style::Informational);
}

void SiteWindow::deleteFromSite(const std::shared_ptr<SiteAgent>& agent, const std::shared_ptr<SiteProperty>& property)
{
    const QString site = m_controller->siteDocument()->path();
    edit(tr("Delete “%1”").arg(property ? property->name() : agent->name()), [site, agent, property] {
        return property ? deleteProperty(site, property->description().id) : deleteAgent(site, agent->id());
    });
}

void SiteWindow::askAndRemoveShown(const std::shared_ptr<SiteAgent>& agent,
                                   const std::shared_ptr<SiteProperty>& property)
{
    const auto span = shownRange(selectedPlugIn().get());
    if (!span) {
        showAlert(tr("Nothing was changed"), tr("Select a trend and zoom to the values that are wrong first."));
        return;
    }
    const auto worded = [](double seconds) {
        return QLocale().toString(QDateTime::fromMSecsSinceEpoch(static_cast<qint64>(seconds * 1000)),
                                  QLocale::ShortFormat);
    };
    const QString question = tr("The values of “%1” from %2 to %3, the span that the trend shows, are taken out. "
                                "Undo brings them back.")
                                 .arg(property->name(), worded(span->first), worded(span->second));
    if (QMessageBox::question(this, tr("Remove Values"), question, QMessageBox::Ok | QMessageBox::Cancel) !=
        QMessageBox::Ok)
        return;
    const QString site = m_controller->siteDocument()->path();
    edit(tr("Remove values of “%1”").arg(property->name()), [site, agent, property, span = *span] {
        return removeValues(site, agent->id(), {property->description().id}, span.first, span.second);
    });
    sendAction(selectedPlugIn().get(), "refresh", this);
}

void SiteWindow::askAndUndoImport()
{
    const QString site = m_controller->siteDocument()->path();
    std::vector<EditStep> steps;
    try {
        steps = editSteps(site);
    } catch (const ReportableError& error) {
        showAlert(tr("Nothing was changed"), error.message());
        return;
    }
    const auto import = std::find_if(steps.rbegin(), steps.rend(),
                                     [](const EditStep& step) { return step.kind == EditStep::Kind::Import; });
    if (import == steps.rend()) {
        showAlert(tr("Nothing was changed"), tr("There is no import that can be undone."));
        return;
    }
    const QString question =
        tr("The import of “%1” is undone: what it added goes, and what it replaced comes back.").arg(import->subject);
    if (QMessageBox::question(this, tr("Undo Import"), question, QMessageBox::Ok | QMessageBox::Cancel) ==
        QMessageBox::Ok)
        applyEdit([&site] { undoLastImport(site); });
}

}  // namespace plotix
