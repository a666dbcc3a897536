#include "base/HugePages.h"

#include <sys/mman.h>

namespace plotix {

void* mapAligned(std::size_t bytes, int flags)
{
    const std::size_t mapped = bytes + kHugePage;  // so that an aligned beginning lies inside
    void* memory = mmap(nullptr, mapped, PROT_READ | PROT_WRITE, MAP_PRIVATE | MAP_ANONYMOUS | flags, -1, 0);
    if (memory == MAP_FAILED)
        return nullptr;
    const auto place = reinterpret_cast<std::uintptr_t>(memory);
    const std::size_t before = roundedUp(place, kHugePage) - place;
    auto* start = static_cast<std::byte*>(memory) + before;
    if (before > 0)
        munmap(memory, before);
    if (before < kHugePage)
        munmap(start + bytes, kHugePage - before);
    return start;
}

std::span<std::byte> hugePartOf(void* start, std::size_t bytes)
{
    const auto place = reinterpret_cast<std::uintptr_t>(start);
    const std::uintptr_t first = roundedUp(place, kHugePage), end = (place + bytes) / kHugePage * kHugePage;
    return first < end ? std::span(static_cast<std::byte*>(start) + (first - place), end - first)
                       : std::span<std::byte>();
}

void preferHugePages(void* start, std::size_t bytes)
{
    if (const std::span<std::byte> part = hugePartOf(start, bytes); !part.empty())
        madvise(part.data(), part.size(), MADV_HUGEPAGE);
}

}  // namespace plotix
