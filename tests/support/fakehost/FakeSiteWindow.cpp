#include "tests/support/fakehost/FakeSiteWindow.h"

namespace fakehost {

QString FakeSourceListItem::title() const
{
    return m_plugIn->title().isEmpty() ? m_plugIn->name() : m_plugIn->title();
}

FakeWindowController::FakeWindowController(std::shared_ptr<KTVPlugIn> contentViewController)
    : m_contentViewController(std::move(contentViewController)), m_window(std::make_unique<QWidget>())
{
}

FakeSiteWindowController::FakeSiteWindowController(KTVAgentPtr agent, CallLog* log)
    : m_agent(std::move(agent)),
      m_log(log),
      m_window(std::make_unique<QWidget>()),
      m_document(std::make_shared<FakeSiteDocument>())
{
    m_window->resize(800, 600);
}

std::vector<KTVSourceListItemPtr>
FakeSiteWindowController::itemsWithRepresentedObjectsOfClass(const QString& className) const
{
    std::vector<KTVSourceListItemPtr> found;
    for (const KTVSourceListItemPtr& item : m_items)
        if (item->representedObject()->inherits(className.toLatin1().constData()))
            found.push_back(item);
    return found;
}

void FakeSiteWindowController::addPlugIn(const std::shared_ptr<KTVPlugIn>& plugIn, bool select)
{
    m_log->note(QStringLiteral("siteWindow.addPlugIn ") + plugIn->name());
    if (m_beforeAdding)
        m_beforeAdding(*plugIn);
    m_items.push_back(std::make_shared<FakeSourceListItem>(plugIn));
    if (select)
        m_selectedItem = m_items.back();
}

KTVSourceListItemPtr FakeSiteWindowController::findSourceListItemWithRepresentedObject(const KTVPlugIn* plugIn) const
{
    for (const KTVSourceListItemPtr& item : m_items)
        if (item->representedObject().get() == plugIn)
            return item;
    return nullptr;
}

void FakeSiteWindowController::openInSeparateWindow(const KTVSourceListItemPtr& item)
{
    if (!item)
        return;
    m_log->note(QStringLiteral("siteWindow.openInSeparateWindow ") + item->title());
    m_document->addWindowController(std::make_shared<FakeWindowController>(item->representedObject()));
}

}  // namespace fakehost
