#pragma once

#include <algorithm>
#include <cstddef>
#include <cstring>
#include <memory>
#include <type_traits>
#include <utility>

/// A window of numbers that moves along an endless row: numbers that stay in the window stay where they are in memory,
/// so that a small step costs next to nothing. Edges and bins *own* theirs; one thread at a time.
namespace plotkit {

template <class Number>
class SlidingRow {
public:
    /// Numbers beyond the window's end that may be read and written, whatever they are.
    static constexpr std::size_t kPadding = 16;

    Number* data() { return m_numbers.get() + m_offset; }
    const Number* data() const { return m_numbers.get() + m_offset; }
    std::size_t size() const { return m_count; }

    /// Moves the window `by` numbers forward and makes it `count` numbers long. Numbers that were not in the window
    /// before are undefined.
    void slide(std::ptrdiff_t by, std::size_t count)
    {
        const std::ptrdiff_t start = static_cast<std::ptrdiff_t>(m_offset) + by;
        const auto room = static_cast<std::ptrdiff_t>(m_room);
        const auto needed = static_cast<std::ptrdiff_t>(count + kPadding);
        const bool staysNone = by >= static_cast<std::ptrdiff_t>(m_count) || -by >= static_cast<std::ptrdiff_t>(count);
        if (staysNone || start < 0 || start + needed > room)
            move(by, count);
        else
            m_offset = static_cast<std::size_t>(start);
        m_count = count;
    }

private:
    void move(std::ptrdiff_t by, std::size_t count)
    {
        const auto old = static_cast<std::ptrdiff_t>(m_count);
        const std::ptrdiff_t first = std::clamp<std::ptrdiff_t>(by, 0, old);  // of those that stay, in the old window
        const std::ptrdiff_t last = std::clamp<std::ptrdiff_t>(by + static_cast<std::ptrdiff_t>(count), first, old);
        const Number* const kept = data();
        std::unique_ptr<Number[]> before;
        if (const std::size_t wanted = 2 * count + kPadding; m_room < wanted) {
            before = std::exchange(m_numbers, std::make_unique_for_overwrite<Number[]>(wanted));
            m_room = wanted;
        }
        m_offset = (m_room - count - kPadding) / 2;
        if (first < last)
            std::memmove(data() + (first - by), kept + first, static_cast<std::size_t>(last - first) * sizeof(Number));
    }

    static_assert(std::is_trivially_copyable_v<Number>);

    std::unique_ptr<Number[]> m_numbers;  // undefined but for the window: nobody pays for clearing them
    std::size_t m_room = 0;
    std::size_t m_offset = 0;
    std::size_t m_count = 0;
};

}  // namespace plotkit
