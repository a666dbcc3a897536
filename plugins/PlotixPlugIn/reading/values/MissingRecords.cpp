#include "plugins/PlotixPlugIn/reading/values/MissingRecords.h"

#include "base/PagedReading.h"
#include "plotkit/model/CPTSeriesIndex.h"
#include "plugins/PlotixPlugIn/reading/values/SeriesReader.h"

#include <algorithm>
#include <cmath>

namespace plotix {

namespace {

constexpr std::size_t kLookedAt = 4'096;  // records of a stretch, to see whether it holds any

/// Tells elements that are no records apart: one was either never recorded, and then it has no value at all, or it
/// keeps the value that came and is marked as not valid. Holds the page of the last one: what cannot be read would else
/// be tried again for each.
class NotValidReader {
public:
    explicit NotValidReader(const LineRecords& line) : m_column(line.column.get()) {}

    bool isNotValid(std::size_t element)
    {
        if (!m_column || element >= m_column->size())
            return false;
        if (element < m_first || element >= m_end) {
            m_first = element / PagedMemory::kPage * PagedMemory::kPage;
            m_end = std::min(m_column->size(), m_first + PagedMemory::kPage);
            m_held = m_column->hold(m_first, m_end);
        }
        return !m_column->isValid(element) && !std::isnan(m_column->archivedValues()[element]);
    }

private:
    const KTVRecordColumn* m_column;
    std::size_t m_first = 0, m_end = 0;  // what is held
    KTVRecordColumn::Hold m_held;
};

class StretchSearch {
public:
    StretchSearch(const LineRecords& line, const TimeSpan& within, double least)
        : m_line(line),
          m_within(within),
          m_least(least),
          m_times(line.series->x()),
          m_notValid(line),
          m_count(line.series->elementCount())
    {
    }

    std::vector<MissingStretch> stretches()
    {
        const CPTSeriesIndex& index = m_line.series->index();
        std::size_t record = index.lastPointBefore(m_line.series->elementAfter(m_within.from));
        if (record >= m_count)
            record = endStretch(0, m_within.from, index.firstPointFrom(0), HUGE_VAL);
        for (Place place = placeOf(record); place.record < m_count && place.time < m_within.to;) {
            // No stretch between two records so near is longer than `least`, whatever lies there.
            const double near = place.time + m_least;
            if (const std::optional<Place> known = knownPlaceWithin(place, near)) {
                place = *known;
                continue;
            }
            const std::size_t last = index.lastPointBefore(firstBeyond(place.record, near));
            const bool isLater = last < m_count && last > place.record;
            place = placeOf(isLater ? last
                                    : endStretch(place.record + 1, place.time, index.firstPointFrom(place.record + 1),
                                                 longestJoin(place.record)));
        }
        return std::move(m_found);
    }

private:
    struct Place {
        std::size_t record = 0;  ///< m_count: beyond all
        std::size_t run = 0;     ///< of a paged series
        double time = 0;
    };

    Place placeOf(std::size_t record) const
    {
        const CPTSeriesRuns* runs = m_line.series->runs().get();
        if (record >= m_count)
            return {record, 0, 0};
        if (!runs)
            return {record, 0, m_times[record]};
        // Records that begin a run, as most do that are come to, have their times there: no page is looked at.
        const std::size_t run = runs->runAt(record);
        return {record, run, runs->begin(run) == record ? runs->firstTime(run) : m_times[record]};
    }

    /// A later record up to a time that is known without looking at any, of a paged series.
    std::optional<Place> knownPlaceWithin(const Place& place, double time)
    {
        constexpr std::size_t kMostTried = 8;
        const CPTSeriesRuns* runs = m_line.series->runs().get();
        if (!runs)
            return std::nullopt;
        // Where records are even, the next place is as far as this one was.
        std::size_t run = runs->runFromTime(time, place.run, place.run + m_runsAhead);
        m_runsAhead = run - place.run;
        const auto beginOf = [&](std::size_t known) {
            return Place{runs->begin(known), known, runs->firstTime(known)};
        };
        // What is told of groups is there already: in a wide view no run need be looked at.
        const std::size_t group = run > 0 ? (run - 1) / CPTSeriesRuns::kGroup * CPTSeriesRuns::kGroup : 0;
        if (group > place.run + CPTSeriesRuns::kGroup && std::isfinite(runs->firstValue(group)))
            return beginOf(group);
        for (std::size_t tried = 0; run > place.run + 1 && tried < kMostTried; ++tried)
            if (std::isfinite(runs->firstValue(--run)))
                return beginOf(run);
        return std::nullopt;
    }

    double longestJoin(std::size_t record) const
    {
        const bool isLast = m_line.series->index().firstPointFrom(record + 1) >= m_count;
        return isLast ? lastCountsFor(m_line) : m_line.longestJoin;
    }

    /// Of the elements from `from` on; the distance doubles, as the next one looked for is mostly near.
    std::size_t firstBeyond(std::size_t from, double time) const
    {
        if (m_line.series->runs())
            return m_line.series->elementAfter(time);
        std::size_t step = 1;
        std::size_t low = from;
        while (low + step < m_count && m_times[low + step] <= time) {
            low += step;
            step *= 2;
        }
        const double* times = m_line.series->x().data();
        return static_cast<std::size_t>(std::upper_bound(times + low, times + std::min(low + step, m_count), time) -
                                        times);
    }

    /// Notes what lies between the record in front of `first` and the next one, which it answers.
    std::size_t endStretch(std::size_t first, double from, std::size_t next, double longestJoin)
    {
        const double to = next < m_count ? placeOf(next).time : m_within.to;
        const std::size_t end = std::min({next, m_count, first + kLookedAt});
        bool holdsAny = false;
        for (std::size_t element = first; element < end && !holdsAny && m_times[element] <= m_within.to; ++element)
            holdsAny = m_times[element] >= m_within.from && m_notValid.isNotValid(element);
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
    const PagedReader<double> m_times;
    NotValidReader m_notValid;
    const std::size_t m_count;
    std::size_t m_runsAhead = 0;  // how far ahead the last time looked for lay
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
    std::size_t element = line.series->elementAfter(time);
    SeriesReader reader(*line.series);
    NotValidReader notValid(line);
    // Other properties may have been recorded since: their records are none of this line.
    for (std::size_t looked = 0; element > 0 && looked < kLookedAt; ++looked) {
        --element;
        if (reader.isDrawn(element))
            return false;
        if (notValid.isNotValid(element))
            return true;
    }
    return false;
}

}  // namespace plotix
