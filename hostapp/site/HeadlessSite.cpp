#include "hostapp/site/HeadlessSite.h"

#include "hostapp/site/PlugInStore.h"
#include "hostapp/site/PlugInWebSite.h"
#include "hostapp/site/WaitForRecords.h"
#include "hostapp/site/WindowMemory.h"

namespace plotix {

HeadlessSite::HeadlessSite(std::shared_ptr<SiteDocument> document, KTVPlugInModule* module)
    : m_document(std::move(document)),
      m_module(module),
      m_follower([] { return currentDate().seconds; }, TrendFollower::Rests::Never)
{
    for (const auto& agent : m_document->agents())
        agent->setSiteWindowController(this);
}

HeadlessSite::~HeadlessSite()
{
    for (const KTVSourceListItemPtr& item : m_sourceList.items())
        item->representedObject()->willUnload();
    m_toolbarPlugIns.clear();
    m_sourceList.removeAll();
    for (const auto& agent : m_document->agents())
        if (agent->siteWindowController() == this)
            agent->setSiteWindowController(nullptr);
}

void HeadlessSite::load()
{
    PlugInStore store(m_document, m_module);
    for (const KTVPlugInPtr& plugIn : store.load(this)) {
        if (!plugIn->group()) {  // only views are grouped
            m_toolbarPlugIns.push_back(plugIn);
            continue;
        }
        addPlugIn(plugIn, false);
        plugIn->view()->resize(kHeadlessViewSize);  // loading the view starts the fetch
    }
    if (m_toolbarPlugIns.empty())
        if (const KTVPlugInPtr made = makeToolbarPlugIn(*m_module, *this))
            m_toolbarPlugIns.push_back(made);
    m_unreadableCount = store.unreadableCount();
    for (const auto& agent : m_document->agents())
        waitForRecords(*agent);
}

void HeadlessSite::follow()
{
    const QStringList followed = readWindowState(*m_document).followed;
    for (const KTVSourceListItemPtr& item : m_sourceList.items())
        if (followed.contains(item->representedObject()->uniqueIdentifier()))
            m_follower.follow(item->representedObject());
    for (const auto& agent : m_document->agents())
        waitForRecords(*agent);
}

KTVAgentPtr HeadlessSite::agent() const
{
    return m_document->agents().empty() ? nullptr : m_document->agents().front();
}

std::vector<KTVSourceListItemPtr> HeadlessSite::itemsWithRepresentedObjectsOfClass(const QString& className) const
{
    std::vector<KTVSourceListItemPtr> matching = m_sourceList.items();
    const QByteArray name = className.toLatin1();
    std::erase_if(matching, [&name](const KTVSourceListItemPtr& item) {
        return !item->representedObject()->inherits(name.constData());
    });
    return matching;
}

void HeadlessSite::addPlugIn(const KTVPlugInPtr& plugIn, bool)
{
    m_sourceList.append(plugIn);
    plugIn->didLoad();
}

KTVSourceListItemPtr HeadlessSite::findSourceListItemWithRepresentedObject(const KTVPlugIn* plugIn) const
{
    return m_sourceList.itemFor(plugIn);
}

}  // namespace plotix
