#pragma once

#include "records/store/RecordBlock.h"
#include "storage/Database.h"

#include <set>

/// Checks whether a block may be stored for an agent. Remembers what it looked up. Borrows its connection; one thread.
namespace plotix {

class StorableRecords {
public:
    explicit StorableRecords(const Database& database);

    /// Throws ReportableError: a time that is no number, columns shorter than the times, a property that stands twice
    /// or is not the agent's. True: the times ascend.
    bool require(RowId agent, const RecordBlock& block);

    /// Drops what it remembers: after another connection changed the document.
    void forget();

private:
    void requireProperties(RowId agent, const RecordBlock& block);
    bool isOfAgent(RowId agent, RowId property);

    Statement m_owner;
    std::set<std::pair<RowId, RowId>> m_known;  // agent and property that were looked up
    RowId m_lastAgent = 0;                      // whose block passed last, and its properties: the next block mostly
    std::vector<RowId> m_lastProperties;        // has the same
};

}  // namespace plotix
