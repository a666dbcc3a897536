// The site window's toolbar: the button of every plug-in that gives one.
//
// The plug-in makes the item and says what it does; the window only places it, and names the agent when there are
// several to confuse.

#include "hostapp/window/SiteWindow.h"

#include "hostapp/window/GatheringToolbar.h"

namespace plotix {

void SiteWindow::buildToolbar()
{
    m_toolbar = new GatheringToolbar(tr("Toolbar"), this);
    m_toolbar->setObjectName(QStringLiteral("toolbar"));
    addToolBar(Qt::TopToolBarArea, m_toolbar);
    connect(m_controller.get(), &SiteWindowController::toolbarPlugInsChanged, this, &SiteWindow::fillToolbar);
    fillToolbar();
}

void SiteWindow::fillToolbar()
{
    QList<QAction*> items;
    for (const KTVPlugInPtr& plugIn : m_controller->toolbarPlugIns())
        if (QAction* item = plugIn->toolbarItem())
            items << namedToolbarItem(*plugIn, item);
    for (const KTVSourceListItemPtr& listed : m_controller->sourceList().items())
        if (QAction* item = listed->representedObject()->toolbarItem())
            items << namedToolbarItem(*listed->representedObject(), item);
    m_toolbar->setItems(items);
}

QAction* SiteWindow::namedToolbarItem(const KTVPlugIn& plugIn, QAction* item)
{
    const SiteDocument& document = *m_controller->siteDocument();
    const auto agent = document.agentWithIdentifier(plugIn.agent()->uniqueIdentifier());
    if (agent && document.agents().size() > 1)
        item->setText(tr("%1 – %2").arg(item->text(), agent->name()));
    return item;
}

}  // namespace plotix
