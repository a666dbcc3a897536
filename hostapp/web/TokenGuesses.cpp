#include "hostapp/web/TokenGuesses.h"

#include <arpa/inet.h>

#include <algorithm>

namespace plotix {

namespace {

/// One client commands a whole /64.
QByteArray networkOf(const QByteArray& address)
{
    in6_addr six;
    if (::inet_pton(AF_INET6, address.constData(), &six) != 1 || IN6_IS_ADDR_V4MAPPED(&six))
        return address;
    return QByteArray(reinterpret_cast<const char*>(six.s6_addr), 8).toHex();
}

}  // namespace

std::optional<std::chrono::seconds> TokenGuesses::waitOf(const QByteArray& address, Moment now) const
{
    const std::lock_guard guard(m_mutex);
    const auto found = m_mistakes.find(networkOf(address));
    if (found == m_mistakes.end() || found->second.until <= now)
        return std::nullopt;
    return std::chrono::ceil<std::chrono::seconds>(found->second.until - now);
}

void TokenGuesses::wasWrong(const QByteArray& address, Moment now)
{
    const std::lock_guard guard(m_mutex);
    Mistakes& mistakes = m_mistakes[networkOf(address)];
    if (mistakes.count > 0 && now - mistakes.last > kForgotten)
        mistakes = {};
    mistakes.last = now;
    constexpr int kMostDoublings = 6;
    if (++mistakes.count > kFree)
        mistakes.until =
            now + std::min(kLongestWait, kFirstWait * (1 << std::min(kMostDoublings, mistakes.count - kFree - 1)));
    if (m_mistakes.size() > kMostAddresses)
        forgetOldest();
}

void TokenGuesses::wasRight(const QByteArray& address)
{
    const std::lock_guard guard(m_mutex);
    m_mistakes.erase(networkOf(address));
}

void TokenGuesses::forgetOldest()
{
    m_mistakes.erase(std::min_element(m_mistakes.begin(), m_mistakes.end(), [](const auto& one, const auto& other) {
        return one.second.last < other.second.last;
    }));
}

}  // namespace plotix
