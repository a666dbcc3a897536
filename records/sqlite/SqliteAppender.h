#pragma once

#include "records/sqlite/AmendmentNoting.h"
#include "records/sqlite/RecordPlacement.h"
#include "records/sqlite/StorableRecords.h"
#include "records/store/RecordStore.h"
#include "storage/LogCheckpointer.h"

/// Stores small blocks in a site document as they come, each in a transaction of its own, over a connection that is
/// kept, because opening one costs more than storing.
///
/// A record later than all stored ones becomes a row of the tail: one page of the log. The record that fills a chunk
/// writes the chunk. The log is merged into the file on a thread of its own. One thread at a time. See RecordAppender.
namespace plotix {

class SqliteAppender final : public RecordAppender {
public:
    SqliteAppender(const QString& file, const DatabaseSchema& schema, AmendmentNoting::MakeStore makeStore);

    void append(RowId agent, const RecordBlock& block) override;
    void noteAmendments(std::function<double()> clock) override { m_clock = std::move(clock); }
    void setPatience(int milliseconds) override { m_database.setPatience(milliseconds); }

private:
    void store(RowId agent, const RecordBlock& block);
    void storeOrdered(RowId agent, const RecordsView& records);
    void forget();

    Database m_database;
    ChunkStore m_chunks;
    RecordPlacement m_placement;
    StorableRecords m_storable;
    AmendmentNoting m_amendments;
    std::function<double()> m_clock;  // empty: nothing is noted
    LogCheckpointer m_checkpointer;
    unsigned m_version = 0;  // of the document that placement and storable know
};

}  // namespace plotix
