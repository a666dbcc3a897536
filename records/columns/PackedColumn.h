#pragma once

#include "records/columns/ColumnFormat.h"
#include "records/columns/ColumnKernels.h"

#include <algorithm>
#include <array>
#include <optional>
#include <span>
#include <vector>

/// A chunk's column as whole numbers in runs of 512, each as wide as it needs, plus the few elements that no such
/// number can stand for. `docs/formats.md` has the grammar; this is its reading side and the header both sides share.
///
/// Borrows the bytes it was read from. Pure; any thread.
namespace plotix {

class PackedColumn {
public:
    static constexpr std::size_t kRuns = schema::kRecordsPerChunk / ColumnKernels::kRun;
    static constexpr unsigned kMostDigits = 9;

    enum Flag : std::uint8_t {
        kAbsentWhereInvalid = 1,  ///< elements that are not valid read as absentValue() unless patched
        kHasSlopes = 2,
    };
    static constexpr std::uint8_t kMixedSigns = 0x80;  ///< in a run's form; the rest is the count of zeros left out

    struct Header {
        std::uint8_t digits = 0;  ///< of the decimal fraction
        std::uint8_t flags = 0;
        std::uint16_t patches = 0;
        std::uint16_t negativeZeros = 0;  ///< −0.0, from decimals rounded to zero from below: often in frost
        std::uint16_t entries = 0;        ///< of the table; the packed numbers are indexes into it
    };
    static_assert(sizeof(Header) == 8);
    static constexpr std::size_t kMostEntries = 1024;

    struct Run {
        std::uint64_t base = 0, slope = 0;
        std::uint8_t width = 0;
        std::uint8_t form = 0;
    };

    static bool isPacked(int codec);

    /// Runs a column of `count` elements has, elements in its run `index`, bytes of their packed numbers.
    static std::size_t runsOf(std::size_t count) { return (count + ColumnKernels::kRun - 1) / ColumnKernels::kRun; }
    static std::size_t elementsOf(std::size_t count, std::size_t index)
    {
        return std::min(count - index * ColumnKernels::kRun, ColumnKernels::kRun);
    }
    static std::size_t bytesOf(std::size_t elements, std::size_t width)
    {
        const std::size_t rows = (elements + ColumnKernels::kRow - 1) / ColumnKernels::kRow;
        return (rows * width + 63) / 64 * ColumnKernels::kRow * sizeof(double);
    }

    static std::size_t headerBytes(schema::Codec codec, std::size_t runs, std::uint8_t flags);
    /// What follows the packed numbers: positions of negative zeros, positions of patches, their values,
    /// the table.
    static std::size_t trailerBytes(const Header& header);
    static ColumnKernels::Scale scaleOf(unsigned digits);

    /// Writes the header's part of the bytes. Requires: room for headerBytes().
    static void writeHeader(schema::Codec codec, const Header& header, std::span<const Run> runs, std::byte* to);

    /// Nothing when lengths and limits do not fit each other.
    static std::optional<PackedColumn> read(int codec, std::span<const std::byte> bytes, std::size_t count);

    /// Elements [first, first + target.size()); `valid` is the chunk's, from bit 0, null: every element.
    void decode(const std::uint64_t* valid, std::size_t first, std::span<double> target,
                codec::Into into = codec::Into::Caches, const ColumnKernels& kernels = ColumnKernels::best()) const;

    /// Elements that their packed number does not stand for.
    std::size_t exceptions() const { return std::size_t{m_header.negativeZeros} + m_header.patches; }

private:
    void decodeRun(std::size_t index, const std::uint64_t* valid, double* values, const ColumnKernels& kernels) const;
    void lookUp(double* values) const;
    void unpackRun(std::size_t index, double* values, const ColumnKernels& kernels) const;
    void patch(std::size_t first, std::span<double> target) const;

    schema::Codec m_codec = schema::Codec::Raw;
    Header m_header;
    std::size_t m_count = 0;
    std::array<Run, kRuns> m_runs;
    std::array<const std::byte*, kRuns> m_words{};
    const std::byte* m_patches = nullptr;
};

}  // namespace plotix
