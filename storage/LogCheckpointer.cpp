#include "storage/LogCheckpointer.h"

#include "base/ReportableError.h"

#include <sqlite3.h>

#include <chrono>
#include <system_error>

namespace plotix {

namespace {

constexpr int kPassesBeside = 2;  // merges beside the commits before they are held up
constexpr int kShortRest = 256;   // pages that may be merged while commits wait
constexpr int kMostTries = 20;    // for the lock of a writer or a reader
constexpr auto kBetweenTries = std::chrono::microseconds(200);

/// Pages in the log, and those of them that are merged.
struct Merged {
    int result = SQLITE_OK;
    int pages = 0, merged = 0;
};

Merged mergeLog(Database& database, int mode)
{
    Merged done;
    done.result = sqlite3_wal_checkpoint_v2(database.handle(), "main", mode, &done.pages, &done.merged);
    return done;
}

/// Commits wait meanwhile, so it is a matter of milliseconds.
int tryAgain(void*, int tries)
{
    std::this_thread::sleep_for(kBetweenTries);
    return tries < kMostTries ? 1 : 0;
}

}  // namespace

LogCheckpointer::LogCheckpointer(Database& served) : m_served(served)
{
    sqlite3_wal_hook(m_served.handle(), &LogCheckpointer::committed, this);
}

LogCheckpointer::~LogCheckpointer()
{
    sqlite3_wal_hook(m_served.handle(), nullptr, nullptr);
    if (m_thread.joinable()) {
        {
            const std::lock_guard lock(m_mutex);
            m_ending = true;
        }
        m_changed.notify_all();
        m_thread.join();
    }
    if (m_pages > 0)
        mergeLog(m_served, SQLITE_CHECKPOINT_PASSIVE);
}

int LogCheckpointer::committed(void* self, sqlite3*, const char*, int pages)
{
    static_cast<LogCheckpointer*>(self)->wake(pages);
    return SQLITE_OK;
}

void LogCheckpointer::wake(int pages)
{
    m_pages = pages;
    if (pages < m_wakeAt) {
        // The log began anew: the next merge is due at kPages again.
        m_wakeAt = pages < kPages ? kPages : m_wakeAt;
        return;
    }
    if (m_busy.exchange(true))
        return;
    m_wakeAt = pages + kPages;
    try {
        if (!m_thread.joinable())
            m_thread = std::thread([this] { work(); });
    } catch (const std::system_error&) {
        m_busy = false;
        return;
    }
    {
        const std::lock_guard lock(m_mutex);
        m_wanted = true;
    }
    m_changed.notify_all();
}

void LogCheckpointer::work()
{
    std::unique_ptr<Database> database;
    std::unique_lock lock(m_mutex);
    for (;;) {
        m_changed.wait(lock, [this] { return m_wanted || m_ending; });
        if (m_ending)
            return;
        m_wanted = false;
        lock.unlock();
        try {
            if (!database)
                database = std::make_unique<Database>(m_served.file(), m_served.schema(), Database::Access::ReadWrite);
            // The log belongs to the served file, and must not be merged into one that took its name.
            if (database->openedFile().isSameAs(m_served.openedFile()))
                merge(*database);
        } catch (const std::exception&) {  // the committing connection fails in the same way, and its caller is told
            database.reset();
        }
        m_busy = false;
        lock.lock();
    }
}

void LogCheckpointer::merge(Database& database)
{
    for (int pass = 0; pass < kPassesBeside; ++pass) {
        const Merged done = mergeLog(database, SQLITE_CHECKPOINT_PASSIVE);
        // A reader is in the way; or everything is merged, and the log begins anew with the next commit.
        if (done.result != SQLITE_OK || done.merged < done.pages || m_pages == done.pages)
            return;
        if (m_pages - done.merged <= kShortRest)
            break;
    }
    sqlite3_busy_handler(database.handle(), &tryAgain, nullptr);
    mergeLog(database, SQLITE_CHECKPOINT_FULL);
}

}  // namespace plotix
