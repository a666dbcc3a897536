#include "plugins/PlotixPlugIn/reading/missing/KeptStretches.h"

#include <algorithm>
#include <cmath>

namespace plotix {

namespace {

constexpr double kBeside = 0.5;  // of what is shown, on either side: a hand that drags goes on for some frames

bool holds(const TimeSpan& whole, const TimeSpan& part)
{
    return whole.from <= part.from && whole.to >= part.to;
}

/// From the last record to when it ceases to count.
TimeSpan lastOf(const LineRecords& line)
{
    const OptionalLineRecord last = recordBefore(line, HUGE_VAL);
    return last ? TimeSpan{last->time, last->time + lastCountsFor(line)} : TimeSpan{-HUGE_VAL, -HUGE_VAL};
}

/// How often something of the lines was looked at that could not be read.
std::size_t failedLooks(const std::vector<const LineRecords*>& lines)
{
    std::size_t looks = 0;
    const auto count = [&looks](const std::shared_ptr<const PagedMemory>& memory) {
        looks += memory ? memory->standInsHeld() : 0;
    };
    for (const LineRecords* line : lines) {
        count(line->series->x().memory());
        count(line->series->y().memory());
        if (line->column)
            count(line->column->archivedValues().memory());
    }
    return looks;
}

/// Behind the last record a view that ends while that counts has no gap yet, however far beyond it was searched.
KeptStretches::OfLine cut(const KeptStretches::OfLine& stretches, const TimeSpan& within, double least,
                          const TimeSpan& last)
{
    KeptStretches::OfLine kept;
    for (const MissingStretch& stretch : stretches) {
        const bool isBehindLast = stretch.kind == Missing::NotRecorded && stretch.from >= last.from;
        if (isBehindLast && within.to <= last.to)
            continue;
        const double from = std::max(stretch.from, within.from), to = std::min(stretch.to, within.to);
        if (to - from >= least)
            kept.push_back({from, to, stretch.kind});
    }
    return kept;
}

}  // namespace

const std::vector<KeptStretches::OfLine>& KeptStretches::within(const TimeSpan& shown, const TimeSpan& known,
                                                                double least,
                                                                const std::vector<const LineRecords*>& lines)
{
    if (!(shown.to > shown.from)) {
        m_shown = shown;  // whatever is shown next is another span
        m_within.assign(lines.size(), {});
        return m_within;
    }
    Search search{least, {}};
    for (const LineRecords* line : lines)
        search.lines.emplace_back(line->series->serial(), line->longestJoin);
    const bool isSearched = m_search == search && holds(m_searched, shown);
    if (isSearched && m_shown == shown)
        return m_within;
    if (!isSearched) {
        // A view that was zoomed is mostly zoomed again: beyond it is looked once it is panned.
        const double beside = m_search == search ? kBeside * (shown.to - shown.from) : 0;
        m_searched = {std::max(known.from, shown.from - beside), std::min(known.to, shown.to + beside)};
        const std::size_t failedBefore = failedLooks(lines);
        m_found.clear();
        for (const LineRecords* line : lines)
            m_found.push_back(missingStretches(*line, m_searched, least));
        m_last.clear();
        for (const LineRecords* line : lines)
            m_last.push_back(lastOf(*line));
        m_search = std::move(search);
        if (failedLooks(lines) != failedBefore)
            m_search.reset();
        ++m_searches;
    }
    m_shown = shown;
    m_within.assign(lines.size(), {});
    for (std::size_t line = 0; line < lines.size(); ++line)
        m_within[line] = cut(m_found[line], shown, least, m_last[line]);
    return m_within;
}

}  // namespace plotix
