#pragma once

#include "hostapp/site/WebServing.h"
#include "hostapp/web/HttpServer.h"
#include "hostapp/web/OpenSites.h"

#include <map>
#include <memory>

/// One web server for all sites that want one, on this machine only.
///
/// It runs from the first site that is served to the last. *Owns* the server; *borrows* the sites between `start` and
/// `stop`. Main thread only.
namespace plotix {

class LocalWebServing : public WebServing {
public:
    LocalWebServing();
    ~LocalWebServing() override;

    QString start(WorkingSite& site) override;
    void stop(WorkingSite& site) override;

private:
    void ensureServer();

    struct Served {
        QString identifier;
        std::unique_ptr<QObject> life;  ///< of the connections to the site
    };
    std::map<const WorkingSite*, Served> m_served;
    OpenSites m_sites;
    std::unique_ptr<HttpServer> m_server;
};

}  // namespace plotix
