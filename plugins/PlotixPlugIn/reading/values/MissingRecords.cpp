#include "plugins/PlotixPlugIn/reading/values/MissingRecords.h"

#include "plotkit/model/CPTSeriesIndex.h"

#include <algorithm>
#include <cmath>
#include <span>

namespace plotix {

namespace {

constexpr std::size_t kLookedAt = 4'096;  // records of a stretch, to see whether it holds any

/// An element that is no record was either never recorded, and then it has no value at all, or it keeps the value that
/// came and is marked as not valid.
bool isNotValid(const LineRecords& line, std::size_t element)
{
    if (!line.column || element >= line.column->size())
        return false;
    return !line.column->isValid(element) && !std::isnan(line.column->archivedValues()[element]);
}

class StretchSearch {
public:
    StretchSearch(const LineRecords& line, const TimeSpan& within, double least)
        : m_line(line),
          m_within(within),
          m_least(least),
          m_times(line.series->x().span().first(line.series->elementCount()))
    {
    }

    std::vector<MissingStretch> stretches()
    {
        const CPTSeriesIndex& index = m_line.series->index();
        std::size_t record = index.lastPointBefore(firstBeyond(0, m_within.from));
        if (record >= m_times.size())
            record = endStretch(0, m_within.from, index.firstPointFrom(0), HUGE_VAL);
        while (record < m_times.size() && m_times[record] < m_within.to) {
            const std::size_t beyond = firstBeyond(record, m_times[record] + m_least);
            const std::size_t last = index.lastPointBefore(beyond);
            if (last < m_times.size() && last > record) {
                record = last;  // no stretch between the two is longer than `least`
                continue;
            }
            record = endStretch(record + 1, m_times[record], index.firstPointFrom(record + 1), longestJoin(record));
        }
        return std::move(m_found);
    }

private:
    double longestJoin(std::size_t record) const
    {
        const bool isLast = m_line.series->index().firstPointFrom(record + 1) >= m_times.size();
        return isLast ? lastCountsFor(m_line) : m_line.longestJoin;
    }

    /// Of the elements from `from` on; the distance doubles, as the next one looked for is mostly near.
    std::size_t firstBeyond(std::size_t from, double time) const
    {
        std::size_t step = 1;
        std::size_t low = from;
        while (low + step < m_times.size() && m_times[low + step] <= time) {
            low += step;
            step *= 2;
        }
        const auto end = m_times.begin() + static_cast<std::ptrdiff_t>(std::min(low + step, m_times.size()));
        return static_cast<std::size_t>(
            std::upper_bound(m_times.begin() + static_cast<std::ptrdiff_t>(low), end, time) - m_times.begin());
    }

    /// Notes what lies between the record in front of `first` and the next one, which it answers.
    std::size_t endStretch(std::size_t first, double from, std::size_t next, double longestJoin)
    {
        const double to = next < m_times.size() ? m_times[next] : m_within.to;
        const std::size_t end = std::min({next, m_times.size(), first + kLookedAt});
        bool holdsAny = false;
        for (std::size_t element = first; element < end && !holdsAny && m_times[element] <= m_within.to; ++element)
            holdsAny = m_times[element] >= m_within.from && isNotValid(m_line, element);
        const bool isGap = to - from > longestJoin || first == 0;
        const double shownFrom = std::max(from, m_within.from);
        const double shownTo = std::min(to, m_within.to);
        if ((holdsAny || isGap) && shownTo - shownFrom >= m_least)
            m_found.push_back({shownFrom, shownTo, holdsAny ? Missing::NotValid : Missing::NotRecorded});
        return next;
    }

    const LineRecords& m_line;
    const TimeSpan m_within;
    const double m_least;
    const std::span<const double> m_times;
    std::vector<MissingStretch> m_found;
};

}  // namespace

std::vector<MissingStretch> missingStretches(const LineRecords& line, const TimeSpan& within, double least)
{
    if (!line.series || !line.series->isXSorted() || !(within.to > within.from) || !(least > 0))
        return {};
    return StretchSearch(line, within, least).stretches();
}

bool isNotValidAt(const LineRecords& line, double time)
{
    if (!line.series || !line.series->isXSorted() || std::isnan(time))
        return false;
    const std::span<const double> times = line.series->x().span().first(line.series->elementCount());
    auto element = static_cast<std::size_t>(std::upper_bound(times.begin(), times.end(), time) - times.begin());
    // Other properties may have been recorded since: their records are none of this line.
    for (std::size_t looked = 0; element > 0 && looked < kLookedAt; ++looked) {
        --element;
        if (line.series->isPoint(element))
            return false;
        if (isNotValid(line, element))
            return true;
    }
    return false;
}

}  // namespace plotix
