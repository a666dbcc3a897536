#include "hostapp/window/SiteWindowController.h"

#include "hostapp/window/Appearance.h"

#include <algorithm>

namespace plotix {

SiteWindowController::SiteWindowController(std::shared_ptr<SiteDocument> document, KTVPlugInModule* module)
    : WorkingSite(std::move(document), module, Use::OnScreen)
{
}

SiteWindowController::~SiteWindowController()
{
    storeAll();
    closeSeparateWindows();
    letGoOfPlugIns();  // they may still ask for the window
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
    auto window = std::make_shared<SeparateWindow>(plugIn, siteDocument()->siteName());
    // Queued, because the window sends this from its own close event.
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
    siteDocument()->setWindowControllers({m_separateWindows.begin(), m_separateWindows.end()});
}

QString SiteWindowController::lookOfNewTrends() const
{
    return lookOfGraphs();
}

void SiteWindowController::letGo(const KTVPlugInPtr& plugIn)
{
    closeSeparateWindow(plugIn.get());
    WorkingSite::letGo(plugIn);
}

void SiteWindowController::showInPlaceOf(const KTVPlugInPtr& old, const KTVPlugInPtr& fresh)
{
    const SeparateWindow* window = separateWindowOf(old.get());
    const QByteArray geometry = window ? window->saveGeometry() : QByteArray();
    WorkingSite::showInPlaceOf(old, fresh);
    if (window)
        openInSeparateWindow(fresh, geometry);
}

}  // namespace plotix
