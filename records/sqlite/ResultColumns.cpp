#include "records/sqlite/ResultColumns.h"

#include "base/LargeMemory.h"
#include "records/columns/ValidityBits.h"

#include <algorithm>
#include <cstring>

namespace plotix {

namespace {

constexpr std::size_t kLine = 8;  // doubles of a cache line
/// Bytes of a result that whoever looks at it next finds in a cache.
constexpr std::size_t kMostCached = std::size_t{16} << 20;
constexpr std::size_t kStagger = 5 * kLine;  // columns a whole number of pages apart would collide in the cache

std::size_t strideFor(std::size_t records)
{
    return (records + kLine - 1) / kLine * kLine + kStagger;
}

}  // namespace

ResultColumns::ResultColumns(std::span<const RowId> properties, std::size_t records)
    : m_properties(properties.begin(), properties.end()),
      m_records(records),
      m_stride(strideFor(records)),
      m_memory(records == 0 ? nullptr : unsetArray<double>(m_stride * (properties.size() + 1))),
      m_words(properties.size())
{
}

void ResultColumns::fill(SegmentReader& segments, const ChunkPart& part, std::vector<Gap>& gaps)
{
    const codec::Into into = values() * sizeof(double) > kMostCached ? codec::Into::Memory : codec::Into::Caches;
    segments.readTimes(part, column(0) + part.target, into);
    for (std::size_t i = 0; i < m_properties.size(); ++i) {
        if (!segments.read(part, m_properties[i], column(i + 1) + part.target, into)) {
            fillAbsent(i, part.target, part.count, gaps);
            continue;
        }
        const std::uint64_t* valid = segments.valid();
        if (!bits::allSet(valid, part.first, part.count))
            gaps.push_back({i, part.first, part.count, part.target, {valid, valid + bits::wordsFor(part.chunk.n)}});
    }
}

void ResultColumns::fill(const RecordsView& records, std::size_t target, std::vector<Gap>& gaps)
{
    std::copy_n(records.times, records.size, column(0) + target);
    for (std::size_t i = 0; i < m_properties.size(); ++i) {
        const auto found = std::find_if(records.columns.begin(), records.columns.end(),
                                        [&](const auto& each) { return each.property == m_properties[i]; });
        if (found == records.columns.end()) {
            fillAbsent(i, target, records.size, gaps);
            continue;
        }
        std::copy_n(found->values, records.size, column(i + 1) + target);
        if (bits::allSet(found->valid, found->firstValid, records.size))
            continue;
        std::vector<std::uint64_t> words(bits::wordsFor(records.size));
        bits::copy(found->valid, found->firstValid, words.data(), 0, records.size);
        gaps.push_back({i, 0, records.size, target, std::move(words)});
    }
}

void ResultColumns::fillAbsent(std::size_t index, std::size_t target, std::size_t count, std::vector<Gap>& gaps)
{
    std::fill_n(column(index + 1) + target, count, absentValue());
    gaps.push_back({index, 0, count, target, {}});
}

void ResultColumns::enter(const std::vector<Gap>& gaps)
{
    for (const Gap& gap : gaps) {
        std::shared_ptr<std::uint64_t>& words = m_words[gap.column];
        if (!words) {
            words = unsetArray<std::uint64_t>(bits::wordsFor(m_records));
            std::fill_n(words.get(), bits::wordsFor(m_records), ~std::uint64_t{0});
        }
        if (gap.words.empty())
            bits::clear(words.get(), gap.target, gap.count);
        else
            bits::copy(gap.words.data(), gap.first, words.get(), gap.target, gap.count);
    }
}

RecordBlock ResultColumns::block() const
{
    const auto shared = [&](std::size_t index) {
        return m_records == 0 ? SharedArray<double>()
                              : SharedArray<double>(std::shared_ptr<const double>(m_memory, column(index)), m_records);
    };
    RecordBlock block{shared(0), {}};
    for (std::size_t i = 0; i < m_properties.size(); ++i)
        block.columns.push_back({m_properties[i], shared(i + 1),
                                 m_words[i]
                                     ? ValidityBitmap(SharedArray<std::uint64_t>(m_words[i], bits::wordsFor(m_records)))
                                     : ValidityBitmap()});
    return block;
}

}  // namespace plotix
