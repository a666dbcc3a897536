#include "hostapp/web/ListeningSocket.h"

#include "base/ReportableError.h"

#include <arpa/inet.h>
#include <netinet/in.h>
#include <sys/socket.h>
#include <unistd.h>

#include <cerrno>
#include <cstring>
#include <optional>

namespace plotix {

namespace {

struct SocketAddress {
    sockaddr_storage storage{};
    socklen_t size = 0;
};

/// The address for the system's calls; nothing when the text is not an address.
std::optional<SocketAddress> socketAddressFrom(const HttpAddress& address)
{
    const QByteArray text = address.host == QLatin1String("localhost") ? "127.0.0.1" : address.host.toLatin1();
    SocketAddress result;
    auto* four = reinterpret_cast<sockaddr_in*>(&result.storage);
    auto* six = reinterpret_cast<sockaddr_in6*>(&result.storage);
    if (::inet_pton(AF_INET, text.constData(), &four->sin_addr) == 1) {
        four->sin_family = AF_INET;
        four->sin_port = htons(address.port);
        result.size = sizeof *four;
        return result;
    }
    if (::inet_pton(AF_INET6, text.constData(), &six->sin6_addr) == 1) {
        six->sin6_family = AF_INET6;
        six->sin6_port = htons(address.port);
        result.size = sizeof *six;
        return result;
    }
    return std::nullopt;
}

[[noreturn]] void failToListen(const HttpAddress& address, int error)
{
    const QString where = QStringLiteral("port %1 of %2").arg(address.port).arg(address.host);
    if (error == EADDRINUSE)
        throw ReportableError(QStringLiteral("%1 is in use; choose another with --port, or 0 for any.").arg(where));
    if (error == EADDRNOTAVAIL)
        throw ReportableError(QStringLiteral("%1 is no address of this machine.").arg(address.host));
    throw ReportableError(
        QStringLiteral("%1 cannot be opened: %2").arg(where, QString::fromLocal8Bit(std::strerror(error))));
}

std::uint16_t portOf(int socket)
{
    SocketAddress own;
    own.size = sizeof own.storage;
    ::getsockname(socket, reinterpret_cast<sockaddr*>(&own.storage), &own.size);
    return ntohs(own.storage.ss_family == AF_INET6 ? reinterpret_cast<sockaddr_in6*>(&own.storage)->sin6_port
                                                   : reinterpret_cast<sockaddr_in*>(&own.storage)->sin_port);
}

}  // namespace

bool HttpAddress::isLoopback() const
{
    const auto address = socketAddressFrom(*this);
    if (!address)
        return false;
    if (address->storage.ss_family == AF_INET6)
        return IN6_IS_ADDR_LOOPBACK(&reinterpret_cast<const sockaddr_in6*>(&address->storage)->sin6_addr);
    const auto* four = reinterpret_cast<const sockaddr_in*>(&address->storage);
    return (ntohl(four->sin_addr.s_addr) >> 24) == 127;
}

ListeningSocket listenOn(const HttpAddress& address)
{
    const auto where = socketAddressFrom(address);
    if (!where)
        throw ReportableError(
            QStringLiteral("%1 is no address; give one in figures, such as 127.0.0.1 or 0.0.0.0.").arg(address.host));
    const int socket = ::socket(where->storage.ss_family, SOCK_STREAM | SOCK_CLOEXEC | SOCK_NONBLOCK, 0);
    if (socket < 0)
        failToListen(address, errno);
    const int yes = 1;  // a restarted server finds its port still in use by old connections
    ::setsockopt(socket, SOL_SOCKET, SO_REUSEADDR, &yes, sizeof yes);
    if (::bind(socket, reinterpret_cast<const sockaddr*>(&where->storage), where->size) != 0 ||
        ::listen(socket, SOMAXCONN) != 0) {
        const int error = errno;
        ::close(socket);
        failToListen(address, error);
    }
    return {socket, portOf(socket)};
}

QByteArray addressText(const sockaddr* address)
{
    char text[INET6_ADDRSTRLEN] = "";
    if (address != nullptr && address->sa_family == AF_INET)
        ::inet_ntop(AF_INET, &reinterpret_cast<const sockaddr_in*>(address)->sin_addr, text, sizeof text);
    if (address != nullptr && address->sa_family == AF_INET6)
        ::inet_ntop(AF_INET6, &reinterpret_cast<const sockaddr_in6*>(address)->sin6_addr, text, sizeof text);
    return text;
}

}  // namespace plotix
