#include "hostapp/web/WebRoutes.h"

#include "hostapp/web/WebPages.h"
#include "hostapp/web/WebPath.h"

#include <QtCore/QRegularExpression>

#include <arpa/inet.h>

namespace plotix {

namespace {

QByteArray sitePath(const QString& site)
{
    return "/sites/" + QUrl::toPercentEncoding(site);
}

HttpReply documentReply(const QByteArray& contentType, const QByteArray& body)
{
    HttpReply reply;
    reply.contentType = contentType;
    reply.body = body;
    reply.policy = HttpReply::Policy::Document;
    return reply;
}

HttpReply pageReply(const QByteArray& body)
{
    HttpReply reply;
    reply.body = body;
    return reply;
}

/// Exactly one slash in front: with two the path would name another server.
QByteArray localPath(const QByteArray& path)
{
    qsizetype begin = 0;
    while (begin < path.size() && (path[begin] == '/' || path[begin] == '\\'))
        ++begin;
    return '/' + path.mid(begin);
}

}  // namespace

bool isHostText(const QByteArray& host)
{
    static const QRegularExpression form(
        QStringLiteral("\\A(?:[A-Za-z0-9._-]{1,253}|\\[[0-9A-Fa-f:.]{2,45}\\])(?::[0-9]{1,5})?\\z"));
    return form.match(QString::fromLatin1(host)).hasMatch();
}

bool isOwnHost(const QByteArray& host)
{
    if (host.startsWith('['))
        return true;
    const QByteArray name = host.left(host.lastIndexOf(':') < 0 ? host.size() : host.lastIndexOf(':')).toLower();
    in_addr four;
    return name == "localhost" || name.endsWith(".localhost") || ::inet_pton(AF_INET, name.constData(), &four) == 1;
}

WebRoutes::WebRoutes(const OpenSites& sites, AccessToken token, QByteArray ownHost)
    : m_sites(sites), m_token(std::move(token)), m_ownHost(std::move(ownHost))
{
}

WebRoutes::Route WebRoutes::route(const WebRequest& request) const
{
    const QByteArray host = request.host.value_or(m_ownHost);
    if (auto refused = refusal(request, host))
        return {std::move(refused), {}, {}};
    const QByteArray path = pathOf(request.target);
    const WebPath wanted = webPathFrom(path);
    const AskedRange asked = rangeAsked(queryOf(request.target));
    const bool hasRange = wanted.kind == WebPath::Kind::Site || wanted.kind == WebPath::Kind::Rendering;
    if (hasRange && !asked.problem.isEmpty())
        return {badRangeReply(asked.problem), {}, {}};
    const QByteArray query = asked.range ? queryOf(*asked.range).toLatin1() : QByteArray();
    const QByteArray subject = host + ' ' + path + query;
    switch (wanted.kind) {
    case WebPath::Kind::Index: return {pageReply(indexPage(m_sites.list())), {}, {}};
    case WebPath::Kind::Style: return {documentReply("text/css; charset=utf-8", styleSheet()), {}, {}};
    case WebPath::Kind::Icon: return {documentReply("image/svg+xml", iconImage()), {}, {}};
    case WebPath::Kind::SiteBare:
        if (m_sites.visit(wanted.site))
            return {redirectReply(308, sitePath(wanted.site) + '/'), {}, {}};
        break;
    case WebPath::Kind::Site:
        if (m_sites.visit(wanted.site))
            return {std::nullopt, subject, [=, this] { return siteReply(wanted.site, host, asked.range); }};
        break;
    case WebPath::Kind::Rendering:
        if (m_sites.visit(wanted.site))
            return {std::nullopt, subject, [=, this, url = QUrl::fromEncoded("http://" + host + path)] {
                        return renderingReply(wanted.site, url, asked.range);
                    }};
        break;
    case WebPath::Kind::Nothing: break;
    }
    return {notFoundReply(), {}, {}};
}

std::optional<HttpReply> WebRoutes::refusal(const WebRequest& request, const QByteArray& host) const
{
    if (request.method != "GET" && request.method != "HEAD")
        return methodNotAllowedReply();
    if (request.isTooLarge)
        return headersTooLargeReply();
    if (request.hasBody || !isHostText(host))
        return badRequestReply();
    if (m_token.isRequired())
        return accessRefusal(request);
    // Without a token only the address protects: a foreign page must not get in by a name of its own that it points
    // at this machine.
    return isOwnHost(host) ? std::nullopt : std::optional(wrongHostReply());
}

std::optional<HttpReply> WebRoutes::accessRefusal(const WebRequest& request) const
{
    const auto asked = queryValue(queryOf(request.target), "token");
    if (request.cookies && m_token.matchesCookies(*request.cookies))
        return asked && m_token.matches(asked->toUtf8()) ? std::optional(cookieReply(request)) : std::nullopt;
    if (!asked && !request.authorization)
        return unauthorizedReply();
    if (const auto wait = m_guesses.waitOf(request.address, std::chrono::steady_clock::now()))
        return tooManyGuessesReply(static_cast<int>(wait->count()));
    if (request.authorization && m_token.matchesAuthorization(*request.authorization)) {
        m_guesses.wasRight(request.address);
        return std::nullopt;
    }
    if (!asked || !m_token.matches(asked->toUtf8())) {
        m_guesses.wasWrong(request.address, std::chrono::steady_clock::now());
        return unauthorizedReply();
    }
    m_guesses.wasRight(request.address);
    return cookieReply(request);
}

/// From now on the cookie gives access, and the token disappears from the address line.
HttpReply WebRoutes::cookieReply(const WebRequest& request) const
{
    const AskedRange asked = rangeAsked(queryOf(request.target));
    const QByteArray query = asked.range ? queryOf(*asked.range).toLatin1() : QByteArray();
    HttpReply reply = redirectReply(303, localPath(pathOf(request.target)) + query);
    reply.headers.emplace_back("Set-Cookie", m_token.cookie());
    return reply;
}

HttpReply WebRoutes::siteReply(const QString& site, const QByteArray& host, const std::optional<WebRange>& range) const
{
    const OpenSites::Visit visit = m_sites.visit(site);
    if (!visit)
        return notFoundReply();
    const QUrl base = QUrl::fromEncoded("http://" + host + sitePath(site));
    return pageReply(sitePage(visit->name(), visit->viewsWithFootnotes(), visit->advertisement(base), range));
}

HttpReply WebRoutes::renderingReply(const QString& site, const QUrl& url, const std::optional<WebRange>& range) const
{
    const OpenSites::Visit visit = m_sites.visit(site);
    if (!visit)
        return notFoundReply();
    const auto rendering = range ? visit->renderingOver(*range, url) : visit->rendering(url);
    return rendering ? documentReply(rendering->contentType.toLatin1(), rendering->data) : notFoundReply();
}

}  // namespace plotix
