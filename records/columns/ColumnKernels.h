#pragma once

#include <cstddef>
#include <cstdint>

/// The inner loops over columns: packing whole numbers into as few bits as they need, and summing up values.
///
/// Numbers are packed in runs of 512, as 64 rows of 8. Each of the 8 positions in a row has its own stream of bits,
/// made of 64-bit words; the streams' first words come one after the other, then their second words, and so on. So a
/// row is read with the same shifts at all positions, and a run of numbers of `width` bits takes 64 × width bytes.
///
/// Compiled for several processors, chosen at run time (see base/vectors); all give the same bits. Pure; any thread.
/// Bytes may be at any address.
namespace plotix {

namespace codec {

/// Where elements go: what is looked at next, into the processor's caches; of columns longer than these, past them,
/// which spares it reading the memory first that it is going to overwrite.
enum class Into { Caches, Memory };

}  // namespace codec

struct ColumnKernels {
    static constexpr std::size_t kRun = 512;  ///< numbers in a run
    static constexpr std::size_t kRow = 8;    ///< numbers in a row
    static constexpr std::size_t kMask = kRun / 64;

    /// Element i of a run is base + i × slope + its packed number, modulo 2^64.
    struct Packed {
        const std::byte* words = nullptr;  ///< 64 × max(width, 1) bytes are read
        std::uint64_t width = 0;           ///< bits, 0 to 64
        std::uint64_t base = 0, slope = 0;
    };

    /// How a whole number becomes a value. Powers of ten up to 10^22 are doubles without error.
    struct Scale {
        double up = 1;    ///< 10^digits
        double down = 1;  ///< the double nearest to 10^-digits
    };

    /// A double's bits as a number: without its trailing zeros, and with the sign as the last bit where signs are
    /// mixed.
    struct Pattern {
        std::uint64_t zeros = 0;  ///< 0 to 63
        bool isMixed = false;
    };

    struct Range {
        std::int64_t lowest = 0, highest = 0;
    };

    /// Sum and extremes of up to kRun values; NaN and invalid ones are left out.
    struct Sum {
        std::uint64_t count = 0;
        double minimum = 0, maximum = 0;  ///< +infinity and -infinity when count is 0
        double sum = 0;
    };

    /// Where kRun values have their extremes, and their sum without rounding, as two parts.
    struct Details {
        std::size_t leastAt = kRun, greatestAt = kRun;  ///< the first of those that are equal
        double high = 0, low = 0;                       ///< of the sum
        bool isExact = false;                           ///< false: the values do not fit into two parts
    };

    /// number ÷ scale.up, correctly rounded: the double nearest to that decimal. Exact for numbers up to ±2^51.
    void (*quotients)(const Packed& run, const Scale& scale, double* values);
    /// number × scale.down. Exact for numbers up to ±2^51.
    void (*products)(const Packed& run, const Scale& scale, double* values);
    void (*patterns)(const Packed& run, const Pattern& pattern, double* values);

    /// Writes `filler` over the values whose bit is not set.
    void (*blank)(const std::uint64_t* bits, double filler, double* values);

    /// Copies kRun values to memory that is not looked at soon. Other threads see them after endPuttingPast().
    void (*putPastCaches)(const double* values, double* to);
    void (*endPuttingPast)();

    /// The numbers for kRun values; `exact` (kMask words) tells which of them give back their value bit for bit.
    void (*asQuotients)(const double* values, const Scale& scale, std::uint64_t* numbers, std::uint64_t* exact);
    void (*asProducts)(const double* values, const Scale& scale, std::uint64_t* numbers, std::uint64_t* exact);

    /// Extremes of number - origin - i × slope over a run, as signed numbers.
    Range (*range)(const std::uint64_t* numbers, std::uint64_t origin, std::uint64_t slope);

    /// Packs the first `rows` rows of number - base - i × slope. Writes 64 × ⌈rows × width ÷ 64⌉ bytes.
    /// Requires: all of them below 2^width.
    void (*pack)(const std::uint64_t* numbers, std::uint64_t base, std::uint64_t slope, std::uint64_t width,
                 std::size_t rows, std::byte* words);

    /// Sums kRun valid values without a NaN among them; with one, the sum is NaN and the rest undefined. Sixteen
    /// running sums, added in pairs.
    Sum (*sumOfAll)(const double* values);
    /// The same for the values whose bit is set and that are not NaN, added in the same order.
    Sum (*sumOfSome)(const double* values, const std::uint64_t* bits);

    /// Of the values whose bit is set and that are not NaN. `sum`: of the same values; its count is not 0.
    Details (*details)(const double* values, const std::uint64_t* bits, const Sum& sum);

    /// The fastest this processor runs. Alive as long as the program.
    static const ColumnKernels& best();
};

}  // namespace plotix
