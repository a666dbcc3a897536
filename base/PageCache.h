#pragma once

#include <condition_variable>
#include <cstddef>
#include <memory>
#include <mutex>

/// The memory that pages of all paged columns take together. Pages that nobody looks at stay until the budget is used
/// up; then those looked at longest ago are let go first. Pages that are held stay whatever the budget says.
///
/// *Shared* by all columns of a program. Any thread.
namespace plotix {

class PagedMemory;

class PageCache {
public:
    static constexpr std::size_t kDefaultBudget = std::size_t{256} << 20;  ///< bytes

    explicit PageCache(std::size_t budget = kDefaultBudget) : m_budget(budget) {}
    ~PageCache();
    PageCache(const PageCache&) = delete;
    PageCache& operator=(const PageCache&) = delete;

    void setBudget(std::size_t bytes);
    std::size_t budget() const;
    /// Bytes of the pages in memory, those that are held included.
    std::size_t inUse() const;

private:
    friend class PagedMemory;

    /// A page of some memory. While it is filled and nobody holds it, it stands in the list of those that may go.
    struct Page {
        enum class State : unsigned char { Absent, BeingFilled, Filled, StandIn };
        PagedMemory* owner = nullptr;
        Page* before = nullptr;
        Page* after = nullptr;
        std::size_t index = 0;
        unsigned holds = 0;
        State state = State::Absent;
        bool couldBeRead = true;  // when it was filled last
    };
    // All of these with the mutex held.
    void append(Page& page);
    void takeOut(Page& page);
    void letGo(Page& page);
    void keepBudget();
    std::size_t beginFilling(std::size_t shares);
    void endFilling(std::size_t helpers);

    mutable std::mutex m_mutex;
    std::condition_variable m_filled;
    std::size_t m_budget;
    std::size_t m_inUse = 0;
    std::size_t m_filling = 0;  // threads
    Page* m_oldest = nullptr;
    Page* m_newest = nullptr;
};

}  // namespace plotix
