#pragma once

#include "records/sqlite/ReadConnections.h"
#include "records/sqlite/SegmentReader.h"
#include "records/store/RecordStore.h"

#include <limits>
#include <memory>
#include <optional>
#include <vector>

namespace plotix {

/// What the reader's files share: a connection lent for the reader's life.
struct RecordReader::Impl {
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

    explicit Impl(std::shared_ptr<ReadConnections> connections)
        : lender(std::move(connections)), connection(lender->lease())
    {
    }

    /// The parts of the chunks that lie in the range; only the outer chunks' times need a look.
    std::vector<ChunkPart> parts(SegmentReader& segments, RowId agent, const Range& range);
    /// Per chunk and property what is stored about it, nothing where the property has no segment.
    std::vector<std::vector<Summary>> summaries(RowId agent, const std::vector<Chunk>& of,
                                                std::span<const RowId> properties);

    std::shared_ptr<ReadConnections> lender;
    ReadConnections::Lease connection;
};

}  // namespace plotix
