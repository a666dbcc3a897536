#include "records/columns/PackedColumn.h"

#include "records/columns/ColumnView.h"
#include "records/columns/ValidityBits.h"

#include <algorithm>
#include <cassert>

namespace plotix {

namespace {

constexpr std::size_t kRun = ColumnKernels::kRun;
constexpr std::size_t kRowBytes = ColumnKernels::kRow * sizeof(double);
constexpr std::uint8_t kKnownFlags = PackedColumn::kAbsentWhereInvalid | PackedColumn::kHasSlopes;

bool hasForms(schema::Codec codec)
{
    return codec == schema::Codec::Pattern;
}

/// Copies one field of every run between the runs and the bytes, where that field of all runs is contiguous.
template <class Field>
const std::byte* readField(const std::byte* from, std::span<PackedColumn::Run> runs, Field PackedColumn::Run::*field)
{
    for (PackedColumn::Run& run : runs) {
        std::memcpy(&(run.*field), from, sizeof(Field));
        from += sizeof(Field);
    }
    return from;
}

template <class Field>
std::byte* writeField(std::byte* to, std::span<const PackedColumn::Run> runs, Field PackedColumn::Run::*field)
{
    for (const PackedColumn::Run& run : runs) {
        std::memcpy(to, &(run.*field), sizeof(Field));
        to += sizeof(Field);
    }
    return to;
}

}  // namespace

bool PackedColumn::isPacked(int codec)
{
    return codec == static_cast<int>(schema::Codec::Decimal) || codec == static_cast<int>(schema::Codec::Product) ||
           codec == static_cast<int>(schema::Codec::Pattern) || codec == static_cast<int>(schema::Codec::Table);
}

std::size_t PackedColumn::headerBytes(schema::Codec codec, std::size_t runs, std::uint8_t flags)
{
    const std::size_t perRun = sizeof(Run::width) + (hasForms(codec) ? sizeof(Run::form) : 0) + sizeof(Run::base) +
                               ((flags & kHasSlopes) != 0 ? sizeof(Run::slope) : 0);
    return sizeof(Header) + runs * perRun;
}

ColumnKernels::Scale PackedColumn::scaleOf(unsigned digits)
{
    static constexpr double kPowers[] = {1e0, 1e1, 1e2, 1e3, 1e4, 1e5, 1e6, 1e7, 1e8, 1e9};
    static constexpr double kFractions[] = {1e0, 1e-1, 1e-2, 1e-3, 1e-4, 1e-5, 1e-6, 1e-7, 1e-8, 1e-9};
    static_assert(std::size(kPowers) == kMostDigits + 1 && std::size(kFractions) == kMostDigits + 1);
    assert(digits <= kMostDigits);
    return {kPowers[digits], kFractions[digits]};
}

std::size_t PackedColumn::trailerBytes(const Header& header)
{
    return (header.negativeZeros + header.patches) * sizeof(std::uint16_t) +
           (header.patches + header.entries) * sizeof(double);
}

void PackedColumn::writeHeader(schema::Codec codec, const Header& header, std::span<const Run> runs, std::byte* to)
{
    std::memcpy(to, &header, sizeof header);
    to = writeField(to + sizeof header, runs, &Run::width);
    if (hasForms(codec))
        to = writeField(to, runs, &Run::form);
    to = writeField(to, runs, &Run::base);
    if ((header.flags & kHasSlopes) != 0)
        writeField(to, runs, &Run::slope);
}

std::optional<PackedColumn> PackedColumn::read(int codec, std::span<const std::byte> bytes, std::size_t count)
{
    PackedColumn column;
    if (!isPacked(codec) || count > schema::kRecordsPerChunk || bytes.size() < sizeof column.m_header)
        return {};
    column.m_codec = static_cast<schema::Codec>(codec);
    column.m_count = count;
    std::memcpy(&column.m_header, bytes.data(), sizeof column.m_header);
    const Header& header = column.m_header;
    const std::span<Run> runs(column.m_runs.data(), runsOf(count));
    std::size_t size = headerBytes(column.m_codec, runs.size(), header.flags);
    const bool isTable = column.m_codec == schema::Codec::Table;
    if (isTable != (header.entries > 0) || header.entries > kMostEntries)
        return {};
    if (header.digits > kMostDigits || (header.flags & ~kKnownFlags) != 0 || bytes.size() < size)
        return {};
    const std::byte* from = readField(bytes.data() + sizeof header, runs, &Run::width);
    if (hasForms(column.m_codec))
        from = readField(from, runs, &Run::form);
    from = readField(from, runs, &Run::base);
    if ((header.flags & kHasSlopes) != 0)
        readField(from, runs, &Run::slope);
    for (std::size_t i = 0; i < runs.size(); ++i) {
        if (runs[i].width > 64 || (runs[i].form & ~kMixedSigns) > 63)
            return {};
        column.m_words[i] = bytes.data() + size;
        size += bytesOf(elementsOf(count, i), runs[i].width);
        if (size > bytes.size())
            return {};
    }
    column.m_patches = bytes.data() + size;
    if (bytes.size() != size + trailerBytes(header))
        return {};
    return column;
}

void PackedColumn::decode(const std::uint64_t* valid, std::size_t first, std::span<double> target, codec::Into into,
                          const ColumnKernels& kernels) const
{
    assert(first + target.size() <= m_count);
    std::size_t done = 0;
    while (done < target.size()) {
        const std::size_t index = (first + done) / kRun;
        const std::size_t skipped = (first + done) % kRun;
        const std::size_t part = std::min(target.size() - done, kRun - skipped);
        if (part == kRun && into == codec::Into::Caches) {
            decodeRun(index, valid, target.data() + done, kernels);
        } else {
            alignas(64) std::array<double, kRun> values;
            decodeRun(index, valid, values.data(), kernels);
            if (part == kRun)
                kernels.putPastCaches(values.data(), target.data() + done);
            else
                std::memcpy(target.data() + done, values.data() + skipped, part * sizeof(double));
        }
        done += part;
    }
    if (into == codec::Into::Memory)
        kernels.endPuttingPast();
    patch(first, target);
}

void PackedColumn::decodeRun(std::size_t index, const std::uint64_t* valid, double* values,
                             const ColumnKernels& kernels) const
{
    unpackRun(index, values, kernels);
    if (valid == nullptr || (m_header.flags & kAbsentWhereInvalid) == 0)
        return;
    std::array<std::uint64_t, ColumnKernels::kMask> words;
    words.fill(~std::uint64_t{0});
    const std::size_t has = std::min(bits::wordsFor(m_count) - index * words.size(), words.size());
    std::copy_n(valid + index * words.size(), has, words.data());
    kernels.blank(words.data(), absentValue(), values);
}

void PackedColumn::unpackRun(std::size_t index, double* values, const ColumnKernels& kernels) const
{
    const Run& run = m_runs[index];
    ColumnKernels::Packed packed{m_words[index], run.width, run.base, run.slope};
    std::array<std::byte, 64 * kRowBytes> whole;
    const std::size_t has = bytesOf(elementsOf(m_count, index), run.width);
    const std::size_t needs = std::max<std::size_t>(run.width, 1) * kRowBytes;
    if (has < needs) {
        std::memcpy(whole.data(), packed.words, has);
        std::memset(whole.data() + has, 0, needs - has);
        packed.words = whole.data();
    }
    const ColumnKernels::Scale scale = scaleOf(m_header.digits);
    if (m_codec == schema::Codec::Decimal)
        kernels.quotients(packed, scale, values);
    else if (m_codec == schema::Codec::Product)
        kernels.products(packed, scale, values);
    else if (m_codec == schema::Codec::Table) {
        kernels.patterns(packed, {}, values);
        lookUp(values);
    } else
        kernels.patterns(packed, {run.form & std::uint64_t{63}, (run.form & kMixedSigns) != 0}, values);
}

/// Replaces table indexes, which lie as bits in the memory of the values, by the values.
void PackedColumn::lookUp(double* values) const
{
    std::array<double, kMostEntries> table;
    const std::uint64_t last = m_header.entries - std::uint64_t{1};
    const std::size_t size = m_header.entries * sizeof(double);
    std::memcpy(table.data(), m_patches + trailerBytes(m_header) - size, size);
    for (std::size_t i = 0; i < kRun; ++i)
        values[i] = table[std::min(std::bit_cast<std::uint64_t>(values[i]), last)];
}

void PackedColumn::patch(std::size_t first, std::span<double> target) const
{
    const std::size_t positions = m_header.negativeZeros + m_header.patches;
    const std::byte* values = m_patches + positions * sizeof(std::uint16_t);
    for (std::size_t i = 0; i < positions; ++i) {
        std::uint16_t position = 0;
        std::memcpy(&position, m_patches + i * sizeof position, sizeof position);
        if (position < first || position - first >= target.size())
            continue;
        double& value = target[position - first];
        if (i < m_header.negativeZeros)
            value = -0.0;
        else
            std::memcpy(&value, values + (i - m_header.negativeZeros) * sizeof value, sizeof value);
    }
}

}  // namespace plotix
