#pragma once

#include "base/KeptBytes.h"
#include "records/columns/OutlineCodec.h"
#include "records/sqlite/Chunk.h"
#include "records/store/RecordBlock.h"
#include "storage/Database.h"

#include <memory>
#include <optional>
#include <span>
#include <vector>

/// Outlines: what frames need of up to 64 successive chunks of an agent, in a row for each property. They only repeat
/// what the chunks say, so that a picture of years reads some thousand rows instead of some hundred thousand.
///
/// An outline says which chunks it is of, by id; the contents of a chunk id never change, so what an outline says of
/// them stays true. It is of use while these are the agent's chunks in that order.
///
/// Borrows its connection and works inside the caller's transaction; one thread.
namespace plotix {

struct Outline {
    qint64 id = 0;                  ///< never given twice
    double t0 = 0, t1 = 0;          ///< of its first and its last record
    std::vector<qint64> chunks;     ///< ids, in time order
    outlinecodec::Cut cut;          ///< of these chunks
    std::vector<RowId> properties;  ///< of which there are values, ascending

    outlinecodec::Owner owner(RowId property) const;
    bool has(RowId property) const;
    /// Whether these are its chunks, the first ones of them.
    bool isOf(std::span<const Chunk> successive) const;
};

class OutlineTable {
public:
    explicit OutlineTable(Database& database);
    ~OutlineTable();
    OutlineTable(const OutlineTable&) = delete;
    OutlineTable& operator=(const OutlineTable&) = delete;

    bool exists();  ///< false: a document of a version before

    /// Those with a time in [from, to], in time order, without those whose head is damaged.
    std::vector<Outline> between(RowId agent, double from, double to);
    /// All that the agent has, whatever state they are in.
    std::vector<qint64> ids(RowId agent);
    /// The last time that the agent's outlines reach; nothing without any.
    std::optional<double> endOf(RowId agent);

    /// Nothing where the row is not there, or damaged.
    std::optional<outlinecodec::Times> times(const Outline& outline);
    struct Column {
        KeptBytes bytes;  ///< of its runs
        outlinecodec::Totals totals;
    };
    std::optional<Column> column(const Outline& outline, RowId property, ByteKeeper& keeper);

    /// Rows of a new outline: `rows` has the times first, then its properties in their order.
    void add(RowId agent, Outline outline, std::span<const std::vector<std::byte>> rows);
    void remove(qint64 outline);
    /// Removes the one that the chunk is in. Requires: the chunk is still in the table of chunks.
    void removeThatOf(const Chunk& chunk);

private:
    struct Statements;
    Statements& statements();
    template <class Use>
    auto withRow(qint64 id, const Use& use);

    Database& m_database;
    std::unique_ptr<Statements> m_statements;
};

}  // namespace plotix
