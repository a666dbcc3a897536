#include "plugins/PlotixPlugIn/logic/SeriesBuilder.h"

#include "base/LargeMemory.h"
#include "plotkit/model/SeriesNarrowing.h"
#include "plugins/PlotixPlugIn/logic/SinglePrecision.h"

#include <algorithm>
#include <bit>
#include <cassert>
#include <cmath>
#include <limits>

namespace plotix {

namespace {

constexpr std::size_t kWordBits = 64;
constexpr std::uint64_t kAll = ~std::uint64_t{0};

/// Narrows up to 64 values; the answer has a bit for every one that is a number, element 0 lowest.
std::uint64_t narrowWord(std::span<const double> values, float* y)
{
    constexpr auto kLargest = static_cast<double>(std::numeric_limits<float>::max());
    int odd = 0;  // not a number, or beyond the range of a float
    for (const double value : values)
        odd |= std::abs(value) <= kLargest ? 0 : 1;
    if (odd == 0) {
        for (std::size_t i = 0; i < values.size(); ++i)
            y[i] = static_cast<float>(values[i]);
        return ~std::uint64_t{0} >> (kWordBits - values.size());
    }
    std::uint64_t bits = 0;
    for (std::size_t i = 0; i < values.size(); ++i) {
        y[i] = singlePrecision(values[i]);
        bits |= static_cast<std::uint64_t>(!std::isnan(values[i])) << i;
    }
    return bits;
}

}  // namespace

SeriesBuilder::SeriesBuilder(SharedArray<double> time, std::size_t elementCount)
    : m_time(std::move(time)),
      m_count(std::min(elementCount, m_time.size())),
      m_y(unsetArray<float>(m_count)),
      m_fine(m_count),
      m_points((m_count + kWordBits - 1) / kWordBits)
{
}

void SeriesBuilder::setBlock(std::size_t first, std::span<const double> values, const ValidityBitmap& validity)
{
    assert(first % kWordBits == 0 && first + values.size() <= m_count);
    dropUpTo(first);
    const auto validityFrom = [&validity](std::size_t word) {
        return validity.isAllValid() ? nullptr : validity.words().data() + word;
    };
    const std::size_t known = validity.isAllValid() ? m_points.size() : validity.words().size();
    const plotkit::SeriesNarrowing& narrowing = plotkit::SeriesNarrowing::best();
    for (std::size_t done = 0; done < values.size();) {
        const std::size_t at = first + done;
        const std::size_t word = at / kWordBits;
        const std::size_t block = at / CPTFineBlocks::kElements;
        const std::size_t words = std::min((values.size() - done) / kWordBits, known > word ? known - word : 0);
        done += kWordBits * narrowing.narrow(values.data() + done, validityFrom(word), words,
                                             {m_y.get() + at, m_points.data() + word, m_fine.least() + block,
                                              m_fine.greatest() + block, m_fine.first() + block});
        const std::size_t rest = std::min(kWordBits, values.size() - done);
        const std::size_t next = (first + done) / kWordBits;
        if (rest == 0)
            break;
        const std::uint64_t valid = next < known ? (validity.isAllValid() ? kAll : validity.words()[next]) : 0;
        setRest(first + done, values.subspan(done, rest), valid);
        done += rest;
    }
    m_filled = std::max(m_filled, first + values.size());
}

/// A word that is not whole, or has values no float can hold.
void SeriesBuilder::setRest(std::size_t first, std::span<const double> values, std::uint64_t validity)
{
    m_points[first / kWordBits] = narrowWord(values, m_y.get() + first) & validity;
    indexWord(first / kWordBits);
}

void SeriesBuilder::indexWord(std::size_t word)
{
    constexpr std::size_t kElements = CPTFineBlocks::kElements;
    const std::size_t firstBlock = word * kWordBits / kElements;
    for (std::size_t block = firstBlock; block < std::min(m_fine.count, firstBlock + kWordBits / kElements); ++block)
        m_fine.set(block, m_y.get() + block * kElements,
                   static_cast<std::uint32_t>(m_points[word] >> ((block - firstBlock) * kElements)));
}

/// What no block reached stays dropped.
void SeriesBuilder::dropUpTo(std::size_t end)
{
    if (end <= m_filled)
        return;
    std::fill(m_y.get() + m_filled, m_y.get() + end, 0.0F);
    for (std::size_t word = m_filled / kWordBits; word * kWordBits < end; ++word)
        indexWord(word);
    m_filled = end;
}

void SeriesBuilder::setPoint(std::size_t index, double value)
{
    if (index >= m_count || std::isnan(value))
        return dropPoint(index);
    dropUpTo(m_count);
    m_y.get()[index] = singlePrecision(value);
    m_points[index / kWordBits] |= std::uint64_t{1} << (index % kWordBits);
    m_changedWords.push_back(index / kWordBits);
}

void SeriesBuilder::dropPoint(std::size_t index)
{
    if (index >= m_count)
        return;
    dropUpTo(m_count);
    m_points[index / kWordBits] &= ~(std::uint64_t{1} << (index % kWordBits));
    m_changedWords.push_back(index / kWordBits);
}

CPTPointSeriesPtr SeriesBuilder::finish()
{
    dropUpTo(m_count);
    m_changedWords.erase(std::unique(m_changedWords.begin(), m_changedWords.end()), m_changedWords.end());
    for (const std::size_t word : m_changedWords)
        indexWord(word);
    std::size_t count = 0;
    for (const std::uint64_t word : m_points)
        count += word == kAll ? kWordBits : static_cast<std::size_t>(std::popcount(word));
    ValidityBitmap points;
    if (count < m_count)
        points = ValidityBitmap(SharedArray<std::uint64_t>::fromVector(std::move(m_points)));
    return std::make_shared<const CPTPointSeries>(std::move(m_time), SharedArray<float>(std::move(m_y), m_count),
                                                  std::move(points), count, std::move(m_fine));
}

}  // namespace plotix
