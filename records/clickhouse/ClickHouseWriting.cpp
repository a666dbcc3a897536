#include "records/clickhouse/ClickHouseWriting.h"

#include "base/Interruption.h"
#include "base/ReportableError.h"
#include "records/clickhouse/AgentWriting.h"
#include "records/clickhouse/AmendmentRows.h"
#include "records/clickhouse/JointBatches.h"
#include "records/clickhouse/ServerStamps.h"
#include "records/clickhouse/ShardPlaces.h"
#include "records/clickhouse/Sweeping.h"
#include "records/clickhouse/YoungInsert.h"
#include "records/store/MemoryWriting.h"

#include <limits>

namespace plotix {

namespace {

constexpr double kInfinity = std::numeric_limits<double>::infinity();
/// At most this many records become rows: more of them are cheaper as a chunk.
constexpr std::size_t kMostRows = 1024;
/// Records until an appender that could not seal a full chunk, as somebody else was writing, tries again.
constexpr std::size_t kTriedAgainAfter = 256;
/// More than this many do not wait in memory.
constexpr std::size_t kMostWaiting = 32 * schema::kRecordsPerChunk;

Records orderedRecords(const RecordBlock& block)
{
    const RecordsView view = RecordsView::of(block);
    if (!view.isOrdered())
        return Records::ordered(view);
    Records records;
    records.append(view);
    return records;
}

bool haveSameColumns(const RecordsView& one, const RecordsView& other)
{
    return std::equal(one.columns.begin(), one.columns.end(), other.columns.begin(), other.columns.end(),
                      [](const auto& a, const auto& b) { return a.property == b.property; });
}

void commitBatch(ServerConnection& server, const SiteTables& tables, std::uint64_t batch)
{
    rowbinary::Writer row;
    row.add(batch);
    server.insert("INSERT INTO " + tables.batches() + " (batch) FORMAT RowBinary", row.bytes());
}

class ServerTransaction final : public RecordTransaction {
public:
    explicit ServerTransaction(const WrittenSite& written)
        : m_site(written.site), m_batch(stamps::number()), m_finder(std::make_shared<AmendmentFinder>(written.before))
    {
        m_parts[SiteOnServer::kHome] = std::make_unique<Part>(*this, SiteOnServer::kHome, WritersTurn::Waits::ForAll);
        // Nobody appends meanwhile, on any shard: what is read there now may be about to go elsewhere.
        for (std::size_t shard = 1; shard < m_site->shards(); ++shard)
            try {
                m_parts[shard] = std::make_unique<Part>(*this, shard, WritersTurn::Waits::ForWriters);
            } catch (const WritersTurn::TakenByOthers&) {
                throw;
            } catch (const ReportableError&) {  // of those that are lost, nothing may be needed
                m_parts.erase(shard);
            }
    }

    void store(RowId agent, const RecordBlock& block) override
    {
        requireOpen();
        m_site->requireStorable(agent, block);
        Records records = orderedRecords(block);
        if (records.isEmpty())
            return;
        if (m_now)
            part(agent).amendments.note(agent, records.view(), *m_now);
        Waiting& waiting = m_waiting[agent];
        waiting.records += records.size();
        if (!waiting.blocks.empty()) {
            Records& last = waiting.blocks.back();
            const RecordsView before = last.view(), next = records.view();
            if (haveSameColumns(before, next) && before.times[before.size - 1] < next.times[0])
                last.append(next);
            else
                waiting.blocks.push_back(std::move(records));
        } else {
            waiting.blocks.push_back(std::move(records));
        }
        if (waiting.records > kMostWaiting)
            flush(agent);
    }

    void remove(RowId agent, std::span<const RowId> properties, std::optional<double> from,
                std::optional<double> to) override
    {
        requireOpen();
        flush(agent);
        if (!m_site->placeOf(agent))
            return;              // it has nothing
        std::vector<RowId> own;  // of others, the agent has nothing, and what those have is none of its business
        for (const RowId property : properties)
            if (m_site->owns(agent, property))
                own.push_back(property);
        Part& at = part(agent);
        AgentWriting(*at.server, at.server.tables(), agent, m_batch)
            .remove(own, from.value_or(-kInfinity), to.value_or(kInfinity));
        at.amendments.remove(own, from.value_or(-kInfinity), to.value_or(kInfinity));
        at.isEmpty = false;
    }

