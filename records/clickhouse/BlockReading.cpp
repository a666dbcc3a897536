#include "records/clickhouse/BlockReading.h"

#include "base/HelpingThreads.h"
#include "base/LargeMemory.h"
#include "records/columns/ValidityBits.h"

#include <algorithm>
#include <atomic>
#include <exception>
#include <mutex>

namespace plotix {

namespace {

using Piece = AgentReading::Piece;

constexpr std::size_t kMostConnections = 4;
/// A statement's. Each costs the server some milliseconds, whatever it brings; more would be asked for by their span.
constexpr std::size_t kFewestChunks = 32, kMostChunks = 1000;

/// Columns that are not touched before they are filled, by several threads that each fill other parts.
class BlockInWork {
public:
    BlockInWork(const std::vector<RowId>& properties, std::size_t records)
        : m_properties(properties), m_records(records), m_times(unset(records))
    {
        for (std::size_t i = 0; i < properties.size(); ++i)
            m_values.push_back(unset(records));
        m_words.resize(properties.size());
    }

    std::span<double> times(std::size_t first, std::size_t count) { return {m_times.get() + first, count}; }
    std::span<double> values(std::size_t column, std::size_t first, std::size_t count)
    {
        return {m_values[column].get() + first, count};
    }
    const std::vector<RowId>& properties() const { return m_properties; }

    void put(const RecordsView& records, std::size_t target)
    {
        std::copy_n(records.times, records.size, m_times.get() + target);
        for (std::size_t column = 0; column < m_properties.size(); ++column) {
            const RecordsView::Column* from = records.find(m_properties[column]);
            if (!from) {
                putNothing(column, target, records.size);
                continue;
            }
            std::copy_n(from->values, records.size, m_values[column].get() + target);
            putValidity(column, from->valid, from->firstValid, target, records.size);
        }
    }
    void putNothing(std::size_t column, std::size_t target, std::size_t count)
    {
        std::fill_n(m_values[column].get() + target, count, absentValue());
        const std::lock_guard lock(m_mutex);
        bits::clear(wordsOf(column), target, count);
    }
    /// Parts that are neighbours share words.
    void putValidity(std::size_t column, const std::uint64_t* valid, std::size_t first, std::size_t target,
                     std::size_t count)
    {
        if (bits::allSet(valid, first, count))
            return;
        const std::lock_guard lock(m_mutex);
        bits::copy(valid, first, wordsOf(column), target, count);
    }

    RecordBlock finished()
    {
        RecordBlock block{SharedArray<double>(m_times, m_records), {}};
        for (std::size_t column = 0; column < m_properties.size(); ++column)
            block.columns.push_back({m_properties[column], SharedArray<double>(m_values[column], m_records),
                                     m_words[column] ? ValidityBitmap(SharedArray<std::uint64_t>(
                                                           m_words[column], bits::wordsFor(m_records)))
                                                     : ValidityBitmap()});
        return block;
    }

private:
    static std::shared_ptr<double> unset(std::size_t count) { return count == 0 ? nullptr : unsetArray<double>(count); }
    /// Requires: the mutex.
    std::uint64_t* wordsOf(std::size_t column)
    {
        if (!m_words[column]) {
            m_words[column] = unsetArray<std::uint64_t>(bits::wordsFor(m_records));
            std::fill_n(m_words[column].get(), bits::wordsFor(m_records), ~std::uint64_t{0});
        }
        return m_words[column].get();
    }

