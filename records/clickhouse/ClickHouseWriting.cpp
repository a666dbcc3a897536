#include "records/clickhouse/ClickHouseWriting.h"

#include "base/ReportableError.h"
#include "records/clickhouse/AgentWriting.h"
#include "records/clickhouse/AmendmentRows.h"
#include "records/clickhouse/ServerStamps.h"
#include "records/clickhouse/Sweeping.h"
#include "records/clickhouse/WritersTurn.h"
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
        : m_site(written.site),
          m_turn(std::make_unique<WritersTurn>(m_site, SiteOnServer::kHome, kWritersPatience)),
          m_server(m_site->leaseOn(SiteOnServer::kHome)),
          m_batch(stamps::number()),
          m_young(*m_server, m_site->tables(), m_batch),
          m_amendments(*m_server, m_site->tables(), m_batch, std::make_shared<AmendmentFinder>(written.before))
    {
    }

    void store(RowId agent, const RecordBlock& block) override
    {
        requireOpen();
        m_site->requireStorable(agent, block);
        Records records = orderedRecords(block);
        if (records.isEmpty())
            return;
        if (m_now)
            m_amendments.note(agent, records.view(), *m_now);
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
        std::vector<RowId> own;  // of others, the agent has nothing, and what those have is none of its business
        for (const RowId property : properties)
            if (m_site->owns(agent, property))
                own.push_back(property);
        AgentWriting(*m_server, m_site->tables(), agent, m_batch)
            .remove(own, from.value_or(-kInfinity), to.value_or(kInfinity));
        m_amendments.remove(own, from.value_or(-kInfinity), to.value_or(kInfinity));
        m_isEmpty = false;
    }

    void noteAmendments(double now) override { m_now = now; }

    void addAmendment(RowId agent, const Amendment& amendment) override
    {
        requireOpen();
        m_amendments.add(agent, amendment);
    }

    void prepare() override
    {
        while (!m_waiting.empty())
            flush(m_waiting.begin()->first);
        m_isEmpty = m_isEmpty && m_amendments.isEmpty();
        m_amendments.flush();
        if (m_turn)
            m_turn->requireHeld();
    }

    void commit() override
    {
        if (!m_turn)
            return;
        prepare();
        if (!m_isEmpty)
            m_turn->commit([&](ServerConnection& server) { commitBatch(server, m_site->tables(), m_batch); });
        m_turn.reset();
    }

private:
    /// Blocks that are stored one after the other.
    struct Waiting {
        std::vector<Records> blocks;
        std::size_t records = 0;
    };

    void requireOpen() const
    {
        if (!m_turn)
            throw ReportableError(QStringLiteral("These records were stored already: begin again to store more."));
    }

    void flush(RowId agent)
    {
        const auto found = m_waiting.find(agent);
        if (found == m_waiting.end())
            return;
        const Waiting waiting = std::move(m_waiting.extract(found).mapped());
        if (waiting.records <= kMostRows) {
            std::vector<RecordsView> views;
            for (const Records& block : waiting.blocks)
                views.push_back(block.view());
            m_young.store(agent, views, m_batch);
        } else {
            AgentWriting(*m_server, m_site->tables(), agent, m_batch).merge(waiting.blocks);
        }
        m_isEmpty = false;
    }

    const std::shared_ptr<SiteOnServer> m_site;
    std::unique_ptr<WritersTurn> m_turn;  // null: stored
    const SiteOnServer::Lease m_server;
    const std::uint64_t m_batch;
    YoungInsert m_young;
    AmendmentRows m_amendments;
    std::map<RowId, Waiting> m_waiting;
    std::optional<double> m_now;  // absent: nothing is noted
    bool m_isEmpty = true;
};

class ServerAppender final : public RecordAppender {
public:
    explicit ServerAppender(const WrittenSite& written)
        : m_site(written.site),
          m_server(m_site->leaseOn(SiteOnServer::kHome)),
          m_young(*m_server, m_site->tables(), stamps::number()),
          m_finder(std::make_shared<AmendmentFinder>(written.before))
    {
    }

