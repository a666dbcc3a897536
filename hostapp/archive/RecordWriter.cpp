#include "hostapp/archive/ChunkStore.h"
#include "hostapp/archive/SiteSchema.h"
#include "hostapp/core/HostError.h"

#include <algorithm>
#include <cmath>
#include <map>
#include <set>

namespace plotix {

/// Records that lie behind everything stored wait in a tail in memory until they fill a chunk; the rest is written at
/// the end, taken together with the chunks before it that are not longer than it. So an agent never has more than
/// about log₂(16,384) chunks that are not full from appending, and a value is rewritten as often at most.
struct RecordWriter::Impl {
    Impl(std::unique_ptr<Database> connection, Database& used)
        : own(std::move(connection)),
          database(used),
          chunks(used),
          owner(used, "SELECT agent FROM property WHERE id = ?")
    {
    }
    ~Impl()
    {
        if (own)
            own->rollBack();
    }

    void requireStorable(RowId agent, const RecordBlock& block);
    std::optional<double> lastTime(RowId agent);
    void storeOrdered(RowId agent, const RecordsView& records);
    void append(RowId agent, const RecordsView& records);
    void insert(RowId agent, const RecordsView& records);
    void takeInShortChunks(RowId agent, std::size_t coming);
    void flush(RowId agent);
    void flushAll();
    void writeAll(RowId agent, const RecordsView& records);

