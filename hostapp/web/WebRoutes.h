#pragma once

#include "hostapp/web/AccessToken.h"
#include "hostapp/web/HttpReply.h"
#include "hostapp/web/OpenSites.h"
#include "hostapp/web/TokenGuesses.h"

#include <functional>
#include <optional>

/// Decides which answer a request gets.
///
/// Knows sites and tokens, but no socket. *Borrows* the sites. Any thread; `route` never waits; the work it returns may
/// wait and must run on a worker.
namespace plotix {

struct WebRequest {
    QByteArray method;
    QByteArray target;  ///< path and query as they were sent
    std::optional<QByteArray> host, authorization, cookies;
    bool hasBody = false;
    bool isTooLarge = false;  ///< its headers are
    QByteArray address;       ///< the client's, without its port
};

class WebRoutes {
public:
    /// `ownHost` is "ADDRESS:PORT", for requests that name no host.
    WebRoutes(const OpenSites& sites, AccessToken token, QByteArray ownHost);

    /// Either an answer, or work that makes one; requests with the same subject may share the work's answer.
    struct Route {
        std::optional<HttpReply> reply;
        QByteArray subject;
        std::function<HttpReply()> work;
    };
    Route route(const WebRequest& request) const;

private:
    std::optional<HttpReply> refusal(const WebRequest& request, const QByteArray& host) const;
    std::optional<HttpReply> accessRefusal(const WebRequest& request) const;
    HttpReply cookieReply(const WebRequest& request) const;
    HttpReply siteReply(const QString& site, const QByteArray& host, const std::optional<WebRange>& range) const;
    HttpReply renderingReply(const QString& site, const QUrl& url, const std::optional<WebRange>& range) const;

    const OpenSites& m_sites;
    AccessToken m_token;
    mutable TokenGuesses m_guesses;
    QByteArray m_ownHost;
};

/// Whether a Host header is well formed: a name or an address, and a port or none.
bool isHostText(const QByteArray& host);

/// Whether it names this machine in a way that no foreign name server can fake: a numeric address, or localhost.
bool isOwnHost(const QByteArray& host);

}  // namespace plotix
