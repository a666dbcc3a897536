#pragma once

#include "plotkit/model/PagedSeries.h"
#include "tests/plotkit/model/PagesOfVectors.h"

#include <algorithm>
#include <cmath>
#include <limits>
#include <random>
#include <vector>

/// The same series twice: once in memory and once paged, through a cache that keeps nothing which is not held.
namespace plotkit_test {

/// Archived values, gathered element by element.
class TwinSeries {
public:
    void add(double x, double value, bool isValid = true)
    {
        m_x.push_back(x);
        m_values.push_back(value);
        m_valid.push_back(isValid);
    }
    std::size_t size() const { return m_x.size(); }
    const std::vector<double>& x() const { return m_x; }

    /// Cuts all elements added so far into runs of up to `longest`, of random lengths.
    void cutRuns(std::size_t longest, unsigned seed)
    {
        std::mt19937 random(seed);
        auto times = std::make_shared<plotix::TimeRuns>();
        m_runs = {};
        for (std::size_t begin = 0; begin < size();) {
            const std::size_t end = std::min(size(), begin + 1 + random() % longest);
            times->begin.push_back(begin);
            times->first.push_back(m_x[begin]);
            times->last.push_back(m_x[end - 1]);
            addRun(begin, end);
            begin = end;
        }
        times->begin.push_back(size());
        m_times = times;
    }

    /// What another series knows of its own elements; not where its values differ.
    void takeRunsOf(const TwinSeries& other)
    {
        m_times = other.m_times;
        m_runs = other.m_runs;
    }

    CPTPointSeriesPtr inMemory() const
    {
        const auto count = size();
        auto y = std::vector<float>(count);
        auto words = std::vector<std::uint64_t>((count + 63) / 64);
        CPTFineBlocks fine(count);
        CPTPointWriter writer({y.data(), words.data(), fine}, 0, count);
        for (std::size_t element = 0; element < count; ++element)
            if (m_valid[element])
                writer.setPoint(element, m_values[element]);
        writer.finish();
        return std::make_shared<const CPTPointSeries>(
            plotix::SharedArray<double>::fromVector(m_x), plotix::SharedArray<float>::fromVector(std::move(y)),
            plotix::ValidityBitmap(plotix::SharedArray<std::uint64_t>::fromVector(std::move(words))), points(),
            std::move(fine));
    }
    CPTPointSeriesPtr paged(std::size_t budget = 0, const std::vector<std::size_t>& changed = {})
    {
        m_pages = std::make_shared<PagedDoubles>(std::make_shared<plotix::PageCache>(budget), m_values, m_valid);
        return pagedBy(m_pages, changed);
    }
    /// The same with other points beneath the same times and runs.
    CPTPointSeriesPtr pagedBy(const std::shared_ptr<const CPTPagedPoints>& pages,
                              const std::vector<std::size_t>& changed = {}) const
    {
        const auto x = std::make_shared<PagedTimes>(pages->cache(), m_x)->array();
        return plotkit::pagedSeries(x, {m_times, plotix::KeptRuns::of(m_runs), changed}, pages, points());
    }
    /// The same points again beside the times of `other`, but with the runs cut last.
    CPTPointSeriesPtr pagedBeside(const CPTPointSeries& other) const
    {
        return plotkit::pagedSeries(other.x(), {m_times, plotix::KeptRuns::of(m_runs), {}}, m_pages, points());
    }
    /// How often pages of the paged series' points were written since it was made.
    std::size_t looks() const { return m_pages->looks(); }

private:
    bool counts(std::size_t element) const { return m_valid[element] && !std::isnan(m_values[element]); }
    std::size_t points() const
    {
        std::size_t count = 0;
        for (std::size_t element = 0; element < size(); ++element)
            count += counts(element) ? 1 : 0;
        return count;
    }
    void addRun(std::size_t begin, std::size_t end)
    {
        constexpr double kInfinity = std::numeric_limits<double>::infinity();
        double least = kInfinity;
        double greatest = -kInfinity;
        for (std::size_t element = begin; element < end; ++element)
            if (counts(element)) {
                least = std::min(least, m_values[element]);
                greatest = std::max(greatest, m_values[element]);
            }
        m_runs.least.push_back(least);
        m_runs.greatest.push_back(greatest);
        m_runs.first.push_back(counts(begin) ? m_values[begin] : std::nan(""));
    }

    std::vector<double> m_x, m_values;
    std::vector<bool> m_valid;
    std::shared_ptr<const plotix::TimeRuns> m_times;
    plotix::ValueRuns m_runs;
    std::shared_ptr<PagedDoubles> m_pages;
};

/// What a twin is made of.
struct OddSeries {
    std::size_t count = 200'000;
    std::size_t longestRun = 512;
    double dropped = 0;      ///< of all elements, in stretches
    double odd = 0;          ///< of all values: NaN, infinite, beyond single precision, −0
    double gap = 0;          ///< of all steps in time
    bool isRegular = false;  ///< times a second apart, but for gaps
    unsigned seed = 1;
};

inline TwinSeries oddTwin(const OddSeries& wanted)
{
    std::mt19937 random(wanted.seed);
    std::uniform_real_distribution<double> share(0, 1);
    std::exponential_distribution<double> step(1);
    constexpr double kOdd[] = {std::numeric_limits<double>::quiet_NaN(),
                               std::numeric_limits<double>::infinity(),
                               -std::numeric_limits<double>::infinity(),
                               1e300,
                               -1e300,
                               -0.0,
                               3e38};
    TwinSeries twin;
    double time = 1.4e9;
    double level = 0;
    std::size_t droppedUpTo = 0;
    for (std::size_t element = 0; element < wanted.count; ++element) {
        if (share(random) < wanted.dropped / 50)
            droppedUpTo = element + random() % 100;
        level += share(random) - 0.5;
        const double spike = random() % 5000 == 0 ? 100 * (share(random) - 0.5) : 0;
        const bool isOdd = share(random) < wanted.odd;
        twin.add(time, isOdd ? kOdd[random() % 7] : level + spike, element >= droppedUpTo);
        time += wanted.isRegular ? 1 : step(random) * static_cast<double>(random() % 7 != 0);
        if (share(random) < wanted.gap)
            time += 1e4 * share(random);
    }
    twin.cutRuns(wanted.longestRun, wanted.seed + 1);
    return twin;
}

}  // namespace plotkit_test
