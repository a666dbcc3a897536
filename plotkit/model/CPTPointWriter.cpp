#include "plotkit/model/CPTPointWriter.h"

#include "base/SinglePrecision.h"
#include "plotkit/model/SeriesNarrowing.h"

#include <algorithm>
#include <cassert>
#include <cmath>
#include <limits>
#include <utility>

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
        y[i] = plotix::singlePrecision(values[i]);
        bits |= static_cast<std::uint64_t>(!std::isnan(values[i])) << i;
    }
    return bits;
}

}  // namespace

CPTPointWriter::CPTPointWriter(Arrays arrays, std::size_t first, std::size_t end)
    : m_arrays(std::move(arrays)), m_first(first), m_end(end), m_filled(first)
{
    assert(first % kWordBits == 0 && first <= end);
}

void CPTPointWriter::setBlock(std::size_t at, std::span<const double> values, const plotix::ValidityBitmap& validity)
{
    if (validity.isAllValid())
        return setBlock(at, values, static_cast<const std::uint64_t*>(nullptr));
    const std::size_t known = std::max(at, validity.words().size() * kWordBits);
    setBlock(at, values.first(std::min(values.size(), known - at)), validity.words().data() + at / kWordBits);
}

void CPTPointWriter::setBlock(std::size_t at, std::span<const double> values, const std::uint64_t* valid)
{
    assert(at % kWordBits == 0 && at >= m_first && at + values.size() <= m_end);
    dropUpTo(at);
    const plotkit::SeriesNarrowing& narrowing = plotkit::SeriesNarrowing::best();
    const CPTFineBlocks& fine = m_arrays.fine;
    for (std::size_t done = 0; done < values.size();) {
        const std::size_t element = at + done;
        const std::size_t word = element / kWordBits;
        const std::size_t block = element / CPTFineBlocks::kElements;
        const std::uint64_t* bits = valid ? valid + done / kWordBits : nullptr;
        done += kWordBits * narrowing.narrow(values.data() + done, bits, (values.size() - done) / kWordBits,
                                             {m_arrays.y + element, m_arrays.points + word, fine.least() + block,
                                              fine.greatest() + block, fine.first() + block});
        const std::size_t rest = std::min(kWordBits, values.size() - done);
        if (rest == 0)
            break;
        setRest(at + done, values.subspan(done, rest), valid ? valid[done / kWordBits] : kAll);
        done += rest;
    }
    m_filled = std::max(m_filled, at + values.size());
}

/// A word that is not whole, or has values no float can hold.
void CPTPointWriter::setRest(std::size_t at, std::span<const double> values, std::uint64_t validity)
{
    m_arrays.points[at / kWordBits] = narrowWord(values, m_arrays.y + at) & validity;
    indexWord(at / kWordBits);
}

void CPTPointWriter::indexWord(std::size_t word)
{
    constexpr std::size_t kElements = CPTFineBlocks::kElements;
    const CPTFineBlocks& fine = m_arrays.fine;
    const std::size_t firstBlock = word * kWordBits / kElements;
    for (std::size_t block = firstBlock; block < std::min(fine.count, firstBlock + kWordBits / kElements); ++block)
        fine.set(block, m_arrays.y + block * kElements,
                 static_cast<std::uint32_t>(m_arrays.points[word] >> ((block - firstBlock) * kElements)));
}

void CPTPointWriter::dropUpTo(std::size_t end)
{
    if (end <= m_filled)
        return;
    std::fill(m_arrays.y + m_filled, m_arrays.y + end, 0.0F);
    const std::size_t partly = m_filled % kWordBits == 0 ? 0 : 1;  // a last word that was not whole keeps its points
    for (std::size_t word = m_filled / kWordBits + partly; word * kWordBits < end; ++word)
        m_arrays.points[word] = 0;
    for (std::size_t word = m_filled / kWordBits; word * kWordBits < end; ++word)
        indexWord(word);
    m_filled = end;
}

void CPTPointWriter::setPoint(std::size_t element, double value)
{
    if (!isInside(element) || std::isnan(value))
        return dropPoint(element);
    dropUpTo(m_end);
    m_arrays.y[element] = plotix::singlePrecision(value);
    m_arrays.points[element / kWordBits] |= std::uint64_t{1} << (element % kWordBits);
    m_changedWords.push_back(element / kWordBits);
}

void CPTPointWriter::dropPoint(std::size_t element)
{
    if (!isInside(element))
        return;
    dropUpTo(m_end);
    m_arrays.points[element / kWordBits] &= ~(std::uint64_t{1} << (element % kWordBits));
    m_changedWords.push_back(element / kWordBits);
}

void CPTPointWriter::finish()
{
    dropUpTo(m_end);
    m_changedWords.erase(std::unique(m_changedWords.begin(), m_changedWords.end()), m_changedWords.end());
    for (const std::size_t word : m_changedWords)
        indexWord(word);
}
