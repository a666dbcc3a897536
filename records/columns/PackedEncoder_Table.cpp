// Columns of few different values that are not decimals: converted units, steps of an A/D converter, states.

#include "records/columns/PackedEncoder.h"
#include "records/columns/ValidityBits.h"

#include <algorithm>
#include <bit>
#include <cstring>

namespace plotix {

namespace {

constexpr std::size_t kRun = ColumnKernels::kRun;
constexpr std::size_t kSamples = 256;
constexpr unsigned kSlotBits = 12;
static_assert((std::size_t{1} << kSlotBits) >= 4 * PackedColumn::kMostEntries, "probing takes few steps");

/// Maps the bits of doubles to their index in the table.
class Places {
public:
    struct Slot {
        std::uint64_t pattern = 0;
        std::uint32_t place = kFree;
    };
    static constexpr std::uint32_t kFree = ~std::uint32_t{0};

    /// The pattern's slot, or the free one where it belongs.
    Slot& at(std::uint64_t pattern)
    {
        std::size_t index = (pattern * 0x9E3779B97F4A7C15U) >> (64 - kSlotBits);
        while (m_slots[index].place != kFree && m_slots[index].pattern != pattern)
            index = (index + 1) % m_slots.size();
        return m_slots[index];
    }

private:
    std::array<Slot, std::size_t{1} << kSlotBits> m_slots;
};

std::uint64_t patternAt(const double* value)
{
    return std::bit_cast<std::uint64_t>(*value);
}

}  // namespace

/// Whether a sample of the elements has enough repeated values.
bool PackedEncoder::hasFewSamples() const
{
    std::vector<std::uint64_t> seen;
    const std::size_t step = std::max<std::size_t>(m_values.size() / kSamples, 1);
    for (std::size_t i = 0; i < m_values.size() && seen.size() < kSamples; i += step)
        seen.push_back(patternAt(&m_values[i]));
    const std::size_t all = seen.size();
    std::sort(seen.begin(), seen.end());
    seen.erase(std::unique(seen.begin(), seen.end()), seen.end());
    return seen.size() <= all - all / 16;
}

/// The different values, and every element's index among them. False when there are too many of them, or none.
bool PackedEncoder::collectEntries()
{
    Places places;
    for (std::size_t i = 0; i < m_values.size(); ++i) {
        if (bits::get(m_fits[i / kRun].data(), i % kRun, 1) == 0)
            continue;
        const std::uint64_t pattern = patternAt(&m_values[i]);
        Places::Slot& slot = places.at(pattern);
        if (slot.place != Places::kFree)
            continue;
        if (m_entries.size() == PackedColumn::kMostEntries)
            return false;
        slot = {pattern, 0};
        m_entries.push_back(pattern);
    }
    // Sorted, so that values close to each other have indexes close to each other.
    std::sort(m_entries.begin(), m_entries.end(), [](std::uint64_t a, std::uint64_t b) {
        return std::bit_cast<std::int64_t>(a) < std::bit_cast<std::int64_t>(b);
    });
    for (std::size_t place = 0; place < m_entries.size(); ++place)
        places.at(m_entries[place]).place = static_cast<std::uint32_t>(place);
    for (std::size_t i = 0; i < m_values.size(); ++i)
        if (bits::get(m_fits[i / kRun].data(), i % kRun, 1) != 0)
            m_numbers[i] = places.at(patternAt(&m_values[i])).place;
    return !m_entries.empty();
}

PackedEncoder::Result PackedEncoder::table()
{
    if (!hasFewSamples())
        return {};
    startAnew();
    Mask everything;
    everything.fill(~std::uint64_t{0});
    for (std::size_t run = 0; run < m_fits.size(); ++run)
        noteMisses(run, everything);
    if (hasTooManyMisses() || !collectEntries())
        return {};
    return packed(schema::Codec::Table, 0);
}

}  // namespace plotix
