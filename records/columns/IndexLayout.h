#pragma once

#include "records/columns/Checksum.h"
#include "records/columns/ColumnKernels.h"
#include "records/columns/IndexCodec.h"

#include <algorithm>
#include <limits>

/// How the runs of an index begin, for those who write and read them. Stored: never change. Inner part of IndexCodec.
namespace plotix::indexcodec {

inline constexpr std::size_t kRun = ColumnKernels::kRun;
inline constexpr unsigned kRunBits = 9;
inline constexpr unsigned kMostDoublings = 5;  // then a run is a chunk
static_assert((std::size_t{1} << kRunBits) == kRun && (kRun << kMostDoublings) == schema::kRecordsPerChunk);
inline constexpr double kInfinity = std::numeric_limits<double>::infinity();

enum RunFlag : std::uint8_t { kEveryElementCounts = 1, kTimesOfRuns = 2 };

struct RunHead {
    std::uint8_t doublings = 0;  // of a run's length
    std::uint8_t flags = 0;
    std::uint8_t codec = 0, codecBehind = 0;
    std::uint16_t bytes = 0, bytesBehind = 0;  // of packed columns
    std::uint16_t sumAt = 0, sumWidth = 0;
};
static_assert(sizeof(RunHead) == 12);

inline std::uint64_t checksumBefore(const Owner& owner)
{
    const std::uint64_t numbers[] = {owner.property, owner.count};
    return checksum::of(std::span<const std::uint64_t>(numbers));
}

inline std::size_t runsOf(std::size_t count, std::size_t runLength)
{
    return (count + runLength - 1) / runLength;
}

inline bool isPossible(const RunFigures& run, std::size_t length)
{
    return run.valid <= length &&
           (run.valid == 0 || std::max({run.first.at, run.last.at, run.least.at, run.greatest.at}) < length);
}

}  // namespace plotix::indexcodec
