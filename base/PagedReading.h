#pragma once

#include "base/PagedArray.h"
#include "base/ValidityBitmap.h"

#include <algorithm>

/// Three ways to read what may be paged: stretch by stretch; once, without keeping it; and value by value where the
/// next one is mostly near.
///
/// What is in memory for good is read at the speed of an array. Any thread.
namespace plotix {

/// Calls `read(first, end)` for stretches of the elements [first, end), in order, each held while it is read. They
/// begin at multiples of PagedMemory::kPage, but for the first. `Column` has isResident() and hold(first, end).
template <class Column, class Read>
void inStretches(const Column& column, std::size_t first, std::size_t end, Read read)
{
    while (first < end) {
        const std::size_t stretchEnd =
            column.isResident() ? end : std::min(end, (first / PagedMemory::kPage + 1) * PagedMemory::kPage);
        const auto held = column.hold(first, stretchEnd);
        read(first, stretchEnd);
        first = stretchEnd;
    }
}

/// Shows elements [first, end) of a column once and in order, each piece while `show` runs: those whose pages are in
/// memory from there, others without entering them where their memory can do so (see PagedMemory::readPast), else held
/// stretch by stretch. False: some stand in for what could not be read. Requires: first is a multiple of 64, and there
/// are values and bits up to `end`.
bool inPieces(const PagedArray<double>& values, const ValidityBitmap& validity, std::size_t first, std::size_t end,
              const PagedMemory::Show& show);

/// Reads single values, and holds the page of the last one. *Shares* the array, which has an entry for each element.
/// One thread at a time.
template <class T>
class PagedReader {
public:
    explicit PagedReader(PagedArray<T> array)
        : m_array(std::move(array)), m_end(m_array.isResident() ? m_array.size() : 0)
    {
    }

    std::size_t size() const { return m_array.size(); }
    /// Requires: index < size().
    T operator[](std::size_t index) const
    {
        if (index < m_first || index >= m_end)
            moveTo(index);
        return m_array[index];
    }

private:
    void moveTo(std::size_t index) const
    {
        m_first = index / PagedMemory::kPage * PagedMemory::kPage;
        m_end = std::min(m_array.size(), m_first + PagedMemory::kPage);
        m_held = m_array.hold(m_first, m_end);
    }

    PagedArray<T> m_array;
    mutable std::size_t m_first = 0, m_end = 0;  // what is held
    mutable PagedMemory::Hold m_held;
};

}  // namespace plotix
