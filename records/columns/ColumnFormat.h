#pragma once

#include <cstddef>

/// What all stores of packed columns share: how long a chunk is, and how a column may be written.
/// Stored: never change. `docs/formats.md` has the whole layout.
namespace plotix::schema {

/// The most records of one agent that are packed together.
inline constexpr std::size_t kRecordsPerChunk = 16384;

/// How a segment's values are written.
enum class Codec : int {
    Raw = 0,       ///< little-endian doubles, one after the other
    Constant = 1,  ///< one double, the value of all elements
    Decimal = 2,   ///< packed whole numbers ÷ a power of ten
    Product = 3,   ///< packed whole numbers × the double nearest to a power of ten below one
    Pattern = 4,   ///< packed bits of the doubles
    Table = 5,     ///< packed indexes into a list of the doubles that occur
};

}  // namespace plotix::schema
