#include "hostapp/window/SiteWindows.h"

#include "base/ReportableError.h"
#include "hostapp/window/DesktopUserInterface.h"
#include "hostapp/window/RecentSites.h"
#include "hostapp/window/ViewSite.h"

#include <QtCore/QFileInfo>

namespace plotix {

SiteWindows::SiteWindows(const WindowServices& services, DocumentOpened documentOpened)
    : m_services(services), m_documentOpened(std::move(documentOpened))
{
}

SiteWindows::~SiteWindows()
{
    for (SiteWindow* window : windows())
        delete window;
}

std::vector<SiteWindow*> SiteWindows::windows() const
{
    std::vector<SiteWindow*> open;
    for (const QPointer<SiteWindow>& window : m_windows)
        if (window)
            open.push_back(window);
    return open;
}

SiteWindow* SiteWindows::open(const QString& path)
{
    for (SiteWindow* window : windows())
        if (QFileInfo(window->controller().siteDocument()->path()) == QFileInfo(path))
            return window;
    return openDocument(SiteDocument::open(path));
}

SiteWindow* SiteWindows::create(const QString& path)
{
    return openDocument(SiteDocument::create(path));
}

SiteWindow* SiteWindows::openDocument(const std::shared_ptr<SiteDocument>& document)
{
    if (m_documentOpened)
        m_documentOpened(document);
    auto* window = new SiteWindow(document, m_services);
    window->setAttribute(Qt::WA_DeleteOnClose);
    connect(window, &SiteWindow::openSiteRequested, this,
            [this, window](const QString& path) { openFromMenu(path, &SiteWindows::open, window); });
    connect(window, &SiteWindow::newSiteRequested, this,
            [this, window](const QString& path) { openFromMenu(path, &SiteWindows::create, window); });
    connect(window, &SiteWindow::openViewRequested, this,
            [this, window](const ShownView& view, const QString& folder) { openView(view, folder, window); });
    std::erase_if(m_windows, [](const QPointer<SiteWindow>& one) { return one.isNull(); });
    m_windows.push_back(window);
    rememberRecentSite(document->path());
    return window;
}

void SiteWindows::openView(const ShownView& view, const QString& folder, QWidget* from)
{
    const QString site = siteToShow(view, folder, from);
    if (site.isEmpty())
        return;
    openFromMenu(site, &SiteWindows::open, from);
    for (SiteWindow* window : windows())
        if (QFileInfo(window->controller().siteDocument()->path()) == QFileInfo(site))
            window->showView(view);
}

void SiteWindows::openFromMenu(const QString& path, SiteWindow* (SiteWindows::*opening)(const QString&), QWidget* from)
{
    try {
        SiteWindow* window = (this->*opening)(path);
        window->show();
        window->raise();
        window->activateWindow();
    } catch (const ReportableError& error) {
        m_services.userInterface->beginSheet(
            {tr("The site could not be opened"), error.message(), KTVAlert::Style::Critical}, from, {});
    }
}

}  // namespace plotix
