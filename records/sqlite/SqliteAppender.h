#pragma once

#include "records/store/RecordStore.h"

/// Stores small blocks as they come, second after second: each in a transaction of its own, over a connection that is
/// kept, because opening one costs more than storing.
///
/// A record behind everything stored is a row of the tail: one page of the log. The one that fills a chunk writes the
/// chunk. The log is merged into the file on a thread of its own. Other writers wait for a commit, never for the time
/// between two. One thread at a time. Throws ReportableError.
namespace plotix {

class RecordAppender {
public:
    explicit RecordAppender(const QString& file);
    ~RecordAppender();
    RecordAppender(const RecordAppender&) = delete;
    RecordAppender& operator=(const RecordAppender&) = delete;

    /// How long `append` waits for another writer; 3 seconds at first.
    void setPatience(int milliseconds);

    /// Stored when it returns: whatever happens to this process afterwards, the records are there. When it throws,
    /// nothing of the block is stored, and it may be tried again.
    void append(RowId agent, const RecordBlock& block);

    /// Time of the agent's last record.
    std::optional<double> lastTime(RowId agent);

private:
    struct Impl;
    std::unique_ptr<Impl> m_impl;
};

}  // namespace plotix
