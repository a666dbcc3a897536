#include "hostapp/web/ConnectionTable.h"

#include <sys/socket.h>

#include <algorithm>
#include <map>

namespace plotix {

namespace {
constexpr std::chrono::milliseconds kBetweenLooks{100};
}

ConnectionTable::ConnectionTable(const HttpLimits& limits) : m_limits(limits), m_watcher([this] { watch(); }) {}

ConnectionTable::~ConnectionTable()
{
    {
        const std::lock_guard guard(m_mutex);
        m_isEnding = true;
    }
    m_changed.notify_all();
    m_watcher.join();
}

ConnectionTable::Connection* ConnectionTable::add(int socket, const QByteArray& address)
{
    const std::lock_guard guard(m_mutex);
    m_connections.push_back(
        {socket, address, Activity::AwaitingRequest, std::chrono::steady_clock::now(), /*isEnded=*/false});
    m_changed.notify_all();
    return &m_connections.back();
}

void ConnectionTable::setActivity(Connection* connection, Activity activity)
{
    const std::lock_guard guard(m_mutex);
    connection->activity = activity;
    connection->since = std::chrono::steady_clock::now();
}

void ConnectionTable::remove(Connection* connection)
{
    const std::lock_guard guard(m_mutex);
    m_connections.remove_if([connection](const Connection& one) { return &one == connection; });
}

std::size_t ConnectionTable::size() const
{
    const std::lock_guard guard(m_mutex);
    return m_connections.size();
}

void ConnectionTable::makeRoom()
{
    const auto open = [this] {
        return static_cast<std::size_t>(std::count_if(m_connections.begin(), m_connections.end(),
                                                      [](const Connection& one) { return !one.isEnded; }));
    };
    for (std::size_t count = open(); count >= m_limits.connections && endLongestSilentOfTheBusiest(); --count) {
    }
}

bool ConnectionTable::endLongestSilentOfTheBusiest()
{
    std::map<QByteArray, std::size_t> counts;
    for (const Connection& one : m_connections)
        if (!one.isEnded)
            ++counts[one.address];
    const auto latest = std::chrono::steady_clock::now() - m_limits.silentForRoom;
    Connection* longest = nullptr;
    for (Connection& one : m_connections) {
        if (one.isEnded || one.activity != Activity::AwaitingRequest || one.since > latest)
            continue;
        const auto rank = [&counts](const Connection& which) {
            return std::pair(-static_cast<std::ptrdiff_t>(counts[which.address]), which.since);
        };
        if (longest == nullptr || rank(one) < rank(*longest))
            longest = &one;
    }
    if (longest != nullptr)
        end(*longest);
    return longest != nullptr;
}

void ConnectionTable::watch()
{
    std::unique_lock lock(m_mutex);
    while (!m_isEnding) {
        if (m_connections.empty())
            m_changed.wait(lock);
        else
            m_changed.wait_for(lock, kBetweenLooks, [this] { return m_isEnding; });
        endOverdue();
        makeRoom();
    }
}

void ConnectionTable::endOverdue()
{
    const auto now = std::chrono::steady_clock::now();
    for (Connection& one : m_connections) {
        if (one.isEnded || one.activity == Activity::MakingAnswer)
            continue;
        const auto limit = one.activity == Activity::AwaitingRequest ? m_limits.untilRequest : m_limits.untilTaken;
        if (now - one.since > limit)
            end(one);
    }
}

void ConnectionTable::end(Connection& connection)
{
    connection.isEnded = true;
    ::shutdown(connection.socket, SHUT_RDWR);  // its owner notices, removes and closes it
}

}  // namespace plotix
