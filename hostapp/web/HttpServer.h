#pragma once

#include "hostapp/web/AccessToken.h"
#include "hostapp/web/HttpAddress.h"
#include "hostapp/web/HttpLimits.h"

#include <memory>

/// Serves the open sites over HTTP, on threads of its own.
///
/// One thread reads and writes all connections and never waits; a request that needs plug-ins is suspended until a
/// worker has its answer. A client that stalls, floods or sends nonsense costs only its own connection and that one's
/// memory. *Borrows* the sites. Made and destroyed on the main thread; destruction waits for running requests while the
/// main queue goes on.
namespace plotix {

class OpenSites;

class HttpServer {
public:
    /// Listens when it returns. Throws ReportableError of one line: an invalid address or one of another machine, a
    /// port in use, a missing token. Any address but loopback requires a token; on loopback an empty one opens the
    /// sites to all users of this machine.
    HttpServer(OpenSites& sites, const HttpAddress& address, const QByteArray& token, const HttpLimits& limits = {});
    ~HttpServer();
    HttpServer(const HttpServer&) = delete;
    HttpServer& operator=(const HttpServer&) = delete;

    std::uint16_t port() const;

    /// "http://127.0.0.1:8123/"; a server on every address answers with this machine's name.
    QString url() const;

private:
    class Daemon;
    std::unique_ptr<Daemon> m_daemon;
};

}  // namespace plotix
