#include "base/CoresAllowed.h"
#include "base/PagedMemory.h"

#include <algorithm>
#include <cassert>

namespace plotix {

PageCache::~PageCache()
{
    assert(m_inUse == 0);  // every memory shares its cache
}

void PageCache::setBudget(std::size_t bytes)
{
    const std::lock_guard lock(m_mutex);
    m_budget = bytes;
    keepBudget();
}

std::size_t PageCache::budget() const
{
    const std::lock_guard lock(m_mutex);
    return m_budget;
}

std::size_t PageCache::inUse() const
{
    const std::lock_guard lock(m_mutex);
    return m_inUse;
}

void PageCache::append(Page& page)
{
    page.before = m_newest;
    page.after = nullptr;
    (m_newest ? m_newest->after : m_oldest) = &page;
    m_newest = &page;
}

void PageCache::takeOut(Page& page)
{
    (page.before ? page.before->after : m_oldest) = page.after;
    (page.after ? page.after->before : m_newest) = page.before;
    page.before = page.after = nullptr;
}

/// Requires: the page is in memory, in no list, and nobody holds it.
void PageCache::letGo(Page& page)
{
    page.owner->release(page.index);
    page.state = Page::State::Absent;
    m_inUse -= page.owner->m_pageBytes;
}

void PageCache::keepBudget()
{
    while (m_inUse > m_budget && m_oldest) {
        Page& page = *m_oldest;
        takeOut(page);
        letGo(page);
    }
}

/// How many threads shall help whoever calls: where cores are free, and each has a share.
std::size_t PageCache::beginFilling(std::size_t shares)
{
    constexpr std::size_t kMostThreads = 4;
    const std::size_t cores = std::min(coresAllowed(), kMostThreads);
    const std::size_t free = cores > m_filling + 1 ? cores - m_filling - 1 : 0;
    const std::size_t helpers = std::min(free, shares > 0 ? shares - 1 : 0);
    m_filling += 1 + helpers;
    return helpers;
}

void PageCache::endFilling(std::size_t helpers)
{
    m_filling -= 1 + helpers;
}

}  // namespace plotix
