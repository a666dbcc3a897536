#pragma once

#include "records/sqlite/IndexStore.h"
#include "records/sqlite/SegmentReader.h"
#include "records/store/RecordColumns.h"

#include <memory>
#include <optional>
#include <span>
#include <vector>

/// What is known of the columns of successive records before anybody looks at them.
namespace plotix {

/// Runs have 512 records; longer ones where an index or an outline has no shorter ones, and working them out would take
/// too long. A value.
struct KnownRuns {
    struct Column {
        std::vector<std::shared_ptr<const KeptRuns>> runs;  ///< one after the other
        RecordColumns::Total total;
        bool isAllValid = true;
        std::vector<bool> absent;  ///< by chunk: there are no values
    };

    /// With room for what is known of so many records in so many chunks.
    KnownRuns(std::size_t properties, std::size_t records, std::size_t chunks);
    /// With those of the records that follow.
    void append(KnownRuns&& next);
    /// To be called once, after all.
    void finish(std::size_t records);

    TimeRuns times;  ///< without the last beginning, until it is finished
    std::vector<Column> columns;
};

/// Puts together what is known of successive chunks: from the stored index where a chunk lies in the span whole, else
/// from its records.
///
/// Borrows a connection in the caller's transaction; one thread. Throws as its reader does.
class RunsInWork {
public:
    /// `worksOutLongRuns`: columns are read for the sake of shorter runs.
    RunsInWork(ReadConnection& connection, std::span<const RowId> properties, std::size_t ofAgent,
               bool worksOutLongRuns);

    KnownRuns of(std::span<const ChunkPart> parts);
    /// The same of whole chunks that an outline is of; nothing where the outline is gone, or damaged.
    std::optional<KnownRuns> of(const Outline& outline, std::span<const ChunkPart> parts);
    /// Of the records behind all chunks, which begin with element `first` of the span.
    KnownRuns ofTail(const RecordsView& tail, std::size_t first);

private:
    using Found = IndexStore::FoundRuns;

    void find(std::span<const ChunkPart> parts, KnownRuns& known);
    void add(const ChunkPart& part, const RunTimes& times, std::span<const Found> columns, KnownRuns& known);
    void giveRuns(KnownRuns& known);
    void complete(const ChunkPart& part, RowId property, Found& column, KnownRuns::Column& known);
    void workOut(const ColumnView& column, std::size_t count, Found& runs, KnownRuns::Column& known) const;
    void workOutTimes(const ChunkPart& part, IndexStore::FoundTimes& times);
    bool mayBeUsed(const Found& stored, std::size_t count) const;

    ReadConnection& m_connection;
    SegmentReader m_segments;
    const std::vector<RowId> m_properties;
    const std::size_t m_ofAgent;
    const bool m_worksOutLongRuns;
    std::vector<ByteKeeper> m_keepers;  // of what outlines say, by property: each goes with its column
    std::vector<Chunk> m_chunks;
    std::vector<Found> m_found;                   // by chunk, then by property
    std::vector<IndexStore::FoundTimes> m_times;  // by chunk
    std::vector<double> m_values;
    std::vector<ValueRuns> m_runs;  // by property: what `add` has put together
};

}  // namespace plotix
