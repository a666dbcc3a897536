#include "plugins/PlotixPlugIn/logic/Statistics.h"

#include <algorithm>
#include <bit>
#include <cmath>
#include <cstring>

namespace plotix {

namespace {

constexpr std::size_t kWordBits = 64;

constexpr std::size_t kLanes = 2;
using Lanes = double __attribute__((vector_size(kLanes * sizeof(double))));
constexpr std::size_t kGroups = 4;              // so that no comparison waits for the one before
constexpr std::size_t kRow = kGroups * kLanes;  // values gone through at once
constexpr std::size_t kBlock = 1024;            // values that one NaN sends through the slow way

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
    if (m_minimum > value)
        m_minimum = value;
    if (value > m_maximum)
        m_maximum = value;
    m_sum += value;
    ++m_count;
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

// The sum is one chain of additions, as long as the values: it alone says how long this takes, and the extremes of
// several values at once go along with it.
bool StatisticsAccumulator::addNumbers(std::span<const double> values)
{
    Lanes smallest[kGroups], largest[kGroups], numbers[kGroups];
    for (std::size_t group = 0; group < kGroups; ++group) {
        std::memcpy(&smallest[group], values.data() + group * kLanes, sizeof(Lanes));
        largest[group] = smallest[group];
        numbers[group] = Lanes{};
    }
    double sum = m_sum;
    for (std::size_t first = 0; first < values.size(); first += kRow) {
        for (std::size_t group = 0; group < kGroups; ++group) {
            Lanes each;
            std::memcpy(&each, values.data() + first + group * kLanes, sizeof each);
            smallest[group] = each < smallest[group] ? each : smallest[group];
            largest[group] = each > largest[group] ? each : largest[group];
            numbers[group] += each != each ? Lanes{1, 1} : Lanes{};
        }
        for (std::size_t i = first; i < first + kRow; ++i)
            sum += values[i];
    }
    double minimum = smallest[0][0], maximum = largest[0][0], odd = 0;
    for (std::size_t group = 0; group < kGroups; ++group)
        for (std::size_t lane = 0; lane < kLanes; ++lane) {
            minimum = std::min(minimum, smallest[group][lane]);
            maximum = std::max(maximum, largest[group][lane]);
            odd += numbers[group][lane];
        }
    if (odd > 0)
        return false;
    if (m_minimum > minimum)
        m_minimum = asFirstMet(minimum, values);
    if (maximum > m_maximum)
        m_maximum = asFirstMet(maximum, values);
    m_sum = sum;
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
