#include "tests/hostapp/web/RawClient.h"

#include <QtCore/QElapsedTimer>

#include <arpa/inet.h>
#include <netinet/in.h>
#include <poll.h>
#include <sys/socket.h>
#include <unistd.h>

#include <algorithm>

namespace plotix {

RawClient::RawClient(std::uint16_t port) : m_socket(::socket(AF_INET, SOCK_STREAM | SOCK_CLOEXEC, 0))
{
    sockaddr_in address{};
    address.sin_family = AF_INET;
    address.sin_port = htons(port);
    address.sin_addr.s_addr = htonl(INADDR_LOOPBACK);
    if (::connect(m_socket, reinterpret_cast<sockaddr*>(&address), sizeof address) == 0)
        return;
    ::close(m_socket);
    m_socket = -1;
}

RawClient::~RawClient()
{
    if (m_socket >= 0)
        ::close(m_socket);
}

bool RawClient::send(const QByteArray& bytes)
{
    qsizetype sent = 0;
    while (isConnected() && sent < bytes.size()) {
        const auto size = static_cast<std::size_t>(bytes.size() - sent);
        const ssize_t count = ::send(m_socket, bytes.constData() + sent, size, MSG_NOSIGNAL);
        if (count <= 0)
            return false;
        sent += count;
    }
    return isConnected();
}

QByteArray RawClient::readAll(int timeout)
{
    QElapsedTimer timer;
    timer.start();
    QByteArray bytes;
    char buffer[65'536];
    while (isConnected() && !m_isClosed) {
        pollfd readable{m_socket, POLLIN, 0};
        const int left = std::max(0, timeout - static_cast<int>(timer.elapsed()));
        if (::poll(&readable, 1, left) <= 0)
            break;
        const ssize_t count = ::recv(m_socket, buffer, sizeof buffer, 0);
        m_isClosed = count <= 0;
        if (count > 0)
            bytes.append(buffer, count);
    }
    return bytes;
}

QByteArray Answer::header(const QByteArray& name) const
{
    for (const QByteArray& line : head.split('\n')) {
        const qsizetype colon = line.indexOf(':');
        if (colon > 0 && line.left(colon).toLower() == name.toLower())
            return line.mid(colon + 1).trimmed();
    }
    return {};
}

Answer answerFrom(const QByteArray& bytes)
{
    const qsizetype end = bytes.indexOf("\r\n\r\n");
    Answer answer;
    answer.head = bytes.left(end);
    answer.body = end < 0 ? QByteArray() : bytes.mid(end + 4);
    answer.status = answer.head.split(' ').value(1).toInt();
    return answer;
}

Answer ask(std::uint16_t port, const QByteArray& method, const QByteArray& target, const QByteArray& headers)
{
    RawClient client(port);
    const QByteArray host = headers.toLower().startsWith("host:") ? QByteArray() : "Host: localhost\r\n";
    client.send(method + ' ' + target + " HTTP/1.1\r\n" + host + headers + "Connection: close\r\n\r\n");
    return answerFrom(client.readAll());
}

}  // namespace plotix
