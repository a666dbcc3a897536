#pragma once

#include "records/columns/ColumnFormat.h"
#include "records/columns/ColumnIndex.h"

#include <array>
#include <optional>
#include <span>
#include <vector>

/// A column's index as bytes and back, each with its checksum. `docs/formats.md` has the grammar.
///
/// Reading never trusts the bytes: what does not fit together, or whose checksum is another one, is nothing. Pure
/// functions; any thread.
namespace plotix::indexcodec {

/// Whose index it is.
struct Owner {
    std::uint64_t property = 0;
    std::size_t count = 0;  ///< elements of the column
};

/// What is said of the whole column beside its summary, whose extremes and count it leaves out. `hasRuns`: its runs are
/// stored too.
std::vector<std::byte> writtenWhole(const ColumnIndex& index, const Summary& summary, bool hasRuns, const Owner& owner);

/// Bytes that it mostly takes.
inline constexpr std::size_t kUsualWhole = 48;

/// What is said of a whole column, its sum still as it is written. Borrows the bytes.
struct WholeFigures {
    RunFigures figures;
    bool hasRuns = false;
    std::size_t sumAt = 0;
    std::span<const std::byte> sum;

    void addSumTo(ExactTotal& total) const;
};
std::optional<WholeFigures> readFigures(std::span<const std::byte> bytes, const Summary& summary, const Owner& owner);

struct Whole {
    ColumnIndex index;  ///< without runs
    bool hasRuns = false;
};
std::optional<Whole> readWhole(std::span<const std::byte> bytes, const Summary& summary, const Owner& owner);

/// Whether the checksum is that of the bytes and the summary.
bool isIntact(std::span<const std::byte> bytes, const Summary& summary, const Owner& owner);

/// The runs, as short as `limit` bytes allow: of 512 elements, of 1024, … Empty when a column is too short for two of
/// them, or they need more bytes however long they are. `packed`: how the column's values are, which tells what is
/// worth trying for a few of them.
std::vector<std::byte> writtenRuns(const ColumnIndex& index, schema::Codec packed, std::size_t limit,
                                   const Owner& owner);

/// Adds the runs to the index of the whole column; false leaves it as it was.
bool readRuns(std::span<const std::byte> bytes, const Owner& owner, ColumnIndex& index);

/// Of the runs only what stays in memory while columns are looked at; see ValueRuns. Room for the runs of any chunk.
struct RunExtremes {
    static constexpr std::size_t kMost = 32;
    std::size_t runLength = 0;  ///< elements
    std::size_t runs = 0;
    std::array<double, kMost> least, greatest, first;
};
/// The same bytes as readRuns, in a fraction of the time. False leaves no runs.
bool readExtremes(std::span<const std::byte> bytes, const Owner& owner, RunExtremes& extremes);

/// Times of the runs. Empty for less than two runs.
std::vector<std::byte> writtenTimes(const RunTimes& times, const Owner& owner);
std::optional<RunTimes> readTimes(std::span<const std::byte> bytes, const Owner& owner);

}  // namespace plotix::indexcodec
