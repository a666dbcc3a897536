#include "base/LargeMemory.h"

#include <sys/mman.h>

#include <cstdint>
#include <cstdlib>
#include <new>

namespace plotix {

namespace {

constexpr std::size_t kHugePage = std::size_t{2} << 20;
/// Shorter columns would waste more of their last huge page than they gain.
constexpr std::size_t kLeastMapped = 4 * kHugePage;

}  // namespace

std::shared_ptr<void> zeroedMemory(std::size_t bytes)
{
    if (bytes == 0)
        return nullptr;
    if (bytes < kLeastMapped) {
        void* memory = std::calloc(bytes, 1);
        if (memory == nullptr)
            throw std::bad_alloc();
        return {memory, [](void* freed) { std::free(freed); }};
    }
    const std::size_t mapped = bytes + kHugePage;  // so that an aligned beginning lies inside
    void* memory = mmap(nullptr, mapped, PROT_READ | PROT_WRITE, MAP_PRIVATE | MAP_ANONYMOUS, -1, 0);
    if (memory == MAP_FAILED)
        throw std::bad_alloc();
    const auto place = reinterpret_cast<std::uintptr_t>(memory);
    const std::uintptr_t aligned = (place + kHugePage - 1) / kHugePage * kHugePage;
    void* start = static_cast<std::byte*>(memory) + (aligned - place);
    madvise(start, bytes, MADV_HUGEPAGE);  // where it is refused, small pages serve
    return {start, [memory, mapped](void*) { munmap(memory, mapped); }};
}

}  // namespace plotix
