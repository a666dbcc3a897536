#pragma once

#include "storage/Database.h"

#include <atomic>
#include <condition_variable>
#include <mutex>
#include <thread>

/// Merges the write-ahead log of a document into its file, on a thread of its own, so that a commit of the connection
/// it serves does not wait for the disk.
///
/// A log of kPages is merged while commits go on. If they are faster than the merge, they wait some milliseconds while
/// its last pages are merged, so that the log begins anew and does not grow for ever. While a reader stays in an old
/// snapshot, the log keeps growing. A merge that fails is tried again kPages later: the log holds everything.
namespace plotix {

class LogCheckpointer {
public:
    static constexpr int kPages = 2048;  ///< of 16 KiB: the log takes 32 MiB

    /// Borrows the connection, turns its own merging off and listens to its commits.
    explicit LogCheckpointer(Database& served);
    /// Waits for a merge under way, and merges what it can.
    ~LogCheckpointer();
    LogCheckpointer(const LogCheckpointer&) = delete;
    LogCheckpointer& operator=(const LogCheckpointer&) = delete;

private:
    static int committed(void* self, sqlite3* connection, const char* name, int pages);
    void wake(int pages);
    void work();
    void merge(Database& database);

    Database& m_served;
    std::atomic<int> m_pages = 0;  // of the log, after the last commit
    int m_wakeAt = kPages;         // the served connection's thread only
    std::mutex m_mutex;
    std::condition_variable m_changed;
    bool m_wanted = false, m_ending = false;  // guarded
    std::atomic<bool> m_busy = false;         // wanted or at work
    std::thread m_thread;                     // started when the log first reaches kPages
};

}  // namespace plotix
