#pragma once

#include "hostapp/web/AccessToken.h"
#include "hostapp/web/HttpAddress.h"
#include "hostapp/web/HttpLimits.h"

#include <memory>

/// Serves the open sites over HTTP, on threads of its own.
///
/// One thread reads and writes all connections and never waits; a request that asks plug-ins is set aside until a
/// worker has its answer. A client that stalls, floods or sends nonsense costs its own connection and the memory of
/// that. *Borrows* the sites. Made and ended on the main thread; ending waits for the requests begun while the main
/// queue keeps running.
namespace plotix {

class OpenSites;

class HttpServer {
public:
    /// Listens when it returns. Throws ReportableError of one line: an address that is none or not ours, a port in use,
    /// a missing token. Any address but loopback wants a token; on loopback an empty one opens the sites to all who use
    /// this machine.
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
