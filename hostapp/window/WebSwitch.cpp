#include "hostapp/window/WebSwitch.h"

#include "base/ReportableError.h"
#include "hostapp/window/WebAddressBar.h"

#include <QtCore/QSignalBlocker>

namespace plotix {

WebSwitch::WebSwitch(SiteWindowController& controller, WebServing* serving, const SiteActions& actions,
                     WebAddressBar* bar)
    : m_controller(controller),
      m_serving(serving),
      m_bar(bar),
      m_switch(actions.serveOnWeb),
      m_copy(actions.copyWebAddress)
{
    connect(m_switch, &QAction::toggled, this, &WebSwitch::serve);
    connect(m_copy, &QAction::triggered, bar, &WebAddressBar::copyAddress);
    connect(&controller, &SiteWindowController::toolbarPlugInsChanged, this, [this] {
        if (isOn())
            serve(true);  // the new plug-ins must answer
    });
    setUnavailableReason(m_switch, serving ? QString() : tr("This window was opened without a web server."));
    show({});
}

void WebSwitch::serve(bool on)
{
    try {
        if (!on)
            m_serving->stop(m_controller);
        show(on ? m_serving->start(m_controller) : QString());
    } catch (const ReportableError& error) {
        const QSignalBlocker silently(m_switch);
        m_switch->setChecked(false);
        show({});
        emit failed(tr("The site is not on the web"), error.message());
    }
}

void WebSwitch::show(const QString& address)
{
    m_bar->setAddress(address);
    setUnavailableReason(m_copy, address.isEmpty() ? tr("The site is not served on the web.") : QString());
    emit addressShown();
}

void WebSwitch::stop()
{
    if (m_serving)
        m_serving->stop(m_controller);
}

}  // namespace plotix
