#include "plugins/PlotixPlugIn/reading/clock/ClockChanges.h"

#include "plotkit/model/CPTClock.h"

#include <QtCore/QDateTime>

#include <cmath>

namespace plotix {

std::vector<ClockChange> clockChanges(const QTimeZone& zone, const TimeSpan& span)
{
    constexpr double kCalendarLimit = 2.0e11;  // seconds; years of four digits
    const bool isKnown = std::abs(span.from) < kCalendarLimit && std::abs(span.to) < kCalendarLimit;
    if (!isKnown || !(span.to - span.from <= kLongestSpanWithChanges))
        return {};
    const auto utc = [](double seconds) { return QDateTime::fromSecsSinceEpoch(qint64(seconds), Qt::UTC); };
    std::vector<ClockChange> changes;
    for (const QTimeZone::OffsetData& change : zone.transitions(utc(std::ceil(span.from)), utc(std::floor(span.to)))) {
        const auto time = static_cast<double>(change.atUtc.toSecsSinceEpoch());
        const int seconds = change.offsetFromUtc - plotkit::offsetAt(zone, time - 1);
        if (seconds != 0 && time >= span.from && time <= span.to)
            changes.push_back({time, seconds});
    }
    return changes;
}

}  // namespace plotix
