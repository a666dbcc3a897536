#pragma once

#include "records/columns/ColumnFormat.h"
#include "records/columns/ColumnKernels.h"

#include <cstddef>
#include <cstdint>
#include <functional>
#include <span>
#include <vector>

/// Writes a chunk's column in as few bytes as its values allow and reads it back bit for bit: every double, -0.0, NaN
/// payloads, infinities and denormals included. `docs/formats.md` has the grammar.
///
/// Pure functions; any thread.
namespace plotix::codec {

struct Encoded {
    schema::Codec codec = schema::Codec::Raw;
    std::vector<std::byte> bytes;
};

/// The most compact codec whose result reads back equal. `valid` (null: every element) begins at bit `firstValid`; it
/// only hints which elements need not fit the pattern; their bits are kept too.
Encoded encodedValues(std::span<const double> values, const std::uint64_t* valid = nullptr, std::size_t firstValid = 0);

/// One after the other, as they are.
Encoded plainValues(std::span<const double> values);

/// The most compact codec for strictly ascending times.
Encoded encodedTimes(std::span<const double> times);

/// Elements [first, first + target.size()) of a column of `count`. `valid` is the chunk's words as they were given to
/// encodedValues, from bit 0; null: every element. False when the bytes do not fit the codec; the target is then
/// undefined. Never reads outside `bytes`, whatever they hold.
/// Requires: first + target.size() ≤ count ≤ kRecordsPerChunk.
bool decode(int codec, std::span<const std::byte> bytes, std::size_t count, const std::uint64_t* valid,
            std::size_t first, std::span<double> target, Into into = Into::Caches);

/// The same elements, handed to `take` in pieces of kPiece, the last of which may be shorter: each is looked at while
/// it is in the nearest cache. Each piece is valid during its call.
inline constexpr std::size_t kPiece = 2048;
using TakePiece = std::function<void(std::span<const double> piece)>;
bool decodeInPieces(int codec, std::span<const std::byte> bytes, std::size_t count, const std::uint64_t* valid,
                    std::size_t first, std::size_t elements, const TakePiece& take);

}  // namespace plotix::codec
