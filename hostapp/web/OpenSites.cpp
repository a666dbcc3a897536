#include "hostapp/web/OpenSites.h"

#include "base/MainQueue.h"

#include <QtCore/QRegularExpression>

#include <atomic>

namespace plotix {

struct OpenSites::Guests {
    explicit Guests(std::shared_ptr<WebSite> itsSite) : site(std::move(itsSite)) {}

    std::shared_ptr<WebSite> site;
    std::atomic<int> count = 0;  // rises under the list's lock, falls on the main queue
};

namespace {

QString pathSegmentFrom(const QString& wanted)
{
    static const QRegularExpression foreign(QStringLiteral("[^A-Za-z0-9._-]+"));
    static const QRegularExpression edges(QStringLiteral("^[.-]+|[.-]+$"));
    QString segment = wanted;
    segment.replace(foreign, QStringLiteral("-")).remove(edges);
    return segment.isEmpty() ? QStringLiteral("site") : segment;
}

}  // namespace

OpenSites::OpenSites() = default;

OpenSites::~OpenSites()
{
    while (!m_sites.empty())
        withdraw(m_sites.begin()->first);
}

QString OpenSites::add(const QString& wanted, std::shared_ptr<WebSite> site)
{
    const QString segment = pathSegmentFrom(wanted);
    QString identifier = segment;
    const std::lock_guard guard(m_mutex);
    for (int number = 2; m_sites.contains(identifier); ++number)
        identifier = segment + QLatin1Char('-') + QString::number(number);
    m_sites.emplace(identifier, std::make_shared<Guests>(std::move(site)));
    return identifier;
}

void OpenSites::withdraw(const QString& identifier)
{
    std::shared_ptr<Guests> guests;
    {
        const std::lock_guard guard(m_mutex);
        const auto found = m_sites.find(identifier);
        if (found == m_sites.end())
            return;
        guests = found->second;
        m_sites.erase(found);
    }
    // A visitor may be waiting for the main queue, which this thread runs: blocking here would be a deadlock.
    MainQueue::main().runUntil([&guests] { return guests->count == 0; });
}

bool OpenSites::isEmpty() const
{
    const std::lock_guard guard(m_mutex);
    return m_sites.empty();
}

std::vector<OpenSites::Listed> OpenSites::list() const
{
    std::vector<QString> identifiers;
    {
        const std::lock_guard guard(m_mutex);
        for (const auto& [identifier, guests] : m_sites)
            identifiers.push_back(identifier);
    }
    std::vector<Listed> listed;
    for (const QString& identifier : identifiers)
        if (const Visit site = visit(identifier))
            listed.push_back({identifier, site->name(), site->views().size()});
    return listed;
}

OpenSites::Visit OpenSites::visit(const QString& identifier) const
{
    const std::lock_guard guard(m_mutex);
    const auto found = m_sites.find(identifier);
    if (found == m_sites.end())
        return Visit();
    ++found->second->count;
    return Visit(found->second);
}

OpenSites::Visit::~Visit()
{
    if (!m_guests)
        return;
    // After the tasks that the visit posted, so that none of them is left once the count is 0.
    MainQueue::main().async([guests = std::move(m_guests)] { --guests->count; });
}

WebSite* OpenSites::Visit::operator->() const
{
    return m_guests->site.get();
}

}  // namespace plotix
