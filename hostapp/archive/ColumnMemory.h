#pragma once

#include <cstddef>
#include <memory>

/// Memory for result columns: unset, shared, and in huge pages where it is large, since fresh small pages cost several
/// times the copy itself. Any thread. Throws std::bad_alloc.
namespace plotix {

/// Zero bytes answer a null pointer.
std::shared_ptr<void> allocateColumnBytes(std::size_t bytes);

template <class T>
std::shared_ptr<T> allocateColumn(std::size_t count)
{
    return std::static_pointer_cast<T>(allocateColumnBytes(count * sizeof(T)));
}

}  // namespace plotix
