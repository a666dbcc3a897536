#pragma once

#include <cstddef>
#include <memory>
#include <type_traits>

/// Memory for long columns: in huge pages where the system has them, which are filled several times faster than small
/// ones. Any thread.
///
/// Large pieces that were freed are kept for the next who asks, up to an eighth of the machine's memory: pages that
/// were in use before cost nothing to fill, fresh ones more than the filling itself. The system may take kept pages
/// back at any time, without swapping.
namespace plotix {

/// Bytes that hold anything, aligned to 64; freed with the last owner. Throws std::bad_alloc when there is no room.
/// Zero bytes answer null.
std::shared_ptr<void> unsetMemory(std::size_t bytes);

/// `count` numbers that hold anything: whoever fills a column whole needs no zeros first.
template <class T>
std::shared_ptr<T> unsetArray(std::size_t count)
{
    static_assert(std::is_arithmetic_v<T>);
    return std::static_pointer_cast<T>(unsetMemory(count * sizeof(T)));
}

}  // namespace plotix