    std::unique_ptr<Database> own;  // empty inside a transaction of the caller's
    Database& database;
    ChunkStore chunks;
    Statement owner;
    std::set<std::pair<RowId, RowId>> known;  // agent and property that were looked up
    std::map<RowId, Records> tails;           // per agent
    bool finished = false;
};

void RecordWriter::Impl::requireStorable(RowId agent, const RecordBlock& block)
{
    if (finished)
        throw HostError(QStringLiteral("These records were stored already: begin again to store more."));
    for (const double time : block.times.span())
        if (!std::isfinite(time))
            throw HostError(QStringLiteral("A record has no time: leave it out."));
    std::set<RowId> seen;
    for (const RecordBlock::Column& column : block.columns) {
        if (column.values.size() != block.times.size() ||
            (!column.validity.isAllValid() && column.validity.words().size() < (block.times.size() + 63) / 64))
            throw HostError(QStringLiteral("A column is shorter than its times: give every record a value."));
        if (!seen.insert(column.property).second)
            throw HostError(QStringLiteral("Property %1 stands twice: give each one column.").arg(column.property));
        if (known.contains({agent, column.property}))
            continue;
        const bool exists = column.property > 0 && column.property < schema::kPropertiesPerChunk &&
                            owner.bind(1, column.property).step() && owner.integer(0) == agent;
        owner.reset();
        if (!exists)
            throw HostError(
                QStringLiteral("Agent %1 has no property %2: open the site again.").arg(agent).arg(column.property));
        known.insert({agent, column.property});
    }
}

std::optional<double> RecordWriter::Impl::lastTime(RowId agent)
{
    const Records& tail = tails[agent];
    if (!tail.isEmpty())
        return tail.view().times[tail.size() - 1];
    const std::optional<Chunk> last = chunks.lastChunk(agent);
    return last ? std::optional(last->t1) : std::nullopt;
}

void RecordWriter::Impl::storeOrdered(RowId agent, const RecordsView& records)
{
    const std::optional<double> last = lastTime(agent);
    if (!last || records.times[0] > *last) {
        append(agent, records);
        return;
    }
    const auto* end = std::upper_bound(records.times, records.times + records.size, *last);
    const auto late = static_cast<std::size_t>(end - records.times);
    flush(agent);
    insert(agent, records.slice(0, late));
    if (late < records.size)
        append(agent, records.slice(late, records.size - late));
}

void RecordWriter::Impl::append(RowId agent, const RecordsView& records)
{
    takeInShortChunks(agent, records.size);
    Records& tail = tails[agent];
    std::size_t done = 0;
    if (tail.isEmpty())
        for (; records.size - done >= schema::kRecordsPerChunk; done += schema::kRecordsPerChunk)
            chunks.write(agent, records.slice(done, schema::kRecordsPerChunk));
    if (done < records.size)
        tail.append(records.slice(done, records.size - done));
    std::size_t written = 0;
    for (; tail.size() - written >= schema::kRecordsPerChunk; written += schema::kRecordsPerChunk)
        chunks.write(agent, tail.view().slice(written, schema::kRecordsPerChunk));
    if (written > 0)
        tail.dropFirst(written);
}

void RecordWriter::Impl::takeInShortChunks(RowId agent, std::size_t coming)
{
    Records& tail = tails[agent];
    for (;;) {
        const std::optional<Chunk> last = chunks.lastChunk(agent);
        if (!last || last->n >= schema::kRecordsPerChunk || last->n > tail.size() + coming)
            return;
        Records longer = chunks.read(*last);
        longer.append(tail.view());
        tail = std::move(longer);
        chunks.remove(*last);
    }
}

/// Each chunk reaches to where the next begins; the first takes everything before it too.
void RecordWriter::Impl::insert(RowId agent, const RecordsView& records)
{
    for (std::size_t first = 0; first < records.size;) {
        std::optional<Chunk> chunk = chunks.lastChunkBeginningAt(agent, records.times[first]);
        if (!chunk)
            chunk = chunks.firstChunk(agent);
        const std::optional<double> next = chunks.firstBeginningAfter(agent, chunk->t0);
        const auto* end = next ? std::lower_bound(records.times + first, records.times + records.size, *next)
                               : records.times + records.size;
        const auto count = static_cast<std::size_t>(end - records.times) - first;
        const Records merged = Records::merged(chunks.read(*chunk).view(), records.slice(first, count));
        chunks.remove(*chunk);
        writeAll(agent, merged.view());
        first += count;
    }
}

/// As chunks of about equal length, so that a full one that grows leaves room in both halves.
void RecordWriter::Impl::writeAll(RowId agent, const RecordsView& records)
{
    const std::size_t pieces = (records.size + schema::kRecordsPerChunk - 1) / schema::kRecordsPerChunk;
    for (std::size_t piece = 0; piece < pieces; ++piece) {
        const std::size_t first = records.size * piece / pieces;
        chunks.write(agent, records.slice(first, records.size * (piece + 1) / pieces - first));
    }
}

void RecordWriter::Impl::flush(RowId agent)
{
    if (tails[agent].isEmpty())
        return;
    takeInShortChunks(agent, 0);
    const Records tail = std::move(tails[agent]);
    tails[agent] = {};
    for (std::size_t first = 0; first < tail.size(); first += schema::kRecordsPerChunk)
        chunks.write(agent, tail.view().slice(first, std::min(schema::kRecordsPerChunk, tail.size() - first)));
}

void RecordWriter::Impl::flushAll()
{
    std::vector<RowId> agents;
    for (const auto& [agent, tail] : tails)
        agents.push_back(agent);
    for (const RowId agent : agents)
        flush(agent);
}

RecordWriter::RecordWriter(const QString& file)
{
    auto connection = std::make_unique<Database>(file, Database::Access::ReadWrite);
    Database& database = *connection;
    database.beginWriting();
    m_impl = std::make_unique<Impl>(std::move(connection), database);
}

RecordWriter::RecordWriter(Database& database) : m_impl(std::make_unique<Impl>(nullptr, database)) {}
RecordWriter::~RecordWriter() = default;

void RecordWriter::store(RowId agent, const RecordBlock& block)
{
    m_impl->requireStorable(agent, block);
    const RecordsView view = RecordsView::of(block);
    if (view.size == 0)
        return;
    if (view.isOrdered()) {
        m_impl->storeOrdered(agent, view);
        return;
    }
    const Records ordered = Records::ordered(view);
    m_impl->storeOrdered(agent, ordered.view());
}

void RecordWriter::flush()
{
    m_impl->flushAll();
}

void RecordWriter::commit()
{
    if (m_impl->finished)
        return;
    m_impl->flushAll();
    if (!m_impl->own)
        return;
    m_impl->database.commit();
    m_impl->finished = true;
}

}  // namespace plotix
