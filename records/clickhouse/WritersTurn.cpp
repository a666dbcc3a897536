#include "records/clickhouse/WritersTurn.h"

#include "base/Interruption.h"
#include "base/ReportableError.h"
#include "records/clickhouse/RowBinary.h"
#include "records/clickhouse/ServerStamps.h"

#include <algorithm>
#include <atomic>
#include <chrono>
#include <condition_variable>
#include <map>
#include <mutex>
#include <random>
#include <thread>
#include <utility>

namespace plotix {

namespace {

using Clock = std::chrono::steady_clock;
using std::chrono::milliseconds;

constexpr auto kRenewal = std::chrono::seconds(1);
/// Without a renewal for so long, a claim's process is gone.
constexpr auto kForgotten = std::chrono::seconds(10);
/// Among replicas nothing can be renewed until the keeper has forgotten one that was lost, usually half a minute.
constexpr auto kForgottenAmongReplicas = std::chrono::seconds(40);
constexpr auto kCommitting = std::chrono::seconds(60);

Clock::duration forgottenAfter(ServerConnection& server)
{
    return server.isReplicated() ? kForgottenAmongReplicas : kForgotten;
}

enum State : std::uint8_t { Gone = 0, Wanted = 1 };

struct Claim {
    std::uint64_t id = 0, renewed = 0;
};

/// When this process first saw a claim with its last renewal.
class SeenClaims {
public:
    enum class Life {
        Alive,     ///< was renewed while somebody here looked
        Unknown,   ///< since it was first seen, which is not long ago
        Forgotten  ///< was not renewed for long: its process is gone
    };
    Life lifeOf(const Claim& claim, Clock::duration forgotten)
    {
        const std::lock_guard lock(m_mutex);
        Seen& seen = m_seen[claim.id];
        if (seen.since == Clock::time_point() || seen.renewed != claim.renewed) {
            seen.isAlive = seen.since != Clock::time_point();
            seen.renewed = claim.renewed;
            seen.since = Clock::now();
        }
        if (Clock::now() - seen.since > forgotten)
            return Life::Forgotten;
        return seen.isAlive ? Life::Alive : Life::Unknown;
    }

private:
    struct Seen {
        std::uint64_t renewed = 0;
        Clock::time_point since;
        bool isAlive = false;
    };
    std::mutex m_mutex;
    std::map<std::uint64_t, Seen> m_seen;
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

enum class Taken {
    No,
    Perhaps,  ///< by somebody who may be gone
    Yes
};

/// Whether anybody else has a claim. Those of processes that are gone are taken away.
Taken takenBy(ServerConnection& server, const SiteTables& tables, std::uint64_t own)
{
    using Life = SeenClaims::Life;
    static SeenClaims seen;
    Taken taken = Taken::No;
    for (const Claim& claim : claimsOf(server, tables)) {
        if (claim.id == own)
            continue;
        const Life life = seen.lifeOf(claim, forgottenAfter(server));
        if (life == Life::Forgotten)
            tell(server, tables, claim.id, claim.renewed, Gone);
        else
            taken = std::max(taken, life == Life::Alive ? Taken::Yes : Taken::Perhaps);
    }
    return taken;
}

[[noreturn]] void failAsTaken()
{
    throw WritersTurn::TakenByOthers(
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
    Renewing(std::shared_ptr<SiteOnServer> site, std::size_t shard, std::uint64_t claim)
        : m_site(std::move(site)), m_shard(shard), m_claim(claim), m_thread([this] { run(); })
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
        for (std::uint64_t renewed = 2; !m_changed.wait_for(lock, kRenewal, [this] { return m_ends.load(); });
             ++renewed) {
            lock.unlock();
            try {
                tell(*m_site->quickConnection(m_shard), m_site->tables(m_shard), m_claim, renewed, Wanted);
            } catch (const std::exception&) {  // the next one may succeed; who writes asks before it counts
            }
            lock.lock();
        }
    }

    const std::shared_ptr<SiteOnServer> m_site;
    const std::size_t m_shard;
    const std::uint64_t m_claim;
    std::mutex m_mutex;
    std::condition_variable m_changed;
    std::atomic<bool> m_ends = false;  // changed under the mutex
    std::thread m_thread;
};

WritersTurn::WritersTurn(std::shared_ptr<SiteOnServer> site, std::size_t shard, int patience, Waits waits)
    : m_site(std::move(site)), m_shard(shard)
{
    const std::unique_ptr<ServerConnection> quick =
        waits == Waits::ForWriters ? m_site->quickConnection(m_shard) : nullptr;
    const std::optional<SiteOnServer::Lease> lease = quick ? std::nullopt : std::optional(m_site->leaseOn(m_shard));
    ServerConnection& server = quick ? *quick : **lease;
    const auto until = Clock::now() + milliseconds(patience);
    // Whether somebody who does not live any more has it is known only later; who has no patience does not ask.
    const auto untilKnown = patience > 0 ? until + forgottenAfter(server) + kRenewal : until;
    for (bool isNoticed = false;;) {
        Taken taken = takenBy(server, tables(), 0);
        if (taken == Taken::Perhaps && m_shard == SiteOnServer::kHome && !std::exchange(isNoticed, true))
            noticeElsewhere();
        if (taken == Taken::No) {
            // Whoever claims looks again: of two, at least one sees the other.
            m_claim = stamps::number();
            tell(server, tables(), m_claim, 1, Wanted);
            try {
                taken = takenBy(server, tables(), m_claim);
                if (taken == Taken::No)
                    break;
            } catch (...) {
                giveBack();
                throw;
            }
            giveBack();
        }
        if (Clock::now() > (taken == Taken::Yes ? until : untilKnown))
            failAsTaken();
        std::this_thread::sleep_for(pause());
    }
    try {
        m_renewing = std::make_unique<Renewing>(m_site, m_shard, m_claim);
    } catch (...) {
        giveBack();
        throw;
    }
}

/// Whoever is gone may have had the turns of all shards: they are waited for all at once then.
void WritersTurn::noticeElsewhere()
{
    for (std::size_t shard = 0; shard < m_site->shards(); ++shard)
        try {
            if (shard != m_shard)
                takenBy(*m_site->quickConnection(shard), m_site->tables(shard), 0);
        } catch (const ReportableError&) {  // then its turn is not needed, or waited for later
        }
}

WritersTurn::~WritersTurn()
{
    m_renewing.reset();
    giveBack();
}

void WritersTurn::giveBack() noexcept
{
    // Also where this thread is asked to end: others would wait for a claim that nobody has any more.
    static const std::atomic<bool> never = false;
    const Interruption calm(never);
    try {
        tell(*m_site->quickConnection(m_shard), tables(), m_claim, 1, Gone);
    } catch (const std::exception&) {  // it is forgotten after a while
    }
}

bool WritersTurn::isHeld(ServerConnection& server)
{
    const std::vector<Claim> claims = claimsOf(server, tables());
    return std::any_of(claims.begin(), claims.end(), [&](const Claim& each) { return each.id == m_claim; });
}

void WritersTurn::requireHeld()
{
    if (!isHeld(*m_site->leaseOn(m_shard)))
        throw ReportableError(QStringLiteral(
            "This program stood still for so long that others went on writing: nothing was stored, try again."));
}

/// What is stored late, after somebody else took the turn, would lie beneath what that one stores: so nothing waits
/// long here, each attempt asks first, and only what is known to have come in time is acknowledged.
void WritersTurn::commit(const std::function<void(ServerConnection& server)>& store)
{
    const auto until = Clock::now() + kCommitting;
    for (bool isStored = false;;) {
        const std::unique_ptr<ServerConnection> server = m_site->quickConnection(m_shard);
        try {
            const bool held = isHeld(*server);
            if (held && !isStored) {
                store(*server);
                isStored = true;
                continue;
            }
            if (held)
                return;
        } catch (const ReportableError&) {
            if (Clock::now() > until || !server->isReplicated())
                throw;
            std::this_thread::sleep_for(pause());
            continue;
        }
        throw ReportableError(
            isStored ? QStringLiteral("This program stood still for so long that others went on writing: look whether "
                                      "what it stored is there, and try again where it is not.")
                     : QStringLiteral("This program stood still for so long that others went on writing: nothing was "
                                      "stored, try again."));
    }
}

void WritersTurn::waitUntilFree(const SiteOnServer::Lease& server, int patience)
{
    const auto until = Clock::now() + milliseconds(patience);
    while (takenBy(*server, server.tables(), 0) != Taken::No) {
        if (Clock::now() > until)
            failAsTaken();
        std::this_thread::sleep_for(pause());
    }
}

}  // namespace plotix
