#pragma once

#include "records/sqlite/AmendmentNoting.h"
#include "records/sqlite/RecordPlacement.h"
#include "records/sqlite/StorableRecords.h"
#include "records/store/RecordStore.h"

#include <memory>

/// Stores records in a site document, in a transaction of its own or inside one that the caller began and will end. Any
/// one thread. See RecordTransaction.
namespace plotix {

class SqliteTransaction final : public RecordTransaction {
public:
    /// Begins a transaction and *owns* its connection.
    SqliteTransaction(std::unique_ptr<Database> connection, AmendmentNoting::MakeStore makeStore);
    /// Joins the transaction already begun on `database`, which it borrows. `prepare` writes everything into it;
    /// `commit` does no more, and after destruction rolling back is left to the caller.
    SqliteTransaction(Database& database, AmendmentNoting::MakeStore makeStore);
    ~SqliteTransaction() override;
    SqliteTransaction(const SqliteTransaction&) = delete;
    SqliteTransaction& operator=(const SqliteTransaction&) = delete;

    void store(RowId agent, const RecordBlock& block) override;
    void remove(RowId agent, std::span<const RowId> properties, std::optional<double> from,
                std::optional<double> to) override;
    void noteAmendments(double now) override { m_now = now; }
    void addAmendment(RowId agent, const Amendment& amendment) override;
    void prepare() override { m_placement.flush(); }
    void commit() override;

private:
    void requireOpen() const;
    void storeOrdered(RowId agent, const RecordsView& records);

    std::unique_ptr<Database> m_own;  // empty inside a transaction of the caller's
    ChunkStore m_chunks;
    RecordPlacement m_placement;
    StorableRecords m_storable;
    AmendmentNoting m_amendments;
    std::optional<double> m_now;  // absent: nothing is noted
    bool m_finished = false;
    std::size_t m_values = 0;  // stored so far
};

}  // namespace plotix