    void append(RowId agent, const RecordBlock& block) override
    {
        m_site->requireStorable(agent, block);
        const Records records = orderedRecords(block);
        if (records.isEmpty())
            return;
        WritersTurn::waitUntilFree(m_server, m_patience);
        const RecordsView view = records.view();
        std::uint64_t batch = 0;
        if (m_clock) {
            // Others may have stored something since.
            m_finder->forget();
            AmendmentRows amendments(*m_server, m_site->tables(), batch = stamps::number(), m_finder);
            amendments.note(agent, view, m_clock());
            if (amendments.isEmpty())
                batch = 0;
            amendments.flush();
        }
        m_young.store(agent, std::span(&view, 1), batch);
        if (batch != 0)
            commitBatch(*m_server, m_site->tables(), batch);
        sealWhatIsFull(agent, records.size());
    }

    void noteAmendments(std::function<double()> clock) override { m_clock = std::move(clock); }
    void setPatience(int milliseconds) override { m_patience = milliseconds; }

private:
    /// What was stored stays stored where this fails: the next one tries again.
    void sealWhatIsFull(RowId agent, std::size_t records) noexcept
    {
        std::size_t& since = m_sinceSealing[agent];
        since += records;
        if (since < schema::kRecordsPerChunk)
            return;
        try {
            // What a transaction stores meanwhile would be painted over. A chunk alone counts at once.
            WritersTurn turn(m_site, SiteOnServer::kHome, 0);
            while (AgentWriting(*m_server, m_site->tables(), agent, 0).sealOneChunk([&] { turn.requireHeld(); }))
                ;
            since = 0;
        } catch (const std::exception&) {
            since -= std::min(since, kTriedAgainAfter);
        }
    }

    const std::shared_ptr<SiteOnServer> m_site;
    const SiteOnServer::Lease m_server;
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

CompactionResult compacted(const WrittenSite& written, const CompactionRequest& request,
                           const ArchiveProgress& progress)
{
    CompactionResult result;
    const std::shared_ptr<SiteOnServer>& site = written.site;
    const SiteOnServer::Lease server = site->leaseOn(SiteOnServer::kHome);
    const SiteTables& tables = site->tables();
    Sweeping sweeping(*server, tables);
    const std::vector<RowId> agents = agentsOn(*server, tables);
    std::size_t done = 0;
    const auto goOn = [&] {
        if (progress && !result.stopped)
            result.stopped = !progress(static_cast<double>(done) / static_cast<double>(agents.size() + 1));
        return !result.stopped;
    };
    for (const RowId agent : agents) {
        result.chunksBefore += counted(*server, tables, agent).chunks;
        if (goOn()) {
            WritersTurn turn(site, SiteOnServer::kHome, kWritersPatience);
            const std::uint64_t batch = stamps::number();
            AgentWriting writing(*server, tables, agent, batch);
            if (request.dropBefore)
                result.dropped += writing.dropBefore(*request.dropBefore);
            writing.repack(goOn);
            if (writing.chunksWritten() > 0)
                turn.commit([&](ServerConnection& quick) { commitBatch(quick, tables, batch); });
        }
        const Counted after = counted(*server, tables, agent);
        result.chunksAfter += after.chunks;
        result.records += after.records;
        ++done;
    }
    if (request.dropBefore && goOn()) {
        WritersTurn turn(site, SiteOnServer::kHome, kWritersPatience);
        const std::uint64_t batch = stamps::number();
        AmendmentRows amendments(*server, tables, batch, std::make_shared<AmendmentFinder>(written.before));
        amendments.remove(amendedProperties(*server, tables), -kInfinity,
                          std::nextafter(*request.dropBefore, -kInfinity));
        if (!amendments.isEmpty()) {
            amendments.flush();
            turn.commit([&](ServerConnection& quick) { commitBatch(quick, tables, batch); });
        }
    }
    if (!result.stopped) {
        const WritersTurn turn(site, SiteOnServer::kHome,
                               kWritersPatience);  // what others are about to finish is finished then
        sweeping.sweep(agents);
    }
    if (!result.stopped && progress)
        progress(1);
    return result;
}

}  // namespace plotix