    const std::vector<RowId> m_properties;
    const std::size_t m_records;
    const std::shared_ptr<double> m_times;
    std::vector<std::shared_ptr<double>> m_values;
    std::mutex m_mutex;
    std::vector<std::shared_ptr<std::uint64_t>> m_words;  // under the mutex; null: all valid so far
};

/// A chunk, and where its records belong.
struct Placed {
    const StoredChunk* chunk = nullptr;
    std::size_t target = 0;
};

/// Fills in what some chunks have. False: `goOn` answered so.
bool fetch(SiteOnServer& site, RowId agent, std::span<const Placed> placed, BlockInWork& block,
           std::atomic<std::size_t>& done, const std::function<bool()>& goOn)
{
    const SiteOnServer::Lease server = site.lease(agent);
    AgentReading reading(*server, server.tables(), agent);
    const std::vector<RowId>& properties = block.properties();
    std::vector<const StoredChunk*> chunks;
    for (const Placed& each : placed)
        chunks.push_back(each.chunk);
    std::vector<bool> isThere(placed.size() * properties.size());
    std::vector<std::uint64_t> words;
    const bool isDone = reading.segments(
        chunks, &properties,
        [&](std::size_t at, RowId property, const AgentReading::Segment& segment) {
            const auto [chunk, target] = placed[at];
            done += chunk->n;
            if (property == kTimes) {
                const std::span<double> times = block.times(target, chunk->n);
                reading.decode(*chunk, property, segment, 0, times, words);
                reading.requireTimes(*chunk, times);
                return;
            }
            for (std::size_t column = 0; column < properties.size(); ++column) {  // one may be asked for twice
                if (properties[column] != property)
                    continue;
                isThere[at * properties.size() + column] = true;
                reading.decode(*chunk, property, segment, 0, block.values(column, target, chunk->n), words);
                block.putValidity(column, words.data(), 0, target, chunk->n);
            }
        },
        goOn);
    for (std::size_t at = 0; isDone && at < placed.size(); ++at)
        for (std::size_t column = 0; column < properties.size(); ++column)
            if (!isThere[at * properties.size() + column])
                block.putNothing(column, placed[at].target, placed[at].chunk->n);
    return isDone;
}

}  // namespace

std::optional<RecordBlock> readBlock(SiteOnServer& site, RowId agent, const std::vector<RowId>& properties,
                                     std::span<const Piece> pieces, const ArchiveProgress& progress)
{
    std::size_t records = 0, inChunks = 0;
    for (const Piece& piece : pieces)
        records += piece.n;
    BlockInWork block(properties, records);
    std::vector<Placed> placed;
    std::size_t target = 0;
    for (const Piece& piece : pieces) {
        if (piece.chunk) {
            placed.push_back({piece.chunk, target});
            inChunks += piece.n;
        } else {
            block.put(piece.records.view(), target);
        }
        target += piece.n;
    }

    const std::size_t atOnce =
        std::clamp((placed.size() + kMostConnections - 1) / kMostConnections, kFewestChunks, kMostChunks);
    std::atomic<std::size_t> next = 0, done = 0;  // chunks; elements
    std::atomic<bool> isStopped = false;
    std::mutex mutex;
    std::exception_ptr failure;  // under the mutex; the first one
    const auto work = [&](const std::function<bool()>& goOn) {
        try {
            for (std::size_t first = next.fetch_add(atOnce); first < placed.size() && !isStopped;
                 first = next.fetch_add(atOnce))
                if (!fetch(site, agent, std::span(placed).subspan(first, std::min(atOnce, placed.size() - first)),
                           block, done, goOn))
                    isStopped = true;
        } catch (...) {
            isStopped = true;
            const std::lock_guard lock(mutex);
            if (!failure)
                failure = std::current_exception();
        }
    };
    const double all = static_cast<double>(inChunks) * static_cast<double>(properties.size() + 1);
    const std::size_t parts = (placed.size() + atOnce - 1) / atOnce;
    {
        const HelpingThreads helpers(std::min(parts, kMostConnections) - std::min<std::size_t>(parts, 1),
                                     [&] { work([&] { return !isStopped; }); });
        work([&] { return !isStopped && (!progress || progress(std::min(static_cast<double>(done) / all, 1.0))); });
    }
    if (failure)
        std::rethrow_exception(failure);
    if (isStopped || (progress && !progress(1)))
        return std::nullopt;
    return block.finished();
}

}  // namespace plotix
