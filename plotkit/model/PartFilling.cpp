#include "plotkit/model/PartFilling.h"

#include "plotkit/model/CPTSeriesRuns.h"

#include <sys/resource.h>
#include <unistd.h>

#include <algorithm>
#include <new>
#include <system_error>
#include <utility>

namespace plotkit {

namespace {

/// So many elements are filled between two looks at whether they are still wanted: two threads share them.
constexpr std::size_t kAtOnce = 32 * plotix::PagedMemory::kPage;
/// The same of what is brought before anybody wants it.
constexpr std::size_t kBroughtAtOnce = 4 * plotix::PagedMemory::kPage;

/// Of such a series nothing is brought before somebody looks: it would be tried at each frame, and fail.
bool isAnyUnread(const CPTPointSeries& series)
{
    const auto isUnread = [](const std::shared_ptr<const plotix::PagedMemory>& memory) {
        return memory && memory->pagesUnread() > 0;
    };
    return isUnread(series.x().memory()) || isUnread(series.y().memory());
}

/// Whoever paints goes first where cores are scarce.
void giveWay()
{
#ifdef __linux__
    constexpr int kLess = 10;
    const auto thread = static_cast<id_t>(gettid());
    setpriority(PRIO_PROCESS, thread, getpriority(PRIO_PROCESS, thread) + kLess);
#endif
}

}  // namespace

PartFilling::~PartFilling()
{
    {
        const std::lock_guard lock(m_mutex);
        m_isStopping = true;
        ++m_request;
    }
    m_asked.notify_one();
    if (m_thread.joinable())
        m_thread.join();
}

bool PartFilling::fill(SeriesParts parts)
{
    SeriesParts before;  // goes without the mutex: it may be the last to share a series
    {
        const std::lock_guard lock(m_mutex);
        before = std::exchange(m_parts, std::move(parts));
        ++m_request;
    }
    return start();
}

void PartFilling::bring(SeriesParts parts)
{
    std::erase_if(parts, [](const SeriesPart& part) { return part.first >= part.end; });
    const bool isAny = !parts.empty();
    {
        const std::lock_guard lock(m_mutex);
        m_unbrought.swap(parts);  // those before go without the mutex
    }
    if (isAny)
        start();
}

void PartFilling::lookAt(std::vector<CPTPointSeriesPtr> series)
{
    std::erase_if(series, [](const CPTPointSeriesPtr& each) { return !each->runs(); });
    const bool isAny = !series.empty();
    {
        const std::lock_guard lock(m_mutex);
        m_unlooked.swap(series);  // those before go without the mutex
    }
    if (isAny)
        start();
}

bool PartFilling::start()
{
    m_asked.notify_one();
    if (m_thread.joinable())
        return true;
    try {
        m_thread = std::thread([this] { run(); });
    } catch (const std::system_error&) {
        return false;
    }
    return true;
}

void PartFilling::letGo()
{
    SeriesParts parts, unbrought;
    Holds holds;
    std::vector<CPTPointSeriesPtr> unlooked;
    const std::lock_guard lock(m_mutex);
    unbrought.swap(m_unbrought);
    unlooked.swap(m_unlooked);
    parts = std::exchange(m_parts, {});
    holds = std::exchange(m_holds, {});
    m_done = ++m_request;
}

SeriesParts PartFilling::held() const
{
    const std::lock_guard lock(m_mutex);
    return m_done == m_request ? m_parts : SeriesParts();
}

bool PartFilling::isWanted(std::uint64_t request) const
{
    const std::lock_guard lock(m_mutex);
    return m_request == request;
}

void PartFilling::look(const CPTPointSeries& series, std::uint64_t request) const
{
    const CPTSeriesRuns& runs = *series.runs();
    try {
        for (std::size_t run = 0; run < runs.count() && isWanted(request); run += CPTSeriesRuns::kBlock)
            runs.bring(run);
    } catch (const std::bad_alloc&) {  // a frame that needs them looks itself
    }
}

/// Some pages at once, so that a request need not wait for all of them.
void PartFilling::bringNext(std::unique_lock<std::mutex>& lock)
{
    SeriesPart next = m_unbrought.front();
    if (isAnyUnread(*next.series)) {
        m_unbrought.erase(m_unbrought.begin());
        return;
    }
    next.end = std::min(next.end, (next.first / kBroughtAtOnce + 1) * kBroughtAtOnce);
    m_unbrought.front().first = next.end;
    if (next.end == m_unbrought.front().end)
        m_unbrought.erase(m_unbrought.begin());
    lock.unlock();
    try {
        const CPTPointSeries::Hold once = next.series->hold(next.first, next.end);
    } catch (const std::bad_alloc&) {  // a frame that needs them brings them itself
    }
    next.series.reset();
    lock.lock();
}

void PartFilling::lookNext(std::unique_lock<std::mutex>& lock)
{
    const std::uint64_t request = m_request;
    CPTPointSeriesPtr series = m_unlooked.back();
    lock.unlock();
    look(*series, request);
    lock.lock();
    if (request == m_request && !m_unlooked.empty() && m_unlooked.back() == series)
        m_unlooked.pop_back();
    lock.unlock();
    series.reset();
    lock.lock();
}

void PartFilling::hold(const SeriesParts& parts, std::uint64_t request, Holds& holds) const
{
    for (const SeriesPart& part : parts) {
        part.series->x().expect(part.first, part.end);
        part.series->y().expect(part.first, part.end);
    }
    for (const SeriesPart& part : parts)
        for (std::size_t first = part.first; first < part.end && isWanted(request);) {
            const std::size_t end = std::min(part.end, (first / kAtOnce + 1) * kAtOnce);
            holds.push_back(part.series->hold(first, end));
            first = end;
        }
}

void PartFilling::run()
{
    giveWay();
    std::unique_lock lock(m_mutex);
    for (;;) {
        m_asked.wait(lock, [this] {
            return m_isStopping || m_done != m_request || !m_unbrought.empty() || !m_unlooked.empty();
        });
        if (m_isStopping)
            return;
        const std::uint64_t request = m_request;
        if (m_done == request) {
            if (!m_unbrought.empty())
                bringNext(lock);
            else
                lookNext(lock);
            continue;
        }
        SeriesParts parts;
        Holds holds;
        try {
            parts = m_parts;
            lock.unlock();
            hold(parts, request, holds);
        } catch (const std::bad_alloc&) {  // the frame waits for what is missing
        }
        if (!lock.owns_lock())
            lock.lock();
        const bool isDone = request == m_request;
        if (isDone) {
            m_holds.swap(holds);
            m_done = request;
        }
        lock.unlock();
        holds.clear();
        parts.clear();
        if (isDone)
            m_filled();
        lock.lock();
    }
}

}  // namespace plotkit
