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
/// *Shares* the lender for its life; one thread. Every call is a snapshot of its own. See RecordStore for what each
/// promises.
namespace plotix {

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
    /// Long reads take idle cores to help.
    std::optional<RecordBlock> read(RowId agent, std::span<const RowId> properties, std::optional<double> from,
                                    std::optional<double> to, const ArchiveProgress& progress);
    ColumnStatistics statistics(RowId agent, RowId property, std::optional<double> from, std::optional<double> to,
                                StatisticsFrom source);

private:
    /// Bounds as numbers: an absent one is infinite.
    struct Range {
        Range(std::optional<double> lower, std::optional<double> upper)
            : from(lower.value_or(-std::numeric_limits<double>::infinity())),
              to(upper.value_or(std::numeric_limits<double>::infinity()))
        {
        }
        bool contains(const Chunk& chunk) const { return chunk.t0 >= from && chunk.t1 <= to; }
        double from, to;
    };

    /// The parts of the chunks that lie in the range; only the outer chunks' times need a look.
    std::vector<ChunkPart> partsIn(SegmentReader& segments, RowId agent, const Range& range);
    /// Per chunk and property what is stored about it, nothing where the property has no segment.
    std::vector<std::vector<Summary>> summariesOf(RowId agent, const std::vector<Chunk>& of,
                                                  std::span<const RowId> properties);

    std::shared_ptr<ReadConnections> m_lender;
    ReadConnections::Lease m_connection;
};

}  // namespace plotix
