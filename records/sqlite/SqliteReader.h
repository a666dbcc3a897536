#pragma once

#include "records/sqlite/ReadConnections.h"
#include "records/sqlite/SegmentReader.h"
#include "records/store/RecordStore.h"

#include <limits>
#include <memory>
#include <optional>
#include <vector>

/// What a site document answers of its records: the reading half of SqliteRecordStore, over one connection.
///
/// *Shares* the lender of connections; one thread. Every call reads a snapshot of its own. See RecordStore for what
/// each call promises.
namespace plotix {

class SharedSpans;

class SqliteReader {
public:
    explicit SqliteReader(std::shared_ptr<ReadConnections> connections)
        : m_lender(std::move(connections)), m_connection(m_lender->lease())
    {
    }

    std::optional<RecordExtent> extent(RowId agent);
    std::optional<RecordExtent> extent();
    RecordOverview overview(RowId agent, std::span<const RowId> properties, std::optional<double> from,
                            std::optional<double> to);
    bool hasMoreThan(std::size_t records, RowId agent, std::optional<double> from, std::optional<double> to);
    RecordIndex index(RowId agent, std::span<const RowId> properties, std::optional<double> from,
                      std::optional<double> to, RecordIndex::Detail detail);
    /// Long reads use idle cores too.
    std::optional<RecordBlock> read(RowId agent, std::span<const RowId> properties, std::optional<double> from,
                                    std::optional<double> to, const ArchiveProgress& progress);
    /// What is longer than a page is paged. *Shares* the cache, and the lender from then on. `spans`: what others show,
    /// which is taken from there.
    std::optional<RecordColumns> columns(RowId agent, std::span<const RowId> properties, std::optional<double> from,
                                         std::optional<double> to, const std::shared_ptr<PageCache>& cache,
                                         const ArchiveProgress& progress, SharedSpans& spans);
    ColumnStatistics statistics(RowId agent, RowId property, std::optional<double> from, std::optional<double> to,
                                StatisticsFrom source);
    std::vector<Amendment> amendments(std::span<const RowId> properties, std::optional<double> from,
                                      std::optional<double> to);

private:
    /// Bounds as numbers: infinite when absent.
    struct Range {
        Range(std::optional<double> lower, std::optional<double> upper)
            : from(lower.value_or(-std::numeric_limits<double>::infinity())),
              to(upper.value_or(std::numeric_limits<double>::infinity()))
        {
        }
        bool contains(const Chunk& chunk) const { return chunk.t0 >= from && chunk.t1 <= to; }
        double from, to;
    };

    /// The parts of the chunks that lie in the range; only the first and the last chunk's times are read for that.
    std::vector<ChunkPart> partsIn(SegmentReader& segments, RowId agent, const Range& range);
    bool hasMoreThan(std::size_t records, RowId agent, const Range& range);
    /// The stored summary of each chunk and property; an empty one where the property has no segment.
    std::vector<std::vector<Summary>> summariesOf(RowId agent, const std::vector<Chunk>& of,
                                                  std::span<const RowId> properties);
    std::size_t propertiesOf(RowId agent);
    Summary summaryOfRecords(const Chunk& chunk, RowId property);

    RecordIndex::Column indexOfColumn(SegmentReader& segments, const Chunk& chunk, RowId property, bool withRuns,
                                      IndexStore::Found&& stored);
    RunTimes timesOf(SegmentReader& segments, const Chunk& chunk, IndexStore::FoundTimes&& stored);

    std::shared_ptr<ReadConnections> m_lender;
    ReadConnections::Lease m_connection;
};

}  // namespace plotix
