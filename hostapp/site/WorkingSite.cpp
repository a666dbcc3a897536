#include "hostapp/site/WorkingSite.h"

#include "base/ReportableError.h"
#include "hostapp/core/Defaults.h"
#include "hostapp/site/MakeTrend.h"
#include "hostapp/site/ModuleNames.h"
#include "hostapp/site/PlugInOperations.h"
#include "hostapp/site/TrendColors.h"
#include "hostapp/site/WaitForRecords.h"
#include "hostapp/site/WindowMemory.h"
#include "plugins/PlotixPlugIn/host/KTVPlugInViews.h"

#include <algorithm>

namespace plotix {

namespace {

TrendFollower::Rests restsIn(WorkingSite::Use use)
{
    return use == WorkingSite::Use::OnScreen ? TrendFollower::Rests::WhileUnseen : TrendFollower::Rests::Never;
}

/// Sorts by the order of these identifiers; those not named come last, in the order they had.
void sortByIdentifier(std::vector<KTVPlugInPtr>& plugIns, const QStringList& order)
{
    const auto place = [&order](const KTVPlugInPtr& plugIn) {
        const auto found = order.indexOf(plugIn->uniqueIdentifier());
        return found < 0 ? order.size() : found;
    };
    std::stable_sort(plugIns.begin(), plugIns.end(),
                     [&place](const auto& left, const auto& right) { return place(left) < place(right); });
}

}  // namespace

WorkingSite::WorkingSite(std::shared_ptr<SiteDocument> document, KTVPlugInModule* module, Use use)
    : m_document(std::move(document)),
      m_module(module),
      m_use(use),
      m_store(m_document, module),
      m_follower([] { return currentDate().seconds; }, restsIn(use)),
      m_watch(*m_document, [this] { return watchedTrends(); }),
      m_isKeptUp(use == Use::OnScreen)
{
    m_follower.setFirstRecord([this](const KTVPlugIn& plugIn) { return firstRecordOf(plugIn); });
    joinAgents();
    connect(m_document.get(), &SiteDocument::agentsChanged, this, &WorkingSite::joinAgents);
    connect(m_document.get(), &SiteDocument::changedElsewhere, this, &WorkingSite::takeInWhatOthersChanged);
    // A title is stored at once, because people would notice its loss.
    connect(&m_sourceList, &SourceListModel::dataChanged, this, [this](const QModelIndex& index) {
        if (const KTVPlugInPtr plugIn = m_sourceList.plugInAt(index.row()))
            store(*plugIn);
    });
}

WorkingSite::~WorkingSite()
{
    letGoOfPlugIns();
    for (const auto& agent : m_document->agents())
        if (agent->siteWindowController() == this)
            agent->setSiteWindowController(nullptr);
}

void WorkingSite::letGoOfPlugIns()
{
    for (const KTVPlugInPtr& plugIn : m_toolbarPlugIns)
        plugIn->willUnload();
    m_toolbarPlugIns.clear();
    for (const KTVSourceListItemPtr& item : m_sourceList.items())
        item->representedObject()->willUnload();
    m_sourceList.removeAll();
}

void WorkingSite::joinAgents()
{
    for (const auto& agent : m_document->agents())
        agent->setSiteWindowController(this);
    if (m_isLoaded)
        makeMissingToolbarPlugIns();
}

KTVAgentPtr WorkingSite::agent() const
{
    return m_document->agents().empty() ? nullptr : m_document->agents().front();
}

std::vector<KTVSourceListItemPtr> WorkingSite::itemsWithRepresentedObjectsOfClass(const QString& className) const
{
    std::vector<KTVSourceListItemPtr> matching = m_sourceList.items();
    const QByteArray name = className.toLatin1();
    std::erase_if(matching, [&name](const KTVSourceListItemPtr& item) {
        return !item->representedObject()->inherits(name.constData());
    });
    return matching;
}

void WorkingSite::addPlugIn(const KTVPlugInPtr& plugIn, bool select)
{
    if (!plugIn || m_sourceList.rowOf(plugIn.get()) >= 0)
        return;
    chooseReadingOfNew(plugIn.get());
    chooseLookOfNew(plugIn.get(), lookOfNewTrends());
    if (isStored())
        tellLinesApart(plugIn.get());
    m_sourceList.append(plugIn);
    lookAfter(plugIn);
    store(*plugIn);
    plugIn->didLoad();
    if (!select)
        return;
    emit selectionRequested(plugIn);
    store(*plugIn);  // again: dates given at construction are archived through the loaded view
}

KTVSourceListItemPtr WorkingSite::findSourceListItemWithRepresentedObject(const KTVPlugIn* plugIn) const
{
    return m_sourceList.itemFor(plugIn);
}

int WorkingSite::loadPlugIns()
{
    m_document->catchUp();
    std::vector<KTVPlugInPtr> plugIns = m_store.load(this);
    sortByIdentifier(plugIns, readWindowState(*m_document).order);
    for (const KTVPlugInPtr& plugIn : plugIns) {
        chooseReading(plugIn.get(), reader());
        if (isToolbarPlugIn(*plugIn))
            m_toolbarPlugIns.push_back(plugIn);
        else
            m_sourceList.append(plugIn);
        lookAfter(plugIn);
        plugIn->didLoad();
    }
    m_isLoaded = true;
    makeMissingToolbarPlugIns();
    return m_store.unreadableCount();
}

KTVPlugInPtr WorkingSite::newTrend(const std::shared_ptr<SiteAgent>& agent, const KTVPropertyList& properties,
                                   OptionalDate from, OptionalDate to, const QString& title)
{
    if (isStored())
        tellLinesApart(properties);
    const KTVPlugInPtr plugIn = makeTrend(*m_module, {m_document, agent, properties, from, to, title}, this);
    addPlugIn(plugIn, true);
    return plugIn;
}

KTVPlugInPtr WorkingSite::newTrend(const std::shared_ptr<SiteAgent>& agent, const TrendPlan& plan)
{
    const KTVPlugInPtr plugIn = newTrend(agent, plan.properties, plan.from, plan.to, plan.title);
    if (plugIn && !plan.reading.isEmpty())
        setReading(plugIn.get(), plan.reading);
    if (plugIn && plan.isFollowed)
        m_follower.follow(plugIn);
    return plugIn;
}

void WorkingSite::removePlugIn(const KTVPlugInPtr& plugIn)
{
    // Removed from the list first: that changes the selection, which stores everything still listed.
    letGo(plugIn);
    m_toRemove.push_back(plugIn);
    removeFromDocument();
}

void WorkingSite::letGo(const KTVPlugInPtr& plugIn)
{
    plugIn->willUnload();
    m_sourceList.remove(plugIn.get());
}

KTVPlugInPtr WorkingSite::listed(const QString& uniqueIdentifier) const
{
    for (const KTVSourceListItemPtr& item : m_sourceList.items())
        if (item->representedObject()->uniqueIdentifier() == uniqueIdentifier)
            return item->representedObject();
    return nullptr;
}

void WorkingSite::removeFromDocument()
{
    if (!isStored())
        return;
    try {
        for (; !m_toRemove.empty(); m_toRemove.pop_back())
            m_store.remove(*m_toRemove.back());
    } catch (const ReportableError& error) {
        emit storingFailed(error.message());  // another writer holds the document; the next storing tries again
    }
}

void WorkingSite::restorePlugIn(const KTVPlugInPtr& plugIn, int row)
{
    if (!plugIn || m_sourceList.rowOf(plugIn.get()) >= 0)
        return;
    std::erase(m_toRemove, plugIn);
    m_sourceList.insert(row, plugIn);
    store(*plugIn);
    plugIn->didLoad();
    emit selectionRequested(plugIn);
}

void WorkingSite::loadViews()
{
    for (const KTVSourceListItemPtr& item : m_sourceList.items()) {
        const KTVPlugInPtr plugIn = item->representedObject();
        if (!plugIn->isViewLoaded())
            loadViewAtSize(*plugIn, kUsualGraphSize);
    }
}

void WorkingSite::waitForRecords() const
{
    for (const auto& agent : m_document->agents())
        plotix::waitForRecords(*agent);
}

void WorkingSite::requireRecords() const
{
    for (const auto& agent : m_document->agents())
        plotix::requireRecords(*agent);
}

bool WorkingSite::isStored() const
{
    return m_use == Use::OnScreen && !m_storesNothing && !m_document->isReadOnly();
}

void WorkingSite::storeAll()
{
    removeFromDocument();
    for (const KTVSourceListItemPtr& item : m_sourceList.items())
        store(*item->representedObject());
    for (const KTVPlugInPtr& plugIn : m_toolbarPlugIns)
        store(*plugIn);
}

void WorkingSite::store(const KTVPlugIn& plugIn)
{
    if (!isStored() || &plugIn == m_leaving)
        return;
    try {
        tell(plugIn, m_store.store(plugIn));
    } catch (const ReportableError& error) {
        emit storingFailed(error.message());
    }
}

}  // namespace plotix
