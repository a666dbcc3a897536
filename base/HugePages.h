#pragma once

#include <cstddef>
#include <cstdint>
#include <span>

/// Address space that huge pages of the system fit into. Free functions; any thread.
namespace plotix {

inline constexpr std::size_t kHugePage = std::size_t{2} << 20;

constexpr std::uintptr_t roundedUp(std::uintptr_t place, std::size_t unit)
{
    return (place + unit - 1) / unit * unit;
}

/// Private memory that begins where a huge page would, for munmap; null where there is no room. `flags`: more ones for
/// mmap. Requires: whole pages of the system.
void* mapAligned(std::size_t bytes, int flags = 0);

/// The part of some memory that whole huge pages fit into; empty where none does.
std::span<std::byte> hugePartOf(void* start, std::size_t bytes);

/// Has the system put huge pages under memory that is about to be filled for the first time: in small ones it costs
/// several times as much as writing to it. Where the system refuses, small pages serve.
void preferHugePages(void* start, std::size_t bytes);

}  // namespace plotix
