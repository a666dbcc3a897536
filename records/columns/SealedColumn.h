#pragma once

#include "records/columns/Checksum.h"
#include "records/columns/ColumnCodec.h"

#include <optional>

/// A packed column as it is stored since version 7: its checksum stands behind its bytes, and 16 is added to its codec.
/// Those of earlier versions have none, which says nothing against them.
///
/// Pure functions; any thread.
namespace plotix::sealed {

/// Added to the codec of a column with a checksum. Stored: never change.
inline constexpr int kSealed = 16;

constexpr bool isSealed(int stored)
{
    return stored >= kSealed;
}

/// Whose column it is.
struct Owner {
    std::uint64_t property = 0;
    std::size_t count = 0;             ///< elements
    std::span<const std::byte> valid;  ///< as stored; empty: all
};

inline std::uint64_t checksumBefore(const Owner& owner, int codec)
{
    return checksum::ofColumnHead(owner.property, owner.count, codec, owner.valid);
}

/// Puts the checksum behind the bytes.
inline void seal(codec::Encoded& column, const Owner& owner)
{
    checksum::seal(column.bytes, checksumBefore(owner, static_cast<int>(column.codec)));
}

struct Opened {
    int codec = 0;
    std::span<const std::byte> bytes;
};

/// Nothing when the checksum is another one.
inline std::optional<Opened> opened(int stored, std::span<const std::byte> bytes, const Owner& owner)
{
    if (!isSealed(stored))
        return Opened{stored, bytes};
    const int codec = stored - kSealed;
    if (!checksum::isIntact(bytes, checksumBefore(owner, codec)))
        return std::nullopt;
    return Opened{codec, checksum::withoutSeal(bytes)};
}

}  // namespace plotix::sealed
