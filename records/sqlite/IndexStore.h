#pragma once

#include "records/columns/IndexCodec.h"
#include "records/sqlite/ChunkStore.h"
#include "storage/RowScan.h"

#include <functional>
#include <memory>
#include <optional>

/// What a site document keeps of its columns beside them: a summary of each and, since version 7, an index with a
/// checksum. Before that version there is no index, which says nothing against the columns.
///
/// Borrows its connection and works inside the caller's transaction; one thread.
namespace plotix {

class IndexStore {
public:
    explicit IndexStore(Database& database);
    ~IndexStore();
    IndexStore(const IndexStore&) = delete;
    IndexStore& operator=(const IndexStore&) = delete;

    bool exists();  ///< false: a document of a version before

    /// id, valid, minimum, maximum, sum, whole.
    RowScan& summaries();
    static Summary summaryFrom(const ScannedRow& row);
    static bool hasIndex(const ScannedRow& row) { return !row.isNothing(5); }
    /// Whether the row agrees with its checksum; true without an index.
    static bool isIntact(const ScannedRow& row, const Summary& summary, const indexcodec::Owner& owner);

    enum class State { Absent, Sound, Damaged };
    struct Found {
        State state = State::Absent;
        ColumnIndex index;
        bool hasRuns = false;  ///< stored, looked at or not
    };
    /// Of one column; runs where they are asked for and stored.
    Found find(const Chunk& chunk, RowId property, bool withRuns);

    struct FoundTimes {
        State state = State::Absent;
        RunTimes times;
    };
    FoundTimes findTimes(const Chunk& chunk);

    struct FoundChunk {
        FoundTimes times;            ///< where runs are asked for
        std::vector<Found> columns;  ///< in the order of the properties
    };
    /// The same of many columns at once, by chunk. `ofAgent`: how many properties the agent has.
    std::vector<FoundChunk> find(std::span<const Chunk> chunks, std::span<const RowId> properties, std::size_t ofAgent,
                                 bool withRuns);

    /// Of a column of a chunk what stays in memory while columns are looked at.
    struct FoundRuns {
        State state = State::Absent;
        RunFigures whole;
        bool hasWhole = false;         ///< sound in itself, and handed over, even where its runs are damaged
        bool hasRuns = false;          ///< says so
        indexcodec::RunExtremes runs;  ///< where it has some
    };
    using TakeWhole = std::function<void(std::size_t chunk, std::size_t place, const indexcodec::WholeFigures& whole)>;
    /// The same columns and times as `find`, without the sums of runs: into `found`, by chunk and then in the order of
    /// the properties, and `times`, by chunk. `take` is handed what there is of whole columns. Requires: as many
    /// elements in both as there are.
    void findExtremes(std::span<const Chunk> chunks, std::span<const RowId> properties, std::size_t ofAgent,
                      std::span<FoundRuns> found, std::span<FoundTimes> times, const TakeWhole& take);

    /// Whether all of a chunk's columns have a sound index.
    bool isSound(const Chunk& chunk);
    /// Rows of runs that the chunk has.
    std::size_t rowsOfRuns(const Chunk& chunk);

private:
    static Found foundIn(const ScannedRow& row, const indexcodec::Owner& owner);
    static FoundTimes timesIn(const ScannedRow& row, const indexcodec::Owner& owner);
    std::optional<std::vector<std::byte>> runs(qint64 id);
    void findRuns(std::span<const Chunk> chunks, std::span<const RowId> properties, std::size_t ofAgent,
                  std::vector<FoundChunk>& found);

    Database& m_database;
    bool m_exists = false;
    std::unique_ptr<RowScan> m_summaries, m_runsBetween;
    std::unique_ptr<Statement> m_runs, m_countRuns;
};

}  // namespace plotix
