#include "hostapp/window/PlugInToolbar.h"

namespace plotix {

PlugInToolbar::PlugInToolbar(SiteWindowController& controller, QWidget* parent)
    : GatheringToolbar(tr("Toolbar"), parent), m_controller(controller)
{
    setObjectName(QStringLiteral("toolbar"));
    connect(&controller, &SiteWindowController::toolbarPlugInsChanged, this, &PlugInToolbar::fill);
    fill();
}

void PlugInToolbar::fill()
{
    QList<QAction*> items;
    for (const KTVPlugInPtr& plugIn : m_controller.toolbarPlugIns())
        if (QAction* item = plugIn->toolbarItem())
            items << named(*plugIn, item);
    for (const KTVSourceListItemPtr& listed : m_controller.sourceList().items())
        if (QAction* item = listed->representedObject()->toolbarItem())
            items << named(*listed->representedObject(), item);
    setItems(items);
}

QAction* PlugInToolbar::named(const KTVPlugIn& plugIn, QAction* item) const
{
    const SiteDocument& document = *m_controller.siteDocument();
    const auto agent = document.agentWithIdentifier(plugIn.agent()->uniqueIdentifier());
    if (agent && document.agents().size() > 1)
        item->setText(tr("%1 – %2").arg(item->text(), agent->name()));
    return item;
}

}  // namespace plotix
