// The site window's toolbar: the button of every plug-in that gives one.
//
// The plug-in makes the item and says what it does; the window only places it, and names the agent when there are
// several to confuse.

#include "hostapp/window/SiteWindow.h"

#include <QtWidgets/QToolBar>
#include <QtWidgets/QToolButton>

namespace plotix {

void SiteWindow::buildToolbar()
{
    m_toolbar = new QToolBar(tr("Toolbar"), this);
    m_toolbar->setObjectName(QStringLiteral("toolbar"));
    m_toolbar->setMovable(false);
    m_toolbar->setIconSize({20, 20});
    m_toolbar->setToolButtonStyle(Qt::ToolButtonTextBesideIcon);
    m_toolbar->setContextMenuPolicy(Qt::PreventContextMenu);  // it cannot be hidden, so none is offered
    addToolBar(Qt::TopToolBarArea, m_toolbar);
    connect(m_controller.get(), &SiteWindowController::toolbarPlugInsChanged, this, &SiteWindow::fillToolbar);
    fillToolbar();
}

void SiteWindow::fillToolbar()
{
    for (QAction* old : m_toolbar->actions()) {
        m_toolbar->removeAction(old);
        old->deleteLater();  // it may be the one that is just being triggered
    }
    for (const KTVPlugInPtr& plugIn : m_controller->toolbarPlugIns())
        if (QAction* item = plugIn->toolbarItem())
            addToolbarItem(*plugIn, item);
    for (const KTVSourceListItemPtr& listed : m_controller->sourceList().items())
        if (QAction* item = listed->representedObject()->toolbarItem())
            addToolbarItem(*listed->representedObject(), item);
    m_toolbar->setVisible(!m_toolbar->actions().isEmpty());
}

void SiteWindow::addToolbarItem(const KTVPlugIn& plugIn, QAction* item)
{
    const SiteDocument& document = *m_controller->siteDocument();
    const auto agent = document.agentWithIdentifier(plugIn.agent()->uniqueIdentifier());
    if (agent && document.agents().size() > 1)
        item->setText(tr("%1 – %2").arg(item->text(), agent->name()));
    item->setParent(m_toolbar);
    m_toolbar->addAction(item);
    m_toolbar->widgetForAction(item)->setFocusPolicy(Qt::TabFocus);  // for those who use no mouse
}

}  // namespace plotix
