#pragma once

#include "records/columns/PackedColumn.h"

/// The writing side of PackedColumn: finds the whole numbers behind a column's values and packs them.
///
/// Borrows the values and validity words. Pure; any thread, each with an encoder of its own, which has 130 kB: on the
/// stack they are warm for one column after the other, where fresh memory is cleared each time.
namespace plotix {

class PackedEncoder {
public:
    /// `valid` (null: every element) begins at bit `firstValid`. Requires: 1 ≤ values.size() ≤ kRecordsPerChunk.
    PackedEncoder(std::span<const double> values, const std::uint64_t* valid, std::size_t firstValid,
                  const ColumnKernels& kernels = ColumnKernels::best());

    struct Result {
        schema::Codec codec = schema::Codec::Raw;
        std::vector<std::byte> bytes;
    };

    /// Decimal or Product. Empty bytes: too many elements are not decimals of up to kMostDigits, or nothing is saved.
    Result decimals();
    /// Pattern. Empty bytes: nothing is saved.
    Result patterns();
    /// Table. Empty bytes: too many different values, or nothing is saved.
    Result table();

private:
    struct Unit {
        schema::Codec codec = schema::Codec::Decimal;
        unsigned digits = 0;
    };
    using Mask = std::array<std::uint64_t, ColumnKernels::kMask>;

    /// A run to be packed: its packing without and with a slope.
    struct Plan {
        PackedColumn::Run plain, sloped;  ///< both the same when no slope makes the run narrower
    };

    void countAbsent();
    std::uint64_t elementMask(std::size_t word) const;  ///< bits of the word that stand for elements
    std::uint64_t validWord(std::size_t word) const;
    const double* valuesOfRun(std::size_t run, std::array<double, ColumnKernels::kRun>& copy) const;

    std::vector<double> samples(bool isOnlyMisses) const;
    static bool isExact(double value, const Unit& unit);
    static std::optional<Unit> unitOf(const std::vector<double>& samples, unsigned fewestDigits);

    void startAnew();
    bool quantise(const Unit& unit);
    void takePatterns(std::size_t run, const double* values);
    bool hasFewSamples() const;
    bool collectEntries();
    void noteMisses(std::size_t run, const Mask& fits);
    bool hasTooManyMisses() const;

    void plan(std::size_t run);
    std::uint64_t slopeOf(std::size_t run) const;
    void fillGaps(std::size_t run, std::uint64_t slope);
    std::size_t wordBytes(std::size_t run, const PackedColumn::Run& packing) const;
    std::vector<PackedColumn::Run> chosenPackings(std::uint8_t& flags) const;
    Result packed(schema::Codec codec, unsigned digits);
    void writeTrailer(std::byte* to) const;

    std::span<const double> m_values;
    const std::uint64_t* m_valid;
    std::size_t m_firstValid;
    const ColumnKernels& m_kernels;
    bool m_blanksInvalid = false;  ///< invalid elements are absent and need not be stored

    std::array<std::uint64_t, schema::kRecordsPerChunk> m_numbers;  ///< whole runs; written before they are read
    std::vector<Mask> m_fits;                                       ///< elements whose number gives back their value
    std::vector<std::uint16_t> m_misses;                            ///< positions of elements to be patched
    std::vector<std::uint16_t> m_negativeZeros;
    std::vector<std::uint64_t> m_entries;  ///< different values' bits, ascending
    std::vector<Plan> m_plans;
    std::vector<std::uint8_t> m_forms;
};

}  // namespace plotix
