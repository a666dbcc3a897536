#pragma once

#include <QtCore/QByteArray>

#include <chrono>
#include <map>
#include <mutex>
#include <optional>

/// How often an address has guessed the token wrongly, and how long it must wait before it may try again.
///
/// A few mistakes are free; each further one doubles the wait. Tries made during the wait are not looked at, so that
/// guessing in parallel gains nothing, and do not prolong it. A right token, or a quarter of an hour without a wrong
/// one, and all is forgotten. Cookies are not guesses: they are too long for that. Any thread.
namespace plotix {

class TokenGuesses {
public:
    using Moment = std::chrono::steady_clock::time_point;

    static constexpr int kFree = 5;  ///< wrong tokens without a wait
    static constexpr std::chrono::seconds kFirstWait{1}, kLongestWait{60}, kForgotten{900};
    static constexpr std::size_t kMostAddresses = 4096;  ///< remembered; beyond them the oldest is forgotten

    /// Whole seconds until the address may try again, at least 1; nothing: now. IPv6 addresses of one /64 network are
    /// one.
    std::optional<std::chrono::seconds> waitOf(const QByteArray& address, Moment now) const;

    void wasWrong(const QByteArray& address, Moment now);
    void wasRight(const QByteArray& address);

private:
    struct Mistakes {
        int count = 0;
        Moment last, until;
    };
    void forgetOldest();

    mutable std::mutex m_mutex;  // guards the rest
    std::map<QByteArray, Mistakes> m_mistakes;
};

}  // namespace plotix
