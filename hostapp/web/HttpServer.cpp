#include "hostapp/web/HttpServer.h"

#include "base/ReportableError.h"
#include "hostapp/web/ConnectionTable.h"
#include "hostapp/web/ListeningSocket.h"
#include "hostapp/web/RequestQueue.h"
#include "hostapp/web/WebRoutes.h"

#include <QtCore/QSysInfo>

#include <microhttpd.h>
#include <sys/socket.h>
#include <unistd.h>

#include <algorithm>

/// The library reads requests and writes answers on one thread of its own and calls the functions here. Every request
/// has an Exchange, made when its first line is read and destroyed when its answer is taken or the client has left.
/// While a worker has it, its connection is suspended, so the Exchange stays.
namespace plotix {

namespace {

struct Exchange {
    QByteArray target;
    std::optional<HttpReply> reply;
    bool isHeard = false, isRouted = false;
};

std::optional<QByteArray> header(MHD_Connection* connection, const char* name)
{
    const char* value = MHD_lookup_connection_value(connection, MHD_HEADER_KIND, name);
    return value != nullptr ? std::optional<QByteArray>(value) : std::nullopt;
}

bool hasBody(MHD_Connection* connection)
{
    return header(connection, MHD_HTTP_HEADER_TRANSFER_ENCODING).has_value() ||
           header(connection, MHD_HTTP_HEADER_CONTENT_LENGTH).value_or("0") != "0";
}

bool hasTooLargeHeaders(MHD_Connection* connection, std::size_t limit)
{
    const auto* info = MHD_get_connection_info(connection, MHD_CONNECTION_INFO_REQUEST_HEADER_SIZE);
    return info != nullptr && info->header_size > limit;
}

QByteArray addressOf(MHD_Connection* connection)
{
    const auto* client = MHD_get_connection_info(connection, MHD_CONNECTION_INFO_CLIENT_ADDRESS);
    return client != nullptr ? addressText(client->client_addr) : QByteArray();
}

int socketOf(MHD_Connection* connection)
{
    return MHD_get_connection_info(connection, MHD_CONNECTION_INFO_CONNECTION_FD)->connect_fd;
}

/// A client that has closed its end: nothing more comes, and nothing waits to be read. Browsers close both directions
/// at once.
bool hasLeft(int socket)
{
    char byte = 0;
    return ::recv(socket, &byte, 1, MSG_PEEK | MSG_DONTWAIT) == 0;
}

/// For requests that the library would answer in its own way, or not at all: the answer goes straight to the client,
/// whose connection then ends.
void answerAndEnd(int socket, const HttpReply& reply, const char* reason)
{
    QByteArray text = "HTTP/1.1 " + QByteArray::number(reply.status) + ' ' + reason + "\r\nConnection: close\r\n" +
                      "Content-Type: " + reply.contentType +
                      "\r\nContent-Length: " + QByteArray::number(reply.body.size()) + "\r\n";
    for (const auto& [name, value] : protectiveHeaders(reply.policy))
        text += name + ": " + value + "\r\n";
    text += "\r\n" + reply.body;
    // It fits the socket's buffer, which is empty; a client that does not take it has ended itself.
    [[maybe_unused]] const ssize_t sent =
        ::send(socket, text.constData(), static_cast<std::size_t>(text.size()), MSG_NOSIGNAL | MSG_DONTWAIT);
    ::shutdown(socket, SHUT_RDWR);
}

WebRequest requestFrom(MHD_Connection* connection, const char* method, const QByteArray& target,
                       const HttpLimits& limits)
{
    WebRequest request;
    request.isTooLarge = hasTooLargeHeaders(connection, limits.headers);
    request.address = addressOf(connection);
    request.method = method;
    request.target = target;
    request.host = header(connection, MHD_HTTP_HEADER_HOST);
    request.authorization = header(connection, MHD_HTTP_HEADER_AUTHORIZATION);
    request.cookies = header(connection, MHD_HTTP_HEADER_COOKIE);
    request.hasBody = hasBody(connection);
    return request;
}

MHD_Response* responseFrom(const HttpReply& reply)
{
    auto* body = new QByteArray(reply.body);  // the library reads it while the client takes it
    MHD_Response* response = MHD_create_response_from_buffer_with_free_callback_cls(
        static_cast<std::size_t>(body->size()), body->data(),
        [](void* owned) { delete static_cast<QByteArray*>(owned); }, body);
    if (response == nullptr) {
        delete body;
        return nullptr;
    }
    const auto add = [response](const QByteArray& name, const QByteArray& value) {
        MHD_add_response_header(response, name.constData(), value.constData());
    };
    add(MHD_HTTP_HEADER_CONTENT_TYPE, reply.contentType);
    for (const auto& [name, value] : protectiveHeaders(reply.policy))
        add(name, value);
    for (const auto& [name, value] : reply.headers)
        add(name, value);
    if (reply.status >= 400)
        add(MHD_HTTP_HEADER_CONNECTION, "close");  // after a bad request the client must reconnect
    return response;
}

QByteArray hostText(const HttpAddress& address, std::uint16_t port)
{
    QByteArray host = address.host.toLatin1();
    if (host == "0.0.0.0" || host == "::")
        host = QSysInfo::machineHostName().toLatin1();
    if (host.contains(':'))
        host = '[' + host + ']';
    return host + ':' + QByteArray::number(port);
}

}  // namespace

class HttpServer::Daemon {
public:
    Daemon(OpenSites& sites, const HttpAddress& address, const QByteArray& token, const HttpLimits& limits);
    ~Daemon();
    Daemon(const Daemon&) = delete;
    Daemon& operator=(const Daemon&) = delete;

