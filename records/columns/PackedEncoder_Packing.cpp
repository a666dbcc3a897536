// From whole numbers to bytes: base, slope and width of every run, then the numbers themselves.

#include "records/columns/Checksum.h"
#include "records/columns/PackedEncoder.h"
#include "records/columns/ValidityBits.h"

#include <algorithm>
#include <bit>
#include <cstring>

namespace plotix {

namespace {

constexpr std::size_t kRun = ColumnKernels::kRun;

/// A slope is looked for only where no difference within the run can overflow.
constexpr std::uint64_t kWidestWithSlope = std::uint64_t{1} << 53;

bool fitsAt(const std::array<std::uint64_t, ColumnKernels::kMask>& fits, std::size_t index)
{
    return bits::get(fits.data(), index, 1) != 0;
}

/// Wraps around instead of overflowing, as all arithmetic on numbers here does.
std::uint64_t difference(std::int64_t highest, std::int64_t lowest)
{
    return static_cast<std::uint64_t>(highest) - static_cast<std::uint64_t>(lowest);
}

}  // namespace

/// The slope from the first to the last number that fits, rounded down.
std::uint64_t PackedEncoder::slopeOf(std::size_t run) const
{
    const Mask& fits = m_fits[run];
    std::size_t first = 0;
    std::size_t last = kRun - 1;
    while (first < last && !fitsAt(fits, first))
        ++first;
    while (last > first && !fitsAt(fits, last))
        --last;
    const std::uint64_t* numbers = m_numbers.data() + run * kRun;
    const auto rise = static_cast<std::int64_t>(numbers[last] - numbers[first]);
    return last == first ? 0 : static_cast<std::uint64_t>(rise / static_cast<std::int64_t>(last - first));
}

/// Elements without a number get one on the line through the number before them, else after them.
void PackedEncoder::fillGaps(std::size_t run, std::uint64_t slope)
{
    const Mask& fits = m_fits[run];
    if (bits::allSet(fits.data(), 0, kRun))
        return;
    std::uint64_t* numbers = m_numbers.data() + run * kRun;
    std::size_t first = 0;
    while (first < kRun && !fitsAt(fits, first))
        ++first;
    std::uint64_t next = first == kRun ? 0 : numbers[first] - first * slope;
    for (std::size_t word = 0; word < fits.size(); ++word) {
        const std::size_t begin = word * 64, end = begin + 64;
        if (fits[word] == ~std::uint64_t{0}) {
            next = numbers[end - 1] + slope;
            continue;
        }
        if (fits[word] == 0) {
            for (std::size_t i = begin; i < end; ++i)
                numbers[i] = next + (i - begin) * slope;
            next += 64 * slope;
            continue;
        }
        for (std::size_t i = begin; i < end; ++i, next += slope) {
            if (fitsAt(fits, i))
                next = numbers[i];
            else
                numbers[i] = next;
        }
    }
}

void PackedEncoder::plan(std::size_t run)
{
    const std::uint64_t* numbers = m_numbers.data() + run * kRun;
    fillGaps(run, 0);
    const ColumnKernels::Range flat = m_kernels.range(numbers, 0, 0);
    const std::uint64_t highest = difference(flat.highest, flat.lowest);
    Plan& plan = m_plans[run];
    plan.plain.base = static_cast<std::uint64_t>(flat.lowest);
    plan.plain.width = static_cast<std::uint8_t>(std::bit_width(highest));
    plan.plain.form = m_forms[run];
    plan.sloped = plan.plain;
    const std::uint64_t slope = highest < kWidestWithSlope ? slopeOf(run) : 0;
    if (slope == 0)
        return;
    fillGaps(run, slope);
    const std::uint64_t origin = numbers[0];
    const ColumnKernels::Range rest = m_kernels.range(numbers, origin, slope);
    const auto width = static_cast<std::uint8_t>(std::bit_width(difference(rest.highest, rest.lowest)));
    if (width >= plan.plain.width)
        return;
    plan.sloped.base = origin + static_cast<std::uint64_t>(rest.lowest);
    plan.sloped.slope = slope;
    plan.sloped.width = width;
}

std::size_t PackedEncoder::wordBytes(std::size_t run, const PackedColumn::Run& packing) const
{
    return PackedColumn::bytesOf(PackedColumn::elementsOf(m_values.size(), run), packing.width);
}

/// Slopes are written for all runs or for none, whichever is shorter.
std::vector<PackedColumn::Run> PackedEncoder::chosenPackings(std::uint8_t& flags) const
{
    std::size_t plain = 0;
    std::size_t sloped = m_plans.size() * sizeof(PackedColumn::Run::slope);
    for (std::size_t run = 0; run < m_plans.size(); ++run) {
        plain += wordBytes(run, m_plans[run].plain);
        sloped += wordBytes(run, m_plans[run].sloped);
    }
    if (sloped < plain)
        flags |= PackedColumn::kHasSlopes;
    std::vector<PackedColumn::Run> packings;
    packings.reserve(m_plans.size());
    for (const Plan& plan : m_plans)
        packings.push_back(sloped < plain ? plan.sloped : plan.plain);
    return packings;
}

PackedEncoder::Result PackedEncoder::packed(schema::Codec codec, unsigned digits)
{
    for (std::size_t run = 0; run < m_plans.size(); ++run)
        plan(run);
    PackedColumn::Header header;
    header.digits = static_cast<std::uint8_t>(digits);
    header.flags = m_blanksInvalid ? PackedColumn::kAbsentWhereInvalid : 0;
    header.patches = static_cast<std::uint16_t>(m_misses.size());
    header.entries = static_cast<std::uint16_t>(m_entries.size());
    header.negativeZeros = static_cast<std::uint16_t>(m_negativeZeros.size());
    std::vector<PackedColumn::Run> packings = chosenPackings(header.flags);
    std::size_t at = PackedColumn::headerBytes(codec, packings.size(), header.flags);
    std::size_t size = at + PackedColumn::trailerBytes(header);
    for (std::size_t run = 0; run < packings.size(); ++run)
        size += wordBytes(run, packings[run]);
    // Saving less than a sixteenth is not worth the unpacking.
    if (size + m_values.size_bytes() / 16 >= m_values.size_bytes())
        return {};

    Result result{codec, {}};
    result.bytes.reserve(size + checksum::kBytes);  // a stored column is sealed
    result.bytes.resize(size);
    for (std::size_t run = 0; run < packings.size(); ++run) {
        const PackedColumn::Run& packing = packings[run];
        fillGaps(run, packing.slope);
        const std::size_t elements = PackedColumn::elementsOf(m_values.size(), run);
        const std::size_t rows = (elements + ColumnKernels::kRow - 1) / ColumnKernels::kRow;
        m_kernels.pack(m_numbers.data() + run * kRun, packing.base, packing.slope, packing.width, rows,
                       result.bytes.data() + at);
        at += wordBytes(run, packing);
        if ((packing.form & PackedColumn::kMixedSigns) != 0)
            packings[run].base ^= std::uint64_t{1} << 63;
    }
    PackedColumn::writeHeader(codec, header, packings, result.bytes.data());
    writeTrailer(result.bytes.data() + at);
    return result;
}

void PackedEncoder::writeTrailer(std::byte* to) const
{
    for (const std::vector<std::uint16_t>* positions : {&m_negativeZeros, &m_misses}) {
        for (const std::uint16_t position : *positions) {
            std::memcpy(to, &position, sizeof position);
            to += sizeof position;
        }
    }
    for (const std::uint16_t position : m_misses) {
        std::memcpy(to, &m_values[position], sizeof(double));
        to += sizeof(double);
    }
    if (!m_entries.empty())
        std::memcpy(to, m_entries.data(), m_entries.size() * sizeof(double));
}

}  // namespace plotix
