#pragma once

#include <cassert>
#include <cstddef>
#include <memory>
#include <span>
#include <utility>
#include <vector>

/// Immutable contiguous values that several owners share without copying.
///
/// The array *shares* its memory: whoever holds it keeps it alive, whatever allocated it (a vector,
/// huge pages, a mapped file). Any thread may read; nobody writes.
namespace plotix {

template <class T>
class SharedArray {
public:
    SharedArray() = default;
    SharedArray(std::shared_ptr<const T> data, std::size_t size) : m_data(std::move(data)), m_size(size) {}

    static SharedArray fromVector(std::vector<T> values)
    {
        auto owner = std::make_shared<const std::vector<T>>(std::move(values));
        const std::size_t size = owner->size();
        return SharedArray(std::shared_ptr<const T>(owner, owner->data()), size);
    }

    std::size_t size() const { return m_size; }
    bool isEmpty() const { return m_size == 0; }
    const T* data() const { return m_data.get(); }
    std::span<const T> span() const { return {m_data.get(), m_size}; }

    const std::shared_ptr<const T>& shared() const { return m_data; }

    /// Becomes empty when the last owner lets go: tells these values from later ones at the same address.
    std::weak_ptr<const T> weak() const { return m_data; }

    /// Requires: index < size().
    const T& operator[](std::size_t index) const
    {
        assert(index < m_size);
        return m_data.get()[index];
    }

private:
    std::shared_ptr<const T> m_data;
    std::size_t m_size = 0;
};

}  // namespace plotix
