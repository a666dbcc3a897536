#pragma once

#include "hostapp/web/WebSites.h"

#include <map>
#include <memory>
#include <mutex>
#include <utility>

/// The sites that are open to the web now, and the requests that are visiting them.
///
/// *Shares* the sites. A request visits a site while it uses it; withdrawing a site waits for its visitors while the
/// main queue goes on, so that what the site borrows may be destroyed afterwards. `add` and `withdraw`: main thread;
/// the rest: any thread.
namespace plotix {

class OpenSites {
public:
    struct Listed {
        QString identifier;
        QString name;
        std::size_t viewCount = 0;
    };

    OpenSites();
    ~OpenSites();  ///< withdraws every site
    OpenSites(const OpenSites&) = delete;
    OpenSites& operator=(const OpenSites&) = delete;

    /// Answers the site's identifier, one segment of a path: `wanted` reduced to letters, digits, "-", "_" and ".",
    /// with a number appended when another site has it already; "site" when nothing is left.
    QString add(const QString& wanted, std::shared_ptr<WebSite> site);

    /// Afterwards no visit is left and none begins. An unknown identifier: nothing happens.
    void withdraw(const QString& identifier);

    bool isEmpty() const;
    std::vector<Listed> list() const;  ///< by identifier

    /// Keeps a site open as long as it lives; the site is released on the main queue.
    class Visit;
    Visit visit(const QString& identifier) const;  ///< empty when there is no such site

private:
    struct Guests;  // of one site
    mutable std::mutex m_mutex;
    std::map<QString, std::shared_ptr<Guests>> m_sites;  // guarded
};

class OpenSites::Visit {
public:
    explicit Visit(std::shared_ptr<Guests> guests = {}) : m_guests(std::move(guests)) {}
    Visit(Visit&& other) noexcept : m_guests(std::move(other.m_guests)) {}
    Visit& operator=(Visit&&) = delete;
    ~Visit();

    explicit operator bool() const { return m_guests != nullptr; }
    WebSite* operator->() const;

private:
    std::shared_ptr<Guests> m_guests;
};

}  // namespace plotix
