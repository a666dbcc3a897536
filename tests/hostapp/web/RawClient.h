#pragma once

#include <QtCore/QByteArray>

#include <cstdint>

/// A client that sends exactly the bytes it is given, well formed or not, over a socket of its own. Blocks; any thread.
namespace plotix {

class RawClient {
public:
    explicit RawClient(std::uint16_t port);
    ~RawClient();
    RawClient(const RawClient&) = delete;
    RawClient& operator=(const RawClient&) = delete;

    bool isConnected() const { return m_socket >= 0; }

    /// False when the other end has closed.
    bool send(const QByteArray& bytes);

    /// Everything until the other end closes, or until `timeout` milliseconds are over.
    QByteArray readAll(int timeout = 20'000);
    bool isClosedByServer() const { return m_isClosed; }  ///< after readAll

private:
    int m_socket = -1;
    bool m_isClosed = false;
};

/// An answer, taken apart.
struct Answer {
    int status = 0;
    QByteArray head, body;
    QByteArray header(const QByteArray& name) const;  ///< empty when it is not there
};
Answer answerFrom(const QByteArray& bytes);

/// One request on a connection of its own. `headers` are whole lines.
Answer ask(std::uint16_t port, const QByteArray& method, const QByteArray& target, const QByteArray& headers = {});

}  // namespace plotix
