#include "plugins/PlotixPlugIn/reading/missing/KeptStretches.h"

#include <algorithm>

namespace plotix {

namespace {

constexpr double kBeside = 0.5;  // of what is shown, on either side: a hand that drags goes on for some frames

bool holds(const TimeSpan& whole, const TimeSpan& part)
{
    return whole.from <= part.from && whole.to >= part.to;
}

KeptStretches::OfLine cut(const KeptStretches::OfLine& stretches, const TimeSpan& within, double least)
{
    KeptStretches::OfLine kept;
    for (const MissingStretch& stretch : stretches) {
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
    Search search{least, {}};
    for (const LineRecords* line : lines)
        search.lines.emplace_back(line->series->serial(), line->longestJoin);
    const bool isSearched = m_search == search && holds(m_searched, shown);
    if (isSearched && m_shown == shown)
        return m_within;
    if (!isSearched && shown.to > shown.from) {
        // A view that was zoomed is mostly zoomed again: beyond it is looked once it is panned.
        const double beside = m_search == search ? kBeside * (shown.to - shown.from) : 0;
        m_searched = {std::max(known.from, shown.from - beside), std::min(known.to, shown.to + beside)};
        m_found.clear();
        for (const LineRecords* line : lines)
            m_found.push_back(missingStretches(*line, m_searched, least));
        m_search = std::move(search);
        ++m_searches;
    }
    m_shown = shown;
    m_within.assign(lines.size(), {});
    if (shown.to > shown.from)
        std::ranges::transform(m_found, m_within.begin(),
                               [&](const OfLine& stretches) { return cut(stretches, shown, least); });
    return m_within;
}

}  // namespace plotix
