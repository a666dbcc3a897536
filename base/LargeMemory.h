#pragma once

#include <cstddef>
#include <memory>
#include <type_traits>

/// Memory for long columns: in huge pages where the system has them, which are filled several times faster than small
/// ones. Any thread.
///
/// Freed large pieces are kept for reuse, up to an eighth of the machine's memory: a page that was in use before costs
/// nothing extra to fill, a fresh one more than the filling itself. The system may take kept pages back at any time,
/// without swapping.
namespace plotix {

/// Uninitialised bytes, aligned to 64; freed with the last owner. Throws std::bad_alloc when there is no room. Zero
/// bytes answer null.
std::shared_ptr<void> unsetMemory(std::size_t bytes);

/// `count` uninitialised numbers: a column that is filled completely needs no zeros first.
template <class T>
std::shared_ptr<T> unsetArray(std::size_t count)
{
    static_assert(std::is_arithmetic_v<T>);
    return std::static_pointer_cast<T>(unsetMemory(count * sizeof(T)));
}

}  // namespace plotix
