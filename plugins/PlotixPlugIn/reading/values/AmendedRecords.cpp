#include "plugins/PlotixPlugIn/reading/values/AmendedRecords.h"

#include <algorithm>
#include <bit>
#include <limits>

namespace plotix {

namespace {

using Kind = KTVAmendment::Kind;

bool beginsEarlier(const KTVAmendment& one, const KTVAmendment& other)
{
    return one.from < other.from;
}

}  // namespace

double cameAt(const KTVAmendment& amendment, double time)
{
    const double length = amendment.to - amendment.from;
    const double share = length > 0 ? std::clamp((time - amendment.from) / length, 0.0, 1.0) : 1.0;
    return amendment.first + share * (amendment.last - amendment.first);
}

std::vector<KTVAmendment> lateByMoreThan(double delay, const std::vector<KTVAmendment>& amendments)
{
    std::vector<KTVAmendment> left;
    left.reserve(amendments.size());
    for (const KTVAmendment& each : amendments) {
        const double atBegin = each.first - each.from, atEnd = each.last - each.to;
        if (each.kind == Kind::Corrected || (atBegin > delay && atEnd > delay)) {
            left.push_back(each);
            continue;
        }
        if (atBegin <= delay && atEnd <= delay)
            continue;
        // Delays change evenly along a stretch.
        const double turn = each.from + (each.to - each.from) * (delay - atBegin) / (atEnd - atBegin);
        KTVAmendment part = each;
        (atBegin > delay ? part.to : part.from) = turn;
        (atBegin > delay ? part.last : part.first) = cameAt(each, turn);
        left.push_back(part);
    }
    return left;
}

AmendedRecords::AmendedRecords(const std::vector<KTVAmendment>& amendments)
{
    for (const Kind kind : {Kind::Late, Kind::Corrected}) {
        std::vector<KTVAmendment> those;
        those.reserve(amendments.size());
        std::copy_if(amendments.begin(), amendments.end(), std::back_inserter(those),
                     [kind](const KTVAmendment& each) { return each.kind == kind; });
        m_kinds[static_cast<std::size_t>(kind)].take(std::move(those));
    }
}

std::optional<KTVAmendment> AmendedRecords::at(double time) const
{
    std::optional<KTVAmendment> latest;
    for (const Stretches& those : m_kinds)
        for (std::size_t next = those.nextReaching(0, time); next < those.size() && those[next].from <= time;
             next = those.nextReaching(next + 1, time))
            if (!latest || cameAt(those[next], time) >= cameAt(*latest, time))
                latest = those[next];
    return latest;
}

std::vector<TimeSpan> AmendedRecords::spans(Kind kind, const TimeSpan& within, double apart) const
{
    const Stretches& those = of(kind);
    std::vector<TimeSpan> spans;
    std::size_t next = those.firstReached(within.from);
    while (next < those.size() && those[next].from <= within.to) {
        TimeSpan span{those[next].from, those[next].to};
        for (next = those.firstBeyond(next, span.to + apart); those.reach(next - 1) > span.to;
             next = those.firstBeyond(next, span.to + apart))
            span.to = those.reach(next - 1);
        spans.push_back(span);
    }
    return spans;
}

void AmendedRecords::Stretches::take(std::vector<KTVAmendment> amendments)
{
    m_all = std::move(amendments);
    if (!std::is_sorted(m_all.begin(), m_all.end(), beginsEarlier))  // mostly they are
        std::stable_sort(m_all.begin(), m_all.end(), beginsEarlier);
    const std::size_t leaves = std::bit_ceil(m_all.size());
    m_begins.clear();
    m_begins.reserve(m_all.size());
    m_reach.clear();
    m_reach.reserve(m_all.size());
    m_ends.assign(2 * leaves, -std::numeric_limits<double>::infinity());
    for (std::size_t index = 0; index < m_all.size(); ++index) {
        m_ends[leaves + index] = m_all[index].to;
        m_begins.push_back(m_all[index].from);
        m_reach.push_back(index == 0 ? m_all[index].to : std::max(m_reach.back(), m_all[index].to));
    }
    for (std::size_t node = leaves - 1; node > 0; --node)
        m_ends[node] = std::max(m_ends[2 * node], m_ends[2 * node + 1]);
}

std::size_t AmendedRecords::Stretches::firstReached(double time) const
{
    return static_cast<std::size_t>(std::lower_bound(m_reach.begin(), m_reach.end(), time) - m_reach.begin());
}

// Mostly it is near: the distance looked at doubles.
std::size_t AmendedRecords::Stretches::firstBeyond(std::size_t index, double time) const
{
    std::size_t step = 1;
    while (index + step < m_begins.size() && m_begins[index + step] <= time) {
        index += step;
        step *= 2;
    }
    const auto begin = m_begins.begin() + static_cast<std::ptrdiff_t>(index);
    const auto end = m_begins.begin() + static_cast<std::ptrdiff_t>(std::min(index + step, m_begins.size()));
    return static_cast<std::size_t>(std::upper_bound(begin, end, time) - m_begins.begin());
}

std::size_t AmendedRecords::Stretches::nextReaching(std::size_t index, double time) const
{
    const std::size_t leaves = m_ends.size() / 2;
    if (index >= m_all.size())
        return m_all.size();
    std::size_t node = leaves + index;
    // Up and to the right, past all that end sooner.
    while (m_ends[node] < time) {
        while (node % 2 == 1)
            node /= 2;
        if (node == 0)
            return m_all.size();
        ++node;
    }
    while (node < leaves)
        node = m_ends[2 * node] >= time ? 2 * node : 2 * node + 1;
    return node - leaves;
}

}  // namespace plotix
