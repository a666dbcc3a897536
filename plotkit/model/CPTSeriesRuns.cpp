#include "plotkit/model/CPTSeriesRuns.h"

#include <algorithm>
#include <cassert>
#include <cmath>
#include <limits>
#include <utility>

CPTSeriesRuns::CPTSeriesRuns(std::shared_ptr<const plotix::TimeRuns> times, Values values, std::size_t elements)
    : m_times(std::move(times)), m_values(std::move(values)), m_elements(elements)
{
    const std::vector<std::size_t>& begin = m_times->begin;
    const auto runsEnd = begin.begin() + static_cast<std::ptrdiff_t>(m_times->count());
    m_count = static_cast<std::size_t>(std::lower_bound(begin.begin(), runsEnd, elements) - begin.begin());
    assert(elements <= (begin.empty() ? 0 : begin.back()));
    assert(m_values.least.size() >= m_count && m_values.greatest.size() >= m_count && m_values.first.size() >= m_count);
    for (std::size_t run = 0; run < m_count; run += kGroup) {
        const CPTMinMax pair =
            plotkit::joinedPairs(m_values.least.data(), m_values.greatest.data(), run, std::min(m_count, run + kGroup));
        m_groupLeast.push_back(pair.min);
        m_groupGreatest.push_back(pair.max);
    }
}

CPTMinMax CPTSeriesRuns::minMax(std::size_t first, std::size_t end) const
{
    const auto ofRuns = [this](std::size_t from, std::size_t to) {
        return plotkit::joinedPairs(m_values.least.data(), m_values.greatest.data(), from, to);
    };
    const std::size_t firstGroup = (first + kGroup - 1) / kGroup;
    const std::size_t endGroup = end / kGroup;
    if (firstGroup >= endGroup)
        return ofRuns(first, end);
    const CPTMinMax ends = plotkit::joined(ofRuns(first, firstGroup * kGroup), ofRuns(endGroup * kGroup, end));
    return plotkit::joined(ends,
                           plotkit::joinedPairs(m_groupLeast.data(), m_groupGreatest.data(), firstGroup, endGroup));
}

std::size_t CPTSeriesRuns::firstKnown(std::size_t first, std::size_t end) const
{
    while (first < end && std::isnan(m_values.first[first]))
        ++first;
    return first;
}

std::size_t CPTSeriesRuns::runAt(std::size_t element) const
{
    assert(element < m_elements);
    const auto from = m_times->begin.begin();
    return static_cast<std::size_t>(std::upper_bound(from, from + static_cast<std::ptrdiff_t>(m_count), element) -
                                    from - 1);
}

std::size_t CPTSeriesRuns::runFrom(std::size_t element) const
{
    const auto from = m_times->begin.begin();
    return static_cast<std::size_t>(std::lower_bound(from, from + static_cast<std::ptrdiff_t>(m_count), element) -
                                    from);
}

std::size_t CPTSeriesRuns::runFromTime(double x) const
{
    const auto from = m_times->first.begin();
    return static_cast<std::size_t>(std::lower_bound(from, from + static_cast<std::ptrdiff_t>(m_count), x) - from);
}

std::size_t CPTSeriesRuns::filledFrom(std::size_t run) const
{
    while (run < m_count && isEmpty(run)) {
        const bool skipsGroup = run % kGroup == 0 && !(m_groupLeast[run / kGroup] <= m_groupGreatest[run / kGroup]);
        run += skipsGroup ? kGroup : 1;
    }
    return std::min(run, m_count);
}

std::size_t CPTSeriesRuns::filledBefore(std::size_t run) const
{
    run = std::min(run, m_count);
    while (run > 0 && isEmpty(run - 1)) {
        const std::size_t group = (run - 1) / kGroup;
        const bool skipsGroup = !(m_groupLeast[group] <= m_groupGreatest[group]);
        run = skipsGroup ? group * kGroup : run - 1;
    }
    return run > 0 ? run - 1 : m_count;
}

bool CPTSeriesRuns::areTimesSorted() const
{
    double before = -std::numeric_limits<double>::infinity();
    for (std::size_t run = 0; run < m_count; ++run) {
        const double first = m_times->first[run];
        const double last = m_times->last[run];
        if (!std::isfinite(first) || !std::isfinite(last) || first < before || last < first)
            return false;
        before = last;
    }
    return true;
}
