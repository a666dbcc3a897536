#pragma once

#include "records/sqlite/RunsInWork.h"
#include "records/sqlite/SharedSpans.h"

#include <atomic>
#include <exception>
#include <map>
#include <mutex>
#include <vector>

namespace plotix {

/// What is known of the columns of many chunks, found out with helping threads where cores are free and there is enough
/// to do.
///
/// Borrows everything; used once, on the caller's thread.
class RunsReading {
public:
    /// `outlines`: those of the parts' agent, in time order. `noted`: what is not read anew.
    RunsReading(ReadConnections& lender, const std::vector<ChunkPart>& parts, std::span<const RowId> properties,
                std::size_t ofAgent, std::vector<Outline> outlines, const NotedOutlines& noted);

    /// Adds to `known` in the order of the parts. `progress` is called on this thread only, with fractions that never
    /// decrease. False when it stopped the reading. Throws ReportableError.
    bool run(ReadConnection& own, const ArchiveProgress& progress, KnownRuns& known);

    /// Of the records behind all chunks, which begin with element `first` of the span.
    KnownRuns ofTail(ReadConnection& own, const RecordsView& tail, std::size_t first)
    {
        return RunsInWork(own, m_properties, m_ofAgent, m_worksOutLongRuns).ofTail(tail, first);
    }

private:
    /// Parts that are taken together: those of an outline, or some that are in none.
    struct Piece {
        std::size_t first = 0, count = 0;
        const Outline* outline = nullptr;
    };
    void cut();
    KnownRuns of(RunsInWork& runs, const Piece& piece) const;
    void help();
    void work(ReadConnection& connection, const ArchiveProgress& progress, KnownRuns* known);
    void addReady(KnownRuns& known);
    void keepFailure();

    ReadConnections& m_lender;
    const std::vector<ChunkPart>& m_parts;
    const std::span<const RowId> m_properties;
    const std::size_t m_ofAgent;
    const std::vector<Outline> m_outlines;
    const NotedOutlines& m_noted;
    std::vector<Piece> m_pieces;
    bool m_worksOutLongRuns = false;

    std::atomic<std::size_t> m_next = 0;  // first piece nobody has taken
    std::atomic<bool> m_stopped = false;
    std::size_t m_added = 0;  // pieces; the caller's thread
    std::mutex m_mutex;
    std::map<std::size_t, KnownRuns> m_ready;  // under the mutex, by piece
    std::exception_ptr m_failure;              // under the mutex; the first one
};

}  // namespace plotix
