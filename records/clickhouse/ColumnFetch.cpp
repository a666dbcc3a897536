#include "records/clickhouse/ColumnFetch.h"

#include "base/Interruption.h"
#include "records/clickhouse/LocalColumns.h"
#include "records/columns/SealedColumn.h"

#include <algorithm>
#include <exception>
#include <optional>
#include <system_error>
#include <thread>

namespace plotix {

namespace {

/// More of them would wait for the server's disk, and for each other.
constexpr std::size_t kMostConnections = 4;
/// Fewer are not worth a connection.
constexpr std::size_t kFewestChunks = 8;

bool isSound(const StoredChunk& chunk, RowId property, const AgentReading::Segment& segment)
{
    return sealed::opened(segment.codec, segment.data, {static_cast<std::uint64_t>(property), chunk.n, segment.valid})
        .has_value();
}

/// One statement.
class PartOfFetch {
public:
    PartOfFetch(SiteOnServer& site, RowId agent, RowId property, std::span<const StoredChunk* const> chunks,
                std::span<std::shared_ptr<const PackedCache::Column>> found)
        : m_site(site), m_agent(agent), m_property(property), m_chunks(chunks), m_found(found)
    {
    }

    void runHere()
    {
        try {
            run();
        } catch (...) {
            m_failure = std::current_exception();
        }
    }
    void runBeside()
    {
        try {
            m_thread = std::thread([this, flag = Interruption::ofThread()] {
                std::optional<Interruption> whenItEnds;
                if (flag)
                    whenItEnds.emplace(*flag);
                runHere();
            });
        } catch (const std::system_error&) {  // no thread is left for it
            runHere();
        }
    }
    /// For its end; what went wrong.
    std::exception_ptr wait()
    {
        if (m_thread.joinable())
            m_thread.join();
        return m_failure;
    }

private:
    void run()
    {
        const SiteOnServer::Lease server = m_site.lease(m_agent);
        AgentReading(*server, server.tables(), m_agent)
            .column(m_chunks, m_property, [&](std::size_t chunk, RowId, const AgentReading::Segment& segment) {
                m_found[chunk] = keepIfSound(m_site, *m_chunks[chunk], m_property, segment);
            });
    }

    SiteOnServer& m_site;
    const RowId m_agent, m_property;
    const std::span<const StoredChunk* const> m_chunks;
    const std::span<std::shared_ptr<const PackedCache::Column>> m_found;
    std::thread m_thread;
    std::exception_ptr m_failure;
};

/// What no program here has seen yet.
PackedColumns fromServer(SiteOnServer& site, RowId agent, RowId property, std::span<const StoredChunk* const> chunks)
{
    PackedColumns fetched(chunks.size());
    const std::size_t parts = std::clamp<std::size_t>(chunks.size() / kFewestChunks, 1, kMostConnections);
    const std::size_t each = (chunks.size() + parts - 1) / parts;
    std::vector<PartOfFetch> all;
    all.reserve(parts);
    for (std::size_t first = 0; first < chunks.size(); first += each) {
        const std::size_t count = std::min(each, chunks.size() - first);
        all.emplace_back(site, agent, property, chunks.subspan(first, count), std::span(fetched).subspan(first, count));
    }
    for (std::size_t part = 1; part < all.size(); ++part)
        all[part].runBeside();
    all[0].runHere();
    std::exception_ptr failure;
    for (PartOfFetch& part : all)
        if (const std::exception_ptr other = part.wait(); other && !failure)
            failure = other;
    if (failure)
        std::rethrow_exception(failure);
    return fetched;
}

}  // namespace

std::shared_ptr<const PackedCache::Column> keepIfSound(SiteOnServer& site, const StoredChunk& chunk, RowId property,
                                                       const AgentReading::Segment& segment)
{
    if (isSound(chunk, property, segment))
        return site.packed().keep(chunk.id, property, segment);
    auto column = std::make_shared<PackedCache::Column>();
    column->codec = segment.codec;
    column->valid.assign(segment.valid.begin(), segment.valid.end());
    column->data.assign(segment.data.begin(), segment.data.end());
    return column;
}

PackedColumns fetchColumns(SiteOnServer& site, RowId agent, RowId property, std::span<const StoredChunk* const> chunks)
{
    PackedColumns found(chunks.size());
    const auto places = [&] {
        std::vector<std::size_t> absent;
        for (std::size_t i = 0; i < chunks.size(); ++i)
            if (!found[i])
                absent.push_back(i);
        return absent;
    };
    for (std::size_t i = 0; i < chunks.size(); ++i)
        found[i] = site.packed().find(chunks[i]->id, property);

    const std::shared_ptr<LocalColumns> local = LocalColumns::used();
    const QString name = site.address().title();
    if (const std::vector<std::size_t> absent = places(); local && !absent.empty()) {
        std::vector<std::uint64_t> ids;
        for (const std::size_t place : absent)
            ids.push_back(chunks[place]->id);
        auto columns = local->find(name, property, ids);
        for (std::size_t i = 0; i < absent.size(); ++i)
            if (columns[i])
                found[absent[i]] = site.packed().keep(ids[i], property, std::move(columns[i]));
    }

    const std::vector<std::size_t> absent = places();
    if (absent.empty())
        return found;
    std::vector<const StoredChunk*> asked;
    for (const std::size_t place : absent)
        asked.push_back(chunks[place]);
    const PackedColumns fetched = fromServer(site, agent, property, asked);
    std::vector<LocalColumns::Kept> kept;
    for (std::size_t i = 0; i < absent.size(); ++i) {
        found[absent[i]] = fetched[i];
        if (fetched[i] && isSound(*asked[i], property, fetched[i]->segment()))
            kept.push_back({asked[i]->id, fetched[i]});
    }
    if (local)
        local->keep(name, property, kept);
    return found;
}

}  // namespace plotix
