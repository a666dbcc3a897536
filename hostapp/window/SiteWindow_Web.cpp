// Showing the site to web browsers.
//
// Rules of this room:
//  1. The switch shows what is: a server that could not begin leaves it off.
//  2. Only this machine gets in; letting others in takes a token and is the command line's.
//  3. Serving ends before anything of the window does: browsers' requests ask its plug-ins.

#include "hostapp/window/SiteWindow.h"

#include "base/ReportableError.h"
#include "hostapp/site/WebServing.h"
#include "hostapp/window/WebAddressBar.h"

#include <QtCore/QSignalBlocker>
#include <QtWidgets/QStatusBar>

namespace plotix {

void SiteWindow::connectWebActions()
{
    m_webAddress = new WebAddressBar(this);
    statusBar()->addPermanentWidget(m_webAddress);
    m_webAddress->setAddress({});  // adding it to the status bar has shown it
    connect(m_actions.serveOnWeb, &QAction::toggled, this, &SiteWindow::serveOnWeb);
    connect(m_actions.copyWebAddress, &QAction::triggered, m_webAddress, &WebAddressBar::copyAddress);
    connect(m_controller.get(), &SiteWindowController::toolbarPlugInsChanged, this, [this] {
        if (m_actions.serveOnWeb->isChecked())
            serveOnWeb(true);  // the new plug-ins must answer
    });
    setUnavailableReason(m_actions.serveOnWeb,
                         m_services.webServing ? QString() : tr("This window was opened without a web server."));
    showWebAddress({});
}

void SiteWindow::serveOnWeb(bool on)
{
    try {
        if (!on)
            m_services.webServing->stop(*m_controller);
        showWebAddress(on ? m_services.webServing->start(*m_controller) : QString());
    } catch (const ReportableError& error) {
        const QSignalBlocker silently(m_actions.serveOnWeb);
        m_actions.serveOnWeb->setChecked(false);
        showWebAddress({});
        showAlert(tr("The site is not on the web"), error.message());
    }
}

void SiteWindow::showWebAddress(const QString& address)
{
    m_webAddress->setAddress(address);
    setUnavailableReason(m_actions.copyWebAddress,
                         address.isEmpty() ? tr("The site is not served on the web.") : QString());
    showStatusBarIfNeeded();
}

void SiteWindow::stopServing()
{
    if (m_services.webServing)
        m_services.webServing->stop(*m_controller);
}

}  // namespace plotix
