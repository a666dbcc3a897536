#include "hostapp/window/SiteWindowController.h"

#include "base/ReportableError.h"
#include "hostapp/site/ToolbarClass.h"

#include <algorithm>

namespace plotix {

namespace {
constexpr auto kTrendClass = "KTVPlotixPlugIn";
}

SiteWindowController::SiteWindowController(std::shared_ptr<SiteDocument> document, KTVPlugInModule* module)
    : m_document(std::move(document)), m_module(module), m_store(m_document, module)
{
    joinAgents();
    connect(m_document.get(), &SiteDocument::agentsChanged, this, &SiteWindowController::joinAgents);
    // A title is stored at once: it is the change people notice when it is lost.
    connect(&m_sourceList, &SourceListModel::dataChanged, this, [this](const QModelIndex& index) {
        if (const KTVPlugInPtr plugIn = m_sourceList.plugInAt(index.row()))
            store(*plugIn);
    });
}

SiteWindowController::~SiteWindowController()
{
    storeAll();
    m_separateWindows.clear();
    m_document->setWindowControllers({});
    releaseToolbarPlugIns();
    for (const KTVSourceListItemPtr& item : m_sourceList.items())
        item->representedObject()->willUnload();
    m_sourceList.removeAll();
    for (const auto& agent : m_document->agents())
        if (agent->siteWindowController() == this)
            agent->setSiteWindowController(nullptr);
}

void SiteWindowController::joinAgents()
{
    for (const auto& agent : m_document->agents())
        agent->setSiteWindowController(this);
    if (m_isLoaded)
        makeMissingToolbarPlugIns();
}

KTVAgentPtr SiteWindowController::agent() const
{
    return m_document->agents().empty() ? nullptr : m_document->agents().front();
}

std::vector<KTVSourceListItemPtr>
SiteWindowController::itemsWithRepresentedObjectsOfClass(const QString& className) const
{
    std::vector<KTVSourceListItemPtr> matching = m_sourceList.items();
    const QByteArray name = className.toLatin1();
    std::erase_if(matching, [&name](const KTVSourceListItemPtr& item) {
        return !item->representedObject()->inherits(name.constData());
    });
    return matching;
}

void SiteWindowController::addPlugIn(const KTVPlugInPtr& plugIn, bool select)
{
    if (!plugIn || m_sourceList.rowOf(plugIn.get()) >= 0)
        return;
    m_sourceList.append(plugIn);
    store(*plugIn);
    plugIn->didLoad();
    if (!select)
        return;
    emit selectionRequested(plugIn);
    store(*plugIn);  // again: dates given at construction reach the archive through the loaded view
}

KTVSourceListItemPtr SiteWindowController::findSourceListItemWithRepresentedObject(const KTVPlugIn* plugIn) const
{
    return m_sourceList.itemFor(plugIn);
}

void SiteWindowController::openInSeparateWindow(const KTVSourceListItemPtr& item)
{
    if (item)
        openInSeparateWindow(item->representedObject(), {});
}

void SiteWindowController::openInSeparateWindow(const KTVPlugInPtr& plugIn, const QByteArray& geometry)
{
    if (!plugIn || !plugIn->isUndockable())
        return;
    if (SeparateWindow* open = separateWindowOf(plugIn.get())) {
        open->raise();
        open->activateWindow();
        return;
    }
    auto window = std::make_shared<SeparateWindow>(plugIn, m_document->siteName());
    // Queued: the window is on its way through its own close event when it says so.
    connect(
        window.get(), &SeparateWindow::closed, this, [this, closing = plugIn.get()] { closeSeparateWindow(closing); },
        Qt::QueuedConnection);
    m_separateWindows.push_back(window);
    publishWindowControllers();
    if (!geometry.isEmpty())
        window->restoreGeometry(geometry);
    window->show();
    emit separateWindowChanged(plugIn);
}

SeparateWindow* SiteWindowController::separateWindowOf(const KTVPlugIn* plugIn) const
{
    for (const auto& window : m_separateWindows)
        if (window->contentViewController().get() == plugIn)
            return window.get();
    return nullptr;
}

void SiteWindowController::closeSeparateWindow(const KTVPlugIn* plugIn)
{
    const auto found = std::find_if(m_separateWindows.begin(), m_separateWindows.end(), [plugIn](const auto& window) {
        return window->contentViewController().get() == plugIn;
    });
    if (found == m_separateWindows.end())
        return;
    const KTVPlugInPtr returned = (*found)->contentViewController();
    m_separateWindows.erase(found);
    publishWindowControllers();
    emit separateWindowChanged(returned);
}

std::vector<SeparateTrend> SiteWindowController::separateTrends() const
{
    std::vector<SeparateTrend> trends;
    for (const auto& window : m_separateWindows)
        trends.push_back({window->contentViewController()->uniqueIdentifier(), window->saveGeometry()});
    return trends;
}

void SiteWindowController::closeSeparateWindows()
{
    m_separateWindows.clear();
    publishWindowControllers();
}

void SiteWindowController::publishWindowControllers()
{
    m_document->setWindowControllers({m_separateWindows.begin(), m_separateWindows.end()});
}

int SiteWindowController::loadPlugIns(const QStringList& order)
{
    std::vector<KTVPlugInPtr> plugIns = m_store.load(this);
    const auto place = [&order](const KTVPlugInPtr& plugIn) {
        const auto found = order.indexOf(plugIn->uniqueIdentifier());
        return found < 0 ? order.size() : found;
    };
    std::stable_sort(plugIns.begin(), plugIns.end(),
                     [&place](const auto& left, const auto& right) { return place(left) < place(right); });
    for (const KTVPlugInPtr& plugIn : plugIns) {
        if (isToolbarPlugIn(*plugIn))
            adoptToolbarPlugIn(plugIn);
        else
            m_sourceList.append(plugIn);
        plugIn->didLoad();
    }
    m_isLoaded = true;
    makeMissingToolbarPlugIns();
    return m_store.unreadableCount();
}

KTVPlugInPtr SiteWindowController::newTrend(const std::shared_ptr<SiteAgent>& agent, const KTVPropertyList& properties,
                                            OptionalDate from, OptionalDate to, const QString& title)
{
    KTVPlugInModule::Arguments arguments{agent, this, properties, from, to};
    const KTVPlugInPtr plugIn = m_module->instantiate(QString::fromLatin1(kTrendClass), arguments);
    if (!plugIn)
        return nullptr;
    plugIn->setTitle(title);
    addPlugIn(plugIn, true);
    return plugIn;
}

void SiteWindowController::removePlugIn(const KTVPlugInPtr& plugIn)
{
    closeSeparateWindow(plugIn.get());
    plugIn->willUnload();
    // Off the list first: the selection moves on then, which stores everything that is still listed.
    m_sourceList.remove(plugIn.get());
    m_toRemove.push_back(plugIn);
    removeFromDocument();
}

void SiteWindowController::removeFromDocument()
{
    if (m_document->isReadOnly())
        return;
    try {
        for (; !m_toRemove.empty(); m_toRemove.pop_back())
            m_store.remove(*m_toRemove.back());
    } catch (const ReportableError& error) {
        emit storingFailed(error.message());  // another writer holds the document; the next storing tries again
    }
}

void SiteWindowController::restorePlugIn(const KTVPlugInPtr& plugIn, int row)
{
    if (!plugIn || m_sourceList.rowOf(plugIn.get()) >= 0)
        return;
    std::erase(m_toRemove, plugIn);
    m_sourceList.insert(row, plugIn);
    store(*plugIn);
    plugIn->didLoad();
    emit selectionRequested(plugIn);
}

void SiteWindowController::storeAll()
{
    removeFromDocument();
    for (const KTVSourceListItemPtr& item : m_sourceList.items())
        store(*item->representedObject());
    for (const KTVPlugInPtr& plugIn : m_toolbarPlugIns)
        store(*plugIn);
}

void SiteWindowController::store(const KTVPlugIn& plugIn)
{
    if (m_document->isReadOnly())
        return;
    try {
        m_store.store(plugIn);
    } catch (const ReportableError& error) {
        emit storingFailed(error.message());
    }
}

}  // namespace plotix
