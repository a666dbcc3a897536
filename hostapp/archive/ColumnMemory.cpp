#include "hostapp/archive/ColumnMemory.h"

#include <cstdlib>
#include <new>
#include <sys/mman.h>

namespace plotix {

namespace {

constexpr std::size_t kHugePage = std::size_t{2} << 20;

}  // namespace

std::shared_ptr<void> allocateColumnBytes(std::size_t bytes)
{
    if (bytes == 0)
        return {};
    const bool large = bytes >= 2 * kHugePage;
    const std::size_t alignment = large ? kHugePage : 64;
    const std::size_t size = (bytes + alignment - 1) / alignment * alignment;
    void* memory = std::aligned_alloc(alignment, size);
    if (!memory)
        throw std::bad_alloc();
    if (large)
        madvise(memory, size, MADV_HUGEPAGE);  // advice only: without it the same bytes, slower
    return std::shared_ptr<void>(memory, &std::free);
}

}  // namespace plotix