    std::uint16_t port() const { return m_socket.port; }
    const QByteArray& host() const { return m_host; }

private:
    MHD_Daemon* start();
    MHD_Result answer(MHD_Connection* connection, const char* method, Exchange& exchange);
    enum class Routed { Answered, HandedOver };
    Routed route(MHD_Connection* connection, const char* method, Exchange& exchange);
    void handOver(MHD_Connection* connection, const WebRoutes::Route& route, Exchange& exchange);
    static ConnectionTable::Connection* tableEntry(MHD_Connection* connection);

    // The library's callbacks; `self` is the daemon.
    static void* requestBegins(void* self, const char* target, MHD_Connection* connection);
    static MHD_Result requestArrived(void* self, MHD_Connection* connection, const char* url, const char* method,
                                     const char* version, const char* upload, std::size_t* uploadSize, void** context);
    static void requestEnds(void* self, MHD_Connection* connection, void** context, MHD_RequestTerminationCode why);
    static void connectionChanges(void* self, MHD_Connection* connection, void** entry,
                                  MHD_ConnectionNotificationCode what);
    static std::size_t leaveEscapes(void* self, MHD_Connection* connection, char* text);

    HttpLimits m_limits;
    ListeningSocket m_socket;
    QByteArray m_host;
    WebRoutes m_routes;
    ConnectionTable m_connections;
    RequestQueue m_queue;
    MHD_Daemon* m_daemon;
};

HttpServer::Daemon::Daemon(OpenSites& sites, const HttpAddress& address, const QByteArray& token,
                           const HttpLimits& limits)
    : m_limits(limits),
      m_socket(listenOn(address)),
      m_host(hostText(address, m_socket.port)),
      m_routes(sites, AccessToken(token, "plotix-" + QByteArray::number(m_socket.port)), m_host),
      m_connections(limits),
      m_queue(limits.workers, limits.waitingWork),
      m_daemon(start())
{
    if (m_daemon != nullptr)
        return;
    ::close(m_socket.socket);
    throw ReportableError(QStringLiteral("The web server could not be started; close other programs and try again."));
}

HttpServer::Daemon::~Daemon()
{
    // First end the work: a request that waits for the main queue holds its connection, which the library would wait
    // for.
    m_queue.close();
    MHD_stop_daemon(m_daemon);
}

MHD_Daemon* HttpServer::Daemon::start()
{
    constexpr std::size_t kSlack = 64;  // connections that are ended but not yet closed, and those just made
    // The library keeps a note of each parameter and header: with room for all that we accept, and for more than the
    // largest headers, it is we who refuse what is too large, except for what is several times too large.
    constexpr std::size_t kBytesOfNote = 128;
    const HttpLimits& limits = m_limits;
    const std::size_t memory = limits.target + limits.parameters * kBytesOfNote + 3 * limits.headers;
    const auto seconds = std::chrono::ceil<std::chrono::seconds>(std::max(limits.untilRequest, limits.untilTaken));
    return MHD_start_daemon(MHD_USE_EPOLL_INTERNAL_THREAD | MHD_USE_ITC | MHD_ALLOW_SUSPEND_RESUME, 0, nullptr, nullptr,
                            &requestArrived,
                            this,                                                                             //
                            MHD_OPTION_LISTEN_SOCKET, m_socket.socket,                                        //
                            MHD_OPTION_CONNECTION_LIMIT, static_cast<unsigned>(limits.connections + kSlack),  //
                            MHD_OPTION_CONNECTION_MEMORY_LIMIT, memory,                                       //
                            MHD_OPTION_CONNECTION_TIMEOUT, static_cast<unsigned>(seconds.count()),            //
                            MHD_OPTION_NOTIFY_CONNECTION, &connectionChanges, this,                           //
                            MHD_OPTION_NOTIFY_COMPLETED, &requestEnds, this,                                  //
                            MHD_OPTION_URI_LOG_CALLBACK, &requestBegins, this,                                //
                            MHD_OPTION_UNESCAPE_CALLBACK, &leaveEscapes, this,                                //
                            MHD_OPTION_END);
}

MHD_Result HttpServer::Daemon::answer(MHD_Connection* connection, const char* method, Exchange& exchange)
{
    // The library calls this twice. An answer in the first call closes the connection with the body unread: right for
    // requests with a body; after others more requests may follow.
    if (!std::exchange(exchange.isHeard, true) && !hasBody(connection))
        return MHD_YES;
    // Once handed over, a worker may be writing the exchange: it is looked at again when the connection is resumed.
    if (!exchange.isRouted && route(connection, method, exchange) == Routed::HandedOver)
        return MHD_YES;
    MHD_Response* response = responseFrom(*exchange.reply);
    if (response == nullptr)
        return MHD_NO;
    m_connections.setActivity(tableEntry(connection), ConnectionTable::Activity::SendingAnswer);
    const MHD_Result queued = MHD_queue_response(connection, exchange.reply->status, response);
    MHD_destroy_response(response);
    exchange.reply->body.clear();
    return queued;
}

HttpServer::Daemon::Routed HttpServer::Daemon::route(MHD_Connection* connection, const char* method, Exchange& exchange)
{
    exchange.isRouted = true;
    WebRoutes::Route route = m_routes.route(requestFrom(connection, method, exchange.target, m_limits));
    if (!route.reply) {
        handOver(connection, route, exchange);
        return Routed::HandedOver;
    }
    exchange.reply = std::move(route.reply);
    return Routed::Answered;
}

void HttpServer::Daemon::handOver(MHD_Connection* connection, const WebRoutes::Route& route, Exchange& exchange)
{
    m_connections.setActivity(tableEntry(connection), ConnectionTable::Activity::MakingAnswer);
    MHD_suspend_connection(connection);  // before the worker can resume it
    const auto done = [connection, &exchange](const HttpReply& reply) {
        exchange.reply = reply;
        MHD_resume_connection(connection);
    };
    // A suspended connection is not closed, so its socket stays this client's.
    const bool accepted =
        m_queue.submit(route.subject, route.work, done, [socket = socketOf(connection)] { return hasLeft(socket); });
    if (accepted)
        return;
    exchange.reply = busyReply();
    MHD_resume_connection(connection);
}

ConnectionTable::Connection* HttpServer::Daemon::tableEntry(MHD_Connection* connection)
{
    const MHD_ConnectionInfo* info = MHD_get_connection_info(connection, MHD_CONNECTION_INFO_SOCKET_CONTEXT);
    return static_cast<ConnectionTable::Connection*>(info->socket_context);
}

void* HttpServer::Daemon::requestBegins(void* self, const char* target, MHD_Connection* connection)
{
    // Before the library takes the address apart: of one with thousands of parameters it would answer nothing.
    auto* exchange = new Exchange{target, std::nullopt};
    const HttpLimits& limits = static_cast<Daemon*>(self)->m_limits;
    if (static_cast<std::size_t>(exchange->target.size()) > limits.target ||
        static_cast<std::size_t>(exchange->target.count('&')) >= limits.parameters) {
        answerAndEnd(socketOf(connection), addressTooLongReply(), "URI Too Long");
        exchange->reply = addressTooLongReply();
        exchange->isRouted = true;
    }
    return exchange;
}

MHD_Result HttpServer::Daemon::requestArrived(void* self, MHD_Connection* connection, const char*, const char* method,
                                              const char*, const char*, std::size_t* uploadSize, void** context)
{
    *uploadSize = 0;  // the body is dropped; a request with one is refused
    return static_cast<Daemon*>(self)->answer(connection, method, *static_cast<Exchange*>(*context));
}

void HttpServer::Daemon::requestEnds(void* self, MHD_Connection* connection, void** context, MHD_RequestTerminationCode)
{
    delete static_cast<Exchange*>(*context);
    *context = nullptr;
    static_cast<Daemon*>(self)->m_connections.setActivity(tableEntry(connection),
                                                          ConnectionTable::Activity::AwaitingRequest);
}

void HttpServer::Daemon::connectionChanges(void* self, MHD_Connection* connection, void** entry,
                                           MHD_ConnectionNotificationCode what)
{
    ConnectionTable& table = static_cast<Daemon*>(self)->m_connections;
    if (what == MHD_CONNECTION_NOTIFY_STARTED) {
        *entry = table.add(socketOf(connection), addressOf(connection));
    } else {
        table.remove(static_cast<ConnectionTable::Connection*>(*entry));
        *entry = nullptr;
    }
}

/// We decode paths ourselves, from the original text, after cutting them at their slashes.
std::size_t HttpServer::Daemon::leaveEscapes(void*, MHD_Connection*, char* text)
{
    return std::char_traits<char>::length(text);
}

HttpServer::HttpServer(OpenSites& sites, const HttpAddress& address, const QByteArray& token, const HttpLimits& limits)
{
    if (token.isEmpty() && !address.isLoopback())
        throw ReportableError(
            QStringLiteral("Serving at %1 lets other machines in and needs a token; give --token-file FILE, "
                           "or leave --bind out.")
                .arg(address.host));
    m_daemon = std::make_unique<Daemon>(sites, address, token, limits);
}

HttpServer::~HttpServer() = default;

std::uint16_t HttpServer::port() const
{
    return m_daemon->port();
}

QString HttpServer::url() const
{
    return QStringLiteral("http://") + QString::fromLatin1(m_daemon->host()) + QLatin1Char('/');
}

}  // namespace plotix
