#pragma once

#include <QtCore/QtEndian>

#include <algorithm>
#include <bit>
#include <cstdint>

/// Searches in bytes, eight at a time. Pure; any thread.
namespace plotix {

/// How many bytes after `end` a search may read.
constexpr std::size_t kFindReach = 8;

/// The highest bit of each byte that is 0, and perhaps of bytes above the first such one. Mycroft's test.
inline std::uint64_t zeroBytes(std::uint64_t word)
{
    return (word - 0x0101010101010101U) & ~word & 0x8080808080808080U;
}

/// The first place where either character stands, or `end`.
inline const char* findEither(const char* cursor, const char* end, char one, char other)
{
    constexpr std::uint64_t kEightTimes = 0x0101010101010101U;
    const std::uint64_t ones = kEightTimes * static_cast<unsigned char>(one);
    const std::uint64_t others = kEightTimes * static_cast<unsigned char>(other);
    for (; cursor < end; cursor += sizeof(std::uint64_t)) {
        const auto word = qFromLittleEndian<std::uint64_t>(cursor);
        if (const std::uint64_t found = zeroBytes(word ^ ones) | zeroBytes(word ^ others))
            return std::min(end, cursor + std::countr_zero(found) / 8);
    }
    return end;
}

}  // namespace plotix
