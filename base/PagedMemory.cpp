#include "base/PagedMemory.h"

#include <sys/mman.h>
#include <unistd.h>

#include <cassert>
#include <cstdint>
#include <new>

#if defined(__SANITIZE_ADDRESS__)
#include <sanitizer/asan_interface.h>
#else
#define ASAN_POISON_MEMORY_REGION(start, size) (static_cast<void>(start), static_cast<void>(size))
#define ASAN_UNPOISON_MEMORY_REGION(start, size) (static_cast<void>(start), static_cast<void>(size))
#endif

namespace plotix {

namespace {

std::size_t systemPage()
{
    static const auto size = static_cast<std::size_t>(sysconf(_SC_PAGESIZE));
    return size;
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
    array.mapped = (array.mapped + systemPage() - 1) / systemPage() * systemPage();
    m_arrays.reserve(m_arrays.size() + 1);
    void* start =
        mmap(nullptr, array.mapped, PROT_READ | PROT_WRITE, MAP_PRIVATE | MAP_ANONYMOUS | MAP_NORESERVE, -1, 0);
    if (start == MAP_FAILED)
        throw std::bad_alloc();
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
    for (std::size_t index = held.m_first; index < held.m_end; ++index)
        m_cache->m_filled.wait(lock, [&] { return m_pages[index].state != State::BeingFilled; });
    return held;
}

/// Lets others work while it fills.
void PagedMemory::fillAbsent(std::size_t first, std::size_t end, std::unique_lock<std::mutex>& lock) const
{
    for (std::size_t index = first; index < end; ++index)
        m_pages[index].state = State::BeingFilled;
    m_cache->m_inUse += (end - first) * m_pageBytes;
    m_cache->keepBudget();
    lock.unlock();
    open(first, end);
    const bool isRead = fill(first * kPage, std::min(end * kPage, m_elements));
    lock.lock();
    for (std::size_t index = first; index < end; ++index)
        m_pages[index].state = isRead ? State::Filled : State::StandIn;
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

/// What shares a page of the system with a neighbour stays where it is; it is filled anew all the same.
void PagedMemory::release(std::size_t page) const
{
    const std::size_t unit = systemPage();
    for (const Array& array : m_arrays) {
        const std::size_t from = (page * array.pageBytes + unit - 1) / unit * unit;
        const std::size_t to = (page + 1) * array.pageBytes / unit * unit;
        if (from < to)
            madvise(array.start + from, to - from, MADV_DONTNEED);
        ASAN_POISON_MEMORY_REGION(array.start + page * array.pageBytes, array.pageBytes);
    }
}

}  // namespace plotix
