#include "plugins/PlotixPlugIn/logic/Statistics.h"

#include "plugins/PlotixPlugIn/logic/StatisticsKernels.h"

#include <algorithm>
#include <bit>
#include <cmath>

namespace plotix {

namespace {

constexpr std::size_t kWordBits = 64;

constexpr std::size_t kRow = StatisticsKernels::kRow;
constexpr std::size_t kBlock = 1024;  // one NaN makes so many values take the slow path

/// Of a zero, the first one that stands there: it may be negative, and one by one the first of equals stays.
double asFirstMet(double extreme, std::span<const double> values)
{
    return extreme == 0 ? *std::find(values.begin(), values.end(), 0.0) : extreme;
}

}  // namespace

void StatisticsAccumulator::add(double value)
{
    if (std::isnan(value))
        return;
    addExtremes(value, value);
    m_sum += value;
    ++m_count;
}

void StatisticsAccumulator::addExtremes(double least, double greatest)
{
    if (m_minimum > least)
        m_minimum = least;
    if (greatest > m_maximum)
        m_maximum = greatest;
}

bool StatisticsAccumulator::addKnown(const KnownValues& known)
{
    if (!std::isfinite(known.scale) || !std::isfinite(known.offset) || known.scale == 0)
        return false;
    const bool isAsItIs = known.scale == 1 && known.offset == 0;
    const auto shown = [&](double value) { return isAsItIs ? value : value * known.scale + known.offset; };
    // Values too small to stay apart from zero have become zeros of either sign: which came first, nobody kept.
    const auto isTold = [&](double value) { return value == 0 || shown(value) != 0 || known.offset != 0; };
    StatisticsAccumulator all = *this;
    bool areTold = true;
    const auto take = [&](const ValueRuns& piece) {
        for (std::size_t run = 0; run < piece.count(); ++run) {
            const double least = piece.least[run], greatest = piece.greatest[run];
            const bool isUnknown = std::isnan(least) || std::isnan(greatest);
            if (!isUnknown && !(least <= greatest))
                continue;
            areTold = areTold && !isUnknown && isTold(least) && isTold(greatest);
            const bool isTurned = known.scale < 0;
            all.addExtremes(shown(isTurned ? greatest : least), shown(isTurned ? least : greatest));
        }
    };
    // Where no value becomes a zero, extremes of many runs tell as much as those of each.
    if (std::abs(known.scale) >= 1)
        known.runs.inLongRuns(take);
    else
        known.runs.inPieces(take);
    if (!areTold)
        return false;
    if (std::isnan(known.sum))  // infinities of both signs, as the processor adds them: tables write the NaN's sign
        all.m_sum += all.m_minimum + all.m_maximum;
    else
        all.m_sum += isAsItIs ? known.sum : known.sum * known.scale + known.offset * static_cast<double>(known.count);
    all.m_count += known.count;
    *this = all;
    return true;
}

void StatisticsAccumulator::addAll(std::span<const double> values)
{
    while (values.size() >= kRow) {
        const std::span<const double> block = values.first(std::min(values.size() / kRow * kRow, kBlock));
        if (!addNumbers(block))
            for (const double value : block)
                add(value);
        values = values.subspan(block.size());
    }
    for (const double value : values)
        add(value);
}

bool StatisticsAccumulator::addNumbers(std::span<const double> values)
{
    const StatisticsKernels::Found found = StatisticsKernels::best().addUp(values.data(), values.size(), m_sum);
    if (found.hasNaN)
        return false;
    if (m_minimum > found.minimum)
        m_minimum = asFirstMet(found.minimum, values);
    if (found.maximum > m_maximum)
        m_maximum = asFirstMet(found.maximum, values);
    m_sum = found.sum;
    m_count += static_cast<std::int64_t>(values.size());
    return true;
}

void StatisticsAccumulator::addBlock(std::span<const double> values, const ValidityBitmap& validity, std::size_t first)
{
    if (validity.isAllValid()) {
        addAll(values);
        return;
    }
    std::size_t run = 0;  // valid elements before `done` that are still to be added
    for (std::size_t done = 0; done < values.size();) {
        const std::size_t bit = (first + done) % kWordBits;
        const std::size_t count = std::min(kWordBits - bit, values.size() - done);
        const std::uint64_t whole = ~std::uint64_t{0} >> (kWordBits - count);
        std::uint64_t valid = (validity.words()[(first + done) / kWordBits] >> bit) & whole;
        if (valid == whole) {
            run += count;
        } else {
            addAll(values.subspan(done - run, run));
            run = 0;
            for (; valid != 0; valid &= valid - 1)
                add(values[done + static_cast<std::size_t>(std::countr_zero(valid))]);
        }
        done += count;
    }
    addAll(values.last(run));
}

Statistics StatisticsAccumulator::statistics() const
{
    if (m_count < 1)
        return {};
    constexpr std::int64_t kMostPoints = std::numeric_limits<std::int32_t>::max();
    return {m_minimum, m_maximum, m_sum / static_cast<double>(m_count),
            static_cast<std::int32_t>(std::min(m_count, kMostPoints))};
}

}  // namespace plotix