    void noteAmendments(double now) override { m_now = now; }

    void addAmendment(RowId agent, const Amendment& amendment) override
    {
        requireOpen();
        part(agent).amendments.add(agent, amendment);
    }

    void prepare() override
    {
        while (!m_waiting.empty())
            flush(m_waiting.begin()->first);
        for (const auto& [shard, at] : m_parts) {
            at->isEmpty = at->isEmpty && at->amendments.isEmpty();
            at->amendments.flush();
        }
        requireHeld();
    }

    void commit() override
    {
        if (m_parts.empty())
            return;
        prepare();
        std::vector<std::size_t> shards;
        for (const auto& [shard, at] : m_parts)
            if (!at->isEmpty)
                shards.push_back(shard);
        if (shards.size() == 1) {
            const Part& at = *m_parts[shards.front()];
            at.turn->commit([&](ServerConnection& server) { commitBatch(server, at.server.tables(), m_batch); });
        } else if (shards.size() > 1) {
            joint::decide(*m_site, *m_parts[SiteOnServer::kHome]->turn, m_batch, shards);
            confirm(shards);
        }
        m_parts.clear();
    }

private:
    /// What is written on one shard.
    struct Part {
        Part(const ServerTransaction& of, std::size_t shard, WritersTurn::Waits waits)
            : turn(joint::turnOf(of.m_site, shard, kWritersPatience, waits)),
              server(of.m_site->leaseOn(shard)),
              young(of.m_batch),
              amendments(*server, server.tables(), of.m_batch, of.m_finder)
        {
        }
        const std::unique_ptr<WritersTurn> turn;
        const SiteOnServer::Lease server;
        YoungInsert young;
        AmendmentRows amendments;
        bool isEmpty = true;
    };
    /// Blocks that are stored one after the other.
    struct Waiting {
        std::vector<Records> blocks;
        std::size_t records = 0;
    };

    void requireOpen() const
    {
        if (m_parts.empty())
            throw ReportableError(QStringLiteral("These records were stored already: begin again to store more."));
    }

    /// Of shards that have nothing of it, any may be lost.
    void requireHeld() const
    {
        for (const auto& [shard, at] : m_parts)
            if (!at->isEmpty)
                at->turn->requireHeld();
    }

    /// It counts already: whoever asks this thread to end is told no sooner than all shards that answer know it.
    void confirm(const std::vector<std::size_t>& shards)
    {
        static const std::atomic<bool> never = false;
        const Interruption calm(never);
        QString problem;  // the first one
        for (const std::size_t shard : shards)
            try {
                joint::confirm(*m_site, shard, m_batch);
            } catch (const ReportableError& error) {
                problem = problem.isEmpty() ? error.message() : problem;
            }
        if (!problem.isEmpty())
            throw ReportableError(QStringLiteral("%1 All of it counts once that shard is back and somebody writes "
                                                 "there: do not store it again.")
                                      .arg(problem));
        try {
            requireHeld();  // else somebody may have written over what was not confirmed yet
        } catch (const ReportableError&) {
            throw ReportableError(
                QStringLiteral("This program stood still for so long that others went on writing meanwhile: look which "
                               "of these records are there, and store the others again."));
        }
    }

    /// Whoever has turns of several shards has the home's first, so that no two wait for each other.
    Part& part(RowId agent)
    {
        std::optional<std::size_t> shard = m_site->placeOf(agent);
        if (!shard)
            shard = givePlace(*m_site, *m_parts[SiteOnServer::kHome]->turn, agent);
        auto found = m_parts.find(*shard);
        if (found == m_parts.end())
            found = m_parts.emplace(*shard, std::make_unique<Part>(*this, *shard, WritersTurn::Waits::ForAll)).first;
        return *found->second;
    }

