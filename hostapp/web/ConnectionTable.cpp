#include "hostapp/web/ConnectionTable.h"

#include <sys/socket.h>

#include <algorithm>

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
    makeRoom(address);
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

void ConnectionTable::makeRoom(const QByteArray& address)
{
    const auto isOpen = [](const Connection& one) { return !one.isEnded; };
    const auto ofAddress = [&](const Connection& one) { return isOpen(one) && one.address == address; };
    const auto count = [this](const auto& counts) {
        return static_cast<std::size_t>(std::count_if(m_connections.begin(), m_connections.end(), counts));
    };
    if (count(ofAddress) >= m_limits.connectionsPerAddress)
        endLongestSilent(&address);
    if (count(isOpen) >= m_limits.connections)
        endLongestSilent(nullptr);
}

void ConnectionTable::endLongestSilent(const QByteArray* address)
{
    Connection* longest = nullptr;
    for (Connection& one : m_connections) {
        const bool isCandidate = !one.isEnded && one.activity == Activity::AwaitingRequest &&
                                 (address == nullptr || one.address == *address);
        if (isCandidate && (longest == nullptr || one.since < longest->since))
            longest = &one;
    }
    if (longest != nullptr)
        end(*longest);
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
