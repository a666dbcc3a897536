#pragma once

#include "records/sqlite/ResultColumns.h"

#include <atomic>
#include <exception>
#include <mutex>
#include <vector>

namespace plotix {

/// One read of many chunks: decodes them into result columns, with helping threads where cores are free and the work
/// is worth starting them.
///
/// The contents of a chunk id never change: a chunk that is written again gets another id, and no id comes twice. So a
/// helper's own connection shows the same records exactly when its snapshot still has every chunk of the read. The
/// helper checks that once, at its start, and does nothing when a chunk is missing; the caller's connection alone
/// always suffices.
///
/// Borrows everything; used once, on the caller's thread.
class ChunkReading {
public:
    ChunkReading(ReadConnections& lender, const std::vector<ChunkPart>& parts, ResultColumns& columns);

    /// `progress` is called on this thread only, before each chunk it decodes, with fractions that never decrease.
    /// False when `progress` stopped the reading. Throws ReportableError.
    bool run(SegmentReader& own, const ArchiveProgress& progress);

private:
    void help();
    void decode(SegmentReader& segments, const ArchiveProgress& progress);
    double fractionDone() const;
    void keepFailure();

    ReadConnections& m_lender;
    const std::vector<ChunkPart>& m_parts;
    ResultColumns& m_columns;

    std::atomic<std::size_t> m_next = 0;  // first part nobody has taken
    std::atomic<std::size_t> m_done = 0;  // records
    std::atomic<bool> m_stopped = false;
    std::mutex m_mutex;
    std::vector<ResultColumns::Gap> m_gaps;  // under the mutex
    std::exception_ptr m_failure;            // under the mutex; the first one
};

}  // namespace plotix
