#pragma once

#include "hostapp/web/HttpServer.h"
#include "hostapp/web/OpenSites.h"
#include "hostapp/window/WebServing.h"

#include <map>
#include <memory>

/// One web server for all site windows that want one, on this machine only.
///
/// It runs from the first window that serves to the last. *Owns* the server; *borrows* the windows' controllers between
/// `start` and `stop`. Main thread only.
namespace plotix {

class WindowWebServing : public WebServing {
public:
    WindowWebServing();
    ~WindowWebServing() override;

    QString start(SiteWindowController& site) override;
    void stop(SiteWindowController& site) override;

private:
    void ensureServer();

    std::map<const SiteWindowController*, QString> m_identifiers;
    OpenSites m_sites;
    std::unique_ptr<HttpServer> m_server;
};

}  // namespace plotix
