#pragma once

#include "hostapp/web/WebSites.h"

#include <map>
#include <memory>
#include <mutex>
#include <utility>

/// The sites that are open to the web just now, and who is visiting them.
///
/// *Shares* the sites. A request visits a site for as long as it asks it; withdrawing one waits for its visitors while
/// the main queue keeps running, so that what the site borrows may be taken away afterwards. `add` and `withdraw`: main
/// thread; the rest: any thread.
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

    /// Answers the site's identifier, one segment of a path: `wanted` in letters, digits, "-", "_" and ".", with a
    /// number behind it when another site has it already; "site" when nothing is left of it.
    QString add(const QString& wanted, std::shared_ptr<WebSite> site);

    /// No visit begins afterwards and none is left. An unknown identifier: nothing happens.
    void withdraw(const QString& identifier);

    bool isEmpty() const;
    std::vector<Listed> list() const;  ///< by identifier

    /// Keeps a site open to the one who holds it; the site is let go of on the main queue.
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
