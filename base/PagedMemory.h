#pragma once

#include "base/PageCache.h"

#include <atomic>
#include <cstdint>
#include <functional>
#include <memory>
#include <optional>
#include <span>
#include <utility>
#include <vector>

/// Columns whose values lie at fixed addresses but are in memory only where somebody looks: a reservation of address
/// space, filled page by page from wherever the values are kept.
///
/// Columns that are filled together (values and their validity, say) belong to one memory. Whoever reads them *holds*
/// the elements it reads; outside what is held nothing may be read: there may be zeros, and under AddressSanitizer it
/// is an error. *Shared* by those who read. Any thread may hold and read.
namespace plotix {

class PagedMemory : public std::enable_shared_from_this<PagedMemory> {
public:
    static constexpr std::size_t kPage = 32768;  ///< elements

    virtual ~PagedMemory();
    PagedMemory(const PagedMemory&) = delete;
    PagedMemory& operator=(const PagedMemory&) = delete;

    /// Keeps elements in memory as long as it lives, and the memory too. Moved, not copied; any thread.
    class [[nodiscard]] Hold {
    public:
        Hold() = default;  ///< holds nothing
        Hold(Hold&& other) noexcept { swap(other); }
        Hold& operator=(Hold&& other) noexcept
        {
            Hold taken(std::move(other));
            swap(taken);
            return *this;
        }
        ~Hold();

    private:
        friend class PagedMemory;
        void swap(Hold& other) noexcept
        {
            std::swap(m_memory, other.m_memory);
            std::swap(m_first, other.m_first);
            std::swap(m_end, other.m_end);
        }
        std::shared_ptr<const PagedMemory> m_memory;
        std::size_t m_first = 0, m_end = 0;  // pages
    };

    /// Fills what is not in memory yet and waits for what other threads are filling. A page that cannot be read is held
    /// as its stand-in, and tried again when it is next looked at. Requires: first ≤ end ≤ elements().
    Hold hold(std::size_t first, std::size_t end) const;

    /// Holds the elements if they are in memory already; without waiting. False: `hold` is as it was.
    bool holdIfThere(std::size_t first, std::size_t end, Hold& hold) const;

    /// Values on their way past the pages, with their validity. *Borrowed* while they are shown.
    struct Piece {
        std::size_t first = 0;  ///< element; a multiple of 64
        std::span<const double> values;
        const std::uint64_t* valid = nullptr;  ///< a bit for each, from bit 0; null: all are valid
    };
    using Show = std::function<void(const Piece&)>;

    /// Shows elements [first, end) in order, unpacked into the nearest cache and not into pages: for whoever reads a
    /// column once (see inPieces). What could not be had is shown as what stands in for it, and the answer is false.
    /// Nothing: this memory is read through its pages alone. Requires: first is a multiple of 64.
    virtual std::optional<bool> readPast(std::size_t /*first*/, std::size_t /*end*/, const Show& /*show*/) const
    {
        return std::nullopt;
    }

    /// Elements [first, end) will be read soon, in this order: whoever has to fetch values from far away may fetch them
    /// together with the first of them. Any thread.
    virtual void expect(std::size_t /*first*/, std::size_t /*end*/) const {}

    /// How often elements were held of which some stand in for what could not be read.
    std::size_t standInsHeld() const { return m_standInsHeld; }

    /// How many pages could not be read when somebody looked at them last, whether or not they are in memory.
    std::size_t pagesUnread() const { return m_pagesUnread; }

    std::size_t elements() const { return m_elements; }
    const std::shared_ptr<PageCache>& cache() const { return m_cache; }

protected:
    /// *Shares* the cache.
    PagedMemory(std::shared_ptr<PageCache> cache, std::size_t elements);

    /// Address space for an array with an entry for so many elements (a divisor of kPage). Only while it is being
    /// constructed. Throws std::bad_alloc.
    template <class T>
    T* reserve(std::size_t elementsAnEntry = 1)
    {
        return static_cast<T*>(reserveBytes(sizeof(T), elementsAnEntry));
    }

    /// Writes elements [first, end) into all arrays: whole pages, but for the last one of the column. Many pages are
    /// shared out among several threads, which call this at once for different ones. False: the values could not be
    /// had, and what was written stands in for them.
    virtual bool fill(std::size_t first, std::size_t end) const noexcept = 0;

private:
    friend class PageCache;
    using State = PageCache::Page::State;
    struct Array {
        std::byte* start = nullptr;
        std::size_t pageBytes = 0;
        std::size_t mapped = 0;
    };
    void* reserveBytes(std::size_t entryBytes, std::size_t elementsAnEntry);
    void fillAbsent(std::size_t first, std::size_t end, std::unique_lock<std::mutex>& lock) const;
    void fillPages(std::size_t first, std::size_t end) const;
    void giveBack(std::size_t first, std::size_t end) const noexcept;  // pages
    void open(std::size_t first, std::size_t end) const;
    void release(std::size_t page) const;

    std::shared_ptr<PageCache> m_cache;
    std::size_t m_elements;
    std::size_t m_pageBytes = 0;
    std::vector<Array> m_arrays;
    mutable std::atomic<std::size_t> m_standInsHeld = 0;
    mutable std::atomic<std::size_t> m_pagesUnread = 0;
    mutable std::vector<PageCache::Page> m_pages;  // guarded by the cache's mutex
};

}  // namespace plotix
