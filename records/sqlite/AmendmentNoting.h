#pragma once

#include "records/sqlite/AmendmentTable.h"

/// Notes what is late or corrects something, in the transaction that stores it.
///
/// What was there before is read over a connection of its own, made when it is first needed: it sees nothing of the
/// transaction. Borrows its connection; one thread. Throws ReportableError.
namespace plotix {

class AmendmentNoting {
public:
    /// Makes a store of the same file, whose connections are its own.
    using MakeStore = std::function<std::shared_ptr<RecordStore>(const Database& database)>;

    AmendmentNoting(const Database& database, MakeStore makeStore)
        : m_database(database), m_makeStore(std::move(makeStore)), m_table(database)
    {
    }

    /// Before the records are stored. Requires: the records are ordered.
    void note(RowId agent, const RecordsView& records, double now);
    void add(RowId agent, const Amendment& amendment);

    /// The transaction with these records is the last that is not known as it was before.
    void stored(RowId agent, const RecordsView& records);
    /// Another connection changed the document, or nothing was stored after all.
    void forget();

private:
    AmendmentFinder& finder();

    const Database& m_database;
    MakeStore m_makeStore;
    AmendmentTable m_table;
    std::unique_ptr<AmendmentFinder> m_finder;
};

}  // namespace plotix