    void flush(RowId agent)
    {
        const auto found = m_waiting.find(agent);
        if (found == m_waiting.end())
            return;
        const Waiting waiting = std::move(m_waiting.extract(found).mapped());
        Part& at = part(agent);
        if (waiting.records <= kMostRows) {
            std::vector<RecordsView> views;
            for (const Records& block : waiting.blocks)
                views.push_back(block.view());
            at.young.store(*at.server, at.server.tables(), agent, views, m_batch);
        } else {
            AgentWriting(*at.server, at.server.tables(), agent, m_batch).merge(waiting.blocks);
        }
        at.isEmpty = false;
    }

    const std::shared_ptr<SiteOnServer> m_site;
    const std::uint64_t m_batch;
    const std::shared_ptr<AmendmentFinder> m_finder;
    std::map<std::size_t, std::unique_ptr<Part>> m_parts;  // by shard; but for the home, lost ones lack; none: stored
    std::map<RowId, Waiting> m_waiting;
    std::optional<double> m_now;  // absent: nothing is noted
};

class ServerAppender final : public RecordAppender {
public:
    explicit ServerAppender(const WrittenSite& written)
        : m_site(written.site), m_young(stamps::number()), m_finder(std::make_shared<AmendmentFinder>(written.before))
    {
    }

    void append(RowId agent, const RecordBlock& block) override
    {
        m_site->requireStorable(agent, block);
        const Records records = orderedRecords(block);
        if (records.isEmpty())
            return;
        const std::size_t shard = placeOf(agent);
        const SiteOnServer::Lease server = m_site->leaseOn(shard);
        WritersTurn::waitUntilFree(server, m_patience);
        const RecordsView view = records.view();
        std::uint64_t batch = 0;
        if (m_clock) {
            // Others may have stored something since.
            m_finder->forget();
            m_site->known().forget();
            AmendmentRows amendments(*server, server.tables(), batch = stamps::number(), m_finder);
            amendments.note(agent, view, m_clock());
            if (amendments.isEmpty())
                batch = 0;
            amendments.flush();
        }
        m_young.store(*server, server.tables(), agent, std::span(&view, 1), batch);
        if (batch != 0)
            commitBatch(*server, server.tables(), batch);
        sealWhatIsFull(agent, shard, records.size());
    }

    void noteAmendments(std::function<double()> clock) override { m_clock = std::move(clock); }
    void setPatience(int milliseconds) override { m_patience = milliseconds; }

private:
    std::size_t placeOf(RowId agent)
    {
        if (const std::optional<std::size_t> shard = m_site->placeOf(agent))
            return *shard;
        WritersTurn turn(m_site, SiteOnServer::kHome, m_patience);
        return givePlace(*m_site, turn, agent);
    }

    /// What was stored stays stored where this fails: the next one tries again.
    void sealWhatIsFull(RowId agent, std::size_t shard, std::size_t records) noexcept
    {
        std::size_t& since = m_sinceSealing[agent];
        since += records;
        if (since < schema::kRecordsPerChunk)
            return;
        try {
            // What a transaction stores meanwhile would be painted over. A chunk alone counts at once.
            const std::unique_ptr<WritersTurn> turn = joint::turnOf(m_site, shard, 0);
            const SiteOnServer::Lease server = m_site->leaseOn(shard);
            while (AgentWriting(*server, server.tables(), agent, 0).sealOneChunk([&] { turn->requireHeld(); }))
                ;
            since = 0;
        } catch (const std::exception&) {
            since -= std::min(since, kTriedAgainAfter);
        }
    }

