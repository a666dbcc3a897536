#include "records/clickhouse/WritersTurn.h"

#include "base/ReportableError.h"
#include "records/clickhouse/RowBinary.h"
#include "records/clickhouse/ServerStamps.h"

#include <algorithm>
#include <chrono>
#include <condition_variable>
#include <map>
#include <mutex>
#include <random>
#include <thread>

namespace plotix {

namespace {

using Clock = std::chrono::steady_clock;
using std::chrono::milliseconds;

constexpr auto kRenewal = std::chrono::seconds(5);
constexpr auto kForgotten = std::chrono::seconds(30);  // without a renewal: its process is gone

enum State : std::uint8_t { Gone = 0, Wanted = 1 };

struct Claim {
    std::uint64_t id = 0, renewed = 0;
};

/// When this process first saw a claim with its last renewal.
class SeenClaims {
public:
    bool isForgotten(const Claim& claim)
    {
        const std::lock_guard lock(m_mutex);
        auto& [renewed, since] = m_seen[claim.id];
        if (since == Clock::time_point() || renewed != claim.renewed) {
            renewed = claim.renewed;
            since = Clock::now();
        }
        return Clock::now() - since > kForgotten;
    }

private:
    std::mutex m_mutex;
    std::map<std::uint64_t, std::pair<std::uint64_t, Clock::time_point>> m_seen;
};

void tell(ServerConnection& server, const SiteTables& tables, std::uint64_t claim, std::uint64_t renewed, State state)
{
    rowbinary::Writer row;
    row.add(stamps::day()).add(claim).add(renewed).add(static_cast<std::uint8_t>(state));
    server.insert("INSERT INTO " + tables.turns() + " (day, claim, renewed, state) FORMAT RowBinary", row.bytes());
}

std::vector<Claim> claimsOf(ServerConnection& server, const SiteTables& tables)
{
    const std::vector<std::byte> rows = server.ask("SELECT claim, max(renewed) FROM " + tables.turns() +
                                                   " GROUP BY claim HAVING min(state) = 1 "
                                                   "ORDER BY claim FORMAT RowBinary");
    std::vector<Claim> claims;
    for (rowbinary::Reader row(rows); !row.isAtEnd();) {
        Claim claim;
        claim.id = row.number<std::uint64_t>();
        claim.renewed = row.number<std::uint64_t>();
        claims.push_back(claim);
    }
    return claims;
}

/// Whether anybody else has a claim. Those of processes that are gone are taken away.
bool isTaken(ServerConnection& server, const SiteTables& tables, std::uint64_t own)
{
    static SeenClaims seen;
    bool isTaken = false;
    for (const Claim& claim : claimsOf(server, tables)) {
        if (claim.id == own)
            continue;
        if (seen.isForgotten(claim))
            tell(server, tables, claim.id, claim.renewed, Gone);
        else
            isTaken = true;
    }
    return isTaken;
}

[[noreturn]] void failAsTaken()
{
    throw ReportableError(
        QStringLiteral("The records are being written by somebody else: wait until that is done and try again."));
}

/// Not the same for two who wait, so that they do not go on meeting.
milliseconds pause()
{
    static thread_local std::minstd_rand random(std::random_device{}());
    return milliseconds(5 + static_cast<int>(random() % 40));
}

}  // namespace

class WritersTurn::Renewing {
public:
    Renewing(std::shared_ptr<SiteOnServer> site, std::uint64_t claim)
        : m_site(std::move(site)), m_claim(claim), m_thread([this] { run(); })
    {
    }
    ~Renewing()
    {
        {
            const std::lock_guard lock(m_mutex);
            m_ends = true;
        }
        m_changed.notify_all();
        m_thread.join();
    }
    Renewing(const Renewing&) = delete;
    Renewing& operator=(const Renewing&) = delete;

private:
    void run()
    {
        std::unique_lock lock(m_mutex);
        for (std::uint64_t renewed = 2; !m_changed.wait_for(lock, kRenewal, [this] { return m_ends; }); ++renewed) {
            lock.unlock();
            try {
                const SiteOnServer::Lease server = m_site->lease();
                tell(*server, m_site->tables(), m_claim, renewed, Wanted);
            } catch (const std::exception&) {  // the next one may succeed; who writes asks before it counts
            }
            lock.lock();
        }
    }

    const std::shared_ptr<SiteOnServer> m_site;
    const std::uint64_t m_claim;
    std::mutex m_mutex;
    std::condition_variable m_changed;
    bool m_ends = false;  // under the mutex
    std::thread m_thread;
};

WritersTurn::WritersTurn(std::shared_ptr<SiteOnServer> site, int patience) : m_site(std::move(site))
{
    const SiteOnServer::Lease server = m_site->lease();
    const SiteTables& tables = m_site->tables();
    const auto until = Clock::now() + milliseconds(patience);
    for (;;) {
        if (!isTaken(*server, tables, 0)) {
            // Whoever claims looks again: of two, at least one sees the other.
            m_claim = stamps::number();
            tell(*server, tables, m_claim, 1, Wanted);
            if (!isTaken(*server, tables, m_claim))
                break;
            tell(*server, tables, m_claim, 1, Gone);
        }
        if (Clock::now() > until)
            failAsTaken();
        std::this_thread::sleep_for(pause());
    }
    m_renewing = std::make_unique<Renewing>(m_site, m_claim);
}

WritersTurn::~WritersTurn()
{
    m_renewing.reset();
    try {
        const SiteOnServer::Lease server = m_site->lease();
        tell(*server, m_site->tables(), m_claim, 1, Gone);
    } catch (const std::exception&) {  // it is forgotten after a while
    }
}

void WritersTurn::requireHeld()
{
    const SiteOnServer::Lease server = m_site->lease();
    const std::vector<Claim> claims = claimsOf(*server, m_site->tables());
    if (std::none_of(claims.begin(), claims.end(), [&](const Claim& each) { return each.id == m_claim; }))
        throw ReportableError(QStringLiteral(
            "This program stood still for so long that others went on writing: nothing was stored, try again."));
}

void WritersTurn::waitUntilFree(SiteOnServer& site, ServerConnection& server, int patience)
{
    const auto until = Clock::now() + milliseconds(patience);
    while (isTaken(server, site.tables(), 0)) {
        if (Clock::now() > until)
            failAsTaken();
        std::this_thread::sleep_for(pause());
    }
}

}  // namespace plotix
