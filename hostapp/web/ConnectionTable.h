#pragma once

#include "hostapp/web/HttpLimits.h"

#include <QtCore/QByteArray>

#include <condition_variable>
#include <list>
#include <mutex>
#include <thread>

/// Every open connection, since when it has been in its present state, and a thread that ends those that take too long.
///
/// A client that sends a byte now and then is never silent for long, so silence alone does not find it; what counts is
/// the time until its request, or its answer, is complete. When connections run short, those are ended that have been
/// longest without a request, of the address with the most first, so that a flood of silent ones cannot keep others
/// out; those just made are left alone, or many clients of one address would end each other. A connection whose answer
/// is being made is never ended. Sockets are *borrowed* and only shut down; their owner closes them after `remove`. Any
/// thread.
namespace plotix {

class ConnectionTable {
public:
    explicit ConnectionTable(const HttpLimits& limits);
    ~ConnectionTable();
    ConnectionTable(const ConnectionTable&) = delete;
    ConnectionTable& operator=(const ConnectionTable&) = delete;

    enum class Activity { AwaitingRequest, MakingAnswer, SendingAnswer };
    struct Connection {
        int socket = -1;
        QByteArray address;  ///< the client's, without its port
        Activity activity = Activity::AwaitingRequest;
        std::chrono::steady_clock::time_point since;
        bool isEnded = false;
    };

    /// The entry lives until `remove`.
    Connection* add(int socket, const QByteArray& address);
    void setActivity(Connection* connection, Activity activity);
    void remove(Connection* connection);

    std::size_t size() const;

private:
    void watch();
    void endOverdue();
    void makeRoom();
    bool endLongestSilentOfTheBusiest();
    static void end(Connection& connection);

    HttpLimits m_limits;
    mutable std::mutex m_mutex;  // guards the rest
    std::condition_variable m_changed;
    std::list<Connection> m_connections;
    bool m_isEnding = false;
    std::thread m_watcher;
};

}  // namespace plotix
