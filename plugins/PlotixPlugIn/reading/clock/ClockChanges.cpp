#include "plugins/PlotixPlugIn/reading/clock/ClockChanges.h"

#include "plotkit/model/CPTClock.h"

#include <QtCore/QDateTime>

#include <algorithm>
#include <cmath>

namespace plotix {

namespace {

constexpr double kCalendarLimit = 2.0e11;  // seconds; years of four digits

/// Requires: times within the calendar.
std::vector<ClockChange> lookedUp(const QTimeZone& zone, const TimeSpan& span)
{
    const auto utc = [](double seconds) { return QDateTime::fromSecsSinceEpoch(qint64(seconds), Qt::UTC); };
    std::vector<ClockChange> changes;
    for (const QTimeZone::OffsetData& change : zone.transitions(utc(std::ceil(span.from)), utc(std::floor(span.to)))) {
        const auto time = static_cast<double>(change.atUtc.toSecsSinceEpoch());
        const int seconds = change.offsetFromUtc - plotkit::offsetAt(zone, time - 1);
        if (seconds != 0)
            changes.push_back({time, seconds});
    }
    return changes;
}

}  // namespace

std::vector<ClockChange> KnownClockChanges::within(const QTimeZone& zone, const TimeSpan& span)
{
    const bool isInCalendar = std::abs(span.from) < kCalendarLimit && std::abs(span.to) < kCalendarLimit;
    if (!isInCalendar || !(span.to - span.from <= kLongestSpanWithChanges))
        return {};
    if (zone != m_zone || !(m_known.from < m_known.to) || span.from < m_known.from || span.to > m_known.to) {
        m_zone = zone;
        m_known = {span.from - kLongestSpanWithChanges, span.to + kLongestSpanWithChanges};
        m_changes = lookedUp(zone, m_known);
    }
    std::vector<ClockChange> changes;
    std::copy_if(m_changes.begin(), m_changes.end(), std::back_inserter(changes),
                 [&span](const ClockChange& each) { return each.time >= span.from && each.time <= span.to; });
    return changes;
}

std::vector<int> KnownClockChanges::offsets(const QTimeZone& zone, const TimeSpan& span)
{
    const TimeSpan end{std::max(span.from, span.to - kLongestSpanWithChanges), span.to};
    std::vector<int> offsets;
    const auto add = [&](double time) {
        const int offset = plotkit::offsetAt(zone, time);
        if (std::find(offsets.begin(), offsets.end(), offset) == offsets.end())
            offsets.push_back(offset);
    };
    add(span.from);
    add(end.from);
    for (const ClockChange& change : within(zone, end))
        add(change.time);
    return offsets;
}

}  // namespace plotix
