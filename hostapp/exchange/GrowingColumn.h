#pragma once

#include "base/LargeMemory.h"
#include "base/SharedArray.h"

#include <algorithm>
#include <cstddef>

/// Collects doubles one after the other, in memory for long columns, and then shares them. One thread.
namespace plotix {

class GrowingColumn {
public:
    std::size_t size() const { return m_size; }
    const double* data() const { return m_data.get(); }
    double operator[](std::size_t index) const { return m_data.get()[index]; }

    void set(std::size_t index, double value) { m_data.get()[index] = value; }

    void push_back(double value)
    {
        if (m_size == m_room)
            makeRoom(std::max<std::size_t>(kLeastRoom, m_room * 2));
        m_data.get()[m_size++] = value;
    }

    /// Makes room for `count` elements in all; never shrinks.
    void makeRoom(std::size_t count)
    {
        if (count <= m_room)
            return;
        const std::shared_ptr<double> longer = unsetArray<double>(count);
        std::copy_n(data(), m_size, longer.get());
        m_data = longer;
        m_room = count;
    }

    /// Hands the values out and leaves the column empty.
    SharedArray<double> take()
    {
        SharedArray<double> taken(std::move(m_data), m_size);
        *this = {};
        return taken;
    }

private:
    static constexpr std::size_t kLeastRoom = 1024;

    std::shared_ptr<double> m_data;
    std::size_t m_size = 0;
    std::size_t m_room = 0;
};

}  // namespace plotix
