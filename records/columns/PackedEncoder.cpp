#include "records/columns/PackedEncoder.h"

#include "records/columns/ColumnView.h"
#include "records/columns/ValidityBits.h"

#include <algorithm>
#include <bit>
#include <cassert>
#include <cmath>

namespace plotix {

namespace {

constexpr std::size_t kRun = ColumnKernels::kRun;
constexpr std::size_t kMask = ColumnKernels::kMask;
constexpr std::size_t kSamples = 64;
constexpr unsigned kRetries = 3;
constexpr std::uint64_t kSign = std::uint64_t{1} << 63;
constexpr std::uint64_t kExponent = std::uint64_t{0x7FF} << 52;

std::uint64_t patternOf(double value)
{
    return std::bit_cast<std::uint64_t>(value);
}

/// Processors fetch ahead inside a page of memory, which is a run, but not beyond it.
void fetchNextRun(const double* values)
{
    constexpr std::size_t kLine = 8;
    for (std::size_t i = 0; i < kRun; i += kLine)
        __builtin_prefetch(values + kRun + i);
}

std::array<std::uint64_t, kMask> finiteAmong(const double* values)
{
    fetchNextRun(values);
    std::array<std::uint64_t, kMask> mask;
    mask.fill(~std::uint64_t{0});
    // Only an exponent that is all ones carries into the sign bit.
    std::uint64_t carried = 0;
    for (std::size_t i = 0; i < kRun; ++i)
        carried |= (patternOf(values[i]) & kExponent) + (std::uint64_t{1} << 52);
    for (std::size_t i = 0; (carried & kSign) != 0 && i < kRun; ++i)
        if (!std::isfinite(values[i]))
            mask[i / 64] &= ~(std::uint64_t{1} << (i % 64));
    return mask;
}

}  // namespace

PackedEncoder::PackedEncoder(std::span<const double> values, const std::uint64_t* valid, std::size_t firstValid,
                             const ColumnKernels& kernels)
    : m_values(values),
      m_valid(bits::allSet(valid, firstValid, values.size()) ? nullptr : valid),
      m_firstValid(firstValid),
      m_kernels(kernels),
      m_fits(PackedColumn::runsOf(values.size())),
      m_plans(m_fits.size()),
      m_forms(m_fits.size())
{
    assert(!values.empty() && values.size() <= schema::kRecordsPerChunk);
    countAbsent();
}

void PackedEncoder::countAbsent()
{
    if (m_valid == nullptr)
        return;
    const std::uint64_t absent = patternOf(absentValue());
    std::size_t invalid = 0;
    std::size_t blank = 0;
    for (std::size_t word = 0; word * 64 < m_values.size(); ++word) {
        for (std::uint64_t left = elementMask(word) & ~validWord(word); left != 0; left &= left - 1, ++invalid)
            if (patternOf(m_values[word * 64 + static_cast<std::size_t>(std::countr_zero(left))]) == absent)
                ++blank;
    }
    m_blanksInvalid = blank > invalid / 2;
}

std::uint64_t PackedEncoder::elementMask(std::size_t word) const
{
    return word * 64 < m_values.size() ? bits::mask(m_values.size() - word * 64) : 0;
}

std::uint64_t PackedEncoder::validWord(std::size_t word) const
{
    const std::size_t count = word * 64 < m_values.size() ? m_values.size() - word * 64 : 0;
    return count == 0 ? 0 : bits::get(m_valid, m_firstValid + word * 64, std::min<std::size_t>(count, 64));
}

const double* PackedEncoder::valuesOfRun(std::size_t run, std::array<double, kRun>& copy) const
{
    const std::size_t elements = PackedColumn::elementsOf(m_values.size(), run);
    if (elements == kRun)
        return m_values.data() + run * kRun;
    copy.fill(0);
    std::copy_n(m_values.data() + run * kRun, elements, copy.data());
    return copy.data();
}

std::vector<double> PackedEncoder::samples(bool isOnlyMisses) const
{
    std::vector<double> taken;
    const std::size_t from = isOnlyMisses ? m_misses.size() : m_values.size();
    const std::size_t step = std::max<std::size_t>(from / kSamples, 1);
    // They lie far apart, and nobody has read them yet: fetched all at once.
    for (std::size_t i = 0; !isOnlyMisses && i < from; i += step)
        __builtin_prefetch(&m_values[i]);
    // With many gaps there are few samples: then every element is looked at.
    for (const std::size_t stride : {step, std::size_t{1}}) {
        taken.clear();
        for (std::size_t i = 0; i < from && taken.size() < kSamples; i += stride) {
            const std::size_t at = isOnlyMisses ? m_misses[i] : i;
            const bool isValid = m_valid == nullptr || bits::get(m_valid, m_firstValid + at, 1) != 0;
            if (isValid && std::isfinite(m_values[at]) && patternOf(m_values[at]) != kSign)
                taken.push_back(m_values[at]);
        }
        if (taken.size() >= kSamples / 4)
            break;
    }
    return taken;
}

bool PackedEncoder::isExact(double value, const Unit& unit)
{
    const ColumnKernels::Scale scale = PackedColumn::scaleOf(unit.digits);
    const double number = std::nearbyint(value * scale.up);
    const double back = unit.codec == schema::Codec::Decimal ? number / scale.up : number * scale.down;
    return std::abs(number) <= 0x1p51 && patternOf(back) == patternOf(value);
}

std::optional<PackedEncoder::Unit> PackedEncoder::unitOf(const std::vector<double>& samples, unsigned fewestDigits)
{
    const std::size_t mayMiss = samples.size() / 8;
    for (unsigned digits = fewestDigits; !samples.empty() && digits <= PackedColumn::kMostDigits; ++digits) {
        for (const schema::Codec codec : {schema::Codec::Decimal, schema::Codec::Product}) {
            std::size_t misses = 0;
            for (std::size_t i = 0; i < samples.size() && misses <= mayMiss; ++i)
                misses += static_cast<std::size_t>(!isExact(samples[i], {codec, digits}));
            if (misses <= mayMiss)
                return Unit{codec, digits};
        }
    }
    return {};
}

PackedEncoder::Result PackedEncoder::decimals()
{
    std::optional<Unit> unit = unitOf(samples(false), 0);
    for (unsigned attempt = 0; unit && attempt < kRetries; ++attempt) {
        if (quantise(*unit))
            return packed(unit->codec, unit->digits);
        unit = unitOf(samples(true), unit->digits + 1);
    }
    return {};
}

void PackedEncoder::startAnew()
{
    m_misses.clear();
    m_negativeZeros.clear();
    m_entries.clear();
    std::fill(m_forms.begin(), m_forms.end(), std::uint8_t{0});
}

bool PackedEncoder::quantise(const Unit& unit)
{
    const ColumnKernels::Scale scale = PackedColumn::scaleOf(unit.digits);
    const auto numbersOf = unit.codec == schema::Codec::Decimal ? m_kernels.asQuotients : m_kernels.asProducts;
    startAnew();
    for (std::size_t run = 0; run < m_fits.size(); ++run) {
        std::array<double, kRun> copy;
        numbersOf(valuesOfRun(run, copy), scale, m_numbers.data() + run * kRun, m_fits[run].data());
        noteMisses(run, Mask(m_fits[run]));
        if (hasTooManyMisses())
            return false;
    }
    return true;
}

PackedEncoder::Result PackedEncoder::patterns()
{
    startAnew();
    for (std::size_t run = 0; run < m_fits.size(); ++run) {
        std::array<double, kRun> copy;
        const double* values = valuesOfRun(run, copy);
        noteMisses(run, finiteAmong(values));
        if (hasTooManyMisses())
            return {};
        takePatterns(run, values);
    }
    return packed(schema::Codec::Pattern, 0);
}

void PackedEncoder::takePatterns(std::size_t run, const double* values)
{
    // Elements that do not fit must not influence the form.
    std::array<std::uint64_t, kRun> patterns;
    std::memcpy(patterns.data(), values, sizeof patterns);
    const Mask& fits = m_fits[run];
    const bool hasGaps = !bits::allSet(fits.data(), 0, kRun);
    std::size_t some = 0;
    while (some < kRun && bits::get(fits.data(), some, 1) == 0)
        ++some;
    for (std::size_t i = 0; hasGaps && i < kRun; ++i)
        if (bits::get(fits.data(), i, 1) == 0)
            patterns[i] = some < kRun ? patterns[some] : 0;

    std::uint64_t any = 0;
    std::uint64_t all = kSign;
    for (const std::uint64_t pattern : patterns) {
        any |= pattern;
        all &= pattern;
    }
    const bool isMixed = ((any ^ all) & kSign) != 0;
    const std::uint64_t magnitudes = any & ~kSign;
    const int zeros = magnitudes == 0 ? 0 : std::countr_zero(magnitudes);
    m_forms[run] = static_cast<std::uint8_t>(zeros | (isMixed ? PackedColumn::kMixedSigns : 0));
    std::uint64_t* numbers = m_numbers.data() + run * kRun;
    // Numbers are compared as signed ones, but the top bit of a mixed one is not a sign: it is inverted here and in the
    // base.
    if (isMixed)
        for (std::size_t i = 0; i < kRun; ++i)
            numbers[i] = ((((patterns[i] & ~kSign) >> zeros) << 1) | (patterns[i] >> 63)) ^ kSign;
    else
        for (std::size_t i = 0; i < kRun; ++i)
            numbers[i] = patterns[i] >> zeros;
}

/// Clears in `fits` what is not an element or need not be stored, and notes what must be patched.
void PackedEncoder::noteMisses(std::size_t run, const Mask& fits)
{
    const std::uint64_t absent = patternOf(absentValue());
    Mask& kept = m_fits[run];
    for (std::size_t i = 0; i < kMask; ++i) {
        const std::size_t word = run * kMask + i;
        const std::uint64_t elements = elementMask(word);
        const std::uint64_t stored = m_blanksInvalid ? validWord(word) : elements;
        kept[i] = fits[i] & stored;
        for (std::uint64_t left = elements & ~kept[i]; left != 0; left &= left - 1) {
            const auto bit = static_cast<std::size_t>(std::countr_zero(left));
            const bool isBlank = ((stored >> bit) & 1U) == 0;
            const std::uint64_t pattern = patternOf(m_values[word * 64 + bit]);
            if (pattern == kSign)
                m_negativeZeros.push_back(static_cast<std::uint16_t>(word * 64 + bit));
            else if (!isBlank || pattern != absent)
                m_misses.push_back(static_cast<std::uint16_t>(word * 64 + bit));
        }
    }
}

bool PackedEncoder::hasTooManyMisses() const
{
    return m_misses.size() > m_values.size() / 32 + 1;
}

}  // namespace plotix
