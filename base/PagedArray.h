#pragma once

#include "base/PagedMemory.h"
#include "base/SharedArray.h"

#include <algorithm>
#include <cassert>
#include <span>

/// Immutable values of a column at fixed addresses: all of them in memory for good, or paged.
///
/// The array *shares* its memory. Reading requires that the elements are held (see PagedMemory); an array that is in
/// memory for good is held at no cost. Any thread may read; nobody writes.
namespace plotix {

template <class T>
class PagedArray {
public:
    PagedArray() = default;
    PagedArray(SharedArray<T> values) : m_data(values.shared()), m_size(values.size()) {}
    /// `data`: what `memory` reserved with an entry for so many elements. `size`: entries.
    PagedArray(const std::shared_ptr<const PagedMemory>& memory, const T* data, std::size_t size,
               std::size_t elementsAnEntry = 1)
        : m_data(memory, data), m_memory(memory), m_size(size), m_elementsAnEntry(elementsAnEntry)
    {
    }

    std::size_t size() const { return m_size; }
    bool isEmpty() const { return m_size == 0; }
    /// Whether everything is in memory for good.
    bool isResident() const { return !m_memory; }

    /// Holds entries [first, end). Requires: first ≤ end ≤ size().
    PagedMemory::Hold hold(std::size_t first, std::size_t end) const
    {
        assert(first <= end && end <= m_size);
        return m_memory
                   ? m_memory->hold(first * m_elementsAnEntry, std::min(end * m_elementsAnEntry, m_memory->elements()))
                   : PagedMemory::Hold();
    }
    /// See PagedMemory. Requires: first ≤ end ≤ size().
    void expect(std::size_t first, std::size_t end) const
    {
        if (m_memory)
            m_memory->expect(first * m_elementsAnEntry, std::min(end * m_elementsAnEntry, m_memory->elements()));
    }
    PagedMemory::Hold holdAll() const { return hold(0, m_size); }
    /// All of it in memory for as long as the answer is kept: for whoever cannot read in stretches.
    SharedArray<T> allHeld() const
    {
        if (isResident())
            return SharedArray<T>(m_data, m_size);
        struct Held {
            std::shared_ptr<const T> data;
            PagedMemory::Hold hold;
        };
        const auto held = std::make_shared<const Held>(Held{m_data, holdAll()});
        return SharedArray<T>(std::shared_ptr<const T>(held, m_data.get()), m_size);
    }

    /// One value, held as long as it takes. Requires: index < size().
    T valueAt(std::size_t index) const
    {
        const PagedMemory::Hold held = hold(index, index + 1);
        return m_data.get()[index];
    }

    const T* data() const { return m_data.get(); }
    std::span<const T> span() const { return {m_data.get(), m_size}; }
    /// Requires: index < size(), and held.
    const T& operator[](std::size_t index) const
    {
        assert(index < m_size);
        return m_data.get()[index];
    }

    /// Null where everything is in memory for good.
    const std::shared_ptr<const PagedMemory>& memory() const { return m_memory; }

    /// Becomes empty when the last owner lets go: tells these values from later ones at the same address.
    std::weak_ptr<const T> weak() const { return m_data; }

private:
    std::shared_ptr<const T> m_data;
    std::shared_ptr<const PagedMemory> m_memory;
    std::size_t m_size = 0;
    std::size_t m_elementsAnEntry = 1;
};

}  // namespace plotix
