#include "base/PagedMemory.h"

#include "base/HelpingThreads.h"
#include "base/HugePages.h"

#include <sys/mman.h>
#include <unistd.h>

#include <algorithm>
#include <atomic>
#include <cassert>
#include <cstdint>
#include <new>
#include <utility>

#if defined(__SANITIZE_ADDRESS__)
#include <sanitizer/asan_interface.h>
#else
#define ASAN_POISON_MEMORY_REGION(start, size) (static_cast<void>(start), static_cast<void>(size))
#define ASAN_UNPOISON_MEMORY_REGION(start, size) (static_cast<void>(start), static_cast<void>(size))
#endif

namespace plotix {

namespace {

/// Pages that a thread takes at once: of floats, those that lie in a huge page of the system. Whatever packs the values
/// seldom ends where pages do, and what two takers share is unpacked twice.
constexpr std::size_t kShare = 16;
static_assert(kShare * PagedMemory::kPage * sizeof(float) == kHugePage);

std::size_t systemPage()
{
    static const auto size = static_cast<std::size_t>(sysconf(_SC_PAGESIZE));
    return size;
}

/// Has the system put huge pages where nothing is in memory yet, and nothing else lies in them.
void askForHugePages(std::byte* start, std::size_t bytes)
{
    const std::span<std::byte> part = hugePartOf(start, bytes);
    if (part.empty())
        return;
    // As a whole: then what is left of the tables of small pages goes too.
    madvise(part.data(), part.size(), MADV_DONTNEED);
    preferHugePages(start, bytes);
}

/// Has the system put small pages, from now on, where parts of a huge one may come back alone: it would round each up
/// to a huge one again, later, and the budget would not know.
void askForSmallPages(std::byte* start, std::size_t from, std::size_t to, std::size_t mapped)
{
    const auto place = reinterpret_cast<std::uintptr_t>(start);
    const std::uintptr_t first = std::max(place, (place + from) / kHugePage * kHugePage);
    const std::uintptr_t end = std::min(place + mapped, roundedUp(place + to, kHugePage));
    madvise(start + (first - place), end - first, MADV_NOHUGEPAGE);
}

/// Has the system make the memory there at one go, not at each page's first write.
void populate(std::byte* start, std::size_t bytes)
{
#ifdef MADV_POPULATE_WRITE
    const auto place = reinterpret_cast<std::uintptr_t>(start);
    const std::size_t before = place % systemPage();
    madvise(start - before, roundedUp(before + bytes, systemPage()), MADV_POPULATE_WRITE);
#endif
}

}  // namespace

PagedMemory::Hold::~Hold()
{
    if (m_memory)
        m_memory->giveBack(m_first, m_end);
}

PagedMemory::PagedMemory(std::shared_ptr<PageCache> cache, std::size_t elements)
    : m_cache(std::move(cache)), m_elements(elements), m_pages((elements + kPage - 1) / kPage)
{
    for (std::size_t index = 0; index < m_pages.size(); ++index) {
        m_pages[index].owner = this;
        m_pages[index].index = index;
    }
}

PagedMemory::~PagedMemory()
{
    {
        const std::lock_guard lock(m_cache->m_mutex);
        for (PageCache::Page& page : m_pages) {
            assert(page.holds == 0 && page.state != State::BeingFilled);
            if (page.state == State::Absent)
                continue;
            m_cache->takeOut(page);
            m_cache->m_inUse -= m_pageBytes;
        }
    }
    for (const Array& array : m_arrays) {
        ASAN_UNPOISON_MEMORY_REGION(array.start, array.mapped);
        munmap(array.start, array.mapped);
    }
}

void* PagedMemory::reserveBytes(std::size_t entryBytes, std::size_t elementsAnEntry)
{
    assert(kPage % elementsAnEntry == 0);
    Array array;
    array.pageBytes = kPage / elementsAnEntry * entryBytes;
    array.mapped = std::max<std::size_t>(m_pages.size(), 1) * array.pageBytes;
    array.mapped = roundedUp(array.mapped, systemPage());
    m_arrays.reserve(m_arrays.size() + 1);
    void* start = mapAligned(array.mapped, MAP_NORESERVE);
    if (start == nullptr)
        throw std::bad_alloc();
    madvise(start, array.mapped, MADV_NOHUGEPAGE);  // a page alone is not to take a huge one
    array.start = static_cast<std::byte*>(start);
    m_arrays.push_back(array);
    m_pageBytes += array.pageBytes;
    ASAN_POISON_MEMORY_REGION(array.start, array.mapped);
    return start;
}

PagedMemory::Hold PagedMemory::hold(std::size_t first, std::size_t end) const
{
    assert(first <= end && end <= m_elements);
    Hold held;
    if (first == end)
        return held;
    held.m_memory = shared_from_this();
    held.m_first = first / kPage;
    held.m_end = (end + kPage - 1) / kPage;

    std::unique_lock lock(m_cache->m_mutex);
    for (std::size_t index = held.m_first; index < held.m_end; ++index) {
        PageCache::Page& page = m_pages[index];
        if (page.holds++ == 0 && page.state == State::Filled)
            m_cache->takeOut(page);
    }
    // Absent ones first: whoever waits never keeps others waiting for pages of his own.
    for (std::size_t index = held.m_first; index < held.m_end; ++index) {
        if (m_pages[index].state != State::Absent)
            continue;
        std::size_t absentEnd = index + 1;
        while (absentEnd < held.m_end && m_pages[absentEnd].state == State::Absent)
            ++absentEnd;
        fillAbsent(index, absentEnd, lock);
    }
    bool standsIn = false;
    for (std::size_t index = held.m_first; index < held.m_end; ++index) {
        m_cache->m_filled.wait(lock, [&] { return m_pages[index].state != State::BeingFilled; });
        standsIn = standsIn || m_pages[index].state == State::StandIn;
    }
    m_standInsHeld += standsIn ? 1 : 0;
    return held;
}

/// Lets others work while it fills.
void PagedMemory::fillAbsent(std::size_t first, std::size_t end, std::unique_lock<std::mutex>& lock) const
{
    for (std::size_t index = first; index < end; ++index)
        m_pages[index].state = State::BeingFilled;
    m_cache->m_inUse += (end - first) * m_pageBytes;
    m_cache->keepBudget();
    const std::size_t helpers = m_cache->beginFilling((end - first) / kShare);
    lock.unlock();
    for (const Array& array : m_arrays)
        askForHugePages(array.start + first * array.pageBytes, (end - first) * array.pageBytes);
    if (helpers == 0) {
        fillPages(first, end);
    } else {
        std::atomic<std::size_t> next = first / kShare;
        const auto work = [&] {
            for (std::size_t share = next++; share * kShare < end; share = next++)
                fillPages(std::max(first, share * kShare), std::min((share + 1) * kShare, end));
        };
        const HelpingThreads threads(helpers, work);
        work();
    }
    lock.lock();
    m_cache->endFilling(helpers);
}

void PagedMemory::fillPages(std::size_t first, std::size_t end) const
{
    open(first, end);
    for (const Array& array : m_arrays)
        populate(array.start + first * array.pageBytes, (end - first) * array.pageBytes);
    const bool isRead = fill(first * kPage, std::min(end * kPage, m_elements));
    const std::lock_guard lock(m_cache->m_mutex);
    for (std::size_t index = first; index < end; ++index) {
        PageCache::Page& page = m_pages[index];
        page.state = isRead ? State::Filled : State::StandIn;
        if (std::exchange(page.couldBeRead, isRead) != isRead)
            isRead ? --m_pagesUnread : ++m_pagesUnread;
    }
    m_cache->m_filled.notify_all();
}

bool PagedMemory::holdIfThere(std::size_t first, std::size_t end, Hold& hold) const
{
    assert(first <= end && end <= m_elements);
    Hold held;
    if (first < end) {
        const std::size_t firstPage = first / kPage, endPage = (end + kPage - 1) / kPage;
        const std::lock_guard lock(m_cache->m_mutex);
        for (std::size_t index = firstPage; index < endPage; ++index)
            if (m_pages[index].state != State::Filled)
                return false;
        for (std::size_t index = firstPage; index < endPage; ++index)
            if (m_pages[index].holds++ == 0)
                m_cache->takeOut(m_pages[index]);
        held.m_memory = shared_from_this();
        held.m_first = firstPage;
        held.m_end = endPage;
    }
    hold = std::move(held);
    return true;
}

void PagedMemory::giveBack(std::size_t first, std::size_t end) const noexcept
{
    const std::lock_guard lock(m_cache->m_mutex);
    for (std::size_t index = first; index < end; ++index) {
        PageCache::Page& page = m_pages[index];
        if (--page.holds > 0)
            continue;
        if (page.state == State::StandIn)
            m_cache->letGo(page);
        else
            m_cache->append(page);
    }
    m_cache->keepBudget();
}

void PagedMemory::open(std::size_t first, std::size_t end) const
{
    for (const Array& array : m_arrays)
        ASAN_UNPOISON_MEMORY_REGION(array.start + first * array.pageBytes, (end - first) * array.pageBytes);
}

/// What shares a page of the system with a neighbour stays where it is; it is filled anew all the same. A part of a
/// huge page goes back to the system with the last part of it, or when memory is scarce.
void PagedMemory::release(std::size_t page) const
{
    const std::size_t unit = systemPage();
    for (const Array& array : m_arrays) {
        const std::size_t from = (page * array.pageBytes + unit - 1) / unit * unit;
        const std::size_t to = (page + 1) * array.pageBytes / unit * unit;
        if (from < to) {
            madvise(array.start + from, to - from, MADV_DONTNEED);
            askForSmallPages(array.start, from, to, array.mapped);
        }
        ASAN_POISON_MEMORY_REGION(array.start + page * array.pageBytes, array.pageBytes);
    }
}

}  // namespace plotix
