#pragma once

#include "hostapp/site/WebServing.h"
#include "hostapp/window/SiteActions.h"
#include "hostapp/window/SiteWindowController.h"

#include <QtCore/QObject>

/// The switch that shows a site window's site to web browsers, and the address they find it under.
///
/// The switch shows what is: a server that could not begin leaves it off. Only this machine gets in; letting others in
/// takes a token and is the command line's. The window *owns* it; it *borrows* controller and server, and must be
/// stopped before either ends. Main thread only.
namespace plotix {

class WebAddressBar;

class WebSwitch : public QObject {
    Q_OBJECT
public:
    /// `serving` null: the program has none, and the switch says so. `bar` shows the address.
    WebSwitch(SiteWindowController& controller, WebServing* serving, const SiteActions& actions, WebAddressBar* bar);

    bool isOn() const { return m_switch->isChecked(); }
    void stop();  ///< when it returns, no browser's request asks the window's plug-ins any more

signals:
    void addressShown();  ///< or taken away
    void failed(const QString& message, const QString& text);

private:
    void serve(bool on);
    void show(const QString& address);

    SiteWindowController& m_controller;
    WebServing* m_serving;
    WebAddressBar* m_bar;
    QAction *m_switch, *m_copy;  // the window's
};

}  // namespace plotix
