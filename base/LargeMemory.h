#pragma once

#include <cstddef>
#include <memory>
#include <type_traits>

/// Memory for long columns: in huge pages where the system has them, which are filled several times faster than small
/// ones. Any thread.
namespace plotix {

/// Zeroed bytes, aligned for every number; freed with the last owner. Throws std::bad_alloc when there is no room.
/// Zero bytes answer null.
std::shared_ptr<void> zeroedMemory(std::size_t bytes);

/// `count` zeros.
template <class T>
std::shared_ptr<T> zeroedArray(std::size_t count)
{
    static_assert(std::is_arithmetic_v<T>);
    return std::static_pointer_cast<T>(zeroedMemory(count * sizeof(T)));
}

}  // namespace plotix