    const std::shared_ptr<SiteOnServer> m_site;
    YoungInsert m_young;
    const std::shared_ptr<AmendmentFinder> m_finder;
    std::function<double()> m_clock;  // empty: nothing is noted
    int m_patience = kWritersPatience;
    std::map<RowId, std::size_t> m_sinceSealing;  // records, by agent
};

struct Counted {
    std::size_t chunks = 0, records = 0;
};

Counted counted(ServerConnection& server, const SiteTables& tables, RowId agent)
{
    AgentReading reading(server, tables, agent);
    const AgentReading::Rows rows = reading.rows(-kInfinity, kInfinity);
    const std::vector<RowId> none;
    Counted counted;
    for (const AgentReading::Piece& piece : reading.pieces(rows, -kInfinity, kInfinity, &none)) {
        counted.records += piece.n;
        counted.chunks += piece.chunk ? 1 : 0;
    }
    return counted;
}

/// Properties of the site that something is noted of.
std::vector<RowId> amendedProperties(ServerConnection& server, const SiteTables& tables)
{
    const std::vector<std::byte> rows =
        server.ask("SELECT DISTINCT property FROM " + tables.amendments() + " FORMAT RowBinary");
    std::vector<RowId> properties;
    for (rowbinary::Reader row(rows); !row.isAtEnd();)
        properties.push_back(row.number<RowId>());
    return properties;
}

}  // namespace

std::unique_ptr<RecordTransaction> transactionOn(const WrittenSite& site)
{
    return std::make_unique<ServerTransaction>(site);
}

std::unique_ptr<RecordAppender> appenderTo(const WrittenSite& site)
{
    return std::make_unique<ServerAppender>(site);
}

namespace {

/// A shard that is being compacted.
struct CompactedShard {
    CompactedShard(SiteOnServer& site, std::size_t of)
        : shard(of), agents(site.agentsOn(of)), server(site.leaseOn(of)), sweeping(*server, server.tables())
    {
    }
    std::size_t shard;
    std::vector<RowId> agents;
    SiteOnServer::Lease server;
    Sweeping sweeping;
};

/// Takes out what is noted of records that were dropped.
void dropAmendments(const WrittenSite& written, const CompactedShard& at, double before)
{
    const std::unique_ptr<WritersTurn> turn = joint::turnOf(written.site, at.shard, kWritersPatience);
    const SiteTables& tables = at.server.tables();
    const std::uint64_t batch = stamps::number();
    AmendmentRows amendments(*at.server, tables, batch, std::make_shared<AmendmentFinder>(written.before));
    amendments.remove(amendedProperties(*at.server, tables), -kInfinity, std::nextafter(before, -kInfinity));
    if (amendments.isEmpty())
        return;
    amendments.flush();
    turn->commit([&](ServerConnection& quick) { commitBatch(quick, tables, batch); });
}

}  // namespace

CompactionResult compacted(const WrittenSite& written, const CompactionRequest& request,
                           const ArchiveProgress& progress)
{
    CompactionResult result;
    const std::shared_ptr<SiteOnServer>& site = written.site;
    std::vector<std::unique_ptr<CompactedShard>> shards;
    std::size_t all = 0, done = 0;
    for (std::size_t shard = 0; shard < site->shards(); ++shard) {
        shards.push_back(std::make_unique<CompactedShard>(*site, shard));
        all += shards.back()->agents.size();
    }
    const auto goOn = [&] {
        if (progress && !result.stopped)
            result.stopped = !progress(static_cast<double>(done) / static_cast<double>(all + 1));
        return !result.stopped;
    };
    for (const auto& at : shards)
        for (const RowId agent : at->agents) {
            ServerConnection& server = *at->server;
            const SiteTables& tables = at->server.tables();
            result.chunksBefore += counted(server, tables, agent).chunks;
            if (goOn()) {
                const std::unique_ptr<WritersTurn> turn = joint::turnOf(site, at->shard, kWritersPatience);
                const std::uint64_t batch = stamps::number();
                AgentWriting writing(server, tables, agent, batch);
                if (request.dropBefore)
                    result.dropped += writing.dropBefore(*request.dropBefore);
                writing.repack(goOn);
                if (writing.chunksWritten() > 0)
                    turn->commit([&](ServerConnection& quick) { commitBatch(quick, tables, batch); });
            }
            const Counted after = counted(server, tables, agent);
            result.chunksAfter += after.chunks;
            result.records += after.records;
            ++done;
        }
    for (const auto& at : shards)
        if (request.dropBefore && goOn())
            dropAmendments(written, *at, *request.dropBefore);
    for (const auto& at : shards)
        if (!result.stopped) {
            // What others are about to finish is finished then.
            const std::unique_ptr<WritersTurn> turn = joint::turnOf(site, at->shard, kWritersPatience);
            at->sweeping.sweep(at->agents);
        }
    if (!result.stopped && progress)
        progress(1);
    return result;
}

}  // namespace plotix
