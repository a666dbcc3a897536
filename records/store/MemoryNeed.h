#pragma once

#include "records/store/RecordBlock.h"

#include <cstdint>
#include <optional>

/// How much memory the records of one plotted range take, known before any of them is read.
///
/// Pure values and free functions; any thread. Sizes are in bytes, lengths of time in seconds.
namespace plotix {

/// What one record of a plotted range costs in all: its time, and for each property the archived value, the plotted
/// one, their validity and the index that drawing needs.
constexpr std::uint64_t bytesPerRecord(std::size_t properties)
{
    return 8 + 13 * static_cast<std::uint64_t>(properties);
}

/// What is to be read: the part of the overview's runs that lies in [from, to]. Absent bounds are open.
struct ReadRequest {
    const RecordOverview& overview;  ///< borrowed; of that range
    std::size_t properties = 0;
    std::optional<double> from, to;
};

/// About how many records lie in the range. A run that the range cuts counts by the share of its time in the range.
std::uint64_t estimatedRecords(const ReadRequest& request);

/// A request that does not fit.
struct MemoryShortage {
    std::size_t properties = 0;
    std::uint64_t needed = 0, budget = 0;  ///< bytes; needed > budget
    double length = 0;                     ///< seconds from the first record in the range to its end
    double fittingLength = 0;              ///< of the longest range with the same end that fits
};

/// Nothing when the request fits into `budget` bytes.
std::optional<MemoryShortage> shortageOf(const ReadRequest& request, std::uint64_t budget);

}  // namespace plotix
