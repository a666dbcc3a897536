#pragma once

#include <cstddef>
#include <cstdint>
#include <span>
#include <vector>

/// Checksums of what is stored, so that a bit that changed on a disk is found before it counts as a value: XXH3 of 64
/// bits, at the fastest this processor has. Stored: never change. `docs/formats.md` says of which bytes.
///
/// Pure functions; any thread.
namespace plotix::checksum {

inline constexpr std::size_t kBytes = 8;

/// Of bytes that follow others, whose checksum is `before`; 0: none.
std::uint64_t of(std::span<const std::byte> bytes, std::uint64_t before = 0);

/// Of whole numbers of 64 bits, little endian.
std::uint64_t of(std::span<const std::uint64_t> numbers, std::uint64_t before = 0);

/// Puts a checksum behind bytes.
void append(std::vector<std::byte>& bytes, std::uint64_t sum);

/// Puts the checksum of the bytes behind them.
void seal(std::vector<std::byte>& bytes, std::uint64_t before);

/// Whether the last kBytes are the checksum of those in front.
bool isIntact(std::span<const std::byte> sealed, std::uint64_t before);

/// The bytes without their checksum. Requires: they are sealed.
inline std::span<const std::byte> withoutSeal(std::span<const std::byte> sealed)
{
    return sealed.first(sealed.size() - kBytes);
}

/// What the checksum of a packed column goes on from: whose column it is. `valid`: its bytes of validity; empty where
/// all elements are valid.
std::uint64_t ofColumnHead(std::uint64_t property, std::uint64_t count, int codec, std::span<const std::byte> valid);

}  // namespace plotix::checksum
