#pragma once

#include <bit>
#include <cstddef>
#include <cstdint>
#include <cstring>

/// Copies validity bits between bitmaps at any bit position: one bit an element, least significant first.
///
/// Free functions over words the caller owns; any thread. Other bits stay as they are. A null source means "all valid".
namespace plotix::bits {

static_assert(std::endian::native == std::endian::little, "stored columns are little-endian and copied as they are");

constexpr std::size_t wordsFor(std::size_t count)
{
    return (count + 63) / 64;
}

/// The `count` lowest bits set. Requires: count ≤ 64.
constexpr std::uint64_t mask(std::size_t count)
{
    return count >= 64 ? ~std::uint64_t{0} : (std::uint64_t{1} << count) - 1;
}

/// `count` bits from position `first`. Requires: 1 ≤ count ≤ 64.
inline std::uint64_t get(const std::uint64_t* words, std::size_t first, std::size_t count)
{
    if (!words)
        return mask(count);
    const std::size_t word = first / 64, shift = first % 64;
    std::uint64_t value = words[word] >> shift;
    if (shift + count > 64)
        value |= words[word + 1] << (64 - shift);
    return value & mask(count);
}

/// Writes `count` bits at position `first`. Requires: 1 ≤ count ≤ 64.
inline void put(std::uint64_t* words, std::size_t first, std::size_t count, std::uint64_t value)
{
    const std::size_t word = first / 64, shift = first % 64;
    value &= mask(count);
    words[word] = (words[word] & ~(mask(count) << shift)) | (value << shift);
    if (shift + count > 64) {
        const std::size_t done = 64 - shift;
        words[word + 1] = (words[word + 1] & ~mask(count - done)) | (value >> done);
    }
}

inline void copy(const std::uint64_t* from, std::size_t fromFirst, std::uint64_t* to, std::size_t toFirst,
                 std::size_t count)
{
    for (std::size_t done = 0; done < count; done += 64) {
        const std::size_t part = count - done < 64 ? count - done : 64;
        put(to, toFirst + done, part, get(from, fromFirst + done, part));
    }
}

inline void clear(std::uint64_t* words, std::size_t first, std::size_t count)
{
    for (std::size_t done = 0; done < count; done += 64)
        put(words, first + done, count - done < 64 ? count - done : 64, 0);
}

inline bool allSet(const std::uint64_t* words, std::size_t first, std::size_t count)
{
    for (std::size_t done = 0; words && done < count; done += 64) {
        const std::size_t part = count - done < 64 ? count - done : 64;
        if (get(words, first + done, part) != mask(part))
            return false;
    }
    return true;
}

}  // namespace plotix::bits
