#include "plugins/PlotixPlugIn/reading/comparing/EarlierTimes.h"

#include <QtCore/QDateTime>

#include <algorithm>
#include <cmath>
#include <limits>
#include <tuple>

namespace plotix {

namespace {

constexpr double kMillis = 1000;
constexpr double kSecondsOfDay = 86'400;
constexpr double kSlackDays = 2;    // clocks of a zone differ by less
constexpr double kFarthest = 1e11;  // some three thousand years: what calendars of zones know

/// A stretch of time in which a zone's clocks run evenly. Local times are seconds since 1970-01-01 on the wall clock.
struct EvenStretch {
    TimeSpan times;
    double offset = 0;  // local less UTC, seconds

    double localFrom() const { return times.from + offset; }
    double localTo() const { return times.to + offset; }
};

QDateTime momentOf(double seconds)
{
    return QDateTime::fromMSecsSinceEpoch(static_cast<qint64>(std::floor(seconds * kMillis)), Qt::UTC);
}

double offsetAt(const QTimeZone& zone, double time)
{
    return zone.offsetFromUtc(momentOf(time));
}

std::vector<EvenStretch> evenStretches(const QTimeZone& zone, const TimeSpan& times)
{
    std::vector<EvenStretch> stretches{{times, offsetAt(zone, times.from)}};
    for (const QTimeZone::OffsetData& change : zone.transitions(momentOf(times.from), momentOf(times.to))) {
        const double at = static_cast<double>(change.atUtc.toMSecsSinceEpoch()) / kMillis;
        if (at <= times.from || at >= times.to || change.offsetFromUtc == stretches.back().offset)
            continue;
        stretches.back().times.to = at;
        stretches.push_back({{at, times.to}, static_cast<double>(change.offsetFromUtc)});
    }
    return stretches;
}

double localMidnight(const QDate& day)
{
    return static_cast<double>(QDate(1970, 1, 1).daysTo(day)) * kSecondsOfDay;
}

QDate dayOf(double local)
{
    return QDate(1970, 1, 1).addDays(static_cast<qint64>(std::floor(local / kSecondsOfDay)));
}

/// A stretch of local times whose days all lie equally many days after those beside them.
struct CalendarStretch {
    double from = 0, to = 0;  // present local times
    double back = 0;          // seconds to the earlier local time
};

std::vector<CalendarStretch> calendarStretches(double from, double to, const TimeDistance& distance)
{
    if (distance.months == 0)
        return {{from, to, distance.days * kSecondsOfDay}};
    // A day's earlier one is so many days before it, and the same day of the month so many months before that.
    std::vector<CalendarStretch> stretches;
    const double days = distance.days * kSecondsOfDay;
    QDate month = dayOf(from - days);
    for (month = QDate(month.year(), month.month(), 1); localMidnight(month) + days < to; month = month.addMonths(1)) {
        const QDate before = month.addMonths(-distance.months);
        const int shared = std::min(month.daysInMonth(), before.daysInMonth());
        const double begin = localMidnight(month) + days;
        const CalendarStretch all{begin, begin + shared * kSecondsOfDay, begin - localMidnight(before)};
        if (std::min(to, all.to) > std::max(from, all.from))
            stretches.push_back({std::max(from, all.from), std::min(to, all.to), all.back});
    }
    return stretches;
}

enum class Pass { First, Second };

/// Adds what the earlier local times [from, to) are. `shift`: from an earlier local time to the present time beside it.
void addPlaces(std::vector<EarlierStretch>& places, const std::vector<EvenStretch>& earlier, double from, double to,
               double shift, Pass pass)
{
    struct Piece {
        double from, to;
    };
    std::vector<Piece> open{{from, to}};
    std::vector<EarlierStretch> found;
    const auto take = [&](const EvenStretch& even) {
        std::vector<Piece> rest;
        for (const Piece& piece : open) {
            const double begin = std::max(piece.from, even.localFrom());
            const double end = std::min(piece.to, even.localTo());
            if (begin >= end) {
                rest.push_back(piece);
                continue;
            }
            found.push_back({{begin - even.offset, end - even.offset}, shift + even.offset});
            if (piece.from < begin)
                rest.push_back({piece.from, begin});
            if (end < piece.to)
                rest.push_back({end, piece.to});
        }
        open = std::move(rest);
    };
    // Which of two passes is taken is decided by who comes first.
    if (pass == Pass::First)
        std::for_each(earlier.begin(), earlier.end(), take);
    else
        std::for_each(earlier.rbegin(), earlier.rend(), take);
    std::sort(found.begin(), found.end(), [](const EarlierStretch& one, const EarlierStretch& other) {
        return one.earlier.from + one.shift < other.earlier.from + other.shift;
    });
    places.insert(places.end(), found.begin(), found.end());
}

/// Neighbours of one shift are one stretch.
std::vector<EarlierStretch> joined(const std::vector<EarlierStretch>& places)
{
    std::vector<EarlierStretch> stretches;
    for (const EarlierStretch& place : places) {
        if (!stretches.empty() && stretches.back().shift == place.shift &&
            stretches.back().earlier.to == place.earlier.from)
            stretches.back().earlier.to = place.earlier.to;
        else
            stretches.push_back(place);
    }
    return stretches;
}

}  // namespace

std::vector<EarlierStretch> earlierStretches(const TimeSpan& present, const TimeDistance& distance,
                                             const QTimeZone& zone)
{
    const bool isKnown = std::abs(present.from) < kFarthest && std::abs(present.to) < kFarthest;
    if (!isKnown || present.from > present.to)
        return {};
    if (distance.isBySecondsAlone())
        return {{{present.from - distance.seconds, present.to - distance.seconds}, distance.seconds}};
    // The seconds pass first, from either end; what is left goes by the calendar.
    const TimeSpan passed{present.from - distance.seconds, present.to - distance.seconds};
    const double most = (distance.months * 31.0 + distance.days + kSlackDays) * kSecondsOfDay;
    const double least = (distance.months * 28.0 + distance.days - kSlackDays) * kSecondsOfDay;
    const std::vector<EvenStretch> earlier = evenStretches(zone, {passed.from - most, passed.to - least});
    std::vector<EarlierStretch> places;
    double localsSeen = -std::numeric_limits<double>::infinity();
    for (const EvenStretch& now : evenStretches(zone, passed)) {
        for (const CalendarStretch& days : calendarStretches(now.localFrom(), now.localTo(), distance)) {
            const double again = std::clamp(localsSeen, days.from, days.to);  // clocks were put back: it is there twice
            for (const auto& [from, to, pass] :
                 {std::tuple{days.from, again, Pass::Second}, std::tuple{again, days.to, Pass::First}})
                if (from < to)
                    addPlaces(places, earlier, from - days.back, to - days.back,
                              days.back - now.offset + distance.seconds, pass);
        }
        localsSeen = std::max(localsSeen, now.localTo());
    }
    return joined(places);
}

double earlierTime(const std::vector<EarlierStretch>& stretches, double present)
{
    for (const EarlierStretch& stretch : stretches)
        if (present - stretch.shift >= stretch.earlier.from && present - stretch.shift <= stretch.earlier.to)
            return present - stretch.shift;
    return present;
}

TimeSpan hullOf(const std::vector<EarlierStretch>& stretches)
{
    TimeSpan hull = stretches.front().earlier;
    for (const EarlierStretch& stretch : stretches) {
        hull.from = std::min(hull.from, stretch.earlier.from);
        hull.to = std::max(hull.to, stretch.earlier.to);
    }
    return hull;
}

}  // namespace plotix
