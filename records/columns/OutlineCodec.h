#pragma once

#include "base/ColumnRuns.h"
#include "records/columns/ColumnKernels.h"
#include "records/columns/ExactTotal.h"

#include <bit>
#include <optional>
#include <span>
#include <vector>

/// What frames need to know of a column over many successive chunks, as bytes and back: its extremes by runs of some
/// hundred elements, and what tables need of the whole. `docs/formats.md` has the grammar.
///
/// Reading never trusts the bytes: what does not fit together, or whose checksum is another one, is nothing. Pure
/// functions; any thread.
namespace plotix::outlinecodec {

/// How chunks are cut into runs: each one into runs of 512 × 2^doublings elements, the last of which may be shorter.
struct Cut {
    unsigned doublings = 0;            ///< 0 … 5
    std::vector<std::size_t> records;  ///< of each chunk

    std::size_t runLength() const { return ColumnKernels::kRun << doublings; }
    std::size_t runsOf(std::size_t chunk) const { return (records[chunk] + runLength() - 1) >> (kRunBits + doublings); }
    std::size_t runs() const;  ///< of all chunks
    /// With runs twice as long. Requires: doublings < 5.
    Cut coarser() const;

private:
    static constexpr unsigned kRunBits = std::countr_zero(ColumnKernels::kRun);
};

/// The most chunks together.
inline constexpr std::size_t kMostChunks = 64;
inline constexpr unsigned kMostDoublings = 5;

/// Whose column it is.
struct Owner {
    std::uint64_t property = 0;
    std::uint64_t firstChunk = 0;
};

/// What is known of the whole column.
struct Totals {
    std::size_t valid = 0;     ///< elements that are valid and no NaN
    ExactTotal sum;            ///< of these, with infinities
    std::vector<bool> absent;  ///< by chunk: there is no such column in it
};

/// Runs that take two of `fine` together, inside each chunk.
ValueRuns coarser(const ValueRuns& fine, const Cut& cut);

std::vector<std::byte> written(const ValueRuns& runs, const Totals& totals, const Cut& cut, const Owner& owner);
std::optional<Totals> readTotals(std::span<const std::byte> bytes, const Cut& cut, const Owner& owner);
/// Requires: readTotals answered something for these bytes. What does not fit all the same is NaN.
ValueRuns readRuns(std::span<const std::byte> bytes, const Cut& cut);

/// The least and the greatest of all runs, as one run without a first value; of equals the first one. NaN where the
/// extremes of a run are.
ValueRuns longRunOf(const ValueRuns& runs);
ValueRuns readLongRun(std::span<const std::byte> bytes, const Cut& cut);

/// The times of the first and of the last record of each run.
struct Times {
    std::vector<double> first, last;
    friend bool operator==(const Times&, const Times&) = default;
};
Times coarser(const Times& fine, const Cut& cut);
std::vector<std::byte> written(const Times& times, const Owner& owner);
std::optional<Times> readTimes(std::span<const std::byte> bytes, const Cut& cut, const Owner& owner);

}  // namespace plotix::outlinecodec
