#pragma once

#include "records/store/Records.h"
#include "storage/Database.h"

#include <cstddef>
#include <memory>
#include <optional>
#include <vector>

/// The tail of a site document: records that came one by one, later than every chunk of their agent, kept a row each
/// until they fill a chunk.
///
/// Borrows its connection and works inside the caller's transaction; one thread. A document of the first version has no
/// tail: it reads as empty, and must not be written. Throws ReportableError, also for rows that make no sense.
namespace plotix {

/// Which records an agent's tail holds.
struct TailExtent {
    std::size_t count = 0;
    double first = 0, last = 0;  ///< times; 0 when count is 0
};

class TailStore {
public:
    explicit TailStore(Database& database);
    ~TailStore();
    TailStore(const TailStore&) = delete;
    TailStore& operator=(const TailStore&) = delete;

    bool exists();  ///< false: a document of the first version
    TailExtent extent(RowId agent);
    std::vector<RowId> agents();  ///< those with a tail, ascending

    /// Records with from ≤ time ≤ to, ordered. The result has a column for each property that one of them has an
    /// element for; missing elements are absent.
    Records read(RowId agent, double from, double to);

    /// Adds ordered records, a row each. A record at the time of an existing row keeps the elements that only the row
    /// has.
    void put(RowId agent, const RecordsView& records);

    /// The same for records later than all of the agent's rows, of which there are `count`. Fast.
    void append(RowId agent, std::size_t count, const RecordsView& records);

    void clear(RowId agent);

private:
    struct Statements;
    std::size_t count(RowId agent);
    std::optional<double> timeAt(RowId agent, std::size_t position);
    template <class Predicate>
    std::size_t firstPosition(RowId agent, std::size_t first, std::size_t end, Predicate isPast);
    std::size_t behindLastSound(RowId agent, std::size_t end);
    Records readRows(RowId agent, std::size_t first, std::size_t end);
    void write(qint64 id, const RecordsView& records, std::size_t index);
    [[noreturn]] void failAsDamaged(RowId agent) const;
    [[noreturn]] void failAsChanged(RowId agent, std::size_t position) const;

    Database& m_database;
    std::unique_ptr<Statements> m_statements;
    std::vector<std::byte> m_row;  // kept for its memory
};

}  // namespace plotix
