#include "hostapp/web/HttpReply.h"

#include "hostapp/web/WebPages.h"

namespace plotix {

namespace {

// The HTML fragments of plug-ins contain titles as people typed them. No script runs, nothing is loaded from elsewhere,
// no form is sent, and "sandbox" also keeps a refresh hidden in a title from leading away. Links may still open
// windows, and those are not sandboxed.
constexpr auto kPagePolicy = "default-src 'none'; img-src 'self'; style-src 'self'; base-uri 'none'; "
                             "form-action 'none'; frame-ancestors 'none'; "
                             "sandbox allow-same-origin allow-popups allow-popups-to-escape-sandbox";

// Browsers show pictures and PDF in pages of their own making, with styles of their own; a sandbox would keep their
// PDF viewers out.
constexpr auto kDocumentPolicy = "default-src 'none'; img-src 'self'; style-src 'unsafe-inline'; object-src 'self'; "
                                 "base-uri 'none'; form-action 'none'; frame-ancestors 'none'";

}  // namespace

HttpReply plainReply(unsigned status, const char* title, const char* text)
{
    HttpReply reply;
    reply.status = status;
    reply.body = messagePage(QString::fromLatin1(title), QString::fromLatin1(text));
    return reply;
}

HttpReply notFoundReply()
{
    return plainReply(404, "Not found", "There is nothing here.");
}

HttpReply methodNotAllowedReply()
{
    HttpReply reply = plainReply(405, "Only for looking", "This server answers GET and HEAD.");
    reply.headers.emplace_back("Allow", "GET, HEAD");
    return reply;
}

HttpReply unauthorizedReply()
{
    HttpReply reply = plainReply(401, "A token is needed", "Open the address with ?token= and the token behind it.");
    reply.headers.emplace_back("WWW-Authenticate", "Bearer realm=\"Plotix\"");
    return reply;
}

HttpReply wrongHostReply()
{
    return plainReply(421, "Not this server", "Open this server by its address, or as localhost.");
}

HttpReply badRequestReply()
{
    return plainReply(400, "Not understood", "This request cannot be answered.");
}

HttpReply badRangeReply(const QString& problem)
{
    HttpReply reply;
    reply.status = 400;
    reply.body = messagePage(QStringLiteral("Not understood"), problem);
    return reply;
}

HttpReply busyReply()
{
    HttpReply reply = plainReply(503, "Busy", "Try again in a moment.");
    reply.headers.emplace_back("Retry-After", "1");
    return reply;
}

HttpReply tooManyGuessesReply(int seconds)
{
    HttpReply reply = plainReply(429, "Too many wrong tokens", "Wait a little, then open the address with the token.");
    reply.headers.emplace_back("Retry-After", QByteArray::number(seconds));
    return reply;
}

HttpReply addressTooLongReply()
{
    return plainReply(414, "Too long an address", "This address is longer than any here.");
}

HttpReply headersTooLargeReply()
{
    return plainReply(431, "Too large a request", "The headers of this request are larger than any needed here.");
}

HttpReply redirectReply(unsigned status, const QByteArray& location)
{
    HttpReply reply = plainReply(status, "Moved", "This page has another address.");
    reply.headers.emplace_back("Location", location);
    return reply;
}

std::vector<std::pair<QByteArray, QByteArray>> protectiveHeaders(HttpReply::Policy policy)
{
    return {{"Content-Security-Policy", policy == HttpReply::Policy::Page ? kPagePolicy : kDocumentPolicy},
            {"X-Content-Type-Options", "nosniff"},
            {"X-Frame-Options", "DENY"},
            {"Referrer-Policy", "no-referrer"},
            {"Cross-Origin-Resource-Policy", "same-origin"},
            {"Cache-Control", "no-store"}};
}

}  // namespace plotix
